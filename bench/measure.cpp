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

using SteadyTime = std::chrono::steady_clock;

// Looks at the clock at every screen update, which comes between two iterations.
class Stopwatch : public TrainingObserver {
 public:
  explicit Stopwatch(const Network& network) : m_network(network) {}

  void ScreenUpdated() override {
    time = SteadyTime::now();
    iteration = m_network.iteration;
  }

  SteadyTime::time_point time;
  int32_t iteration = 0;

 private:
  const Network& m_network;
};

// Training without end, worked through in slices.
class EndlessRun {
 public:
  EndlessRun(Network& network, size_t threads)
      : last_update(network),
        m_run(network, SteadyClock(), last_update, m_history.path(), threads) {
    network.MaxIterations = std::numeric_limits<int32_t>::max();
    if (!m_run.Start().ok()) throw std::runtime_error("no memory for the run");
  }

  void RunFor(int64_t milliseconds) { m_run.RunFor(milliseconds); }

  Stopwatch last_update;

 private:
  TempFile m_history;
  TrainingRun m_run;
};

}  // namespace

void MeasureTraining(benchmark::State& state, Network& network, size_t threads) {
  constexpr int64_t kWarmUpMs = 100;  // threads have found processors of their own by then
  constexpr int64_t kRoundMs = 50;
  EndlessRun run(network, threads);
  const Stopwatch& last = run.last_update;
  run.RunFor(kWarmUpMs);
  network.UpdateRate =
      static_cast<int32_t>(std::max(network.iteration * kRoundMs / kWarmUpMs, int64_t{1}));
  const auto run_to_next_update = [&] {
    for (const int32_t before = last.iteration; last.iteration == before;) run.RunFor(kRoundMs);
  };
  run_to_next_update();
  const int32_t first_iteration = last.iteration;
  for (auto _ : state) {
    const SteadyTime::time_point start = last.time;
    run_to_next_update();
    state.SetIterationTime(std::chrono::duration<double>(last.time - start).count());
  }
  CountConnections(state, network, last.iteration - first_iteration);
}

void MeasureSlices(benchmark::State& state, Network& network, size_t threads) {
  using Milliseconds = std::chrono::duration<double, std::milli>;
  EndlessRun run(network, threads);
  double longest = 0;
  for (auto _ : state) {
    const SteadyTime::time_point start = SteadyTime::now();
    run.RunFor(kSliceMs);
    const Milliseconds taken = SteadyTime::now() - start;
    longest = std::max(longest, taken.count());
  }
  state.counters["longest_ms"] = longest;
}

}  // namespace tarn::bench
