#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <gtest/gtest.h>
#include <iostream>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <unistd.h>
#include <utility>
#include <vector>
#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/listbox.h>
#include <wx/menu.h>
#include <wx/print.h>
#include <wx/radiobut.h>
#include <wx/textctrl.h>
#include <wx/timer.h>
#include <wx/weakref.h>

#include "resources/controls.h"
#include "ui/main_window_fixture.h"

// Somebody who does anything, for a while: random input over all windows while a network trains.
// TARN_MONKEY_SECONDS tells how long, TARN_MONKEY_SEED which input.

namespace tarn {
namespace {

using SteadyTime = std::chrono::steady_clock;

constexpr int kTurnMilliseconds = 2;
// A program that does not come back for so long hangs.
constexpr unsigned kPatienceSeconds = 60;
// Of the start-up window.
constexpr int kTrainingMode = 102;
constexpr int kRecallMode = 106;
constexpr int kRun = 105;
// Of the recall setup.
constexpr int kInputsButton = 101;
// Dialogs of the system's printing, which no hook can answer.
constexpr std::array<int, 3> kNotForMonkeys = {137, 152, wxID_PREVIEW_PRINT};

bool IsForMonkeys(int command) {
  return std::ranges::find(kNotForMonkeys, command) == kNotForMonkeys.end();
}

int Setting(const char* name, int otherwise) {
  const char* value = std::getenv(name);
  return value != nullptr ? std::atoi(value) : otherwise;
}

class Dice {
 public:
  explicit Dice(unsigned seed) : m_engine(seed) {}

  // 0 to count - 1.
  size_t Of(size_t count) { return m_engine() % count; }
  bool OneIn(size_t count) { return Of(count) == 0; }
  template <typename Container>
  auto& Pick(Container& container) {
    return container[Of(container.size())];
  }

 private:
  std::mt19937 m_engine;
};

// Answers file dialogs with any name.
class AnyFile : public AnsweredDialogs {
 public:
  AnyFile(const ApplicationPaths& paths, Dice& dice, std::string folder)
      : AnsweredDialogs(paths), m_dice(dice), m_folder(std::move(folder)) {}

  std::string next;  // if not empty, the one that is chosen next

 protected:
  std::optional<ChosenFile> ShowFileDialog(const FileQuestion& question) override {
    static const std::vector<std::string> kNames = {
        "iris.net",         "xor.net",  "iris.txt", "xor.txt",     "new.net",
        "other.net",        "settings", "out.txt",  "graph.svg",   "graph.png",
        "no/such/folder/x", "data.csv", "ö ß.net",  "UNTITLED.NE_"};
    if (!next.empty()) return ChosenFile{std::exchange(next, ""), 0};
    if (m_dice.OneIn(4)) return std::nullopt;
    const std::string& name = m_dice.Pick(kNames);
    // The monkey is to find out what the program loses, not what it is told to overwrite: data
    // stays what it is, and networks are replaced by networks.
    const bool data = name == "iris.txt" || name == "xor.txt";
    const bool other = name.ends_with(".net") && question.extension != ".net";
    if (question.saving && (data || other)) return std::nullopt;
    return ChosenFile{m_folder + "/" + name, m_dice.Of(2)};
  }

 private:
  Dice& m_dice;
  const std::string m_folder;
};

class Monkey : public MainWindowFixture {
 protected:
  Monkey() {
    Frame().Destroy();
    Until([this] { return !FrameIsOpen(); });
    m_dialogs = std::make_unique<AnyFile>(m_paths, m_dice, m_folder.path());
    OpenFrame();
    m_native.while_open = [this] {
      const std::vector<int> answers = {wxID_YES, wxID_NO, wxID_CANCEL};
      m_native.answers = {answers[m_dice.Of(answers.size())]};
      m_native.boxes.clear();
    };
  }

  void PlayFor(std::chrono::seconds time) {
    m_end = SteadyTime::now() + time;
    Schedule();
    while (SteadyTime::now() < m_end) {
      if (!FrameIsOpen()) OpenFrame();
      const SteadyTime::time_point pause = SteadyTime::now() + std::chrono::milliseconds(200);
      Until([&] { return !FrameIsOpen() || SteadyTime::now() > pause; });
    }
    ::alarm(0);
  }
  // How many moves each kind of window has taken, by title.
  const std::map<std::string, int>& moves() const { return m_moves; }

 private:
  // A timer whose turn runs a loop of its own does not come again in there: each turn has one.
  class Turn : public wxTimer {
   public:
    explicit Turn(Monkey& monkey) : m_monkey(monkey) { StartOnce(kTurnMilliseconds); }
    void Notify() override { m_monkey.Move(); }

   private:
    Monkey& m_monkey;
  };

  void Schedule() { m_turns.push_back(std::make_unique<Turn>(*this)); }

