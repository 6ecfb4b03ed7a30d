#include "engine/training_run.h"

#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

#include "engine/messages.h"
#include "engine/recall_run.h"
#include "engine/training_run_fixture.h"
#include "support/faulty_files.h"

namespace tarn {
namespace {

class TrainingRunTest : public TrainingRunFixture {
 protected:
  // The iterations at which the screen is updated while a run goes to its end.
  std::vector<int32_t> IterationsOf(Network& network) {
    std::vector<int32_t> iterations;
    m_observer.on_screen = [&] { iterations.push_back(network.iteration); };
    TrainingRun run(network, m_clock, m_observer, kHistory);
    EXPECT_TRUE(run.Start().ok());
    RunOut(run);
    return iterations;
  }

  std::vector<HistoryRecord> History() const {
    std::vector<HistoryRecord> records;
    HistoryReader reader(kHistory);
    for (HistoryRecord record; reader.Next(record);) records.push_back(record);
    return records;
  }
};

TEST_F(TrainingRunTest, ReadiesTheNetworkAndAnEmptyHistory) {
  Network network = Make({2, 3, 1}, 5);
  network.iteration = 7;
  network.rms_train = network.rms_test = network.correlation_train = 1;
  network.correlation_test = network.within_train = network.within_test = 1;
  m_files.Put(kHistory, "old");
  const TrainingRun run(network, m_clock, m_observer, kHistory);
  EXPECT_EQ(run.state(), RunState::kIdle);
  EXPECT_EQ(network.iteration, 0);
  EXPECT_EQ(network.rms_train, 0);
  EXPECT_EQ(network.rms_test, 0);
  EXPECT_EQ(network.correlation_train, 0);
  EXPECT_EQ(network.correlation_test, 0);
  EXPECT_EQ(network.within_train, 0);
  EXPECT_EQ(network.within_test, 0);
  EXPECT_EQ(m_files.Get(kHistory), "");
}

TEST_F(TrainingRunTest, BringsThePatternsPerUpdateIntoTheirRange) {
  struct Case {
    int32_t given, kept, group;
  };
  for (const Case& c : {Case{-3, 0, 5}, Case{0, 0, 5}, Case{3, 3, 3}, Case{5, 5, 5},
                        Case{2147483647, 5, 5}, Case{-2147483647 - 1, 0, 5}}) {
    Network network = Make({2, 3, 1}, 5);
    network.WeightRate = c.given;
    const TrainingRun run(network, m_clock, m_observer, kHistory);
    EXPECT_EQ(network.WeightRate, c.kept);
    EXPECT_EQ(run.group_size(), c.group);
  }
}

TEST_F(TrainingRunTest, DoesNothingUntilStarted) {
  Network network = Make({2, 3, 1}, 5);
  const std::vector<uint32_t> weights = WeightBits(network);
  TrainingRun run(network, m_clock, m_observer, kHistory);
  run.Stop();
  run.Halt();
  run.Resume();
  EXPECT_EQ(run.RunFor(1000), RunState::kIdle);
  EXPECT_EQ(WeightBits(network), weights);
  EXPECT_TRUE(m_observer.events.empty());
}

TEST_F(TrainingRunTest, DoesNotStartWithoutTrainingPatterns) {
  Network network = Make({2, 3, 1}, 5);
  HoldBack(network, 5);
  TrainingRun run(network, m_clock, m_observer, kHistory);
  EXPECT_TRUE(run.Start().ok());
  EXPECT_EQ(run.RunFor(1000), RunState::kIdle);
}

TEST_F(TrainingRunTest, TrainsGroupsThatRunOnOverTheEndOfTheList) {
  for (const int32_t group : {1, 2, 3, 4, 5}) {
    Network network = Make({2, 3, 2}, 5);
    network.WeightRate = group;
    Network plain_network = network;
    PlainRun plain(plain_network);
    TrainingRun run(network, m_clock, m_observer, kHistory);
    EXPECT_TRUE(run.Start().ok());
    EXPECT_EQ(RunOut(run), RunState::kComplete);
    for (int32_t iterations = 0; iterations < 10;) iterations += plain.Group(group) ? 1 : 0;
    EXPECT_EQ(WeightBits(network), WeightBits(plain_network)) << group;
    EXPECT_EQ(Bits(network.rms_train), Bits(plain.Rms())) << group;
    EXPECT_EQ(Bits(network.correlation_train), Bits(Correlation(plain.pass, 10))) << group;
    EXPECT_EQ(network.iteration, 10);
  }
}

TEST_F(TrainingRunTest, CountsAnIterationAfterTheUpdateOfTheGroupInWhichThePassEnds) {
  Network network = Make({2, 3, 1}, 5);
  network.WeightRate = 3;
  Network plain_network = network;
  PlainRun plain(plain_network);
  EXPECT_FALSE(plain.Group(3));
  EXPECT_TRUE(plain.Group(3));
  TrainingRun run(network, m_clock, m_observer, kHistory);
  std::vector<uint32_t> weights;
  float rms = 0;
  m_observer.on_screen = [&] {
    if (network.iteration > 1) return;
    weights = WeightBits(network);
    rms = network.rms_train;
  };
  EXPECT_TRUE(run.Start().ok());
  RunOut(run);
  EXPECT_EQ(weights, WeightBits(plain_network));
  EXPECT_EQ(Bits(rms), Bits(plain.Rms()));
}

TEST_F(TrainingRunTest, CountsOneIterationForAGroupThatHoldsSeveralPasses) {
  Network network = Make({2, 3, 1}, 5);
  Network plain_network = network;
  PlainRun plain(plain_network);
  TrainingRun run(network, m_clock, m_observer, kHistory);
  run.SetGroupSize(12);
  network.MaxIterations = 4;
  EXPECT_TRUE(run.Start().ok());
  RunOut(run);
  for (int i = 0; i < 4; ++i) EXPECT_TRUE(plain.Group(12));
  EXPECT_EQ(network.iteration, 4);
  EXPECT_EQ(WeightBits(network), WeightBits(plain_network));
  EXPECT_EQ(Bits(network.rms_train), Bits(plain.Rms()));
}

TEST_F(TrainingRunTest, TakesANewGroupSizeWithTheNextGroupAndNoneBelowOne) {
  Network network = Make({2, 3, 1}, 5);
  TrainingRun run(network, m_clock, m_observer, kHistory);
  Network plain_network = network;
  PlainRun plain(plain_network);
  m_observer.on_screen = [&] { run.SetGroupSize(-1); };
  network.MaxIterations = 2;
  EXPECT_TRUE(run.Start().ok());
  RunOut(run);
  EXPECT_EQ(run.group_size(), 1);
  EXPECT_TRUE(plain.Group(5));
  while (!plain.Group(1)) {
  }
  EXPECT_EQ(WeightBits(network), WeightBits(plain_network));
}

TEST_F(TrainingRunTest, IsCompleteAtMaxIterationsAndSaysSo) {
  Network network = Make({2, 3, 1}, 5);
  TrainingRun run(network, m_clock, m_observer, kHistory);
  EXPECT_TRUE(run.Start().ok());
  EXPECT_EQ(run.state(), RunState::kRunning);
  EXPECT_EQ(RunOut(run), RunState::kComplete);
  EXPECT_EQ(network.iteration, 10);
  EXPECT_EQ(m_observer.events.back(), "Training Run Complete!");
  EXPECT_EQ(run.RunFor(1000), RunState::kComplete);
  EXPECT_EQ(m_observer.Count("Training Run Complete!"), 1);
}

TEST_F(TrainingRunTest, CountsOnAtALaterStartWithANewHistory) {
  Network network = Make({2, 3, 1}, 5);
  TrainingRun run(network, m_clock, m_observer, kHistory);
  EXPECT_TRUE(run.Start().ok());
  RunOut(run);
  network.MaxIterations = 12;
  EXPECT_TRUE(run.Start().ok());
  EXPECT_TRUE(History().empty());
  EXPECT_EQ(RunOut(run), RunState::kComplete);
  EXPECT_EQ(network.iteration, 12);
  ASSERT_EQ(History().size(), 2U);
  EXPECT_EQ(History()[0].iteration, 11);
  EXPECT_EQ(History()[1].iteration, 12);
}

TEST_F(TrainingRunTest, DoesNotStartWithoutRoomForTheWork) {
  Network network;
  network.nLayers = 3;
  network.nPats = network.nTrain = 1;
  network.train_list = {0};
  for (Layer& layer : network.layers) layer.nUnits = std::numeric_limits<int32_t>::max();
  TrainingRun run(network, m_clock, m_observer, kHistory);
  EXPECT_EQ(run.Start().message(), kOutOfMemory);
  EXPECT_EQ(run.state(), RunState::kIdle);
  EXPECT_EQ(RunRecall(network).message(), kOutOfMemory);
  EXPECT_FALSE(network.results_ready);
}

TEST_F(TrainingRunTest, MakesOneMoreIterationWhenStartedAtItsEnd) {
  Network network = Make({2, 3, 1}, 5);
  TrainingRun run(network, m_clock, m_observer, kHistory);
  EXPECT_TRUE(run.Start().ok());
  RunOut(run);
  EXPECT_TRUE(run.Start().ok());
  EXPECT_EQ(RunOut(run), RunState::kComplete);
  EXPECT_EQ(network.iteration, 11);
}

TEST_F(TrainingRunTest, UpdatesTheScreenAtTheFirstTheLastAndEveryMultiple) {
  Network network = Make({2, 3, 1}, 5);
  network.UpdateRate = 4;
  EXPECT_EQ(IterationsOf(network), (std::vector<int32_t>{1, 4, 8, 10}));
  network.UpdateRate = 1;
  network.MaxIterations = 3;
  EXPECT_EQ(IterationsOf(network), (std::vector<int32_t>{1, 2, 3}));
  network.UpdateRate = 100;
  EXPECT_EQ(IterationsOf(network), (std::vector<int32_t>{1, 3}));
  network.UpdateRate = 0;
  EXPECT_EQ(IterationsOf(network), (std::vector<int32_t>{1, 2, 3}));
}

TEST_F(TrainingRunTest, AppendsTheFiguresOfEveryScreenUpdateToTheHistory) {
  Network network = Make({2, 3, 1}, 8);
  HoldBack(network, 3);
  network.Tolerance = 0.2F;
  network.LRC = 2;
  network.EtaMin = 0.01F;
  std::vector<HistoryRecord> shown;
  TrainingRun run(network, m_clock, m_observer, kHistory);
  m_observer.on_screen = [&] {
    EXPECT_EQ(History().size(), shown.size());  // the record follows the figures
    shown.push_back({network.iteration, network.rms_train, network.rms_test, network.Eta,
                     network.correlation_train, network.correlation_test, network.within_train,
                     network.within_test});
  };
  EXPECT_TRUE(run.Start().ok());
  RunOut(run);
  const std::vector<HistoryRecord> records = History();
  ASSERT_EQ(records.size(), 10U);
  for (size_t i = 0; i < records.size(); ++i) {
    EXPECT_EQ(EncodeHistoryRecord(records[i]), EncodeHistoryRecord(shown[i]));
  }
  EXPECT_NE(records[0].eta, records[9].eta);
}

TEST_F(TrainingRunTest, ShowsTheWeightsOfTheIterationInWhichLearnRateControlStarts) {
  Network network = Make({2, 3, 1}, 5);
  network.WeightRate = 1;
  network.LRC = 3;
  network.UpdateRate = 100;
  Network plain_network = network;
  std::vector<uint32_t> weights;
  m_observer.on_control = [&] { weights = WeightBits(network); };
  TrainingRun run(network, m_clock, m_observer, kHistory);
  EXPECT_TRUE(run.Start().ok());
  EXPECT_EQ(RunOut(run), RunState::kComplete);
  PlainRun plain(plain_network);
  for (int iterations = 0; iterations < 3;) iterations += plain.Group(1) ? 1 : 0;
  EXPECT_EQ(weights, WeightBits(plain_network));
}

TEST_F(TrainingRunTest, TellsWhenLearnRateControlStarts) {
  Network network = Make({2, 3, 1}, 5);
  network.LRC = 3;
  network.UpdateRate = 100;
  TrainingRun run(network, m_clock, m_observer, kHistory);
  EXPECT_TRUE(run.Start().ok());
  EXPECT_FALSE(run.learn_rate_control_started());
  RunOut(run);
  EXPECT_TRUE(run.learn_rate_control_started());
  EXPECT_EQ(m_observer.Count("control"), 1);
}

TEST_F(TrainingRunTest, TellsOnceWhenTheHistoryCannotBeOpened) {
  Network network = Make({2, 3, 1}, 5);
  TrainingRun run(network, m_clock, m_observer, "/nowhere/history");
  EXPECT_TRUE(m_observer.events.empty());
  EXPECT_TRUE(run.Start().ok());
  EXPECT_EQ(RunOut(run), RunState::kComplete);
  EXPECT_EQ(m_observer.Count("history failed"), 1);
  EXPECT_TRUE(run.Start().ok());
  RunOut(run);
  EXPECT_EQ(m_observer.Count("history failed"), 2);
}

TEST_F(TrainingRunTest, TrainsOnWithoutAHistoryThatCannotBeWritten) {
  Network network = Make({2, 3, 1}, 5);
  FaultyFiles faulty(m_files);
  const ScopedFileLayer layer(faulty);
  TrainingRun run(network, m_clock, m_observer, kHistory);
  m_observer.on_screen = [&] {
    if (network.iteration == 4) faulty.FailAt(1, FaultyFiles::Fault::kShortWrite);
    if (network.iteration == 6) faulty.StopFailing();
  };
  EXPECT_TRUE(run.Start().ok());
  EXPECT_EQ(RunOut(run), RunState::kComplete);
  EXPECT_EQ(m_observer.Count("history failed"), 1);
  EXPECT_EQ(m_files.Get(kHistory)->size(), 3 * kHistoryRecordSize);
  EXPECT_EQ(History().back().iteration, 3);
}

}  // namespace
}  // namespace tarn
