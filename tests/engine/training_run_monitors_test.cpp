#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "engine/training_run_fixture.h"

namespace tarn {
namespace {

class TrainingRunMonitors : public TrainingRunFixture {
 protected:
  void Run(Network& network) {
    TrainingRun run(network, m_clock, m_observer, kHistory);
    EXPECT_TRUE(run.Start().ok());
    RunOut(run);
  }

  // What the monitors make of the outputs as they are, in the order of the test list.
  template <typename Sum>
  static MonitorSums<Sum> TestSums(const Network& network, float tolerance) {
    MonitorSums<Sum> sums;
    for (const int32_t pattern : network.test_list) {
      const auto row = static_cast<size_t>(pattern);
      sums.Add(network.targets.Row(row), OutputLayer(network).activations.Row(row), tolerance);
    }
    return sums;
  }
};

TEST_F(TrainingRunMonitors, ShowNothingOfATestSetThatIsNotThere) {
  Network network = Make({2, 3, 1}, 5);
  network.Tolerance = 1;
  Run(network);
  EXPECT_EQ(network.rms_test, 0);
  EXPECT_EQ(network.correlation_test, 0);
  EXPECT_EQ(network.within_test, 0);
  EXPECT_EQ(network.within_train, 100);
}

TEST_F(TrainingRunMonitors, CountNothingWithinATolerance0) {
  Network network = Make({2, 3, 1}, 8);
  HoldBack(network, 3);
  Run(network);
  EXPECT_EQ(network.within_train, 0);
  EXPECT_EQ(network.within_test, 0);
  EXPECT_GT(network.rms_test, 0);
}

TEST_F(TrainingRunMonitors, TestWithTheWeightsOfTheMomentInSinglePrecision) {
  Network network = Make({2, 3, 2}, 30);
  HoldBack(network, 17);
  network.Tolerance = 0.15F;
  Run(network);
  const MonitorSums<float> sums = TestSums<float>(network, 0.15F);
  EXPECT_EQ(Bits(network.rms_test), Bits(std::sqrt(sums.squared_error / 34.0F)));
  EXPECT_EQ(Bits(network.correlation_test), Bits(Correlation(sums, 34)));
  EXPECT_EQ(Bits(network.within_test), Bits(PercentWithin(sums.hits, 34)));
  EXPECT_GT(sums.hits, 0);
  EXPECT_LT(sums.hits, 34);
  for (const int32_t pattern : network.test_list) {
    const float before = OutputLayer(network).activations.Row(static_cast<size_t>(pattern))[0];
    reference::Forward(network, pattern);
    EXPECT_EQ(OutputLayer(network).activations.Row(static_cast<size_t>(pattern))[0], before);
  }
}

TEST_F(TrainingRunMonitors, AddUpTheTestSetInSingleWhereTrainingAddsUpInDouble) {
  // Outputs and targets that differ only in their last digits, over many patterns.
  Network network = Make({1, 1, 1}, 600);
  HoldBack(network, 300);
  for (size_t p = 0; p < 600; ++p) {
    const size_t i = p % 300;
    network.layers[0].activations.Row(p)[0] = 0.5F + 0.002F * static_cast<float>(i % 7);
    network.targets.Row(p)[0] = 0.6F + 0.0003F * static_cast<float>(i % 5);
  }
  network.Eta = 0;
  network.MaxIterations = 1;
  Run(network);
  EXPECT_EQ(Bits(network.correlation_test), Bits(Correlation(TestSums<float>(network, 0), 300)));
  // The training set holds the same data.
  EXPECT_EQ(Bits(network.correlation_train), Bits(Correlation(TestSums<double>(network, 0), 300)));
  EXPECT_NE(network.correlation_train, network.correlation_test);
  EXPECT_EQ(Bits(network.rms_train), Bits(network.rms_test));
}

TEST_F(TrainingRunMonitors, NeverTrainOnTestPatterns) {
  Network network = Make({2, 3, 1}, 8);
  HoldBack(network, 3);
  Network other = network;
  for (size_t p = 5; p < 8; ++p) other.targets.Row(p)[0] = 0.9F;
  Run(network);
  Run(other);
  EXPECT_EQ(WeightBits(network), WeightBits(other));
  EXPECT_EQ(network.rms_train, other.rms_train);
  EXPECT_NE(network.rms_test, other.rms_test);
}

TEST_F(TrainingRunMonitors, HoldErrorsAgainstTheToleranceOfNormalizedTargets) {
  // One pattern whose output stays 0.5: an error of 0.25, 0.25 x 20 / 0.7 = 7.14 in data units.
  Network network = Make({1, 1, 1}, 1);
  for (Layer& layer : network.layers) std::ranges::fill(layer.weights.All(), 0.0F);
  network.targets.Row(0)[0] = 0.75F;
  network.Eta = 0;
  network.targ_norm = 1;
  network.target_limits.lower[0] = 10;
  network.target_limits.upper[0] = 30;
  network.Tolerance = 7.15F;
  Run(network);
  EXPECT_EQ(network.within_train, 100);
  network.Tolerance = 7.14F;
  Run(network);
  EXPECT_EQ(network.within_train, 0);
  network.targ_norm = 0;
  network.Tolerance = 0.25F;  // strictly below
  Run(network);
  EXPECT_EQ(network.within_train, 0);
}

TEST_F(TrainingRunMonitors, FollowAToleranceThatChangesDuringTheRun) {
  Network network = Make({2, 3, 1}, 5);
  network.MaxIterations = 2;
  TrainingRun run(network, m_clock, m_observer, kHistory);
  EXPECT_TRUE(run.Start().ok());
  m_observer.on_screen = [&] {
    network.Tolerance = 1;
    if (network.iteration == 1) run.Halt();
  };
  EXPECT_EQ(run.RunFor(1000), RunState::kHalted);
  EXPECT_EQ(network.within_train, 0);
  run.Resume();
  RunOut(run);
  EXPECT_EQ(network.within_train, 100);
}

class TrainingRunAutoSave : public TrainingRunFixture {
 protected:
  // The iterations at which snapshots are stored.
  std::vector<int32_t> Snapshots(Network& network) {
    std::vector<int32_t> iterations;
    m_observer.on_snapshot = [&] { iterations.push_back(network.iteration); };
    TrainingRun run(network, m_clock, m_observer, kHistory);
    EXPECT_TRUE(run.Start().ok());
    RunOut(run);
    EXPECT_EQ(network.iteration, network.MaxIterations);
    m_has_snapshot = run.has_snapshot();
    return iterations;
  }

