#include "setup/net_design_draft.h"

#include <algorithm>
#include <fmt/printf.h>
#include <string_view>

#include "base/text_numbers.h"
#include "engine/messages.h"
#include "setup/edit_text.h"
#include "setup/messages.h"

namespace tarn {
namespace {

constexpr bool IsLayerCount(int32_t count) {
  return count >= kMinLayers && count <= kMaxLayers;
}

std::string NumberText(int32_t value) {
  return fmt::sprintf("%d", value);
}

// The field check: the stages in the order in which their messages are shown.
class FieldCheck {
 public:
  FieldCheck(const NetDesignDraft& draft, Network& network) : m_draft(draft), m_network(network) {}

  DraftResult Run() {
    m_result.may_close = true;
    StoreName();
    const int32_t old_outputs = IsLayerCount(m_network.nLayers) ? OutputLayer(m_network).nUnits : 0;
    StoreLayerCount();
    StoreCount(m_draft.input_nodes, m_network.layers[0].nUnits, kInputNodesInvalid,
               NetDesignDraft::kInputNodesEdit);
    OutputLayer(m_network).nUnits = StoredOutputs(old_outputs);
    for (int32_t k = 1; k < m_network.nLayers - 1; ++k) StoreHidden(k);
    StoreTransferFunctions();
    return std::move(m_result);
  }

 private:
  void Refuse(std::string_view text, int edit) { m_result.Refuse(kNetworkDesignError, text, edit); }

  void StoreName() {
    const std::string_view name = LineText(EditText(m_draft.name, kDesignEditLimit));
    if (!name.empty()) m_network.NetName = name;
  }

  // Everything behind it indexes by the layer count, so an empty field is only skipped when
  // the network's own count will do.
  void StoreLayerCount() {
    const std::string_view text = EditText(m_draft.layer_count, kDesignEditLimit);
    if (text.empty() && IsLayerCount(m_network.nLayers)) return;
    const int32_t count = ToInt(text);
    m_network.nLayers = IsLayerCount(count) ? count : kMinLayers;
    if (!IsLayerCount(count)) Refuse(kLayerCountOutOfRange, NetDesignDraft::kLayerCountEdit);
  }

  void StoreCount(std::string_view field, int32_t& nodes, std::string_view message, int edit) {
    const std::string_view text = EditText(field, kDesignEditLimit);
    if (text.empty()) return;
    const int32_t count = ToInt(text);
    if (count > 0) {
      nodes = count;
    } else {
      Refuse(message, edit);
    }
  }

  int32_t StoredOutputs(int32_t old_outputs) {
    // A field that fails leaves the slot as it is; an empty one brings the old count with it.
    int32_t nodes = m_draft.output_nodes.empty() ? old_outputs : OutputLayer(m_network).nUnits;
    StoreCount(m_draft.output_nodes, nodes, kOutputNodesInvalid, NetDesignDraft::kOutputNodesEdit);
    return nodes;
  }

  void StoreHidden(int32_t k) {
    const auto layer = static_cast<size_t>(k);
    const std::string_view text = EditText(m_draft.hidden_nodes[layer - 1], kDesignEditLimit);
    const bool existed = k < m_draft.loaded_layers - 1;
    if (text.empty() && existed) return;
    const int32_t count = ToInt(text);
    if (count > 0) {
      m_network.layers[layer].nUnits = count;
    } else {
      Refuse(fmt::sprintf(kHiddenNodesInvalid.data(), k), NetDesignDraft::kHiddenNodesEdit + k - 1);
    }
  }

  void StoreTransferFunctions() {
    for (size_t l = 1; l < static_cast<size_t>(m_network.nLayers); ++l) {
      m_network.layers[l].TransFunc = m_draft.transfer[l];
    }
  }

  const NetDesignDraft& m_draft;
  Network& m_network;
  DraftResult m_result;
};

// Runs the field check into a record of its own that starts from the network's design.
ConnectionsRequest CheckDesign(const NetDesignDraft& draft, const Network& network) {
  ConnectionsRequest request;
  request.design.NetName = network.NetName;
  request.design.nLayers = network.nLayers;
  for (size_t l = 0; l < network.layers.size(); ++l) {
    request.design.layers[l].nUnits = network.layers[l].nUnits;
    request.design.layers[l].TransFunc = network.layers[l].TransFunc;
  }
  request.design.file_name = network.file_name;
  request.design.connections_edited = draft.connections_edited;
  DraftResult result = FieldCheck(draft, request.design).Run();
  request.messages = std::move(result.messages);
  return request;
}

}  // namespace

void NetDesignDraft::Load(const Network& network) {
  *this = {};
  loaded_layers = std::clamp(network.nLayers, 0, kMaxLayers);
  name = network.NetName;
  layer_count = NumberText(network.nLayers);
  input_nodes = NumberText(network.layers[0].nUnits);
  for (int32_t l = 1; l < loaded_layers; ++l) {
    const auto layer = static_cast<size_t>(l);
    const std::string nodes = NumberText(network.layers[layer].nUnits);
    (l == loaded_layers - 1 ? output_nodes : hidden_nodes[layer - 1]) = nodes;
    transfer[layer] = network.layers[layer].TransFunc;
    connections_edited[layer] = network.connections_edited[layer];
  }
}

DraftResult NetDesignDraft::Apply(Network& network) const {
  DraftResult result = FieldCheck(*this, network).Run();
  if (result.may_close) {
    for (size_t l = 1; l < static_cast<size_t>(network.nLayers); ++l) {
      network.connections_edited[l] = connections_edited[l];
    }
  }
  return result;
}

LayerRequest NetDesignDraft::TransferFunctionsOfOutput() const {
  const int32_t count = ToInt(EditText(layer_count, kDesignEditLimit));
  if (IsLayerCount(count)) return {{}, count - 1};
  DraftResult result;
  result.Refuse(kNetworkDesignError, kLayerCountOutOfRange);
  return {std::move(result.messages), 0};
}

ConnectionsRequest NetDesignDraft::ConnectionsOfHidden(int32_t row, const Network& network) const {
  ConnectionsRequest request = CheckDesign(*this, network);
  if (!request.messages.empty()) return request;
  if (request.design.nLayers > row + 1) {
    request.receiving_layer = row;
    return request;
  }
  DraftResult result;
  result.Refuse(kErrorCaption, kInsufficientLayers);
  request.messages = std::move(result.messages);
  return request;
}

ConnectionsRequest NetDesignDraft::ConnectionsOfOutput(const Network& network) const {
  ConnectionsRequest request = CheckDesign(*this, network);
  if (request.messages.empty()) request.receiving_layer = request.design.nLayers - 1;
  return request;
}

DesignRequest NetDesignDraft::DesignToView(const Network& network) const {
  // NOLINTNEXTLINE(cppcoreguidelines-slicing): the layer of connections is not asked for.
  DesignRequest request = CheckDesign(*this, network);
  if (!request.messages.empty()) return request;
  // A field that is left empty may stand for a count that is no good either.
  const Status usable = CheckShape(request.design);
  if (usable.ok()) return request;
  DraftResult result;
  result.Refuse(kNetworkDesignError, usable.message());
  request.messages = std::move(result.messages);
  return request;
}

}  // namespace tarn
