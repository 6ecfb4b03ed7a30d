#include "engine/packed_network.h"

#include <algorithm>
#include <cstdint>
#include <gtest/gtest.h>
#include <span>
#include <string>
#include <vector>

#include "engine/kernels/targets.h"
#include "engine/small_network.h"
#include "reference/plain_loops.h"

namespace tarn {
namespace {

using Use = PackedNetwork::Use;

Network Trainable(const std::vector<int32_t>& nodes, const std::vector<int32_t>& codes,
                  int32_t patterns, bool removed) {
  Network network = MakeNetwork(nodes, codes, patterns);
  FillWithRandomData(network, 11);
  InitializeRandomWeights(network, 12);
  network.Eta = 0.3F;
  network.Alpha = 0.8F;
  network.FastProp = 0.7F;
  if (removed) RemoveConnections(network);
  return network;
}

void ExpectSame(std::span<const float> got, std::span<const float> want, const std::string& what) {
  ASSERT_EQ(got.size(), want.size()) << what;
  for (size_t i = 0; i < got.size(); ++i) ASSERT_EQ(Bits(got[i]), Bits(want[i])) << what << i;
}

void ExpectSameNetworks(const Network& got, const Network& want, const std::string& where) {
  for (size_t l = 1; l < static_cast<size_t>(want.nLayers); ++l) {
    const std::string what = where + ", layer " + std::to_string(l) + ", ";
    const Layer& a = got.layers[l];
    const Layer& b = want.layers[l];
    ExpectSame(a.activations.All(), b.activations.All(), what + "activation ");
    ExpectSame(a.weights.All(), b.weights.All(), what + "weight ");
    ExpectSame(a.weight_changes.All(), b.weight_changes.All(), what + "change ");
    ExpectSame(a.derivatives, b.derivatives, what + "derivative ");
    ExpectSame(a.deltas, b.deltas, what + "delta ");
  }
}

// Some groups of so many patterns, running on over the end of the list.
void TrainPlain(Network& network, size_t groups, size_t group) {
  reference::GradientSums sums;
  size_t cursor = 0;
  for (size_t g = 0; g < groups; ++g) {
    reference::ClearGradients(network, sums);
    for (size_t k = 0; k < group; ++k) {
      const int32_t pattern = network.train_list[cursor];
      cursor = (cursor + 1) % network.train_list.size();
      reference::ForwardWithDerivatives(network, pattern);
      reference::Backpropagate(network, pattern);
      reference::AccumulateGradients(network, sums, pattern);
    }
    reference::UpdateWeights(network, sums);
  }
}

void TrainPacked(Network& network, size_t groups, size_t group, size_t threads) {
  PackedNetwork packed(network, Use::kTraining, threads);
  const std::span<const int32_t> list(network.train_list);
  size_t cursor = 0;
  for (size_t g = 0; g < groups; ++g) {
    for (size_t done = 0; done < group;) {
      const size_t count = std::min({packed.batch(), group - done, list.size() - cursor});
      packed.ForwardWithDerivatives(list.subspan(cursor, count));
      packed.Backpropagate();
      if (done + count < group) {
        packed.AddGradients(done == 0);
      } else {
        packed.AddGradientsAndUpdate(done == 0);
      }
      done += count;
      cursor = (cursor + count) % list.size();
    }
  }
  packed.Publish();
}

// Groups of one pattern in the sweep that takes the next ones along: one, two, three ... of them.
void TrainOnline(Network& network, size_t patterns) {
  PackedNetwork packed(network, Use::kTraining, 1);
  const std::span<const int32_t> list(network.train_list);
  packed.ForwardWithDerivatives(list.first(1));
  packed.Backpropagate();
  size_t together = 0;
  for (size_t done = 1; done < patterns; done += together) {
    const size_t cursor = done % list.size();
    together = std::min(
        {together % packed.batch_of_single_patterns() + 1, patterns - done, list.size() - cursor});
    packed.UpdateAndForward(list.subspan(cursor, together));
    packed.Backpropagate();
  }
  packed.AddGradientsAndUpdate(true);
  packed.Publish();
}

// Layers around the width of vectors and panels of the target in use.
std::vector<std::vector<int32_t>> Shapes() {
  const kernels::PanelShape shape = kernels::CurrentShape();
  const auto lanes = static_cast<int32_t>(shape.lanes);
  const auto panel = static_cast<int32_t>(shape.panel_nodes);
  return {{1, 1, 1},
          {3, 7, 2},
          {lanes - 1 > 0 ? lanes - 1 : 1, lanes, lanes + 1},
          {panel + 1, panel - 1 > 0 ? panel - 1 : 1, panel},
          {8 * lanes + 2, 4 * lanes / 3 + 1, panel + lanes + 1, 3},
          {5, 4, 3, 2, 1, 2, 3, 4, 5, 6}};
}

const std::vector<int32_t> kMixture = {kSigmoid, kGaussian, kTanh,    kSech, kTanh,
                                       kSigmoid, kGaussian, kSigmoid, kTanh};

std::string Where(int64_t target, const std::vector<int32_t>& nodes, size_t group, bool removed) {
  std::string text = "target " + std::to_string(target) + ", group " + std::to_string(group);
  for (const int32_t n : nodes) text += " " + std::to_string(n);
  return text + (removed ? ", removed" : "");
}

TEST(PackedNetwork, TrainsGroupsOfAnySizeAsThePlainLoopsDo) {
  constexpr int32_t kPatterns = 21;
  for (const int64_t target : KernelTargets()) {
    const ScopedTarget scoped(target);
    for (const std::vector<int32_t>& nodes : Shapes()) {
      const std::vector<int32_t> codes(kMixture.begin(),
                                       kMixture.begin() + static_cast<long>(nodes.size()) - 1);
      for (const size_t group : {1, 2, 7, 10, kPatterns, kPatterns + 3}) {
        for (const bool removed : {false, true}) {
          const Network start = Trainable(nodes, codes, kPatterns, removed);
          Network plain = start;
          Network packed = start;
          TrainPlain(plain, 5, group);
          TrainPacked(packed, 5, group, 1);
          ExpectSameNetworks(packed, plain, Where(target, nodes, group, removed));
          if (testing::Test::HasFatalFailure()) return;
        }
      }
    }
  }
}

TEST(PackedNetwork, SweepsFromPatternToPatternAsThePlainLoopsDo) {
  for (const int64_t target : KernelTargets()) {
    const ScopedTarget scoped(target);
    for (const std::vector<int32_t>& nodes : Shapes()) {
      const std::vector<int32_t> codes(kMixture.begin(),
                                       kMixture.begin() + static_cast<long>(nodes.size()) - 1);
      for (const int32_t patterns : {1, 2, 9}) {
        for (const bool removed : {false, true}) {
          const Network start = Trainable(nodes, codes, patterns, removed);
          Network plain = start;
          Network packed = start;
          TrainPlain(plain, 25, 1);
          TrainOnline(packed, 25);
          ExpectSameNetworks(packed, plain, Where(target, nodes, 1, removed));
          if (testing::Test::HasFatalFailure()) return;
        }
      }
    }
  }
}

TEST(PackedNetwork, GivesTheSameBitsForAnyNumberOfThreads) {
  const Network start = Trainable({70, 150, 40, 10}, {kSigmoid, kTanh, kSigmoid}, 700, true);
  Network plain = start;
  TrainPlain(plain, 3, 650);
  for (const size_t threads : {1, 2, 3, 5}) {
    Network packed = start;
    TrainPacked(packed, 3, 650, threads);
    ExpectSameNetworks(packed, plain, std::to_string(threads) + " threads");
  }
}

TEST(PackedNetwork, SkipsPatternsThatAreNotInTheList) {
  Network plain = Trainable({3, 5, 2}, {kSigmoid}, 40, false);
  plain.train_list = {0, 3, 4, 5, 9, 17, 18, 39};
  plain.nTrain = 8;
  Network packed = plain;
  TrainPlain(plain, 4, 8);
  TrainPacked(packed, 4, 8, 1);
  ExpectSameNetworks(packed, plain, "list with gaps");
}

TEST(PackedNetwork, ForwardWritesTheActivationsOfItsPatternsOnly) {
  for (const int64_t target : KernelTargets()) {
    const ScopedTarget scoped(target);
    for (const std::vector<int32_t>& nodes : Shapes()) {
      Network network = Trainable(nodes, {kSigmoid}, 9, false);
      Network plain = network;
      PackedNetwork packed(network, Use::kForward, 1);
      packed.Forward(std::vector<int32_t>{1, 2, 3, 7});
      packed.Publish();
      for (const int32_t p : {1, 2, 3, 7}) reference::Forward(plain, p);
      ExpectSameNetworks(network, plain, Where(target, nodes, 0, false));
    }
  }
}

TEST(PackedNetwork, ALayerOfUnknownCodeKeepsWhatItHas) {
  Network network = Trainable({2, 3, 1}, {9, kSigmoid}, 6, false);
  for (size_t p = 0; p < 6; ++p) {
    network.layers[1].activations.Row(p)[1] = 0.125F * static_cast<float>(p);
  }
  network.layers[1].derivatives = {0.5F, 0.25F, -1.0F};
  Network plain = network;
  TrainPlain(plain, 5, 4);
  TrainPacked(network, 5, 4, 1);
  ExpectSameNetworks(network, plain, "unknown code");
}

TEST(PackedNetwork, TakesListsInAnyOrderWithPatternsTwice) {
  const std::vector<std::vector<int32_t>> starts = {
      {0, 3, 1, 4, 2, 5}, {3, 5, 4, 6}, {0, 2, 2, 3}, {5, 4, 3}, {7, 7}};
  for (const std::vector<int32_t>& start : starts) {
    for (const size_t threads : {size_t{1}, size_t{2}}) {
      // Long enough for threads to share it.
      Network network = Trainable({40, 60, 10}, {kTanh, kSigmoid}, 300, false);
      std::ranges::copy(start, network.train_list.begin());
      std::swap(network.train_list[100], network.train_list[200]);
      Network plain = network;
      TrainPlain(plain, 3, 300);
      TrainPacked(network, 3, 300, threads);
      ExpectSameNetworks(network, plain, "list from " + std::to_string(start[0]));
    }
  }
}

TEST(PackedNetwork, PublishesTheDeltasOfTheLastPatternThatHasThem) {
  Network network = Trainable({3, 4, 2}, {kSigmoid}, 5, false);
  for (const size_t l : {1, 2}) std::ranges::fill(network.layers[l].deltas, 0.375F);
  Network plain = network;
  PackedNetwork packed(network, Use::kTraining, 1);
  packed.Publish();
  ExpectSameNetworks(network, plain, "nothing done");

  const std::span<const int32_t> list(network.train_list);
  packed.ForwardWithDerivatives(list.first(1));
  packed.Backpropagate();
  packed.UpdateAndForward(list.subspan(1, 3));
  packed.Publish();
  TrainPlain(plain, 3, 1);
  reference::ForwardWithDerivatives(plain, 3);
  ExpectSameNetworks(network, plain, "after a sweep");
}

TEST(PackedNetwork, TakesReplacedWeightsWhenItIsPackedAgain) {
  Network network = Trainable({3, 4, 2}, {kSigmoid}, 5, false);
  PackedNetwork packed(network, Use::kTraining, 1);
  packed.ForwardWithDerivatives(std::span(network.train_list));
  InitializeRandomWeights(network, 99);
  Network plain = network;
  packed.Pack();
  packed.ForwardWithDerivatives(std::span(network.train_list));
  packed.Publish();
  for (int32_t p = 0; p < 5; ++p) reference::ForwardWithDerivatives(plain, p);
  ExpectSameNetworks(network, plain, "packed again");
}

}  // namespace
}  // namespace tarn
