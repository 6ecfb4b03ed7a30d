#pragma once

#include <string_view>
#include <wx/dialog.h>

namespace tarn {

// The network load status box: modeless, without buttons, gone when the load is done.
class StatusDlg : public wxDialog {
 public:
  explicit StatusDlg(wxWindow* parent);

  // The step in progress.
  void ShowStep(std::string_view step);
};

}  // namespace tarn