  void Move() {
    if (SteadyTime::now() >= m_end) {
      LeaveDialog();
      return;
    }
    Schedule();
    ::alarm(kPatienceSeconds);
    Act();
  }

  void LeaveDialog() {
    if (wxDialog* top = TopDialog()) {
      Schedule();
      top->EndModal(kCancelId);
    }
  }

  void Act() {
    if (wxDialog* top = TopDialog()) {
      ++m_moves[KindOf(*top)];
      // Most setups are left as they are: one that was spoiled trains nothing.
      const bool accepts = m_dice.OneIn(2);
      if (accepts && KindOf(*top) == "Training Setup") {
        Click(*top, kOkId);
      } else if (accepts && KindOf(*top) == "Recall Setup") {
        AcceptRecall(*top);
      } else {
        ActOn(*top);
      }
      return;
    }
    if (!FrameIsOpen() || wxTheApp->IsScheduledForDestruction(&Frame())) return;
    if (Frame().GetMenuBar() == nullptr && Client().IsEnabled() && m_dice.OneIn(4)) {
      BeginAfresh();
      return;
    }
    std::vector<wxTopLevelWindow*> windows = Windows();
    if (windows.empty()) return;
    wxTopLevelWindow& window = *m_dice.Pick(windows);
    ++m_moves[KindOf(window)];
    // Some are closed, or there would be more and more of them.
    const bool many = windows.size() > 12;
    if (&window != &Frame() && m_dice.OneIn(many ? 2 : 25)) {
      window.Close();
    } else if (m_dice.OneIn(3)) {
      ActOn(window);
    } else {
      ChooseAny(window);
    }
  }

  // A network that can be trained, whatever has become of the file.
  void BeginAfresh() {
    const std::string name = m_dice.OneIn(2) ? "iris" : "xor";
    const std::string example = std::string(TARN_SOURCE_DIR) + "/examples/" + name + "/" + name;
    const std::string path = m_folder / (name + ".net");
    WriteFile(path, ReadFile(example + ".net"));
    const bool recall = m_dice.OneIn(3);
    if (recall) RunCommandLine("train " + path + " --seed 1 --iterations 20");
    Frame().OpenFile(path);
    wxWindow& start_up = Client();
    Click(start_up, recall ? kRecallMode : kTrainingMode);
    Click(start_up, kRun);
  }

  // With data of the right form half of the time.
  void AcceptRecall(wxDialog& dialog) {
    auto& files = dynamic_cast<AnyFile&>(*m_dialogs);
    files.next = m_folder / (m_dice.OneIn(2) ? "iris.txt" : "xor.txt");
    Click(dialog, kInputsButton);
    Click(dialog, kOkId);
  }

  // The title as far as it is the same for all of them.
  static std::string KindOf(const wxTopLevelWindow& window) {
    const std::string title = Utf8(window.GetTitle());
    return title.substr(0, std::min(title.find(" - "), title.find(':')));
  }

  static std::vector<wxTopLevelWindow*> Windows() {
    std::vector<wxTopLevelWindow*> windows;
    for (wxWindow* window : wxTopLevelWindows) {
      auto* top = dynamic_cast<wxTopLevelWindow*>(window);
      if (top != nullptr && top->IsShown() && !wxTheApp->IsScheduledForDestruction(top))
        windows.push_back(top);
    }
    return windows;
  }

  void ChooseAny(wxTopLevelWindow& window) {
    auto* frame = dynamic_cast<wxFrame*>(&window);
    wxMenuBar* bar = frame != nullptr ? frame->GetMenuBar() : nullptr;
    if (bar == nullptr) {
      ActOn(window);
      return;
    }
    wxMenuItemList& items = bar->GetMenu(m_dice.Of(bar->GetMenuCount()))->GetMenuItems();
    wxMenuItem* item = items.Item(m_dice.Of(items.GetCount()))->GetData();
    const int command = item->GetId();
    if (item->IsSeparator() || !item->IsEnabled() || !IsForMonkeys(command)) return;
    // Leaving is rare, or there would be little else.
    const bool leaves = command == 129 || command == 130 || command == 229 || command == 230;
    if (leaves && !m_dice.OneIn(20)) return;
    frame->ProcessCommand(command);
  }

  void ActOn(wxTopLevelWindow& window) {
    switch (m_dice.Of(8)) {
      case 0:
        window.SetSize(static_cast<int>(m_dice.Of(1200)), static_cast<int>(m_dice.Of(900)));
        return;
      case 1:
        SendMouse(window);
        return;
      case 2:
        SendKey(window);
        return;
      default:
        UseControl(window);
    }
  }

  static void Collect(wxWindow& window, std::vector<wxWindow*>& found) {
    for (wxWindow* child : window.GetChildren()) {
      if (child->IsTopLevel() || !child->IsShown() || !child->IsEnabled()) continue;
      found.push_back(child);
      Collect(*child, found);
    }
  }

