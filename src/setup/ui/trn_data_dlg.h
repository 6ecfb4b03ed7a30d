#pragma once

#include <wx/window.h>

#include "app/application_paths.h"
#include "app/dialogs.h"
#include "engine/network.h"
#include "setup/training_data_draft.h"
#include "setup/ui/data_dialog.h"

namespace tarn {

// The files that a network is trained with, and its test set. OK stores the fields in the network,
// which is not owned.
class TrnDataDlg : public DataDialog {
 public:
  TrnDataDlg(wxWindow* parent, Network& network, Dialogs& dialogs, const ApplicationPaths& paths);

 private:
  void TieFields();
  void Accept();

  Network& m_network;
  TrainingDataDraft m_draft;
};

}  // namespace tarn
