#pragma once

#include <wx/window.h>

#include "app/dialogs.h"
#include "engine/network.h"
#include "setup/training_parameters_draft.h"
#include "setup/ui/setup_dialog.h"

namespace tarn {

// Every training parameter in one form. OK stores the fields in the network, which is not owned.
class TrnParamDlg : public SetupDialog {
 public:
  TrnParamDlg(wxWindow* parent, Network& network, Dialogs& dialogs);

 private:
  void Accept();

  Network& m_network;
  TrainingParametersDraft m_draft;
};

}  // namespace tarn
