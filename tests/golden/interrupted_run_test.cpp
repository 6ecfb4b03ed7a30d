#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "golden/golden_files.h"
#include "golden/scenario_run.h"
#include "reference/plain_reference.h"
#include "scenarios/scenario.h"

// What Stop and a later Start leave the same. Stop comes to effect behind the forward or the
// backward pass of a training pattern: the group under way is given up, what it had added to
// the gradients is gone, and weights, momentum, learn rate and counter stay. Start begins a new
// group with that same pattern, and new figures and a new history. So
// - with groups of one pattern the weights go on as if nothing had been, and so do all figures
//   but those of the iteration that was interrupted;
// - a larger group begins where the old one was given up, and from there on groups lie
//   differently in the list;
// - a run that is complete and started again with a higher limit goes on as one run when its
//   groups end with the list.

namespace tarn {
namespace {

std::vector<float> AllWeights(const Network& network) {
  std::vector<float> all;
  for (const Layer& layer : network.layers) {
    all.insert(all.end(), layer.weights.All().begin(), layer.weights.All().end());
    all.insert(all.end(), layer.weight_changes.All().begin(), layer.weight_changes.All().end());
  }
  return all;
}

// Patterns that have been propagated at least once: a sigmoid's output is not 0.
int32_t Propagated(Network& network) {
  int32_t count = 0;
  for (int32_t p : network.train_list) {
    if (OutputLayer(network).activations.Row(static_cast<size_t>(p))[0] != 0.0F) ++count;
  }
  return count;
}

void StopAndStart(TrainingRun& run) {
  run.Stop();
  ASSERT_EQ(run.RunFor(kNoLimitMs), RunState::kStopped);
  EXPECT_TRUE(run.Start().ok());
  ASSERT_EQ(run.state(), RunState::kRunning);
}

// The lines behind the first of a text.
std::string WithoutFirstLines(const std::string& text, int count) {
  size_t begin = 0;
  for (int i = 0; i < count; ++i) begin = text.find('\n', begin) + 1;
  return text.substr(begin);
}

TEST(WideRun, LeavesTheBitsThatAreKeptHoweverItIsSliced) {
  const Results whole = TrainInOneGo(WideScenario());
  ExpectGoldenHash("wide.weights", whole.weights_hash);
  ExpectGoldenHash("wide.history", whole.history_hash);
  const TickingClock clock;
  ScenarioRun training(WideScenario(), clock);
  EXPECT_TRUE(training.run().Start().ok());
  int slices = 1;
  while (training.run().RunFor(0) == RunState::kRunning) ++slices;
  // 5 iterations of 8 patterns, forward and backward, and the updates.
  EXPECT_GT(slices, 5 * 8 * 3);
  EXPECT_EQ(training.Collect(), whole);
}

TEST(InterruptedRun, KeepsEverythingAsStopLeavesIt) {
  const TickingClock clock;
  ScenarioRun training(WideScenario(), clock);
  TrainingRun& run = training.run();
  Network& network = training.network();
  EXPECT_TRUE(run.Start().ok());
  while (network.iteration < 2) run.RunFor(0);
  run.Stop();
  ASSERT_EQ(run.RunFor(kNoLimitMs), RunState::kStopped);
  EXPECT_EQ(network.iteration, 2);
  const std::vector<float> weights = AllWeights(network);
  const std::string history = ReadFile(run.history().path());
  EXPECT_EQ(history.size(), 2U * 32U);
  EXPECT_EQ(run.RunFor(kNoLimitMs), RunState::kStopped);
  EXPECT_EQ(AllWeights(network), weights);
  EXPECT_EQ(ReadFile(run.history().path()), history);
  EXPECT_EQ(network.iteration, 2);
}

TEST(InterruptedRun, GoesOnAlikeWithGroupsOfOnePattern) {
  const TickingClock clock;
  ScenarioRun training(WideScenario(), clock);
  TrainingRun& run = training.run();
  Network& network = training.network();
  EXPECT_TRUE(run.Start().ok());
  // Stopped again and again at other steps, each time after a whole group at least; the last
  // two iterations pass undisturbed.
  constexpr int kStepsOfAGroup = 4;
  for (int stop = 0; network.iteration < 3; ++stop) {
    for (int step = 0; step < kStepsOfAGroup + stop % 5; ++step) run.RunFor(0);
    if (network.iteration < 3) StopAndStart(run);
  }
  ASSERT_EQ(run.RunFor(kNoLimitMs), RunState::kComplete);
  const Results now = training.Collect();
  const Results whole = TrainInOneGo(WideScenario());
  EXPECT_EQ(now.weights_hash, whole.weights_hash);
  EXPECT_EQ(now.network, whole.network);
  EXPECT_EQ(now.outputs, whole.outputs);
  // The history is that since the last Start: of the records at 1, 2, 4 and 5 the last two.
  EXPECT_EQ(now.error_history, WithoutFirstLines(whole.error_history, 2));
}

TEST(InterruptedRun, BeginsANewGroupWithThePatternWhereItWasStopped) {
  Scenario scenario = WideScenario();
  scenario.iterations = 3;
  const TickingClock clock;
  LoadedScenario loaded(scenario);
  Network& network = loaded.network();
  network.WeightRate = 0;
  network.SaveRate = 0;
  Network rotated = network;
  TrainingObserver observer;
  TrainingRun run(network, clock, observer, loaded / "history");
  EXPECT_TRUE(run.Start().ok());
  while (Propagated(network) < 4) run.RunFor(0);
  StopAndStart(run);
  // The pattern last propagated is the first of the new group.
  const int32_t first = Propagated(network) - 1;
  ASSERT_GE(first, 3);
  ASSERT_LT(first, network.nTrain - 1);
  ASSERT_EQ(run.RunFor(kNoLimitMs), RunState::kComplete);

  std::rotate(rotated.train_list.begin(), rotated.train_list.begin() + first,
              rotated.train_list.end());
  reference::PlainTrainer plain(rotated);
  while (plain.iteration() < network.MaxIterations) plain.RunIteration();
  Hash expected;
  for (const reference::PlainLayer& layer : plain.layers()) {
    for (const reference::Row& row : layer.weights) expected.Add(row);
  }
  EXPECT_EQ(WeightsHash(network), expected.value());
}

TEST(InterruptedRun, GoesOnAsOneRunWhenStartedAgainWithAHigherLimit) {
  const Scenario& scenario = GoldenScenario("iris");
  const SetClock clock;
  ScenarioRun training(scenario, clock);
  Network& network = training.network();
  network.MaxIterations = 25;
  EXPECT_TRUE(training.run().Start().ok());
  ASSERT_EQ(training.run().RunFor(kNoLimitMs), RunState::kComplete);
  EXPECT_EQ(network.iteration, 25);
  network.MaxIterations = scenario.iterations;
  EXPECT_TRUE(training.run().Start().ok());
  ASSERT_EQ(training.run().RunFor(kNoLimitMs), RunState::kComplete);
  const Results now = training.Collect();
  const Results whole = TrainInOneGo(scenario);
  EXPECT_EQ(now.network, whole.network);
  EXPECT_EQ(now.outputs, whole.outputs);
  EXPECT_EQ(now.weights_hash, whole.weights_hash);
  // Screen updates at 50 and 60, without that of the first iteration.
  EXPECT_EQ(now.error_history, WithoutFirstLines(whole.error_history, 1));
}

}  // namespace
}  // namespace tarn
