#include "app/ui/startup_window.h"

#include <utility>
#include <wx/app.h>
#include <wx/dnd.h>

#include "resources/controls.h"

namespace tarn {
namespace {

constexpr int kNewButton = 101;
constexpr int kTrainingRadio = 102;
constexpr int kOpenButton = 103;
constexpr int kRunButton = 105;
constexpr int kRecallRadio = 106;
constexpr int kNoneRadio = 107;  // hidden: checked while neither of the others is
constexpr int kHelpButton = 108;
constexpr int kAboutButton = 109;
constexpr int kExitButton = 110;

// Takes the first of the files dropped.
class NetworkDrop : public wxFileDropTarget {
 public:
  explicit NetworkDrop(std::function<void(const std::string&)> open) : m_open(std::move(open)) {}

  bool OnDropFiles(wxCoord, wxCoord, const wxArrayString& files) override {
    if (files.empty()) return false;
    const std::string path = Utf8(files[0]);
    // The drop ends before a message box can be answered.
    wxTheApp->CallAfter([open = m_open, path] { open(path); });
    return true;
  }

 private:
  std::function<void(const std::string&)> m_open;
};

}  // namespace

StartUpWindow::StartUpWindow(wxWindow* parent, StartUpActions actions)
    : m_actions(std::move(actions)) {
  LoadPanel(*this, parent, "TARN");
  const auto on = [this](int id, const std::function<void()>& action) {
    Bind(
        wxEVT_BUTTON, [&action](wxCommandEvent&) { action(); }, id);
  };
  on(kNewButton, m_actions.new_network);
  on(kOpenButton, m_actions.open);
  on(kHelpButton, m_actions.help);
  on(kAboutButton, m_actions.about);
  on(kExitButton, m_actions.exit);
  Bind(
      wxEVT_BUTTON, [this](wxCommandEvent&) { m_actions.run(Mode()); }, kRunButton);
  SetDropTarget(new NetworkDrop(m_actions.open_file));
  SelectMode(RunMode::kNone);
  Control(*this, kOpenButton).SetFocus();
}

RunMode StartUpWindow::Mode() const {
  if (IsChecked(*this, kTrainingRadio)) return RunMode::kTraining;
  return IsChecked(*this, kRecallRadio) ? RunMode::kRecall : RunMode::kNone;
}

void StartUpWindow::FocusRun() {
  Control(*this, kRunButton).SetFocus();
}

void StartUpWindow::SelectMode(RunMode mode) {
  int radio = kNoneRadio;
  if (mode == RunMode::kTraining) radio = kTrainingRadio;
  if (mode == RunMode::kRecall) radio = kRecallRadio;
  SetChecked(*this, radio, true);
}

}  // namespace tarn
