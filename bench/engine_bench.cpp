#include <benchmark/benchmark.h>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <stdexcept>

#include "base/random.h"
#include "engine/forward.h"
#include "engine/network.h"
#include "engine/weight_update.h"

namespace tarn {
namespace {

constexpr int32_t kPatterns = 100;

// A 3-layer sigmoid network with random weights and data.
Network BenchNetwork(const benchmark::State& state) {
  Network network;
  network.nLayers = 3;
  for (size_t l = 0; l < 3; ++l) {
    network.layers[l].nUnits = static_cast<int32_t>(state.range(l));
    network.layers[l].TransFunc = kSigmoid;
  }
  network.nPats = kPatterns;
  network.nTrain = kPatterns;
  network.train_list.resize(kPatterns);
  std::iota(network.train_list.begin(), network.train_list.end(), 0);
  // So small that the weights stay near their start, however long the benchmark runs.
  network.Eta = 1e-4F;
  network.Alpha = 0.5F;
  if (!AllocateArrays(network).ok()) throw std::runtime_error("no memory for the network");
  InitializeRandomWeights(network, 1);
  Random random(2);
  for (Matrix* matrix : {&network.layers[0].activations, &network.targets}) {
    for (float& value : matrix->All()) {
      value = 0.15F + 0.7F * static_cast<float>(random.Next()) / 32767.0F;
    }
  }
  return network;
}

// Reported as items per second: connections x patterns.
void CountConnections(benchmark::State& state, const Network& network, int32_t patterns) {
  state.SetItemsProcessed(state.iterations() * patterns * ConnectionCount(network));
}

void BenchForward(benchmark::State& state) {
  Network network = BenchNetwork(state);
  for (auto _ : state) {
    for (int32_t p = 0; p < kPatterns; ++p) Forward(network, p);
    benchmark::ClobberMemory();
  }
  CountConnections(state, network, kPatterns);
}

void BenchForwardWithDerivatives(benchmark::State& state) {
  Network network = BenchNetwork(state);
  for (auto _ : state) {
    for (int32_t p = 0; p < kPatterns; ++p) ForwardWithDerivatives(network, p);
    benchmark::ClobberMemory();
  }
  CountConnections(state, network, kPatterns);
}

void BenchBackpropagate(benchmark::State& state) {
  Network network = BenchNetwork(state);
  for (int32_t p = 0; p < kPatterns; ++p) ForwardWithDerivatives(network, p);
  for (auto _ : state) {
    for (int32_t p = 0; p < kPatterns; ++p) Backpropagate(network, p);
    benchmark::ClobberMemory();
  }
  CountConnections(state, network, kPatterns);
}

void BenchAccumulateGradients(benchmark::State& state) {
  Network network = BenchNetwork(state);
  ForwardWithDerivatives(network, 0);
  Backpropagate(network, 0);
  for (auto _ : state) {
    ClearGradients(network);
    for (int32_t p = 0; p < kPatterns; ++p) AccumulateGradients(network, p);
    benchmark::ClobberMemory();
  }
  CountConnections(state, network, kPatterns);
}

void UpdateWeightsOf(benchmark::State& state, bool fully_connected) {
  Network network = BenchNetwork(state);
  network.fully_connected = fully_connected;
  ForwardWithDerivatives(network, 0);
  Backpropagate(network, 0);
  ClearGradients(network);
  AccumulateGradients(network, 0);
  for (auto _ : state) {
    UpdateWeights(network);
    benchmark::ClobberMemory();
  }
  CountConnections(state, network, 1);
}

void BenchUpdateWeights(benchmark::State& state) {
  UpdateWeightsOf(state, true);
}

void BenchUpdateWeightsMasked(benchmark::State& state) {
  UpdateWeightsOf(state, false);
}

// A pass over the training list, in groups of the last argument.
void BenchIteration(benchmark::State& state) {
  Network network = BenchNetwork(state);
  const int32_t group = static_cast<int32_t>(state.range(3));
  for (auto _ : state) {
    for (int32_t p = 0; p < kPatterns; ++p) {
      if (p % group == 0) ClearGradients(network);
      ForwardWithDerivatives(network, p);
      Backpropagate(network, p);
      AccumulateGradients(network, p);
      if ((p + 1) % group == 0) UpdateWeights(network);
    }
    benchmark::ClobberMemory();
  }
  CountConnections(state, network, kPatterns);
}

void Networks(benchmark::internal::Benchmark* bench) {
  bench->ArgNames({"in", "hidden", "out"});
  bench->Args({2, 2, 1})->Args({4, 8, 3})->Args({16, 32, 8})->Args({64, 128, 10});
}

void NetworksAndGroups(benchmark::internal::Benchmark* bench) {
  bench->ArgNames({"in", "hidden", "out", "group"});
  for (int64_t group : {1, kPatterns}) {
    bench->Args({2, 2, 1, group})->Args({4, 8, 3, group});
    bench->Args({16, 32, 8, group})->Args({64, 128, 10, group});
  }
}

BENCHMARK(BenchForward)->Apply(Networks);
BENCHMARK(BenchForwardWithDerivatives)->Apply(Networks);
BENCHMARK(BenchBackpropagate)->Apply(Networks);
BENCHMARK(BenchAccumulateGradients)->Apply(Networks);
BENCHMARK(BenchUpdateWeights)->Apply(Networks);
BENCHMARK(BenchUpdateWeightsMasked)->Apply(Networks);
BENCHMARK(BenchIteration)->Apply(NetworksAndGroups);

}  // namespace
}  // namespace tarn
