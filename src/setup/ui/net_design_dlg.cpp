#include "setup/ui/net_design_dlg.h"

#include <array>
#include <cstddef>
#include <string>
#include <utility>

#include "resources/controls.h"
#include "setup/edit_text.h"
#include "setup/ui/net_connect_dlg.h"
#include "setup/ui/trans_dlg.h"

namespace tarn {
namespace {

// Of hidden row 1 to 8.
constexpr std::array kTransferButtons = {113, 112, 114, 115, 116, 117, 118, 119};
constexpr std::array kConnectionsButtons = {139, 140, 141, 142, 143, 144, 145, 146};
static_assert(kTransferButtons.size() == kHiddenRows && kConnectionsButtons.size() == kHiddenRows);
constexpr int kOutputTransferButton = 120;
constexpr int kOutputConnectionsButton = 147;
constexpr int kViewButton = 149;

}  // namespace

NetDesignDlg::NetDesignDlg(wxWindow* parent, Network& network, Dialogs& dialogs,
                           std::string scratch_folder)
    : SetupDialog(parent, "NDESIGN_DLG", dialogs, HelpTopic::kNetworkDesign, kHelpId),
      m_network(network),
      m_scratch_folder(std::move(scratch_folder)) {
  m_draft.Load(network);
  TieEdits();
  for (int32_t row = 1; row <= static_cast<int32_t>(kHiddenRows); ++row) BindHiddenRow(row);
  BindOutputRow();
  OnButton(kViewButton, [this] { ViewNetwork(); });
  Bind(wxEVT_TEXT, [this](wxCommandEvent&) { UpdateView(); });
  OnButton(kOkId, [this] { Accept(); });
  FocusEdit(*this, NetDesignDraft::kNameEdit);
}

void NetDesignDlg::TieEdits() {
  Tie(NetDesignDraft::kNameEdit, m_draft.name, kDesignEditLimit);
  Tie(NetDesignDraft::kLayerCountEdit, m_draft.layer_count, kDesignEditLimit);
  Tie(NetDesignDraft::kInputNodesEdit, m_draft.input_nodes, kDesignEditLimit);
  int edit = NetDesignDraft::kHiddenNodesEdit;
  for (std::string& nodes : m_draft.hidden_nodes) Tie(edit++, nodes, kDesignEditLimit);
  Tie(NetDesignDraft::kOutputNodesEdit, m_draft.output_nodes, kDesignEditLimit);
}

void NetDesignDlg::BindHiddenRow(int32_t row) {
  const auto place = static_cast<size_t>(row - 1);
  OnButton(kTransferButtons[place], [this, row] { ChooseTransfer(row); });
  OnButton(kConnectionsButtons[place], [this, row] {
    ReadFields();
    OpenConnections(m_draft.ConnectionsOfHidden(row, m_network));
  });
}

void NetDesignDlg::BindOutputRow() {
  OnButton(kOutputTransferButton, [this] { ChooseOutputTransfer(); });
  OnButton(kOutputConnectionsButton, [this] {
    ReadFields();
    OpenConnections(m_draft.ConnectionsOfOutput(m_network));
  });
}

void NetDesignDlg::ChooseTransfer(int32_t layer) {
  TransDlg(this, m_draft.transfer[static_cast<size_t>(layer)], dialogs()).ShowModal();
  UpdateView();
}

void NetDesignDlg::ChooseOutputTransfer() {
  ReadFields();
  const LayerRequest request = m_draft.TransferFunctionsOfOutput();
  TellAll(request.messages);
  if (request.layer != 0) ChooseTransfer(request.layer);
}

void NetDesignDlg::OpenConnections(const ConnectionsRequest& request) {
  TellAll(request.messages);
  if (request.receiving_layer == 0) return;
  bool& edited = m_draft.connections_edited[static_cast<size_t>(request.receiving_layer)];
  NetConnectDlg(this, request, edited, m_scratch_folder, dialogs()).ShowModal();
  UpdateView();
}

void NetDesignDlg::ViewNetwork() {
  ReadFields();
  DesignRequest request = m_draft.DesignToView(m_network);
  TellAll(request.messages);
  if (!request.messages.empty()) return;
  m_viewed = std::move(request.design);
  if (m_view == nullptr) {
    m_view = new NetViewDlg(this, m_viewed, m_scratch_folder, dialogs());
    m_view->Show();
  } else {
    m_view->Redraw();
    m_view->Iconize(false);
  }
  m_view->Raise();
}

void NetDesignDlg::UpdateView() {
  if (m_view == nullptr) return;
  ReadFields();
  DesignRequest request = m_draft.DesignToView(m_network);
  if (!request.messages.empty()) return;
  m_viewed = std::move(request.design);
  m_view->Redraw();
}

void NetDesignDlg::Accept() {
  ReadFields();
  Finish(m_draft.Apply(m_network));
}

}  // namespace tarn
