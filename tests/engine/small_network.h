#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <numeric>
#include <vector>

#include "base/random.h"
#include "engine/network.h"

namespace tarn {

// A network with its arrays allocated, everything 0 and every pattern a training pattern. One
// transfer code for all computed layers, or one each.
inline Network MakeNetwork(const std::vector<int32_t>& nodes, const std::vector<int32_t>& codes,
                           int32_t patterns) {
  Network network;
  network.nLayers = static_cast<int32_t>(nodes.size());
  for (size_t l = 0; l < nodes.size(); ++l) {
    Layer& layer = network.layers[l];
    layer.nUnits = nodes[l];
    if (l == 0) continue;
    layer.TransFunc = codes.size() == 1 ? codes[0] : codes[l - 1];
    layer.role = l + 1 < nodes.size() ? LayerRole::kHidden : LayerRole::kOutput;
    layer.computed = true;
  }
  network.nPats = patterns;
  network.nTrain = patterns;
  network.train_list.resize(static_cast<size_t>(patterns));
  std::iota(network.train_list.begin(), network.train_list.end(), 0);
  network.EtaMax = 1.0F;
  network.LRC = 1000000;
  const Status status = AllocateArrays(network);
  EXPECT_TRUE(status.ok()) << status.message();
  return network;
}

// 0.15..0.85, the range of normalized data.
inline void FillWithRandomData(Network& network, uint32_t seed) {
  Random random(seed);
  for (Matrix* matrix : {&network.layers[0].activations, &network.targets}) {
    for (float& value : matrix->All()) {
      value = 0.15F + 0.7F * static_cast<float>(random.Next()) / 32767.0F;
    }
  }
}

// Holds back the last patterns as the test set.
inline void HoldBack(Network& network, int32_t patterns) {
  network.testPats = patterns;
  network.nTrain = network.nPats - patterns;
  network.train_list.resize(static_cast<size_t>(network.nTrain));
  network.test_list.resize(static_cast<size_t>(patterns));
  std::iota(network.test_list.begin(), network.test_list.end(), network.nTrain);
}

// One connection of every node.
inline void RemoveConnections(Network& network) {
  network.fully_connected = false;
  for (size_t l = 1; l < static_cast<size_t>(network.nLayers); ++l) {
    Matrix& masks = network.layers[l].masks;
    for (size_t j = 0; j < masks.rows(); ++j) masks.Row(j)[j % masks.columns()] = 0.0F;
  }
}

// As two floats are compared here: by their bits.
inline uint32_t Bits(float value) {
  return std::bit_cast<uint32_t>(value);
}
inline uint64_t Bits(double value) {
  return std::bit_cast<uint64_t>(value);
}

}  // namespace tarn
