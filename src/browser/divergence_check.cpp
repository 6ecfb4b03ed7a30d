#include "browser/divergence_check.h"

#include <cstddef>
#include <span>
#include <string>

#include "browser/messages.h"

namespace tarn {
namespace {

constexpr float kLow = 0.0001F;
constexpr float kHigh = 1.0F - kLow;
constexpr size_t kLongestText = 60;

struct Pinned {
  int32_t low = 0;
  int32_t high = 0;
};

}  // namespace

std::vector<int32_t> DivergedNodes(const Network& network) {
  std::vector<Pinned> nodes(static_cast<size_t>(OutputLayer(network).nUnits));
  for (int32_t p = 0; p < network.nPats; ++p) {
    const std::span<const float> outputs =
        OutputLayer(network).activations.Row(static_cast<size_t>(p));
    for (size_t j = 0; j < nodes.size(); ++j) {
      if (outputs[j] < kLow) {
        ++nodes[j].low;
      } else if (outputs[j] > kHigh) {
        ++nodes[j].high;
      }
    }
  }
  std::vector<int32_t> diverged;
  for (size_t j = 0; j < nodes.size(); ++j) {
    if (nodes[j].low != network.nPats && nodes[j].high != network.nPats) continue;
    diverged.push_back(static_cast<int32_t>(j) + 1);
  }
  return diverged;
}

Message DivergenceMessage(const Network& network) {
  const std::vector<int32_t> nodes = DivergedNodes(network);
  if (nodes.empty()) {
    return {std::string(kNoDivergencesCaption), std::string(kNoDivergences), MessageIcon::kNone};
  }
  std::string text(kDivergedNodes);
  for (size_t i = 0; i < nodes.size() && text.size() <= kLongestText; ++i) {
    if (i > 0) text += ',';
    text += std::to_string(nodes[i]);
  }
  return {std::string(kDivergencesCaption), text, MessageIcon::kExclamation};
}

}  // namespace tarn
