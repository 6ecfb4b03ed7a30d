#include <cstdint>
#include <gtest/gtest.h>

#include "engine/training_run.h"
#include "golden/scenario_run.h"
#include "scenarios/scenario.h"
#include "support/plain_comparison.h"

namespace tarn {
namespace {

// Trains the scenario beside the plain reference; the hash of the weights in the end.
uint64_t TrainBesideReference(const Scenario& scenario, const Clock& clock, int64_t budget_ms) {
  LoadedScenario loaded(scenario);
  Network& network = loaded.network();
  network.SaveRate = 1;
  PlainComparison comparison(network, scenario.group_size);
  TrainingRun run(network, clock, comparison, loaded / "history");
  if (scenario.group_size > 0) run.SetGroupSize(scenario.group_size);
  EXPECT_TRUE(run.Start().ok());
  while (run.RunFor(budget_ms) == RunState::kRunning && !testing::Test::HasFailure()) {
  }
  EXPECT_EQ(comparison.iterations(), network.MaxIterations);
  comparison.CompareActivations();
  return WeightsHash(network);
}

class ReferenceRun : public testing::TestWithParam<Scenario> {};

TEST_P(ReferenceRun, AgreesWithThePlainReferenceInEveryIteration) {
  const TickingClock clock;
  const uint64_t hash = TrainBesideReference(GetParam(), clock, 0);
  EXPECT_EQ(hash, TrainInOneGo(GetParam()).weights_hash);
}

INSTANTIATE_TEST_SUITE_P(Scenarios, ReferenceRun, testing::ValuesIn(GoldenScenarios()),
                         [](const auto& instance) { return instance.param.name; });

}  // namespace
}  // namespace tarn
