#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstdint>
#include <functional>
#include <stdexcept>
#include <string>

#include "engine/monitors.h"
#include "engine/network.h"
#include "engine/packed_network.h"
#include "engine/recall_run.h"
#include "measure.h"
#include "reference/plain_loops.h"
#include "workloads.h"

// Whole iterations of training, slices of it, and whole passes of recall, each by name
//   training/WHO/NETWORK/GROUP,   slices/WHO/NETWORK/GROUP   and   recall/WHO/NETWORK
// WHO: plain, the loops that define the results; tarn, the program's own run on one thread;
// tarn-threads, on all that it would take. Figures are connections x patterns per second.

namespace tarn::bench {
namespace {

void PlainTraining(benchmark::State& state, const Workload& workload, int32_t group) {
  Network network = MakeNetwork(workload);
  reference::GradientSums sums;
  MonitorSums<double> monitors;
  for (auto _ : state) {
    for (int32_t p = 0; p < network.nTrain; ++p) {
      if (p % group == 0) reference::ClearGradients(network, sums);
      reference::ForwardWithDerivatives(network, p);
      reference::Backpropagate(network, p);
      reference::AccumulateGradients(network, sums, p);
      const auto row = static_cast<size_t>(p);
      monitors.Add(network.targets.Row(row), OutputLayer(network).activations.Row(row), 0);
      if ((p + 1) % group == 0) reference::UpdateWeights(network, sums);
    }
    benchmark::DoNotOptimize(Correlation(monitors, network.nTrain));
  }
  CountConnections(state, network, state.iterations());
}

void TarnTraining(benchmark::State& state, const Workload& workload, int32_t group,
                  size_t threads) {
  Network network = MakeNetwork(workload);
  network.WeightRate = group;
  MeasureTraining(state, network, threads);
}

void TarnSlices(benchmark::State& state, const Workload& workload, int32_t group, size_t threads) {
  Network network = MakeNetwork(workload);
  network.WeightRate = group;
  MeasureSlices(state, network, threads);
}

// Patterns enough that making ready does not count.
Workload ForRecall(Workload workload) {
  workload.patterns = std::max(workload.patterns, 1000);
  return workload;
}

void PlainRecall(benchmark::State& state, const Workload& workload) {
  Network network = MakeNetwork(ForRecall(workload));
  for (auto _ : state) {
    for (int32_t p = 0; p < network.nPats; ++p) reference::Forward(network, p);
    benchmark::ClobberMemory();
  }
  CountConnections(state, network, state.iterations());
}

void TarnRecall(benchmark::State& state, const Workload& workload, size_t threads) {
  Network network = MakeNetwork(ForRecall(workload));
  for (auto _ : state) {
    if (!RunRecall(network, threads).ok()) throw std::runtime_error("no memory for the run");
  }
  CountConnections(state, network, state.iterations());
}

using Body = std::function<void(benchmark::State&)>;

// By the wall clock: with threads, the owner's own time is only a part.
void Add(const std::string& name, const Body& body) {
  benchmark::RegisterBenchmark(name.c_str(), body)->UseRealTime();
}

void AddTraining(const std::string& name, const Workload& workload, int32_t group, size_t threads) {
  benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
    TarnTraining(state, workload, group, threads);
  })->UseManualTime();
}

bool Register() {
  for (const Workload& workload : kWorkloads) {
    const std::string network = "/" + workload.Name();
    for (const bool all : {false, true}) {
      const std::string job = network + (all ? "/all" : "/1");
      const int32_t group = all ? workload.patterns : 1;
      Add("training/plain" + job, [=](auto& state) { PlainTraining(state, workload, group); });
      AddTraining("training/tarn" + job, workload, group, 1);
      AddTraining("training/tarn-threads" + job, workload, group, UsefulThreads());
      Add("slices/tarn" + job, [=](auto& state) { TarnSlices(state, workload, group, 1); });
      Add("slices/tarn-threads" + job,
          [=](auto& state) { TarnSlices(state, workload, group, UsefulThreads()); });
    }
    Add("recall/plain" + network, [=](auto& state) { PlainRecall(state, workload); });
    Add("recall/tarn" + network, [=](auto& state) { TarnRecall(state, workload, 1); });
    Add("recall/tarn-threads" + network,
        [=](auto& state) { TarnRecall(state, workload, UsefulThreads()); });
  }
  return true;
}

const bool kRegistered = Register();

}  // namespace
}  // namespace tarn::bench
