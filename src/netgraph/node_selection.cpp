#include "netgraph/node_selection.h"

#include <algorithm>
#include <fmt/printf.h>

#include "base/text_numbers.h"
#include "netgraph/messages.h"

namespace tarn {
namespace {

constexpr int32_t kFewestInputs = 2;
constexpr std::string_view kFirstNode = "1";

Message ContourMessage(std::string_view text) {
  return {std::string(kContourCaption), std::string(text), MessageIcon::kExclamation};
}

}  // namespace

NodePrompt OutputNodePrompt() {
  return {"Select Output Node", "Output node number to plot:", std::string(kFirstNode)};
}

NodePrompt InputNodePrompt() {
  return {"Select Input Node", "Input node number to plot:", std::string(kFirstNode)};
}

NodePrompt FirstInputPrompt() {
  return {"Select First Input Node", "First input node to investigate:", std::string(kFirstNode)};
}

NodePrompt SecondInputPrompt(size_t first_input) {
  return {"Select Second Input Node",
          "Second input node to investigate:", std::to_string(first_input + 2)};
}

size_t ChooseNode(std::string_view answer, int32_t count) {
  return static_cast<size_t>(std::clamp(ToInt(answer), 1, std::max(count, 1)) - 1);
}

std::optional<Message> CheckHiddenLayer(const Network& network, size_t layer) {
  if (network.layers[layer].nUnits > 1) return std::nullopt;
  return Message{std::string(kNetGraphErrorCaption), fmt::sprintf(kSingleHiddenNode, layer),
                 MessageIcon::kExclamation};
}

bool AsksForInputs(const Network& network) {
  return network.layers[0].nUnits > kFewestInputs;
}

bool AsksForOutput(const Network& network) {
  return OutputLayer(network).nUnits > 1;
}

std::optional<Message> CheckContourNetwork(const Network& network) {
  if (network.layers[0].nUnits >= kFewestInputs) return std::nullopt;
  return ContourMessage(kTooFewInputs);
}

std::optional<Message> CheckContourNodes(const ContourNodes& nodes) {
  if (nodes.first_input != nodes.second_input) return std::nullopt;
  return ContourMessage(kInputSelectionError);
}

}  // namespace tarn
