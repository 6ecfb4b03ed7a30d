#pragma once

#include <wx/window.h>

#include "app/application_paths.h"
#include "app/dialogs.h"
#include "engine/network.h"
#include "setup/recall_data_draft.h"
#include "setup/ui/data_dialog.h"

namespace tarn {

// The files that a trained network is run on. OK stores the fields in the network, which is not
// owned.
class RecDataDlg : public DataDialog {
 public:
  RecDataDlg(wxWindow* parent, Network& network, Dialogs& dialogs, const ApplicationPaths& paths);

 private:
  void Accept();

  Network& m_network;
  RecallDataDraft m_draft;
};

}  // namespace tarn
