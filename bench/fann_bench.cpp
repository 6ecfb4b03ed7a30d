#include <algorithm>
#include <benchmark/benchmark.h>
#include <floatfann.h>
#include <memory>
#include <string>

#include "workloads.h"

// The same training by the C library FANN: training/fann/NETWORK/GROUP, incremental for groups
// of one and batch for groups of all, and its forward pass: recall/fann/NETWORK.

namespace tarn::bench {
namespace {

struct FreeNetwork {
  void operator()(fann* network) const { fann_destroy(network); }
};
struct FreeData {
  void operator()(fann_train_data* data) const { fann_destroy_train(data); }
};

unsigned Unsigned(int32_t value) {
  return static_cast<unsigned>(value);
}

std::unique_ptr<fann, FreeNetwork> MakeFann(const Workload& workload) {
  std::unique_ptr<fann, FreeNetwork> network(fann_create_standard(
      3, Unsigned(workload.inputs), Unsigned(workload.hidden), Unsigned(workload.outputs)));
  fann_set_activation_function_hidden(network.get(), FANN_SIGMOID);
  fann_set_activation_function_output(network.get(), FANN_SIGMOID);
  fann_set_learning_rate(network.get(), 1e-5F);
  fann_set_learning_momentum(network.get(), 0.5F);
  return network;
}

std::unique_ptr<fann_train_data, FreeData> MakeData(const Workload& workload) {
  const Network network = MakeNetwork(workload);
  std::unique_ptr<fann_train_data, FreeData> data(fann_create_train(
      Unsigned(workload.patterns), Unsigned(workload.inputs), Unsigned(workload.outputs)));
  for (size_t p = 0; p < static_cast<size_t>(workload.patterns); ++p) {
    std::ranges::copy(network.layers[0].activations.Row(p), data->input[p]);
    std::ranges::copy(network.targets.Row(p), data->output[p]);
  }
  return data;
}

void CountConnections(benchmark::State& state, const Workload& workload) {
  const int64_t pairs = workload.Connections() * workload.patterns * state.iterations();
  state.counters["connections"] =
      benchmark::Counter(static_cast<double>(pairs), benchmark::Counter::kIsRate);
}

void FannTraining(benchmark::State& state, const Workload& workload, bool all) {
  const auto network = MakeFann(workload);
  const auto data = MakeData(workload);
  fann_set_training_algorithm(network.get(), all ? FANN_TRAIN_BATCH : FANN_TRAIN_INCREMENTAL);
  for (auto _ : state) benchmark::DoNotOptimize(fann_train_epoch(network.get(), data.get()));
  CountConnections(state, workload);
}

void FannRecall(benchmark::State& state, const Workload& workload) {
  const auto network = MakeFann(workload);
  const auto data = MakeData(workload);
  for (auto _ : state) {
    for (size_t p = 0; p < static_cast<size_t>(workload.patterns); ++p) {
      benchmark::DoNotOptimize(fann_run(network.get(), data->input[p]));
    }
  }
  CountConnections(state, workload);
}

bool Register() {
  for (const Workload& workload : kWorkloads) {
    for (const bool all : {false, true}) {
      const std::string name = "training/fann/" + workload.Name() + (all ? "/all" : "/1");
      benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
        FannTraining(state, workload, all);
      })->UseRealTime();
    }
    benchmark::RegisterBenchmark(("recall/fann/" + workload.Name()).c_str(),
                                 [=](benchmark::State& state) { FannRecall(state, workload); })
        ->UseRealTime();
  }
  return true;
}

const bool kRegistered = Register();

}  // namespace
}  // namespace tarn::bench
