#pragma once

#include <cstdint>
#include <functional>
#include <wx/window.h>

#include "app/dialogs.h"
#include "engine/network.h"
#include "setup/net_design_draft.h"
#include "setup/ui/setup_dialog.h"

namespace tarn {

// The windows that the network design opens. The buttons of one that is missing are disabled.
struct DesignWindows {
  // Edits the connections into the request's receiving layer; sets the flag when some have been
  // removed.
  std::function<void(ConnectionsRequest& request, bool& edited)> edit_connections;
  std::function<void()> view_network;
};

// Name, layers, nodes, transfer functions and connections. OK stores the fields in the network,
// which is not owned.
class NetDesignDlg : public SetupDialog {
 public:
  NetDesignDlg(wxWindow* parent, Network& network, Dialogs& dialogs, DesignWindows windows = {});

 private:
  void TieEdits();
  void BindHiddenRow(int32_t row);
  void BindOutputRow();
  void ChooseTransfer(int32_t layer);
  void ChooseOutputTransfer();
  void OpenConnections(ConnectionsRequest request);
  void Accept();

  Network& m_network;
  DesignWindows m_windows;
  NetDesignDraft m_draft;
};

}  // namespace tarn
