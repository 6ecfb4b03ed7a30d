#include "app/ui/status_dlg.h"

#include "resources/controls.h"

namespace tarn {
namespace {

constexpr int kStepText = 101;

}  // namespace

StatusDlg::StatusDlg(wxWindow* parent) {
  LoadDialog(*this, parent, "STATUS_DLG");
  // The load goes on, and ends the box.
  Bind(wxEVT_CLOSE_WINDOW, [](wxCloseEvent& event) {
    if (event.CanVeto()) event.Veto();
  });
}

void StatusDlg::ShowStep(std::string_view step) {
  SetText(*this, kStepText, step);
  Update();
}

}  // namespace tarn