  bool m_has_snapshot = false;
};

TEST_F(TrainingRunAutoSave, StoresAtEveryMultipleOfItsRate) {
  Network network = Make({2, 3, 1}, 5);
  network.SaveRate = 3;
  EXPECT_EQ(Snapshots(network), (std::vector<int32_t>{3, 6, 9}));
  EXPECT_TRUE(m_has_snapshot);
  network.SaveRate = 10;
  EXPECT_EQ(Snapshots(network), (std::vector<int32_t>{10}));
}

TEST_F(TrainingRunAutoSave, StoresNothingAtARateOf0OrBelow) {
  Network network = Make({2, 3, 1}, 5);
  for (const int32_t rate : {0, -1, 11}) {
    network.SaveRate = rate;
    EXPECT_TRUE(Snapshots(network).empty()) << rate;
    EXPECT_FALSE(m_has_snapshot) << rate;
  }
}

TEST_F(TrainingRunAutoSave, ShowsThatItStoresAndThatTrainingGoesOn) {
  Network network = Make({2, 3, 1}, 5);
  network.SaveRate = 2;
  network.MaxIterations = 3;
  Snapshots(network);
  EXPECT_EQ(m_observer.events,
            (std::vector<std::string>{"screen", "screen", "AutoSave Network", "snapshot",
                                      "Network Training", "screen", "Training Run Complete!"}));
}

TEST_F(TrainingRunAutoSave, IsSilentWhenASnapshotFails) {
  Network network = Make({2, 3, 1}, 5);
  network.SaveRate = 3;
  m_observer.stores = false;
  EXPECT_EQ(Snapshots(network).size(), 3U);
  EXPECT_FALSE(m_has_snapshot);
  EXPECT_EQ(m_observer.events.back(), "Training Run Complete!");
}

TEST_F(TrainingRunAutoSave, ShowsNothingWithoutAStore) {
  Network network = Make({2, 3, 1}, 5);
  network.SaveRate = 3;
  m_observer.can_store = false;
  EXPECT_TRUE(Snapshots(network).empty());
  EXPECT_EQ(m_observer.Count("AutoSave Network"), 0);
  EXPECT_EQ(m_observer.Count("Network Training"), 0);
}

}  // namespace
}  // namespace tarn
