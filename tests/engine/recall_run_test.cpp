#include "engine/recall_run.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <vector>

#include "engine/small_network.h"
#include "reference/exponential.h"

namespace tarn {
namespace {

Network RecallNetwork(const std::vector<int32_t>& nodes, const std::vector<int32_t>& codes,
                      int32_t patterns) {
  Network network = MakeNetwork(nodes, codes, patterns);
  network.mode = Mode::kRecall;
  EXPECT_TRUE(AllocateArrays(network).ok());
  FillWithRandomData(network, 21);
  InitializeRandomWeights(network, 22);
  return network;
}

// With the sum as it is usually written, bias first; the engine negates it, with the same bits.
float NodeOutput(int32_t code, const Network& network, size_t l, size_t pattern, size_t node) {
  const auto weights = network.layers[l].weights.Row(node);
  const auto inputs = network.layers[l - 1].activations.Row(pattern);
  float sum = weights.back();
  for (size_t i = 0; i < inputs.size(); ++i) {
    const float product = weights[i] * inputs[i];
    sum = sum + product;
  }
  switch (code) {
    case 0:
      return 1.0F / (1.0F + static_cast<float>(reference::Exp(-sum)));
    case 1: {
      const float square = sum * sum;
      return static_cast<float>(reference::Exp(-square));
    }
    case 2:
      return (static_cast<float>(reference::Tanh(sum)) + 1.0F) * 0.5F;
    default:
      return 1.0F / static_cast<float>(reference::Cosh(sum));
  }
}

TEST(RecallRun, FillsEveryComputedLayerForEveryPattern) {
  Network network = RecallNetwork({3, 5, 4, 4, 2}, {kSigmoid, kGaussian, kTanh, kSech}, 6);
  EXPECT_TRUE(RunRecall(network).ok());
  for (size_t l = 1; l <= 4; ++l) {
    for (size_t p = 0; p < 6; ++p) {
      const auto outputs = network.layers[l].activations.Row(p);
      for (size_t j = 0; j < outputs.size(); ++j) {
        const float expected = NodeOutput(static_cast<int32_t>(l) - 1, network, l, p, j);
        ASSERT_EQ(Bits(outputs[j]), Bits(expected)) << l << ", " << p << ", " << j;
      }
    }
  }
}

TEST(RecallRun, NeverChangesTheInputs) {
  Network network = RecallNetwork({3, 2, 1}, {kSigmoid}, 4);
  const std::vector<float> before(network.layers[0].activations.All().begin(),
                                  network.layers[0].activations.All().end());
  EXPECT_TRUE(RunRecall(network).ok());
  EXPECT_TRUE(std::ranges::equal(network.layers[0].activations.All(), before));
}

TEST(RecallRun, SetsTheCounterToFiveAndTheTestFiguresToZero) {
  Network network = RecallNetwork({2, 2, 1}, {kSigmoid}, 2);
  network.iteration = 700;
  network.rms_test = 0.5F;
  network.correlation_test = 0.25F;
  network.rms_train = 0.125F;
  network.correlation_train = 0.75F;
  network.results_ready = false;
  EXPECT_TRUE(RunRecall(network).ok());
  EXPECT_EQ(network.iteration, 5);
  EXPECT_EQ(network.rms_test, 0.0F);
  EXPECT_EQ(network.correlation_test, 0.0F);
  EXPECT_EQ(network.rms_train, 0.125F);
  EXPECT_EQ(network.correlation_train, 0.75F);
  EXPECT_TRUE(network.results_ready);
}

TEST(RecallRun, NeedsNoTargets) {
  Network network = RecallNetwork({2, 2, 1}, {kSech}, 3);
  EXPECT_EQ(network.targets.rows(), 0U);
  EXPECT_TRUE(RunRecall(network).ok());
  for (float y : network.layers[2].activations.All()) EXPECT_GT(y, 0.0F);
}

TEST(RecallRun, MultipliesTheWeightsOfRemovedConnections) {
  Network whole = RecallNetwork({3, 3, 1}, {kTanh}, 3);
  Network cut = whole;
  std::ranges::fill(cut.layers[1].masks.All(), 0.0F);
  cut.fully_connected = false;
  EXPECT_TRUE(RunRecall(whole).ok());
  EXPECT_TRUE(RunRecall(cut).ok());
  EXPECT_TRUE(
      std::ranges::equal(whole.layers[2].activations.All(), cut.layers[2].activations.All()));
}

TEST(RecallRun, ALayerOfUnknownCodeKeepsItsActivations) {
  Network network = RecallNetwork({2, 2, 1}, {kSigmoid, 4}, 2);
  std::ranges::fill(network.layers[2].activations.All(), 0.375F);
  EXPECT_TRUE(RunRecall(network).ok());
  for (float y : network.layers[2].activations.All()) EXPECT_EQ(y, 0.375F);
  for (float y : network.layers[1].activations.All()) EXPECT_NE(y, 0.0F);
}

TEST(RecallRun, ChangesNoWeightsAndNoDerivatives) {
  Network network = RecallNetwork({2, 2, 1}, {kSigmoid}, 2);
  const Network before = network;
  EXPECT_TRUE(RunRecall(network).ok());
  for (size_t l = 1; l <= 2; ++l) {
    EXPECT_TRUE(
        std::ranges::equal(network.layers[l].weights.All(), before.layers[l].weights.All()));
    EXPECT_EQ(network.layers[l].derivatives, before.layers[l].derivatives);
  }
}

TEST(RecallRun, OverflowsSaturate) {
  for (int32_t code : {kSigmoid, kGaussian, kTanh, kSech}) {
    Network network = RecallNetwork({1, 1, 1}, {code}, 2);
    network.layers[0].activations.All()[0] = 1.0F;
    network.layers[0].activations.All()[1] = -1.0F;
    network.layers[1].weights.All()[0] = 3e38F;
    EXPECT_TRUE(RunRecall(network).ok());
    for (float y : network.layers[1].activations.All()) EXPECT_TRUE(y == 0.0F || y == 1.0F) << y;
    for (float y : network.layers[2].activations.All()) EXPECT_FALSE(std::isnan(y));
  }
}

TEST(RecallRun, NoPatternsAreNothingToCompute) {
  Network network = RecallNetwork({2, 2, 1}, {kSigmoid}, 0);
  EXPECT_TRUE(RunRecall(network).ok());
  EXPECT_TRUE(network.results_ready);
  EXPECT_EQ(network.iteration, 5);
}

}  // namespace
}  // namespace tarn
