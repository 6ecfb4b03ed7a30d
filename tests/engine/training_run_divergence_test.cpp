#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <vector>

#include "engine/training_run_fixture.h"

// Runs whose error becomes infinite or not a number.

namespace tarn {
namespace {

constexpr float kHuge = 1e30F;  // the square of it is infinite
constexpr float kNoNumber = std::numeric_limits<float>::quiet_NaN();

class TrainingRunDivergence : public TrainingRunFixture {
 protected:
  TrainingRunDivergence() {
    m_network.UpdateRate = 100;
    m_network.SaveRate = 1;
    m_network.MaxIterations = 1000;
  }

  // Trains so many iterations.
  void TrainTo(TrainingRun& run, int32_t iteration) {
    EXPECT_TRUE(run.Start().ok());
    while (m_network.iteration < iteration) ASSERT_EQ(run.RunFor(0), RunState::kRunning);
  }
  int64_t HistoryRecords() { return static_cast<int64_t>(m_files.Get(kHistory)->size() / 32); }

  Network m_network = Make({3, 4, 2}, 9);
};

TEST_F(TrainingRunDivergence, StopsAtTheIterationWithAScreenUpdateAndWithoutASnapshot) {
  TrainingRun run(m_network, m_clock, m_observer, kHistory);
  TrainTo(run, 5);
  m_network.targets.Row(4)[1] = kHuge;
  EXPECT_EQ(RunOut(run), RunState::kDiverged);
  EXPECT_TRUE(std::isinf(m_network.rms_train));
  EXPECT_LE(m_network.iteration, 7) << "one may have been under way";
  ASSERT_GE(m_observer.events.size(), 2U);
  EXPECT_THAT(std::vector(m_observer.events.end() - 2, m_observer.events.end()),
              testing::ElementsAre("screen", "Training Run Stopped"));
  EXPECT_EQ(m_observer.Count("snapshot"), m_network.iteration - 1) << "but of the last one";
  EXPECT_EQ(HistoryRecords(), 2) << "of the first iteration and the last";
}

TEST_F(TrainingRunDivergence, StopsWhereSinglePatternsFollowAtOnce) {
  m_network.WeightRate = 1;
  m_network.SaveRate = 0;
  TrainingRun run(m_network, m_clock, m_observer, kHistory);
  TrainTo(run, 2);
  m_network.targets.Row(0)[0] = kHuge;
  const int32_t before = m_network.iteration;
  EXPECT_EQ(RunOut(run), RunState::kDiverged);
  EXPECT_LE(m_network.iteration, before + 2) << "the iteration may have been under way";
}

TEST_F(TrainingRunDivergence, StopsWhenWeightsAreNoNumbers) {
  TrainingRun run(m_network, m_clock, m_observer, kHistory);
  TrainTo(run, 3);
  m_network.layers[1].weights.Row(0)[0] = kNoNumber;
  EXPECT_TRUE(run.WeightsReplaced().ok());
  EXPECT_EQ(RunOut(run), RunState::kDiverged);
  EXPECT_TRUE(std::isnan(m_network.rms_train));
}

TEST_F(TrainingRunDivergence, CountsBeforeTheLimitThatIsReachedWithIt) {
  m_network.MaxIterations = 1;
  m_network.targets.Row(0)[0] = kHuge;
  TrainingRun run(m_network, m_clock, m_observer, kHistory);
  EXPECT_TRUE(run.Start().ok());
  EXPECT_EQ(RunOut(run), RunState::kDiverged);
  EXPECT_EQ(m_network.iteration, 1);
}

TEST_F(TrainingRunDivergence, DoesNotKeepARunFromGoingOnWithOtherData) {
  const float target = m_network.targets.Row(0)[0];
  m_network.targets.Row(0)[0] = kHuge;
  TrainingRun run(m_network, m_clock, m_observer, kHistory);
  EXPECT_TRUE(run.Start().ok());
  EXPECT_EQ(RunOut(run), RunState::kDiverged);
  m_network.targets.Row(0)[0] = target;
  InitializeRandomWeights(m_network, 1);
  EXPECT_TRUE(run.WeightsReplaced().ok());
  EXPECT_TRUE(run.Start().ok());
  EXPECT_EQ(RunOut(run), RunState::kComplete);
}

}  // namespace
}  // namespace tarn
