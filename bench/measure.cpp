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

namespace {

// Training without end, worked through in slices.
class EndlessRun {
 public:
  EndlessRun(Network& network, size_t threads)
      : m_run(network, SteadyClock(), m_observer, m_history.path(), threads) {
    network.MaxIterations = std::numeric_limits<int32_t>::max();
    if (!m_run.Start().ok()) throw std::runtime_error("no memory for the run");
  }

  void RunFor(int64_t milliseconds) { m_run.RunFor(milliseconds); }

 private:
  TrainingObserver m_observer;
  TempFile m_history;
  TrainingRun m_run;
};

}  // namespace

void MeasureTraining(benchmark::State& state, Network& network, size_t threads) {
  constexpr int64_t kWarmUpMs = 100;    // threads have found processors of their own by then
  constexpr int64_t kLongSliceMs = 50;  // so that its end does not count
  EndlessRun run(network, threads);
  run.RunFor(kWarmUpMs);
  const int32_t before = network.iteration;
  for (auto _ : state) run.RunFor(kLongSliceMs);
  CountConnections(state, network, network.iteration - before);
}

void MeasureSlices(benchmark::State& state, Network& network, size_t threads) {
  using Milliseconds = std::chrono::duration<double, std::milli>;
  EndlessRun run(network, threads);
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
