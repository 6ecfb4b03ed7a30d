#include "engine/network.h"

#include <algorithm>
#include <fmt/printf.h>
#include <limits>
#include <new>

#include "base/process.h"
#include "engine/messages.h"

namespace tarn {
namespace {

size_t Nodes(const Network& network, int32_t layer) {
  return static_cast<size_t>(network.layers[static_cast<size_t>(layer)].nUnits);
}

// The bytes that AllocateArrays and a training run take, in a double: no product of 32-bit
// counts overflows it. A connection is there as weight, change and mask by node, and as these, as
// gradient and once more as weight in rows of whole vectors for the kernels.
double BytesNeeded(const Network& network) {
  constexpr double kWidestVector = 16;
  constexpr double kFloatsOfBatch = 1 << 24;
  const double patterns = std::max(network.nPats, 0);
  double floats = std::min(4 * patterns * static_cast<double>(NodeCount(network)), kFloatsOfBatch);
  for (int32_t l = 0; l < network.nLayers; ++l) {
    const double nodes = static_cast<double>(Nodes(network, l));
    floats += nodes * patterns + 2 * nodes;
    if (l == 0) continue;
    const double sources = static_cast<double>(Nodes(network, l - 1)) + 1;
    floats += 3 * nodes * sources + 4 * (nodes + kWidestVector) * sources +
              nodes * (sources + kWidestVector);
  }
  floats += patterns * static_cast<double>(OutputLayer(network).nUnits);
  return floats * sizeof(float);
}

void AllocateLayer(Network& network, int32_t l) {
  Layer& layer = network.layers[static_cast<size_t>(l)];
  const size_t nodes = Nodes(network, l);
  layer.activations.Resize(static_cast<size_t>(network.nPats), nodes);
  layer.deltas.assign(nodes, 0.0F);
  if (l == 0) return;
  const size_t previous = Nodes(network, l - 1);
  layer.derivatives.assign(nodes, 0.0F);
  layer.weights.Resize(nodes, previous + 1);
  layer.weight_changes.Resize(nodes, previous + 1);
  layer.masks.Resize(nodes, previous);
}

void FreeArrays(Network& network) {
  for (Layer& layer : network.layers) {
    for (Matrix* matrix :
         {&layer.activations, &layer.weights, &layer.weight_changes, &layer.masks}) {
      matrix->Resize(0, 0);
    }
    layer.derivatives.clear();
    layer.deltas.clear();
  }
  network.targets.Resize(0, 0);
  network.input_limits.Resize(0);
  network.target_limits.Resize(0);
}

}  // namespace

Status CheckShape(const Network& network) {
  if (network.nLayers < kMinLayers || network.nLayers > kMaxLayers) {
    return Status::Failure(kLayerCountOutOfRange);
  }
  if (network.layers[0].nUnits < 1) return Status::Failure(kInputNodesInvalid);
  if (OutputLayer(network).nUnits < 1) return Status::Failure(kOutputNodesInvalid);
  for (int32_t l = 1; l < network.nLayers - 1; ++l) {
    if (network.layers[static_cast<size_t>(l)].nUnits < 1) {
      return Status::Failure(fmt::sprintf(kHiddenNodesInvalid.data(), l));
    }
  }
  constexpr int64_t kMost = std::numeric_limits<int32_t>::max();
  // The bytes first: counts that no memory could hold would overflow the sums behind them.
  if (BytesNeeded(network) > static_cast<double>(PhysicalMemory()) ||
      ConnectionCount(network) > kMost || NodeCount(network) > kMost) {
    return Status::Failure(kOutOfMemory);
  }
  return {};
}

Status AllocateArrays(Network& network) {
  FreeArrays(network);
  Status shape = CheckShape(network);
  if (!shape.ok()) return shape;
  try {
    for (int32_t l = 0; l < network.nLayers; ++l) AllocateLayer(network, l);
    const size_t outputs = Nodes(network, network.nLayers - 1);
    if (HasTargets(network)) {
      network.targets.Resize(static_cast<size_t>(network.nPats), outputs);
    }
    network.input_limits.Resize(Nodes(network, 0));
    network.target_limits.Resize(outputs);
  } catch (const std::bad_alloc&) {
    FreeArrays(network);
    return Status::Failure(kOutOfMemory);
  }
  ConnectFully(network);
  return {};
}

void InitializeRandomWeights(Network& network, uint32_t seed) {
  constexpr double kSpread = 0.3;
  Random random(seed);
  for (int32_t l = 1; l < network.nLayers; ++l) {
    Layer& layer = network.layers[static_cast<size_t>(l)];
    for (float& weight : layer.weights.All()) {
      const double r = random.Next();
      weight = static_cast<float>((1.0 - r * 2.0 / Random::kLargest) * kSpread);
    }
    std::ranges::fill(layer.weight_changes.All(), 0.0F);
  }
}

void ClearRemovedWeights(Network& network) {
  if (network.fully_connected) return;
  for (size_t l = 1; l < static_cast<size_t>(network.nLayers); ++l) {
    Layer& layer = network.layers[l];
    for (size_t j = 0; j < layer.masks.rows(); ++j) {
      for (size_t k = 0; k < layer.masks.columns(); ++k) {
        if (layer.masks.Row(j)[k] == 0.0F) layer.weights.Row(j)[k] = 0.0F;
      }
    }
  }
}

void ConnectFully(Network& network) {
  for (Layer& layer : network.layers) std::ranges::fill(layer.masks.All(), 1.0F);
  network.fully_connected = true;
}

int64_t ConnectionCount(const Network& network) {
  int64_t count = 0;
  for (size_t l = 1; l < static_cast<size_t>(network.nLayers); ++l) {
    const int64_t previous = network.layers[l - 1].nUnits;
    count += (previous + 1) * network.layers[l].nUnits;
  }
  return count;
}

int64_t NodeCount(const Network& network) {
  int64_t count = 0;
  for (size_t l = 0; l < static_cast<size_t>(network.nLayers); ++l) {
    count += network.layers[l].nUnits;
  }
  return count;
}

std::string_view TransferFunctionName(const Network& network) {
  const int32_t code = network.layers[1].TransFunc;
  for (size_t l = 2; l < static_cast<size_t>(network.nLayers); ++l) {
    if (network.layers[l].TransFunc != code) return "Hybrid";
  }
  return code >= 0 && static_cast<size_t>(code) < kTransferNames.size()
             ? kTransferNames[static_cast<size_t>(code)]
             : "Hybrid";
}

}  // namespace tarn
