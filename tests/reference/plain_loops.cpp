#include "reference/plain_loops.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>

#include "reference/transfer.h"

namespace tarn::reference {
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

void OutputDeltas(Network& network, size_t pattern) {
  Layer& layer = OutputLayer(network);
  const std::span<const float> targets = network.targets.Row(pattern);
  const std::span<const float> outputs = layer.activations.Row(pattern);
  for (size_t j = 0; j < layer.deltas.size(); ++j) {
    layer.deltas[j] = (targets[j] - outputs[j]) * layer.derivatives[j];
  }
}

void HiddenDeltas(Layer& layer, const Layer& above) {
  // By the rows of the weights, which lie contiguous; each node's own sum still runs over j in
  // ascending order.
  std::ranges::fill(layer.deltas, 0.0F);
  for (size_t j = 0; j < above.deltas.size(); ++j) {
    const std::span<const float> weights = above.weights.Row(j);
    const float delta = above.deltas[j];
    for (size_t i = 0; i < layer.deltas.size(); ++i) layer.deltas[i] += delta * weights[i];
  }
  for (size_t i = 0; i < layer.deltas.size(); ++i) layer.deltas[i] *= layer.derivatives[i];
}

// What a bias weight and a connection have in common: the new change.
float Change(float change, float gradient, float alpha, float eta) {
  return alpha * change + eta * gradient;
}

void UpdateBias(Layer& layer, const LayerSums& sums, size_t node, float alpha, float eta) {
  float& change = layer.weight_changes.Row(node).back();
  change = Change(change, sums.bias_gradients[node], alpha, eta);
  layer.weights.Row(node).back() += change;
}

void UpdateConnected(Layer& layer, const LayerSums& sums, size_t node, float alpha, float eta) {
  const std::span<const float> gradients = sums.weight_gradients.Row(node);
  const std::span<float> changes = layer.weight_changes.Row(node);
  const std::span<float> weights = layer.weights.Row(node);
  for (size_t i = 0; i < gradients.size(); ++i) {
    changes[i] = Change(changes[i], gradients[i], alpha, eta);
    weights[i] += changes[i];
  }
}

void UpdateMasked(Layer& layer, const LayerSums& sums, size_t node, float alpha, float eta) {
  const std::span<const float> gradients = sums.weight_gradients.Row(node);
  const std::span<const float> masks = layer.masks.Row(node);
  const std::span<float> changes = layer.weight_changes.Row(node);
  const std::span<float> weights = layer.weights.Row(node);
  for (size_t i = 0; i < gradients.size(); ++i) {
    changes[i] = Change(changes[i], gradients[i], alpha, eta);
    weights[i] += changes[i] * masks[i];
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

void ClearGradients(const Network& network, GradientSums& sums) {
  for (size_t l = 1; l < static_cast<size_t>(network.nLayers); ++l) {
    const Matrix& masks = network.layers[l].masks;
    LayerSums& layer = sums[l];
    if (layer.weight_gradients.rows() != masks.rows() ||
        layer.weight_gradients.columns() != masks.columns()) {
      layer.weight_gradients.Resize(masks.rows(), masks.columns());
    }
    std::ranges::fill(layer.weight_gradients.All(), 0.0F);
    layer.bias_gradients.assign(masks.rows(), 0.0F);
  }
}

void Backpropagate(Network& network, int32_t pattern) {
  OutputDeltas(network, static_cast<size_t>(pattern));
  for (size_t l = static_cast<size_t>(network.nLayers) - 2; l > 0; --l) {
    HiddenDeltas(network.layers[l], network.layers[l + 1]);
  }
}

void AccumulateGradients(const Network& network, GradientSums& sums, int32_t pattern) {
  const float fast_prop = network.FastProp;
  for (size_t l = static_cast<size_t>(network.nLayers) - 1; l > 0; --l) {
    const Layer& layer = network.layers[l];
    const Layer& below = network.layers[l - 1];
    const std::span<const float> inputs = below.activations.Row(static_cast<size_t>(pattern));
    for (size_t j = 0; j < layer.deltas.size(); ++j) {
      const float delta = layer.deltas[j];
      sums[l].bias_gradients[j] += delta;
      const std::span<float> gradients = sums[l].weight_gradients.Row(j);
      for (size_t i = 0; i < gradients.size(); ++i) {
        gradients[i] += (fast_prop * below.deltas[i] + inputs[i]) * delta;
      }
    }
  }
}

void UpdateWeights(Network& network, const GradientSums& sums) {
  for (size_t l = static_cast<size_t>(network.nLayers) - 1; l > 0; --l) {
    Layer& layer = network.layers[l];
    for (size_t j = 0; j < layer.deltas.size(); ++j) {
      UpdateBias(layer, sums[l], j, network.Alpha, network.Eta);
      if (network.fully_connected) {
        UpdateConnected(layer, sums[l], j, network.Alpha, network.Eta);
      } else {
        UpdateMasked(layer, sums[l], j, network.Alpha, network.Eta);
      }
    }
  }
}

}  // namespace tarn::reference
