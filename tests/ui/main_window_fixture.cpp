#include "ui/main_window_fixture.h"

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <wx/app.h>
#include <wx/evtloop.h>
#include <wx/menu.h>
#include <wx/timer.h>
#include <wx/utils.h>

#include "base/clock.h"
#include "resources/controls.h"

namespace tarn {
namespace {

constexpr int kLookMilliseconds = 5;
constexpr std::chrono::seconds kPatience{60};

// Runs an event loop of its own until the condition holds.
class LoopUntil : public wxTimer {
 public:
  explicit LoopUntil(const std::function<bool()>& done) : m_done(done) {}

  bool Run() {
    Start(kLookMilliseconds);
    wxGUIEventLoop loop;
    m_loop = &loop;
    loop.Run();
    return m_held;
  }
  void Notify() override {
    m_held = m_done();
    if (m_held || std::chrono::steady_clock::now() - m_start > kPatience) m_loop->ScheduleExit();
  }

 private:
  const std::function<bool()>& m_done;
  std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
  wxGUIEventLoop* m_loop = nullptr;
  bool m_held = false;
};

void CopyExample(const std::string& name, const TempFolder& folder) {
  for (const char* extension : {".net", ".txt"}) {
    const std::string file = name + extension;
    std::filesystem::copy_file(std::string(TARN_SOURCE_DIR) + "/examples/" + name + "/" + file,
                               folder / file);
  }
}

}  // namespace

MainWindowFixture::MainWindowFixture() {
  CopyExample("iris", m_folder);
  CopyExample("xor", m_folder);
  std::filesystem::create_directory(m_folder / "settings");
  wxSetEnv("XDG_CONFIG_HOME", Wide(m_folder / "settings"));
  m_folder.Enter();
  m_paths = FormApplicationPaths();
  m_session = std::make_unique<Session>();
  m_session->seeds = SeedSource(1);
  m_dialogs = std::make_unique<AnsweredDialogs>(m_paths);
  OpenFrame();
}

MainWindowFixture::~MainWindowFixture() {
  if (m_frame != nullptr) m_frame->Destroy();
  Until([this] { return m_frame == nullptr; });
}

void MainWindowFixture::OpenFrame() {
  if (m_frame != nullptr) {
    m_frame->Close(true);
    Until([this] { return m_frame == nullptr; });
  }
  m_frame = new TMain(*m_session, *m_dialogs, m_paths, SteadyClock());
  m_frame->Bind(wxEVT_DESTROY, [this](wxWindowDestroyEvent& event) {
    if (event.GetEventObject() == m_frame) m_frame = nullptr;
    event.Skip();
  });
  wxTheApp->SetTopWindow(m_frame);
  m_frame->Show();
  Until([this] { return m_frame->IsShownOnScreen(); });
}

wxWindow& MainWindowFixture::Client() {
  for (wxWindow* child : m_frame->GetChildren()) {
    if (dynamic_cast<wxPanel*>(child) != nullptr) return *child;
  }
  throw std::logic_error("the main window has no client");
}

std::string MainWindowFixture::Text(int id) {
  return TextOf(Client(), id);
}

std::string MainWindowFixture::StatusText() {
  return Utf8(m_frame->GetStatusBar()->GetStatusText(1));
}

void MainWindowFixture::Choose(int command) {
  const wxMenuBar* menu = m_frame->GetMenuBar();
  ASSERT_NE(menu, nullptr);
  const wxMenuItem* item = menu->FindItem(command);
  ASSERT_NE(item, nullptr) << command;
  ASSERT_TRUE(item->IsEnabled()) << command;
  m_frame->ProcessCommand(command);
}

void MainWindowFixture::Choose(int command, const std::vector<Step>& steps) {
  RunWhile([&] { Choose(command); }, steps);
}

void MainWindowFixture::Until(const std::function<bool()>& done) {
  if (done()) return;
  EXPECT_TRUE(LoopUntil(done).Run()) << "nothing happened";
}

void MainWindowFixture::OpenForTraining(const std::string& name, std::vector<Step> setup_steps) {
  m_dialogs->files.push_back(m_folder / name);
  Click(Client(), 103);
  Click(Client(), 102);
  setup_steps.emplace_back([] { Click(*TopDialog(), kOkId); });
  RunWhile([this] { Click(Client(), 105); }, setup_steps);
  Until([this] { return m_frame->training() != nullptr; });
}

void MainWindowFixture::RunCommandLine(const std::string& arguments, const std::string& output) {
  const std::string command = std::string(TARN_CLI) + " " + arguments + " > " + output + " 2>&1";
  ASSERT_EQ(std::system(command.c_str()), 0) << arguments;
}

void MainWindowFixture::Train() {
  Click(Client(), 215);
  Until([this] { return !m_frame->training()->desk().IsUnderWay(); });
}

}  // namespace tarn
