#include <gtest/gtest.h>
#include <vector>

#include "engine/training_run_fixture.h"

namespace tarn {
namespace {

class TrainingRunStop : public SteppedRun {
 protected:
  // Trains on until an iteration is counted.
  static void FinishPass(TrainingRun& run, const Network& network) {
    const int32_t before = network.iteration;
    while (network.iteration == before && run.RunFor(0) == RunState::kRunning) {
    }
    EXPECT_EQ(network.iteration, before + 1);
  }
};

TEST_F(TrainingRunStop, EndsAfterTheForwardPassWithTheWeightsAsTheyAre) {
  const std::vector<uint32_t> weights = WeightBits(m_network);
  TrainingRun run(m_network, m_clock, m_observer, kHistory);
  EXPECT_TRUE(run.Start().ok());
  Step(run, 1);
  EXPECT_NE(OutputLayer(m_network).activations.Row(0)[0], 0.0F);
  run.Stop();
  EXPECT_EQ(run.state(), RunState::kRunning);
  EXPECT_EQ(run.RunFor(0), RunState::kStopped);
  EXPECT_EQ(WeightBits(m_network), weights);
  EXPECT_EQ(OutputLayer(m_network).deltas[0], 0.0F);
  EXPECT_TRUE(m_observer.events.empty());
}

TEST_F(TrainingRunStop, RunsAForwardPassFirstWhenAskedForAtOnce) {
  const std::vector<uint32_t> weights = WeightBits(m_network);
  TrainingRun run(m_network, m_clock, m_observer, kHistory);
  EXPECT_TRUE(run.Start().ok());
  run.Stop();
  EXPECT_EQ(run.RunFor(1000), RunState::kStopped);
  EXPECT_NE(OutputLayer(m_network).activations.Row(0)[0], 0.0F);
  EXPECT_EQ(WeightBits(m_network), weights);
}

TEST_F(TrainingRunStop, GoesOnWithReplacedWeightsFromWhereTheSliceEnded) {
  // Before the second pattern, after its forward pass, after its backward pass.
  for (const int pieces : {3, 4, 5}) {
    Network network = m_network;
    Network plain = m_plain;
    TrainingRun run(network, m_clock, m_observer, kHistory);
    EXPECT_TRUE(run.Start().ok());
    Step(run, pieces);
    InitializeRandomWeights(network, 77);
    EXPECT_TRUE(run.WeightsReplaced().ok());
    Step(run, 6 - pieces);

    PlainRun(plain).Group(1);
    if (pieces == 3) InitializeRandomWeights(plain, 77);
    reference::ForwardWithDerivatives(plain, 1);
    if (pieces == 4) InitializeRandomWeights(plain, 77);
    reference::Backpropagate(plain, 1);
    reference::GradientSums sums;
    reference::ClearGradients(plain, sums);
    reference::AccumulateGradients(plain, sums, 1);
    if (pieces == 5) InitializeRandomWeights(plain, 77);
    reference::UpdateWeights(plain, sums);
    EXPECT_EQ(WeightBits(network), WeightBits(plain)) << pieces;
  }
}

TEST_F(TrainingRunStop, PropagatesOnePatternAloneInAGroupOfMany) {
  Network network = Make({2, 3, 1}, 5);
  network.WeightRate = 0;
  TrainingRun run(network, m_clock, m_observer, kHistory);
  EXPECT_TRUE(run.Start().ok());
  run.Stop();
  EXPECT_EQ(run.RunFor(1000), RunState::kStopped);
  EXPECT_NE(OutputLayer(network).activations.Row(0)[0], 0.0F);
  EXPECT_EQ(OutputLayer(network).activations.Row(1)[0], 0.0F);
}

TEST_F(TrainingRunStop, GoesOnWithConnectionsRemovedBetweenSlices) {
  TrainingRun run(m_network, m_clock, m_observer, kHistory);
  EXPECT_TRUE(run.Start().ok());
  Step(run, 3);
  RemoveConnections(m_network);
  EXPECT_TRUE(run.WeightsReplaced().ok());
  Step(run, 3);
  PlainRun plain(m_plain);
  plain.Group(1);
  RemoveConnections(m_plain);
  plain.Group(1);
  EXPECT_EQ(WeightBits(m_network), WeightBits(m_plain));
}

TEST_F(TrainingRunStop, TakesANewGroupSizeInTheMiddleOfASweep) {
  TrainingRun run(m_network, m_clock, m_observer, kHistory);
  EXPECT_TRUE(run.Start().ok());
  Step(run, 2);
  run.SetGroupSize(2);
  FinishPass(run, m_network);
  PlainRun plain(m_plain);
  EXPECT_FALSE(plain.Group(1));
  EXPECT_TRUE(plain.Group(2));
  EXPECT_EQ(WeightBits(m_network), WeightBits(m_plain));
  // With time for a sweep, too.
  Network network = Make({2, 3, 1}, 5);
  Network plain_network = network;
  network.WeightRate = plain_network.WeightRate = 1;
  TrainingRun small(network, m_clock, m_observer, kHistory);
  EXPECT_TRUE(small.Start().ok());
  small.SetGroupSize(4);
  EXPECT_EQ(RunOut(small), RunState::kComplete);
  PlainRun rest(plain_network);
  for (int iterations = 0; iterations < 10;) iterations += rest.Group(4) ? 1 : 0;
  EXPECT_EQ(WeightBits(network), WeightBits(plain_network));
}

TEST_F(TrainingRunStop, LeavesTheCursorAtThePatternThatWasNotFinished) {
  // The second pattern is stopped once after its forward pass, once after its backward pass.
  for (const int pieces : {4, 5}) {
    Network network = m_network;
    Network plain_network = m_plain;
    TrainingRun run(network, m_clock, m_observer, kHistory);
    EXPECT_TRUE(run.Start().ok());
    Step(run, pieces);
    run.Stop();
    EXPECT_EQ(run.RunFor(0), RunState::kStopped);
    PlainRun first(plain_network);
    first.Group(1);
    EXPECT_EQ(WeightBits(network), WeightBits(plain_network)) << pieces;
    EXPECT_TRUE(run.Start().ok());
    FinishPass(run, network);
    PlainRun rest(plain_network, 1);
    EXPECT_FALSE(rest.Group(1));
    EXPECT_TRUE(rest.Group(1));
    EXPECT_EQ(WeightBits(network), WeightBits(plain_network)) << pieces;
    // The sums began anew: they hold two of the three patterns.
    EXPECT_EQ(Bits(network.rms_train), Bits(rest.Rms())) << pieces;
    EXPECT_EQ(network.iteration, 1);
  }
}

TEST_F(TrainingRunStop, DropsTheGradientsOfTheGroupThatWasUnderWay) {
  m_network.WeightRate = 3;
  TrainingRun run(m_network, m_clock, m_observer, kHistory);
  EXPECT_TRUE(run.Start().ok());
  Step(run, 4);  // two patterns forward and backward
  run.Stop();
  EXPECT_EQ(run.RunFor(0), RunState::kStopped);
  EXPECT_TRUE(run.Start().ok());
  FinishPass(run, m_network);
  PlainRun plain(m_plain, 1);
  EXPECT_TRUE(plain.Group(3));
  EXPECT_EQ(WeightBits(m_network), WeightBits(m_plain));
}

TEST_F(TrainingRunStop, TakesEffectOnlyInTheNextPatternWhenTheWeightsHaveMoved) {
  TrainingRun run(m_network, m_clock, m_observer, kHistory);
  EXPECT_TRUE(run.Start().ok());
  Step(run, 3);
  PlainRun plain(m_plain);
  plain.Group(1);
  EXPECT_EQ(WeightBits(m_network), WeightBits(m_plain));
  run.Stop();
  EXPECT_EQ(OutputLayer(m_network).activations.Row(1)[0], 0.0F);
  EXPECT_EQ(run.RunFor(0), RunState::kStopped);
  EXPECT_NE(OutputLayer(m_network).activations.Row(1)[0], 0.0F);
  EXPECT_EQ(WeightBits(m_network), WeightBits(m_plain));
}

TEST_F(TrainingRunStop, LetsTheIterationAndItsScreenUpdateFinishAfterTheUpdate) {
  m_network.SaveRate = 1;
  TrainingRun run(m_network, m_clock, m_observer, kHistory);
  EXPECT_TRUE(run.Start().ok());
  Step(run, 9);  // three patterns, forward, backward and update each
  EXPECT_EQ(m_network.iteration, 0);
  run.Stop();
  EXPECT_EQ(run.RunFor(1000), RunState::kStopped);
  EXPECT_EQ(m_network.iteration, 1);
  EXPECT_EQ(m_observer.Count("screen"), 1);
  EXPECT_EQ(m_observer.Count("snapshot"), 1);
}

TEST_F(TrainingRunStop, KeepsStatisticsAndCounter) {
  TrainingRun run(m_network, m_clock, m_observer, kHistory);
  EXPECT_TRUE(run.Start().ok());
  FinishPass(run, m_network);
  const float rms = m_network.rms_train;
  run.Stop();
  EXPECT_EQ(run.RunFor(1000), RunState::kStopped);
  EXPECT_GT(rms, 0.0F);
  EXPECT_EQ(m_network.rms_train, rms);
  EXPECT_EQ(m_network.iteration, 1);
  EXPECT_TRUE(run.Start().ok());
  EXPECT_EQ(m_network.iteration, 1);
  FinishPass(run, m_network);
  EXPECT_EQ(m_network.iteration, 2);
}

TEST_F(TrainingRunStop, IsForgottenWhenTheRunCompletes) {
  m_network.MaxIterations = 1;
  TrainingRun run(m_network, m_clock, m_observer, kHistory);
  m_observer.on_screen = [&run] { run.Stop(); };
  EXPECT_TRUE(run.Start().ok());
  EXPECT_EQ(RunOut(run), RunState::kComplete);
  EXPECT_EQ(m_observer.events.back(), "Training Run Complete!");
}

TEST_F(TrainingRunStop, EndsAHaltedRun) {
  TrainingRun run(m_network, m_clock, m_observer, kHistory);
  EXPECT_TRUE(run.Start().ok());
  Step(run, 1);
  run.Halt();
  run.Stop();
  EXPECT_EQ(run.RunFor(0), RunState::kStopped);
}

class TrainingRunSlices : public SteppedRun {};

TEST_F(TrainingRunSlices, EndWhenTheirTimeIsSpent) {
  TrainingRun run(m_network, m_clock, m_observer, kHistory);
  EXPECT_TRUE(run.Start().ok());
  EXPECT_EQ(run.RunFor(0), RunState::kRunning);
  EXPECT_EQ(m_network.iteration, 0);
}

TEST_F(TrainingRunSlices, ChangeNothingInTheResult) {
  m_network.MaxIterations = 3;
  HoldBack(m_network, 1);
  Network whole = m_network;
  TrainingRun sliced_run(m_network, m_clock, m_observer, kHistory);
  EXPECT_TRUE(sliced_run.Start().ok());
  int slices = 0;
  while (sliced_run.RunFor(0) == RunState::kRunning) ++slices;
  const std::string history = m_files.Get(kHistory).value();
  TrainingRun whole_run(whole, m_clock, m_observer, kHistory);
  EXPECT_TRUE(whole_run.Start().ok());
  EXPECT_EQ(whole_run.RunFor(1000), RunState::kComplete);
  EXPECT_GT(slices, 20);
  EXPECT_EQ(WeightBits(m_network), WeightBits(whole));
  EXPECT_EQ(m_files.Get(kHistory), history);
}

}  // namespace
}  // namespace tarn
