#pragma once

#include <cstdint>
#include <wx/window.h>

#include "app/dialogs.h"
#include "setup/ui/setup_dialog.h"

namespace tarn {

// The transfer function of one layer. `code` is a TransferCode; for one that is unknown nothing is
// checked. OK alone writes it. Neither code nor dialogs are owned.
class TransDlg : public SetupDialog {
 public:
  TransDlg(wxWindow* parent, int32_t& code, Dialogs& dialogs);

 private:
  void CheckCode();
  void Accept();

  int32_t& m_code;
};

}  // namespace tarn
