#include "ui/driver.h"

#include <chrono>
#include <gtest/gtest.h>
#include <memory>
#include <utility>
#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/eventfilter.h>
#include <wx/radiobut.h>
#include <wx/textentry.h>
#include <wx/timer.h>
#include <wx/toplevel.h>
#include <wx/uiaction.h>

#include "resources/controls.h"

namespace tarn {
namespace {

constexpr int kTurnMilliseconds = 10;
constexpr std::chrono::seconds kPatience{5};

// A key that was struck and has not arrived: pressed, and released unless the dialog has gone.
class AwaitedKey : public wxEventFilter {
 public:
  explicit AwaitedKey(const wxDialog* dialog) : m_dialog(dialog) { wxEvtHandler::AddFilter(this); }
  ~AwaitedKey() override { wxEvtHandler::RemoveFilter(this); }
  AwaitedKey(const AwaitedKey&) = delete;
  AwaitedKey& operator=(const AwaitedKey&) = delete;

  int FilterEvent(wxEvent& event) override {
    if (event.GetEventType() == wxEVT_CHAR_HOOK) m_pressed = true;
    if (event.GetEventType() == wxEVT_KEY_UP) m_released = true;
    return Event_Skip;
  }
  bool HasArrived() const { return m_pressed && (m_released || TopDialog() != m_dialog); }

 private:
  const wxDialog* m_dialog;
  bool m_pressed = false;
  bool m_released = false;
};

std::unique_ptr<AwaitedKey> g_key;

class Drive {
 public:
  explicit Drive(const std::vector<Step>& steps) : m_steps(steps) { Schedule(); }
  ~Drive() {
    g_key.reset();
    EXPECT_EQ(m_next, m_steps.size()) << "steps are left";
  }
  Drive(const Drive&) = delete;
  Drive& operator=(const Drive&) = delete;

 private:
  // A timer whose turn runs a loop of its own does not come again in there: each turn has one.
  class Turn : public wxTimer {
   public:
    explicit Turn(Drive& drive) : m_drive(drive) { StartOnce(kTurnMilliseconds); }
    void Notify() override { m_drive.Run(); }

   private:
    Drive& m_drive;
  };

  void Schedule() { m_turns.push_back(std::make_unique<Turn>(*this)); }

  void Run() {
    Schedule();
    wxDialog* top = TopDialog();
    // Its second turn: the loop has been idle since it is on the screen.
    const bool settled = top != nullptr && top == std::exchange(m_seen, top);
    if (settled && m_given_up) {
      top->EndModal(kCancelId);
    } else if (settled && m_next < m_steps.size() && !KeyIsAwaited()) {
      m_start = Clock::now();
      m_steps[m_next++]();
      m_start = Clock::now();
    } else if (Clock::now() - m_start > kPatience) {
      GiveUp();
    }
  }

  static bool KeyIsAwaited() {
    if (g_key && g_key->HasArrived()) g_key.reset();
    return g_key != nullptr;
  }

  void GiveUp() {
    if (std::exchange(m_given_up, true)) return;
    ADD_FAILURE() << (g_key ? "a key did not arrive" : "the dialog is still open");
  }

  using Clock = std::chrono::steady_clock;

  const std::vector<Step>& m_steps;
  size_t m_next = 0;
  wxDialog* m_seen = nullptr;
  bool m_given_up = false;
  Clock::time_point m_start = Clock::now();
  std::vector<std::unique_ptr<Turn>> m_turns;
};

// The control that a user could get at; a failed expectation otherwise.
wxWindow* Reach(wxWindow& window, int id) {
  wxWindow* control = window.FindWindow(id);
  if (control == nullptr) {
    ADD_FAILURE() << "no control " << id;
  } else if (!control->IsShownOnScreen() || !control->IsEnabled()) {
    ADD_FAILURE() << "control " << id << " is disabled or not shown";
    control = nullptr;
  }
  return control;
}

void Send(wxControl& control, wxEventType type, int value) {
  wxCommandEvent event(type, control.GetId());
  event.SetEventObject(&control);
  event.SetInt(value);
  control.Command(event);
}

}  // namespace

int RunModal(wxDialog& dialog, const std::vector<Step>& steps) {
  int result = wxID_NONE;
  RunWhile([&] { result = dialog.ShowModal(); }, steps);
  return result;
}

void RunWhile(const std::function<void()>& action, const std::vector<Step>& steps) {
  const Drive drive(steps);
  action();
}

wxDialog* TopDialog() {
  for (auto node = wxTopLevelWindows.GetLast(); node != nullptr; node = node->GetPrevious()) {
    auto* dialog = dynamic_cast<wxDialog*>(node->GetData());
    if (dialog != nullptr && dialog->IsModal() && dialog->IsShown()) return dialog;
  }
  return nullptr;
}

void Click(wxWindow& window, int id) {
  wxWindow* control = Reach(window, id);
  if (control == nullptr) return;
  control->SetFocus();
  if (auto* radio = dynamic_cast<wxRadioButton*>(control)) {
    radio->SetValue(true);
    Send(*radio, wxEVT_RADIOBUTTON, 1);
  } else if (auto* box = dynamic_cast<wxCheckBox*>(control)) {
    box->SetValue(!box->GetValue());
    Send(*box, wxEVT_CHECKBOX, box->GetValue() ? 1 : 0);
  } else if (auto* button = dynamic_cast<wxButton*>(control)) {
    Send(*button, wxEVT_BUTTON, 0);
  } else {
    ADD_FAILURE() << "control " << id << " cannot be clicked";
  }
}

void Type(wxWindow& window, int id, std::string_view text) {
  wxWindow* control = Reach(window, id);
  if (control == nullptr) return;
  auto* entry = dynamic_cast<wxTextEntry*>(control);
  ASSERT_NE(entry, nullptr) << "control " << id << " takes no text";
  control->SetFocus();
  entry->SelectAll();
  if (text.empty()) {
    entry->RemoveSelection();
  } else {
    entry->WriteText(Wide(text));
  }
}

void Press(int key) {
  wxDialog* top = TopDialog();
  ASSERT_NE(top, nullptr);
  // From here on: the simulator itself lets timers run.
  g_key = std::make_unique<AwaitedKey>(top);
  PressOn(*top, key);
}

void PressOn(wxWindow& window, int key) {
  wxUIActionSimulator simulator;
  // Without a window manager keys go to the window under the pointer.
  const wxRect area = window.GetScreenRect();
  simulator.MouseMove(area.GetX() + 2, area.GetY() + 2);
  simulator.Char(key);
}

int FocusedId() {
  const wxWindow* focused = wxWindow::FindFocus();
  return focused != nullptr ? focused->GetId() : wxID_NONE;
}

}  // namespace tarn
