#include "measure.h"

#include <algorithm>
#include <chrono>
#include <limits>
#include <stdexcept>

#include "base/clock.h"
#include "base/temp_file.h"
#include "engine/training_run.h"

namespace tarn::bench {

void CountConnections(benchmark::State& state, const Network& network, int64_t passes) {
  state.counters["connections"] = benchmark::Counter(
      static_cast<double>(passes) * network.nPats * static_cast<double>(ConnectionCount(network)),
      benchmark::Counter::kIsRate);
}

void MeasureTraining(benchmark::State& state, Network& network, size_t threads) {
  // Enough iterations at a time that starting and packing do not count.
  const int64_t pass = ConnectionCount(network) * network.nPats;
  const auto iterations = static_cast<int32_t>(std::max<int64_t>(50000000 / pass, 3));
  TrainingObserver observer;
  TempFile history;
  TrainingRun run(network, SteadyClock(), observer, history.path(), threads);
  for (auto _ : state) {
    network.MaxIterations = network.iteration + iterations;
    if (!run.Start().ok()) throw std::runtime_error("no memory for the run");
    run.RunFor(std::numeric_limits<int32_t>::max());
  }
  CountConnections(state, network, state.iterations() * iterations);
}

void MeasureSlices(benchmark::State& state, Network& network, size_t threads) {
  using Milliseconds = std::chrono::duration<double, std::milli>;
  network.MaxIterations = std::numeric_limits<int32_t>::max();
  TrainingObserver observer;
  TempFile history;
  TrainingRun run(network, SteadyClock(), observer, history.path(), threads);
  if (!run.Start().ok()) throw std::runtime_error("no memory for the run");
  double longest = 0;
  for (auto _ : state) {
    const auto start = std::chrono::steady_clock::now();
    run.RunFor(kSliceMs);
    const Milliseconds taken = std::chrono::steady_clock::now() - start;
    longest = std::max(longest, taken.count());
  }
  state.counters["longest_ms"] = longest;
}

}  // namespace tarn::bench
