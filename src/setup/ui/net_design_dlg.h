#pragma once

#include <cstdint>
#include <string>
#include <wx/weakref.h>
#include <wx/window.h>

#include "app/dialogs.h"
#include "engine/network.h"
#include "setup/net_design_draft.h"
#include "setup/ui/net_view_dlg.h"
#include "setup/ui/setup_dialog.h"

namespace tarn {

// Name, layers, nodes, transfer functions and connections. OK stores the fields in the network,
// which is not owned. Edited connections wait in the scratch folder.
class NetDesignDlg : public SetupDialog {
 public:
  NetDesignDlg(wxWindow* parent, Network& network, Dialogs& dialogs, std::string scratch_folder);

 private:
  void TieEdits();
  void BindHiddenRow(int32_t row);
  void BindOutputRow();
  void ChooseTransfer(int32_t layer);
  void ChooseOutputTransfer();
  void OpenConnections(const ConnectionsRequest& request);
  void ViewNetwork();
  // Lets the view, when it is open, follow what has been changed; fields that fail do not count.
  void UpdateView();
  void Accept();

  Network& m_network;
  const std::string m_scratch_folder;
  NetDesignDraft m_draft;
  Network m_viewed;  // the design that the view shows
  wxWeakRef<NetViewDlg> m_view;
};

}  // namespace tarn
