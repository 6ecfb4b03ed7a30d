#include "app/ui/about_dlg.h"

#include "resources/controls.h"

namespace tarn {

AboutDlg::AboutDlg(wxWindow* parent) {
  LoadDialog(*this, parent, "ABOUT_DLG");
  Bind(
      wxEVT_BUTTON, [this](wxCommandEvent&) { EndModal(kOkId); }, kOkId);
}

}  // namespace tarn
