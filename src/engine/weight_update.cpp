#include "engine/weight_update.h"

#include <algorithm>
#include <cstddef>
#include <span>

namespace tarn {
namespace {

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

void UpdateBias(Layer& layer, size_t node, float alpha, float eta) {
  float& change = layer.weight_changes.Row(node).back();
  change = Change(change, layer.bias_gradients[node], alpha, eta);
  layer.weights.Row(node).back() += change;
}

void UpdateConnected(Layer& layer, size_t node, float alpha, float eta) {
  const std::span<const float> gradients = layer.weight_gradients.Row(node);
  const std::span<float> changes = layer.weight_changes.Row(node);
  const std::span<float> weights = layer.weights.Row(node);
  for (size_t i = 0; i < gradients.size(); ++i) {
    changes[i] = Change(changes[i], gradients[i], alpha, eta);
    weights[i] += changes[i];
  }
}

void UpdateMasked(Layer& layer, size_t node, float alpha, float eta) {
  const std::span<const float> gradients = layer.weight_gradients.Row(node);
  const std::span<const float> masks = layer.masks.Row(node);
  const std::span<float> changes = layer.weight_changes.Row(node);
  const std::span<float> weights = layer.weights.Row(node);
  for (size_t i = 0; i < gradients.size(); ++i) {
    changes[i] = Change(changes[i], gradients[i], alpha, eta);
    weights[i] += changes[i] * masks[i];
  }
}

}  // namespace

void ClearGradients(Network& network) {
  for (size_t l = 1; l < static_cast<size_t>(network.nLayers); ++l) {
    std::ranges::fill(network.layers[l].weight_gradients.All(), 0.0F);
    std::ranges::fill(network.layers[l].bias_gradients, 0.0F);
  }
}

void Backpropagate(Network& network, int32_t pattern) {
  OutputDeltas(network, static_cast<size_t>(pattern));
  for (size_t l = static_cast<size_t>(network.nLayers) - 2; l > 0; --l) {
    HiddenDeltas(network.layers[l], network.layers[l + 1]);
  }
}

void AccumulateGradients(Network& network, int32_t pattern) {
  const float fast_prop = network.FastProp;
  for (size_t l = static_cast<size_t>(network.nLayers) - 1; l > 0; --l) {
    Layer& layer = network.layers[l];
    const Layer& below = network.layers[l - 1];
    const std::span<const float> inputs = below.activations.Row(static_cast<size_t>(pattern));
    for (size_t j = 0; j < layer.deltas.size(); ++j) {
      const float delta = layer.deltas[j];
      layer.bias_gradients[j] += delta;
      const std::span<float> gradients = layer.weight_gradients.Row(j);
      for (size_t i = 0; i < gradients.size(); ++i) {
        gradients[i] += (fast_prop * below.deltas[i] + inputs[i]) * delta;
      }
    }
  }
}

void UpdateWeights(Network& network) {
  for (size_t l = static_cast<size_t>(network.nLayers) - 1; l > 0; --l) {
    Layer& layer = network.layers[l];
    for (size_t j = 0; j < layer.bias_gradients.size(); ++j) {
      UpdateBias(layer, j, network.Alpha, network.Eta);
      if (network.fully_connected) {
        UpdateConnected(layer, j, network.Alpha, network.Eta);
      } else {
        UpdateMasked(layer, j, network.Alpha, network.Eta);
      }
    }
  }
}

}  // namespace tarn
