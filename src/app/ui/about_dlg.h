#pragma once

#include <wx/dialog.h>

namespace tarn {

// The about box.
class AboutDlg : public wxDialog {
 public:
  explicit AboutDlg(wxWindow* parent);
};

}  // namespace tarn
