#include "engine/forward.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>

#include "engine/transfer.h"

namespace tarn {
namespace {

// Net inputs wait here for the transfer function, so that it is selected once for all of them.
// A layer wider than this goes in several parts; nothing is allocated per pattern.
constexpr size_t kNodesAtOnce = 256;

float NegatedNet(std::span<const float> weights, std::span<const float> inputs) {
  float x = -weights[inputs.size()];
  for (size_t i = 0; i < inputs.size(); ++i) x -= weights[i] * inputs[i];
  return x;
}

void ForwardLayer(Layer& layer, std::span<const float> inputs, size_t pattern,
                  std::span<float> derivatives_or_empty) {
  const std::span<float> outputs = layer.activations.Row(pattern);
  std::array<float, kNodesAtOnce> negated_nets;
  for (size_t first = 0; first < outputs.size(); first += kNodesAtOnce) {
    const size_t count = std::min(kNodesAtOnce, outputs.size() - first);
    for (size_t j = 0; j < count; ++j) {
      negated_nets[j] = NegatedNet(layer.weights.Row(first + j), inputs);
    }
    ApplyTransfer(layer.TransFunc, std::span(negated_nets).first(count),
                  outputs.subspan(first, count),
                  derivatives_or_empty.empty() ? derivatives_or_empty
                                               : derivatives_or_empty.subspan(first, count));
  }
}

}  // namespace

void Forward(Network& network, int32_t pattern) {
  const size_t p = static_cast<size_t>(pattern);
  for (size_t l = 1; l < static_cast<size_t>(network.nLayers); ++l) {
    ForwardLayer(network.layers[l], network.layers[l - 1].activations.Row(p), p, {});
  }
}

void ForwardWithDerivatives(Network& network, int32_t pattern) {
  const size_t p = static_cast<size_t>(pattern);
  for (size_t l = 1; l < static_cast<size_t>(network.nLayers); ++l) {
    Layer& layer = network.layers[l];
    ForwardLayer(layer, network.layers[l - 1].activations.Row(p), p, layer.derivatives);
  }
}

}  // namespace tarn
