#include <algorithm>
#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <vector>

#include "engine/small_network.h"
#include "reference/exponential.h"
#include "reference/plain_loops.h"

namespace tarn::reference {
namespace {

float Sigmoid(float negated_net) {
  return 1.0F / (static_cast<float>(Exp(negated_net)) + 1.0F);
}

TEST(Forward, StartsFromTheNegatedBiasAndSubtractsInAscendingOrder) {
  Network network = MakeNetwork({3, 1, 1}, {kSigmoid}, 1);
  // Sums that come out different in another order, or with products left unrounded.
  std::ranges::copy(std::vector{0.3F, 0.7F, 16777216.0F},
                    network.layers[0].activations.All().begin());
  std::ranges::copy(std::vector{0.1F, 1.0F / 3.0F, 1.0e-8F, -0.9F},
                    network.layers[1].weights.All().begin());
  ForwardWithDerivatives(network, 0);

  float x = 0.9F;
  const float first = 0.1F * 0.3F;
  x = x - first;
  const float second = (1.0F / 3.0F) * 0.7F;
  x = x - second;
  const float third = 1.0e-8F * 16777216.0F;
  x = x - third;
  const float y = Sigmoid(x);
  EXPECT_EQ(Bits(network.layers[1].activations.Row(0)[0]), Bits(y));
  EXPECT_EQ(Bits(network.layers[1].derivatives[0]), Bits((1.0F - y) * y));
}

TEST(Forward, FeedsEachLayerFromTheOneBelow) {
  Network network = MakeNetwork({1, 1, 1, 1}, {kSigmoid}, 1);
  network.layers[0].activations.All()[0] = 0.4F;
  for (size_t l = 1; l <= 3; ++l) {
    network.layers[l].weights.All()[0] = 0.5F * static_cast<float>(l);
    network.layers[l].weights.All()[1] = -0.25F;
  }
  Forward(network, 0);
  const float a = Sigmoid(0.25F - 0.5F * 0.4F);
  const float b = Sigmoid(0.25F - 1.0F * a);
  const float c = Sigmoid(0.25F - 1.5F * b);
  EXPECT_EQ(Bits(network.layers[1].activations.All()[0]), Bits(a));
  EXPECT_EQ(Bits(network.layers[2].activations.All()[0]), Bits(b));
  EXPECT_EQ(Bits(network.layers[3].activations.All()[0]), Bits(c));
}

TEST(Forward, ZeroWeightsGiveTheOutputAtZero) {
  const std::vector<float> expected = {0.5F, 1.0F, 0.5F, 1.0F};
  for (int32_t code : {kSigmoid, kGaussian, kTanh, kSech}) {
    Network network = MakeNetwork({2, 3, 2}, {code}, 1);
    FillWithRandomData(network, 1);
    Forward(network, 0);
    for (size_t l = 1; l <= 2; ++l) {
      for (float y : network.layers[l].activations.Row(0)) {
        EXPECT_EQ(y, expected[static_cast<size_t>(code)]);
      }
    }
  }
}

TEST(Forward, AVeryLargeNetInputSaturatesTheSigmoid) {
  Network network = MakeNetwork({1, 2, 1}, {kSigmoid}, 1);
  network.layers[0].activations.All()[0] = 1.0F;
  network.layers[1].weights.Row(0)[0] = 1e30F;
  network.layers[1].weights.Row(1)[0] = -1e30F;
  ForwardWithDerivatives(network, 0);
  EXPECT_EQ(network.layers[1].activations.Row(0)[0], 1.0F);
  EXPECT_EQ(network.layers[1].activations.Row(0)[1], 0.0F);
  EXPECT_EQ(network.layers[1].derivatives[0], 0.0F);
  EXPECT_EQ(network.layers[1].derivatives[1], 0.0F);
}

TEST(Forward, UsesEachLayersOwnTransferFunction) {
  Network network = MakeNetwork({1, 1, 1}, {kGaussian, kSech}, 1);
  network.layers[0].activations.All()[0] = 1.0F;
  network.layers[1].weights.All()[0] = 0.5F;
  network.layers[2].weights.All()[0] = 2.0F;
  Forward(network, 0);
  const float gaussian = static_cast<float>(Exp(-0.25));
  const float sech = 1.0F / static_cast<float>(Cosh(2.0F * gaussian));
  EXPECT_EQ(Bits(network.layers[1].activations.All()[0]), Bits(gaussian));
  EXPECT_EQ(Bits(network.layers[2].activations.All()[0]), Bits(sech));
}

TEST(Forward, ARemovedConnectionTakesPartWithItsWeight) {
  Network network = MakeNetwork({2, 2, 1}, {kSigmoid}, 1);
  FillWithRandomData(network, 3);
  InitializeRandomWeights(network, 3);
  Forward(network, 0);
  const float whole = network.layers[2].activations.All()[0];
  std::ranges::fill(network.layers[1].masks.All(), 0.0F);
  network.fully_connected = false;
  Forward(network, 0);
  EXPECT_EQ(Bits(network.layers[2].activations.All()[0]), Bits(whole));
}

TEST(Forward, WithoutDerivativesWritesActivationsOnly) {
  Network network = MakeNetwork({2, 3, 2}, {kTanh}, 2);
  FillWithRandomData(network, 5);
  InitializeRandomWeights(network, 5);
  for (size_t l = 1; l <= 2; ++l) std::ranges::fill(network.layers[l].derivatives, 9.0F);
  Forward(network, 1);
  for (size_t l = 1; l <= 2; ++l) {
    for (float derivative : network.layers[l].derivatives) EXPECT_EQ(derivative, 9.0F);
    for (float y : network.layers[l].activations.Row(0)) EXPECT_EQ(y, 0.0F);
    for (float y : network.layers[l].activations.Row(1)) EXPECT_GT(y, 0.0F);
  }
}

TEST(Forward, InputsAreUsedAsTheyStand) {
  Network network = MakeNetwork({2, 2, 1}, {kSigmoid}, 1);
  network.layers[0].TransFunc = kSech;
  network.layers[0].activations.All()[0] = -3.5F;
  network.layers[0].activations.All()[1] = 40.0F;
  ForwardWithDerivatives(network, 0);
  EXPECT_EQ(network.layers[0].activations.All()[0], -3.5F);
  EXPECT_EQ(network.layers[0].activations.All()[1], 40.0F);
}

TEST(Forward, ALayerOfUnknownCodeKeepsItsActivations) {
  Network network = MakeNetwork({1, 2, 1}, {7, kSigmoid}, 1);
  network.layers[1].activations.All()[0] = 0.125F;
  network.layers[1].derivatives[0] = 0.5F;
  network.layers[2].weights.All()[0] = -1.0F;
  ForwardWithDerivatives(network, 0);
  EXPECT_EQ(network.layers[1].activations.All()[0], 0.125F);
  EXPECT_EQ(network.layers[1].derivatives[0], 0.5F);
  EXPECT_EQ(network.layers[2].activations.All()[0], Sigmoid(0.125F));
}

TEST(Forward, ComputesEveryNodeOfALayerOfAnyWidth) {
  for (int32_t width : {1, 255, 256, 257, 512, 700}) {
    Network network = MakeNetwork({1, width, 1}, {kSigmoid}, 1);
    network.layers[0].activations.All()[0] = 1.0F;
    for (size_t j = 0; j < static_cast<size_t>(width); ++j) {
      network.layers[1].weights.Row(j)[0] = static_cast<float>(j) / 1024.0F;
    }
    ForwardWithDerivatives(network, 0);
    for (size_t j = 0; j < static_cast<size_t>(width); ++j) {
      const float y = Sigmoid(0.0F - static_cast<float>(j) / 1024.0F);
      ASSERT_EQ(Bits(network.layers[1].activations.Row(0)[j]), Bits(y)) << width << ", " << j;
      ASSERT_EQ(Bits(network.layers[1].derivatives[j]), Bits((1.0F - y) * y)) << width;
    }
  }
}

}  // namespace
}  // namespace tarn::reference
