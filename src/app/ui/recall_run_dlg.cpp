#include "app/ui/recall_run_dlg.h"

#include <cstdint>
#include <fmt/printf.h>

#include "app/network_summary.h"
#include "resources/controls.h"

namespace tarn {
namespace {

constexpr int kNameText = 101;
constexpr int kLayersText = 102;
constexpr int kInputsText = 104;
constexpr int kOutputsText = 105;
constexpr int kHiddenText = 106;
constexpr int kConnectionsText = 107;
constexpr int kPatternsText = 108;

}  // namespace

RecallRunDlg::RecallRunDlg(wxWindow* parent, const Network& network) {
  LoadPanel(*this, parent, "RECALL_DLG");
  SetLabel("Tarn for Windows");
  const NetworkSummary summary = Summarize(network);
  const auto show = [this](int id, int64_t value) {
    SetText(*this, id, fmt::sprintf("%d", value));
  };
  SetText(*this, kNameText, network.NetName);
  show(kLayersText, network.nLayers);
  show(kInputsText, summary.input_nodes);
  show(kOutputsText, summary.output_nodes);
  show(kHiddenText, summary.hidden_nodes);
  show(kConnectionsText, summary.connections);
  show(kPatternsText, network.nPats);
}

}  // namespace tarn
