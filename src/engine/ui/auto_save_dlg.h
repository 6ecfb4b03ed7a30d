#pragma once

#include <string>
#include <vector>
#include <wx/dialog.h>

#include "app/dialogs.h"

namespace tarn {

// The AutoSave dialog: the iterations of the store to pick from, or one typed in.
class AutoSaveDlg : public wxDialog {
 public:
  AutoSaveDlg(wxWindow* parent, const std::vector<std::string>& iterations, Dialogs& dialogs);

  // What was typed or picked.
  std::string choice() const;
};

}  // namespace tarn
