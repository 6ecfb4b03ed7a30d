#include "engine/network.h"

#include <algorithm>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <new>
#include <string>
#include <vector>

#include "engine/small_network.h"

namespace tarn {
namespace {

constexpr int32_t kMost = std::numeric_limits<int32_t>::max();
constexpr int32_t kLeast = std::numeric_limits<int32_t>::min();

Network Shaped(const std::vector<int32_t>& nodes) {
  Network network;
  network.nLayers = static_cast<int32_t>(nodes.size());
  for (size_t l = 0; l < nodes.size(); ++l) network.layers[l].nUnits = nodes[l];
  return network;
}

std::string ShapeMessage(const std::vector<int32_t>& nodes) {
  return CheckShape(Shaped(nodes)).message();
}

TEST(CheckShape, AcceptsThreeToTenLayers) {
  EXPECT_TRUE(CheckShape(Shaped({1, 1, 1})).ok());
  EXPECT_TRUE(CheckShape(Shaped({1, 2, 3, 4, 5, 6, 7, 8, 9, 10})).ok());
}

TEST(CheckShape, RefusesAnyOtherLayerCount) {
  for (int32_t layers : {kLeast, -1, 0, 1, 2, 11, kMost}) {
    Network network = Shaped({1, 1, 1});
    network.nLayers = layers;
    EXPECT_EQ(CheckShape(network).message(), "Set number of network layers between 3 and 10")
        << layers;
  }
}

TEST(CheckShape, RefusesALayerWithoutNodes) {
  for (int32_t nodes : {0, -1, kLeast}) {
    EXPECT_EQ(ShapeMessage({nodes, 1, 1}), "Invalid value for input node count");
    EXPECT_EQ(ShapeMessage({1, 1, nodes}), "Invalid value for output node count");
    EXPECT_EQ(ShapeMessage({1, nodes, 1}), "Hidden layer 1 has an invalid node count");
    EXPECT_EQ(ShapeMessage({1, 2, nodes, 1}), "Hidden layer 2 has an invalid node count");
  }
}

TEST(CheckShape, NamesTheInputThenTheOutputThenTheFirstHiddenLayer) {
  EXPECT_EQ(ShapeMessage({0, 0, 0, 0}), "Invalid value for input node count");
  EXPECT_EQ(ShapeMessage({1, 0, 0, 0}), "Invalid value for output node count");
  EXPECT_EQ(ShapeMessage({1, 0, 0, 1}), "Hidden layer 1 has an invalid node count");
}

TEST(CheckShape, AnswersAbsurdCountsInAnyLayersWithoutAllocating) {
  for (size_t layers : {3U, 10U}) {
    for (size_t absurd = 1; absurd < (1U << layers); ++absurd) {
      std::vector<int32_t> nodes(layers, 1);
      for (size_t l = 0; l < layers; ++l) {
        if ((absurd >> l & 1U) != 0) nodes[l] = kMost;
      }
      Network network = Shaped(nodes);
      network.nPats = kMost;
      const Status status = AllocateArrays(network);
      EXPECT_FALSE(status.ok());
      EXPECT_EQ(status.message(), "Tarn has run out of memory!") << absurd;
      for (const Layer& layer : network.layers) EXPECT_EQ(layer.weights.All().size(), 0U);
      network.nPats = 0;
      EXPECT_EQ(CheckShape(network).message(), kOutOfMemory) << absurd;
    }
  }
}

TEST(AllocateArrays, GivesEveryArrayItsShape) {
  Network network = MakeNetwork({2, 3, 1}, {kSigmoid}, 4);
  const Layer& input = network.layers[0];
  EXPECT_EQ(input.activations.rows(), 4U);
  EXPECT_EQ(input.activations.columns(), 2U);
  EXPECT_EQ(input.deltas, std::vector<float>(2, 0.0F));
  for (size_t l = 1; l <= 2; ++l) {
    const Layer& layer = network.layers[l];
    const size_t nodes = static_cast<size_t>(layer.nUnits);
    const size_t below = static_cast<size_t>(network.layers[l - 1].nUnits);
    EXPECT_EQ(layer.activations.rows(), 4U);
    EXPECT_EQ(layer.activations.columns(), nodes);
    EXPECT_EQ(layer.weights.rows(), nodes);
    EXPECT_EQ(layer.weights.columns(), below + 1);
    EXPECT_EQ(layer.weight_changes.columns(), below + 1);
    EXPECT_EQ(layer.masks.columns(), below);
    EXPECT_EQ(layer.derivatives.size(), nodes);
    EXPECT_EQ(layer.deltas.size(), nodes);
    for (float mask : layer.masks.All()) EXPECT_EQ(mask, 1.0F);
  }
  EXPECT_EQ(network.targets.rows(), 4U);
  EXPECT_EQ(network.targets.columns(), 1U);
  EXPECT_EQ(network.input_limits.lower.size(), 2U);
  EXPECT_EQ(network.target_limits.upper.size(), 1U);
  EXPECT_TRUE(network.fully_connected);
}

TEST(AllocateArrays, ALayerOfOneNodeHasRowsLikeAnyOther) {
  const Network network = MakeNetwork({7, 1, 2}, {kSigmoid}, 1);
  EXPECT_EQ(network.layers[1].weights.Row(0).size(), 8U);
  EXPECT_EQ(network.layers[2].weights.Row(1).size(), 2U);
}

TEST(AllocateArrays, HasTargetsInTrainingAndInRecallOnlyWhenTheyAreGiven) {
  Network network = Shaped({1, 1, 1});
  network.nPats = 2;
  EXPECT_TRUE(AllocateArrays(network).ok());
  EXPECT_EQ(network.targets.rows(), 2U);
  network.mode = Mode::kRecall;
  EXPECT_TRUE(AllocateArrays(network).ok());
  EXPECT_EQ(network.targets.rows(), 0U);
  network.RecallTargets = true;
  EXPECT_TRUE(AllocateArrays(network).ok());
  EXPECT_EQ(network.targets.rows(), 2U);
}

TEST(RandomWeights, FollowTheGeneratorInOrderOfLayersNodesAndSources) {
  Network network = MakeNetwork({2, 3, 1}, {kSigmoid}, 1);
  for (size_t l = 1; l <= 2; ++l) {
    std::ranges::fill(network.layers[l].weight_changes.All(), 0.5F);
  }
  InitializeRandomWeights(network, 1234);
  uint32_t state = 1234;
  for (size_t l = 1; l <= 2; ++l) {
    for (size_t j = 0; j < network.layers[l].weights.rows(); ++j) {
      for (float weight : network.layers[l].weights.Row(j)) {
        state = state * 214013U + 2531011U;
        const double r = (state >> 16) & 0x7FFFU;
        EXPECT_EQ(Bits(weight), Bits(static_cast<float>((1 - r * 2 / 32767) * 0.3)));
        EXPECT_LE(weight, 0.3F);
        EXPECT_GE(weight, -0.3F);
      }
    }
    for (float change : network.layers[l].weight_changes.All()) EXPECT_EQ(Bits(change), Bits(0.0F));
  }
}

TEST(RandomWeights, TheSameSeedGivesTheSameWeights) {
  Network first = MakeNetwork({3, 4, 2}, {kSigmoid}, 1);
  Network second = first;
  Network other = first;
  InitializeRandomWeights(first, 99);
  InitializeRandomWeights(second, 99);
  InitializeRandomWeights(other, 100);
  EXPECT_TRUE(std::ranges::equal(first.layers[1].weights.All(), second.layers[1].weights.All()));
  EXPECT_FALSE(std::ranges::equal(first.layers[1].weights.All(), other.layers[1].weights.All()));
}

TEST(ConnectFully, RestoresEveryMaskAndTheMark) {
  Network network = MakeNetwork({2, 3, 1}, {kSigmoid}, 1);
  network.layers[1].masks.Row(2)[1] = 0.0F;
  network.fully_connected = false;
  ConnectFully(network);
  EXPECT_TRUE(network.fully_connected);
  for (float mask : network.layers[1].masks.All()) EXPECT_EQ(mask, 1.0F);
}

TEST(NetworkCounts, CountBiasWeightsAndRemovedConnections) {
  Network network = MakeNetwork({4, 8, 3}, {kSigmoid}, 1);
  EXPECT_EQ(ConnectionCount(network), 5 * 8 + 9 * 3);
  EXPECT_EQ(NodeCount(network), 15);
  network.layers[1].masks.Row(0)[0] = 0.0F;
  network.fully_connected = false;
  EXPECT_EQ(ConnectionCount(network), 67);
}

TEST(TransferFunctionName, IsTheNameThatAllComputedLayersShare) {
  Network network = Shaped({1, 1, 1, 1});
  for (int32_t code : {kSigmoid, kGaussian, kTanh, kSech}) {
    for (size_t l = 1; l <= 3; ++l) network.layers[l].TransFunc = code;
    network.layers[0].TransFunc = kSech - code;
    EXPECT_EQ(TransferFunctionName(network), kTransferNames[static_cast<size_t>(code)]);
  }
  EXPECT_EQ(TransferFunctionName(network), "Sech");
}

TEST(TransferFunctionName, IsHybridForAnyTwoCodes) {
  for (int32_t first : {kSigmoid, kGaussian, kTanh, kSech}) {
    for (int32_t second : {kSigmoid, kGaussian, kTanh, kSech}) {
      if (first == second) continue;
      for (size_t odd = 1; odd <= 3; ++odd) {
        Network network = Shaped({1, 1, 1, 1});
        for (size_t l = 1; l <= 3; ++l) network.layers[l].TransFunc = l == odd ? second : first;
        EXPECT_EQ(TransferFunctionName(network), "Hybrid");
      }
    }
  }
}

TEST(TransferFunctionName, IgnoresTheLayersThatAreNotInUse) {
  Network network = Shaped({1, 1, 1});
  network.layers[3].TransFunc = kSech;
  EXPECT_EQ(TransferFunctionName(network), "Sigmoid");
}

TEST(TransferFunctionName, IsHybridForACodeThatIsNoneOfTheFour) {
  Network network = Shaped({1, 1, 1});
  for (int32_t code : {-1, 4, kMost, kLeast}) {
    network.layers[1].TransFunc = code;
    network.layers[2].TransFunc = code;
    EXPECT_EQ(TransferFunctionName(network), "Hybrid");
  }
}

TEST(Matrix, RefusesAProductThatWouldWrapAround) {
  constexpr size_t kHalf = std::numeric_limits<size_t>::max() / 2 + 1;
  Matrix matrix;
  matrix.Resize(2, 3);
  EXPECT_THROW(matrix.Resize(kHalf, 2), std::bad_alloc);
  EXPECT_THROW(matrix.Resize(2, kHalf), std::bad_alloc);
  EXPECT_THROW(matrix.Resize(kHalf, 1), std::bad_alloc);
  EXPECT_EQ(matrix.rows(), 2U);
  EXPECT_EQ(matrix.columns(), 3U);
  matrix.Resize(kHalf, 0);
  EXPECT_TRUE(matrix.All().empty());
}

}  // namespace
}  // namespace tarn
