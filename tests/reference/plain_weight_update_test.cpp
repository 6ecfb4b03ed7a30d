#include <algorithm>
#include <cstdint>
#include <gtest/gtest.h>
#include <utility>
#include <vector>

#include "engine/small_network.h"
#include "reference/plain_loops.h"
#include "reference/plain_reference.h"

namespace tarn::reference {
namespace {

// A 2-2-1 network with values of its own in every place that one pattern's step reads.
Network HandNetwork() {
  Network network = MakeNetwork({2, 2, 1}, {kSigmoid}, 1);
  std::ranges::copy(std::vector{0.3F, 0.7F}, network.layers[0].activations.All().begin());
  std::ranges::copy(std::vector{0.6F, 0.2F}, network.layers[1].activations.All().begin());
  network.layers[2].activations.All()[0] = 0.45F;
  network.targets.All()[0] = 0.8F;
  std::ranges::copy(std::vector{0.24F, 0.16F}, network.layers[1].derivatives.begin());
  network.layers[2].derivatives[0] = 0.2475F;
  std::ranges::copy(std::vector{1.1F, -0.4F, 5.0F}, network.layers[2].weights.All().begin());
  return network;
}

void RunGroup(Network& network, const std::vector<int32_t>& patterns) {
  GradientSums sums;
  ClearGradients(network, sums);
  for (int32_t p : patterns) {
    ForwardWithDerivatives(network, p);
    Backpropagate(network, p);
    AccumulateGradients(network, sums, p);
  }
  UpdateWeights(network, sums);
}

Network TrainableNetwork(const std::vector<int32_t>& nodes, const std::vector<int32_t>& codes,
                         int32_t patterns) {
  Network network = MakeNetwork(nodes, codes, patterns);
  FillWithRandomData(network, 11);
  InitializeRandomWeights(network, 12);
  network.Eta = 0.3F;
  network.Alpha = 0.8F;
  network.FastProp = 0.7F;
  return network;
}

void Remove(Network& network, size_t layer, size_t node, size_t source) {
  network.layers[layer].masks.Row(node)[source] = 0.0F;
  network.fully_connected = false;
}

TEST(Backpropagate, OutputDeltaIsTheErrorTimesTheDerivative) {
  Network network = HandNetwork();
  Backpropagate(network, 0);
  const float error = 0.8F - 0.45F;
  EXPECT_EQ(Bits(network.layers[2].deltas[0]), Bits(error * 0.2475F));
}

TEST(Backpropagate, HiddenDeltasSumOverTheNodesAboveInOrderAndLeaveTheBiasOut) {
  Network network = MakeNetwork({1, 2, 3}, {kSigmoid}, 1);
  std::ranges::copy(std::vector{0.9F, 0.1F, 0.5F}, network.targets.All().begin());
  std::ranges::copy(std::vector{0.2F, 0.7F, 0.4F}, network.layers[2].activations.All().begin());
  std::ranges::copy(std::vector{0.16F, 0.21F, 0.24F}, network.layers[2].derivatives.begin());
  std::ranges::copy(std::vector{0.25F, 0.125F}, network.layers[1].derivatives.begin());
  std::ranges::copy(std::vector{1.1F, -0.3F, 50.0F, 0.7F, 0.9F, 60.0F, -0.2F, 1.3F, 70.0F},
                    network.layers[2].weights.All().begin());
  Backpropagate(network, 0);

  const float d0 = (0.9F - 0.2F) * 0.16F;
  const float d1 = (0.1F - 0.7F) * 0.21F;
  const float d2 = (0.5F - 0.4F) * 0.24F;
  float first = d0 * 1.1F;
  first = first + d1 * 0.7F;
  first = first + d2 * -0.2F;
  float second = d0 * -0.3F;
  second = second + d1 * 0.9F;
  second = second + d2 * 1.3F;
  EXPECT_EQ(Bits(network.layers[1].deltas[0]), Bits(first * 0.25F));
  EXPECT_EQ(Bits(network.layers[1].deltas[1]), Bits(second * 0.125F));
  EXPECT_EQ(Bits(network.layers[0].deltas[0]), Bits(0.0F));
}

TEST(Backpropagate, RemovedConnectionsTakePart) {
  Network whole = HandNetwork();
  Network cut = HandNetwork();
  Remove(cut, 2, 0, 0);
  Backpropagate(whole, 0);
  Backpropagate(cut, 0);
  EXPECT_NE(whole.layers[1].deltas[0], 0.0F);
  EXPECT_EQ(Bits(cut.layers[1].deltas[0]), Bits(whole.layers[1].deltas[0]));
}

TEST(Backpropagate, ReplacesTheDeltasOfThePatternBefore) {
  Network network = HandNetwork();
  Backpropagate(network, 0);
  const float delta = network.layers[1].deltas[0];
  Backpropagate(network, 0);
  EXPECT_EQ(Bits(network.layers[1].deltas[0]), Bits(delta));
}

TEST(Gradients, AddTheSourceActivationTimesTheDelta) {
  Network network = HandNetwork();
  GradientSums sums;
  ClearGradients(network, sums);
  Backpropagate(network, 0);
  AccumulateGradients(network, sums, 0);
  AccumulateGradients(network, sums, 0);
  const float delta = network.layers[2].deltas[0];
  const float product = 0.6F * delta;
  EXPECT_EQ(Bits(sums[2].weight_gradients.All()[0]), Bits(product + product));
  EXPECT_EQ(Bits(sums[2].bias_gradients[0]), Bits(delta + delta));
}

TEST(Gradients, FastPropAddsTheSourcesOwnDelta) {
  Network network = HandNetwork();
  network.FastProp = 1.5F;
  GradientSums sums;
  ClearGradients(network, sums);
  Backpropagate(network, 0);
  AccumulateGradients(network, sums, 0);
  const float own = 1.5F * network.layers[1].deltas[1];
  const float source = own + 0.2F;
  const float product = source * network.layers[2].deltas[0];
  EXPECT_NE(own, 0.0F);
  EXPECT_EQ(Bits(sums[2].weight_gradients.All()[1]), Bits(product));
  EXPECT_EQ(Bits(sums[2].bias_gradients[0]), Bits(network.layers[2].deltas[0]));
}

TEST(Gradients, FastPropHasNoEffectIntoTheFirstHiddenLayer) {
  Network plain = HandNetwork();
  Network fast = HandNetwork();
  fast.FastProp = 3.0F;
  GradientSums plain_sums;
  GradientSums fast_sums;
  for (auto [network, sums] : {std::pair(&plain, &plain_sums), std::pair(&fast, &fast_sums)}) {
    ClearGradients(*network, *sums);
    Backpropagate(*network, 0);
    AccumulateGradients(*network, *sums, 0);
  }
  for (size_t k = 0; k < 4; ++k) {
    EXPECT_NE(plain_sums[1].weight_gradients.All()[k], 0.0F);
    EXPECT_EQ(Bits(fast_sums[1].weight_gradients.All()[k]),
              Bits(plain_sums[1].weight_gradients.All()[k]));
  }
  EXPECT_NE(fast_sums[2].weight_gradients.All()[0], plain_sums[2].weight_gradients.All()[0]);
}

TEST(Gradients, ClearSetsEverySumToZero) {
  Network network = TrainableNetwork({3, 4, 2, 2}, {kTanh}, 2);
  GradientSums sums;
  ClearGradients(network, sums);
  ForwardWithDerivatives(network, 1);
  Backpropagate(network, 1);
  AccumulateGradients(network, sums, 1);
  EXPECT_NE(sums[3].bias_gradients[0], 0.0F);
  ClearGradients(network, sums);
  for (size_t l = 1; l <= 3; ++l) {
    for (float sum : sums[l].weight_gradients.All()) EXPECT_EQ(Bits(sum), Bits(0.0F));
    for (float sum : sums[l].bias_gradients) EXPECT_EQ(Bits(sum), Bits(0.0F));
  }
}

TEST(WeightUpdate, WithoutMomentumMovesByEtaTimesDeltaTimesActivation) {
  Network network = TrainableNetwork({2, 3, 2}, {kSigmoid}, 1);
  network.Alpha = 0.0F;
  network.FastProp = 0.0F;
  const Network before = network;
  RunGroup(network, {0});
  for (size_t l = 1; l <= 2; ++l) {
    const Layer& layer = network.layers[l];
    for (size_t j = 0; j < layer.deltas.size(); ++j) {
      const auto inputs = network.layers[l - 1].activations.Row(0);
      for (size_t i = 0; i < inputs.size(); ++i) {
        const float gradient = layer.deltas[j] * inputs[i];
        const float change = 0.3F * gradient;
        const float weight = before.layers[l].weights.Row(j)[i] + change;
        EXPECT_EQ(Bits(layer.weights.Row(j)[i]), Bits(weight));
        EXPECT_EQ(Bits(layer.weight_changes.Row(j)[i]), Bits(change));
      }
      const float bias = before.layers[l].weights.Row(j).back() + 0.3F * layer.deltas[j];
      EXPECT_EQ(Bits(layer.weights.Row(j).back()), Bits(bias));
    }
  }
}

TEST(WeightUpdate, MomentumScalesTheLastChange) {
  Network network = MakeNetwork({1, 1, 1}, {kSigmoid}, 1);
  network.Eta = 0.3F;
  network.Alpha = 0.9F;
  Layer& layer = network.layers[1];
  std::ranges::copy(std::vector{0.5F, -0.5F}, layer.weights.All().begin());
  std::ranges::copy(std::vector{0.07F, 0.03F}, layer.weight_changes.All().begin());
  GradientSums sums;
  ClearGradients(network, sums);
  sums[1].weight_gradients.All()[0] = 0.011F;
  sums[1].bias_gradients[0] = 0.013F;
  UpdateWeights(network, sums);

  const float momentum = 0.9F * 0.07F;
  const float step = 0.3F * 0.011F;
  const float change = momentum + step;
  EXPECT_EQ(Bits(layer.weight_changes.All()[0]), Bits(change));
  EXPECT_EQ(Bits(layer.weights.All()[0]), Bits(0.5F + change));
  const float bias_momentum = 0.9F * 0.03F;
  const float bias_step = 0.3F * 0.013F;
  const float bias_change = bias_momentum + bias_step;
  EXPECT_EQ(Bits(layer.weight_changes.All()[1]), Bits(bias_change));
  EXPECT_EQ(Bits(layer.weights.All()[1]), Bits(-0.5F + bias_change));
}

TEST(WeightUpdate, GradientSumsAreNotDividedByTheGroupSize) {
  Network network = MakeNetwork({1, 1, 1}, {kSigmoid}, 4);
  network.Eta = 0.5F;
  GradientSums sums;
  ClearGradients(network, sums);
  sums[2].weight_gradients.All()[0] = 4 * 0.25F;
  UpdateWeights(network, sums);
  EXPECT_EQ(network.layers[2].weights.All()[0], 0.5F);
}

TEST(WeightUpdate, ARemovedConnectionNeverMovesWhileItsMomentumGoesOn) {
  Network network = TrainableNetwork({3, 3, 2}, {kSigmoid}, 5);
  Remove(network, 1, 2, 0);
  Remove(network, 2, 1, 1);
  const float first = network.layers[1].weights.Row(2)[0];
  const float second = network.layers[2].weights.Row(1)[1];
  float last_change = 0.0F;
  for (int round = 0; round < 50; ++round) {
    RunGroup(network, {0, 1, 2, 3, 4});
    ASSERT_EQ(Bits(network.layers[1].weights.Row(2)[0]), Bits(first));
    ASSERT_EQ(Bits(network.layers[2].weights.Row(1)[1]), Bits(second));
    ASSERT_NE(network.layers[2].weight_changes.Row(1)[1], last_change);
    last_change = network.layers[2].weight_changes.Row(1)[1];
  }
}

TEST(WeightUpdate, AChangeOfARemovedConnectionIsTheSameFormula) {
  Network network = MakeNetwork({1, 1, 1}, {kSigmoid}, 1);
  Remove(network, 1, 0, 0);
  network.Eta = 0.3F;
  network.Alpha = 0.9F;
  network.layers[1].weights.All()[0] = 0.5F;
  network.layers[1].weight_changes.All()[0] = 0.07F;
  GradientSums sums;
  ClearGradients(network, sums);
  sums[1].weight_gradients.All()[0] = 0.011F;
  UpdateWeights(network, sums);
  const float momentum = 0.9F * 0.07F;
  const float step = 0.3F * 0.011F;
  EXPECT_EQ(Bits(network.layers[1].weight_changes.All()[0]), Bits(momentum + step));
  EXPECT_EQ(Bits(network.layers[1].weights.All()[0]), Bits(0.5F));
}

TEST(WeightUpdate, BiasesMoveWhenEveryConnectionIsRemoved) {
  Network network = TrainableNetwork({2, 2, 1}, {kSigmoid}, 1);
  for (size_t l = 1; l <= 2; ++l) std::ranges::fill(network.layers[l].masks.All(), 0.0F);
  network.fully_connected = false;
  const Network before = network;
  RunGroup(network, {0});
  for (size_t l = 1; l <= 2; ++l) {
    for (size_t j = 0; j < network.layers[l].weights.rows(); ++j) {
      const auto weights = network.layers[l].weights.Row(j);
      const auto old = before.layers[l].weights.Row(j);
      EXPECT_NE(weights.back(), old.back());
      for (size_t i = 0; i + 1 < weights.size(); ++i) EXPECT_EQ(Bits(weights[i]), Bits(old[i]));
    }
  }
}

TEST(WeightUpdate, TheMaskedLoopWithAllConnectionsGivesTheUnmaskedResult) {
  Network plain = TrainableNetwork({3, 4, 2}, {kGaussian}, 3);
  Network masked = plain;
  masked.fully_connected = false;
  for (int round = 0; round < 10; ++round) {
    RunGroup(plain, {0, 1, 2});
    RunGroup(masked, {0, 1, 2});
  }
  for (size_t l = 1; l <= 2; ++l) {
    for (size_t k = 0; k < plain.layers[l].weights.All().size(); ++k) {
      EXPECT_EQ(Bits(plain.layers[l].weights.All()[k]), Bits(masked.layers[l].weights.All()[k]));
    }
  }
}

TEST(WeightUpdate, MasksAreIgnoredWhileTheNetworkIsMarkedAsFullyConnected) {
  Network network = TrainableNetwork({2, 2, 1}, {kSigmoid}, 1);
  network.layers[2].masks.All()[0] = 0.0F;
  const float before = network.layers[2].weights.All()[0];
  RunGroup(network, {0});
  EXPECT_NE(network.layers[2].weights.All()[0], before);
}

// Groups that wrap around the end of the training list, as the training run forms them.
void RunIterations(Network& network, size_t groups, size_t group_size) {
  size_t cursor = 0;
  for (size_t g = 0; g < groups; ++g) {
    std::vector<int32_t> patterns;
    for (size_t k = 0; k < group_size; ++k) {
      patterns.push_back(network.train_list[cursor]);
      cursor = (cursor + 1) % network.train_list.size();
    }
    RunGroup(network, patterns);
  }
}

void ExpectSameWeights(const Network& network, const PlainTrainer& plain) {
  for (size_t l = 1; l < static_cast<size_t>(network.nLayers); ++l) {
    const Layer& layer = network.layers[l];
    for (size_t j = 0; j < layer.weights.rows(); ++j) {
      for (size_t i = 0; i < layer.weights.columns(); ++i) {
        ASSERT_EQ(Bits(layer.weights.Row(j)[i]), Bits(plain.layers()[l].weights[j][i]));
        ASSERT_EQ(Bits(layer.weight_changes.Row(j)[i]), Bits(plain.layers()[l].changes[j][i]));
      }
    }
  }
}

TEST(WeightUpdate, AgreesWithThePlainReferenceBitForBit) {
  struct Case {
    std::vector<int32_t> nodes;
    std::vector<int32_t> codes;
    bool removed;
  };
  const std::vector<Case> cases = {{{2, 2, 1}, {kSigmoid}, false},
                                   {{4, 8, 3}, {kTanh, kSigmoid}, true},
                                   {{5, 7, 6, 3}, {kGaussian, kSech, kSigmoid}, true},
                                   {{3, 4, 5, 4, 2}, {kSech, kTanh, kGaussian, kTanh}, false}};
  for (const Case& c : cases) {
    for (int32_t group : {1, 3, 7}) {
      Network network = TrainableNetwork(c.nodes, c.codes, 7);
      network.WeightRate = group;
      if (c.removed) Remove(network, 1, 0, 1);
      PlainTrainer plain(network);
      constexpr size_t kIterations = 21;  // whole groups of each size
      for (size_t k = 0; k < kIterations; ++k) plain.RunIteration();
      RunIterations(network, kIterations * 7 / static_cast<size_t>(group),
                    static_cast<size_t>(group));
      ExpectSameWeights(network, plain);
    }
  }
}

}  // namespace
}  // namespace tarn::reference