  void UseControl(wxWindow& window) {
    std::vector<wxWindow*> controls;
    Collect(window, controls);
    if (controls.empty()) return;
    wxWindow& control = *m_dice.Pick(controls);
    const int id = control.GetId();
    if (auto* entry = dynamic_cast<wxTextCtrl*>(&control)) {
      entry->ChangeValue(Wide(AnyText()));
    } else if (auto* list = dynamic_cast<wxListBox*>(&control)) {
      for (int i = 0; i < 5 && list->GetCount() > 0; ++i) {
        list->SetSelection(static_cast<int>(m_dice.Of(list->GetCount())));
      }
    } else if (dynamic_cast<wxButton*>(&control) != nullptr ||
               dynamic_cast<wxRadioButton*>(&control) != nullptr ||
               dynamic_cast<wxCheckBox*>(&control) != nullptr) {
      // The start-up window's own way out is as rare as the menus'.
      if (!IsForMonkeys(id) || (id == 110 && !m_dice.OneIn(20))) return;
      Click(window, id);
    }
  }

  std::string AnyText() {
    static const std::vector<std::string> kTexts = {
        "",           "0",      "1",  "2",     "3",    "5",        "10",
        "0.5",        "0.1",    "-1", "99999", "1e30", "abc",      "1,5",
        "2147483648", "0.0001", "9",  "nan",   "%s%n", "日本語 ö", std::string(500, 'x'),
        "iris.txt",   "xor.txt"};
    return m_dice.Pick(kTexts);
  }

  void SendMouse(wxWindow& window) {
    std::vector<wxWindow*> targets;
    Collect(window, targets);
    if (targets.empty()) return;
    wxWindow& target = *m_dice.Pick(targets);
    const wxWeakRef<wxWindow> alive(&target);
    for (const wxEventType type : {wxEVT_MOTION, wxEVT_LEFT_DOWN, wxEVT_MOTION, wxEVT_LEFT_UP}) {
      if (!alive) return;
      wxMouseEvent event(type);
      event.SetEventObject(&target);
      const wxSize size = target.GetClientSize();
      event.SetX(static_cast<int>(m_dice.Of(static_cast<size_t>(size.x) + 50)) - 25);
      event.SetY(static_cast<int>(m_dice.Of(static_cast<size_t>(size.y) + 50)) - 25);
      event.SetLeftDown(type == wxEVT_LEFT_DOWN || type == wxEVT_MOTION);
      target.ProcessWindowEvent(event);
    }
  }

  void SendKey(wxWindow& window) {
    static const std::vector<int> kKeys = {WXK_UP,   WXK_DOWN, WXK_PAGEUP, WXK_PAGEDOWN,
                                           WXK_HOME, WXK_END,  WXK_ESCAPE, WXK_TAB,
                                           WXK_F1,   'A',      'C',        WXK_DELETE};
    std::vector<wxWindow*> targets = {&window};
    Collect(window, targets);
    wxWindow& target = *m_dice.Pick(targets);
    const wxWeakRef<wxWindow> alive(&target);
    const int key = m_dice.Pick(kKeys);
    for (const wxEventType type : {wxEVT_CHAR_HOOK, wxEVT_KEY_DOWN, wxEVT_CHAR}) {
      if (!alive) return;
      wxKeyEvent event(type);
      event.SetEventObject(&target);
      event.m_keyCode = key;
      event.SetControlDown(m_dice.OneIn(3));
      event.SetShiftDown(m_dice.OneIn(3));
      target.ProcessWindowEvent(event);
    }
  }

  Dice m_dice{static_cast<unsigned>(Setting("TARN_MONKEY_SEED", 1))};
  SteadyTime::time_point m_end;
  std::map<std::string, int> m_moves;
  std::vector<std::unique_ptr<Turn>> m_turns;
};

TEST_F(Monkey, BreaksNothing) {
  const std::string iris = ReadFile(m_folder / "iris.txt");
  const std::string exclusive = ReadFile(m_folder / "xor.txt");
  PlayFor(std::chrono::seconds(Setting("TARN_MONKEY_SECONDS", 20)));
  for (const auto& [window, count] : moves()) std::cout << count << " on " << window << "\n";
  EXPECT_GT(moves().size(), 5U) << "it got nowhere";
  EXPECT_EQ(ReadFile(m_folder / "iris.txt"), iris);
  EXPECT_EQ(ReadFile(m_folder / "xor.txt"), exclusive);
  for (const char* name : {"iris.net", "xor.net"}) {
    Session session;
    EXPECT_TRUE(OpenNetwork(session, m_folder / name).ok()) << name;
    EXPECT_TRUE(ReadSetup(session).ok()) << name;
  }
}

}  // namespace
}  // namespace tarn
