#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "engine/training_run_fixture.h"

namespace tarn {
namespace {

TEST(TimeRemainingText, GivesPlainNumbersOfHoursMinutesAndSeconds) {
  EXPECT_EQ(TimeRemainingText(0), "0:0:0");
  EXPECT_EQ(TimeRemainingText(59), "0:0:59");
  EXPECT_EQ(TimeRemainingText(60), "0:1:0");
  EXPECT_EQ(TimeRemainingText(3661), "1:1:1");
  EXPECT_EQ(TimeRemainingText(359999), "99:59:59");
  EXPECT_EQ(TimeRemainingText(int64_t{3600} * 5000000000), "5000000000:0:0");
}

class TrainingRunTiming : public TrainingRunFixture {
 protected:
  // 5 patterns, 13 connections.
  TrainingRunTiming() : m_network(Make({2, 3, 1}, 5)) {}

  // The figures at each screen update, each iteration taking `ms` milliseconds of training.
  std::vector<RunFigures> FiguresOf(TrainingRun& run, int64_t ms) {
    std::vector<RunFigures> figures;
    m_observer.on_screen = [&, ms] {
      figures.push_back(run.figures());
      m_clock.Advance(ms);
    };
    EXPECT_TRUE(run.Start().ok());
    RunOut(run);
    return figures;
  }

  Network m_network;
};

TEST_F(TrainingRunTiming, TellsFractionTimeRemainingAndSpeed) {
  TrainingRun run(m_network, m_clock, m_observer, kHistory);
  const std::vector<RunFigures> figures = FiguresOf(run, 10500);
  ASSERT_EQ(figures.size(), 10U);
  EXPECT_EQ(figures[1].fraction_complete, 0.2);
  EXPECT_EQ(figures[1].seconds_remaining, 42);  // 10.5 s / 0.2 x 0.8
  EXPECT_DOUBLE_EQ(figures[1].speed, 5.0 * 2 * 13 / (10.5 * 1000));
  EXPECT_EQ(figures[2].fraction_complete, 0.3);
  EXPECT_EQ(figures[2].seconds_remaining, 49);  // 21 s / 0.3 x 0.7
  EXPECT_DOUBLE_EQ(figures[2].speed, 5.0 * 3 * 13 / (21.0 * 1000));
}

TEST_F(TrainingRunTiming, HasNothingLeftAtMaxIterations) {
  TrainingRun run(m_network, m_clock, m_observer, kHistory);
  const RunFigures last = FiguresOf(run, 1000).back();
  EXPECT_EQ(last.fraction_complete, 1.0);
  EXPECT_EQ(TimeRemainingText(last.seconds_remaining), "0:0:0");
}

TEST_F(TrainingRunTiming, NeverTellsLessThanNothing) {
  TrainingRun run(m_network, m_clock, m_observer, kHistory);
  m_observer.on_screen = [this] {
    m_clock.Advance(1000);
    m_network.MaxIterations = 2;
  };
  EXPECT_TRUE(run.Start().ok());
  RunOut(run);
  m_network.MaxIterations = 1;
  EXPECT_TRUE(run.Start().ok());
  m_clock.Advance(5000);
  RunOut(run);
  EXPECT_EQ(m_network.iteration, 3);
  EXPECT_EQ(run.figures().fraction_complete, 3.0);
  EXPECT_EQ(run.figures().seconds_remaining, 0);
}

TEST_F(TrainingRunTiming, HasNoSpeedBeforeAnyTimeHasPassed) {
  TrainingRun run(m_network, m_clock, m_observer, kHistory);
  for (const RunFigures& figures : FiguresOf(run, 0)) EXPECT_EQ(figures.speed, 0.0);
}

TEST_F(TrainingRunTiming, RoundsThePatternsUpToWholeGroupsForTheSpeed) {
  m_network.WeightRate = 3;
  TrainingRun run(m_network, m_clock, m_observer, kHistory);
  EXPECT_DOUBLE_EQ(FiguresOf(run, 1000)[1].speed, 6.0 * 2 * 13 / 1000);
  run.SetGroupSize(12);
  m_network.MaxIterations = 12;
  EXPECT_DOUBLE_EQ(FiguresOf(run, 1000)[1].speed, 12.0 * 12 * 13 / 1000);
}

TEST_F(TrainingRunTiming, KeepsTheRoundedPatternsOfTheStart) {
  m_network.WeightRate = 3;
  TrainingRun run(m_network, m_clock, m_observer, kHistory);
  m_observer.on_screen = [&] {
    run.SetGroupSize(1);
    m_clock.Advance(1000);
  };
  EXPECT_TRUE(run.Start().ok());
  RunOut(run);
  EXPECT_DOUBLE_EQ(run.figures().speed, 6.0 * 10 * 13 / 9000);
}

TEST_F(TrainingRunTiming, BeginsAnewAtALaterStart) {
  TrainingRun run(m_network, m_clock, m_observer, kHistory);
  FiguresOf(run, 1000);
  m_clock.Advance(3600000);
  m_network.MaxIterations = 20;
  const std::vector<RunFigures> figures = FiguresOf(run, 1000);
  EXPECT_EQ(figures[0].speed, 0.0);
  EXPECT_EQ(figures[1].seconds_remaining, 0);  // 1 s / 0.6 x 0.4
  EXPECT_DOUBLE_EQ(figures[1].speed, 5.0 * 12 * 13 / 1000);
}

TEST_F(TrainingRunTiming, LeavesHaltedTimeOutOfBothFigures) {
  TrainingRun run(m_network, m_clock, m_observer, kHistory);
  m_observer.on_screen = [&] {
    m_clock.Advance(1000);
    if (m_network.iteration == 1) run.Halt();
  };
  EXPECT_TRUE(run.Start().ok());
  EXPECT_EQ(run.RunFor(1000), RunState::kHalted);
  m_clock.Advance(60000);
  EXPECT_EQ(run.RunFor(1000), RunState::kHalted);
  m_clock.Advance(60000);
  run.Resume();
  m_observer.on_screen = [&] { run.Stop(); };
  EXPECT_EQ(RunOut(run), RunState::kStopped);
  EXPECT_EQ(m_network.iteration, 2);
  EXPECT_EQ(run.figures().seconds_remaining, 4);  // 1 s / 0.2 x 0.8
  EXPECT_DOUBLE_EQ(run.figures().speed, 5.0 * 2 * 13 / 1000);
}

TEST_F(TrainingRunTiming, AlternatesTwoTextsWhileHalted) {
  TrainingRun run(m_network, m_clock, m_observer, kHistory);
  m_observer.on_screen = [&run] { run.Halt(); };
  EXPECT_TRUE(run.Start().ok());
  run.RunFor(1000);
  const std::vector<uint32_t> weights = WeightBits(m_network);
  const auto wait = [&](int64_t ms) {
    m_clock.Advance(ms);
    run.RunFor(1000);
    return m_observer.events;
  };
  using Events = std::vector<std::string>;
  EXPECT_EQ(m_observer.events, (Events{"screen", "NOTICE!"}));
  EXPECT_EQ(wait(1499).back(), "NOTICE!");
  EXPECT_EQ(wait(1), (Events{"screen", "NOTICE!", "Network Training Halted"}));
  EXPECT_EQ(wait(1499).size(), 3U);
  EXPECT_EQ(wait(1).back(), "NOTICE!");
  EXPECT_EQ(wait(1500).back(), "Network Training Halted");
  EXPECT_EQ(WeightBits(m_network), weights);
  run.Halt();
  EXPECT_EQ(m_observer.events.size(), 5U);
  run.Resume();
  EXPECT_EQ(run.state(), RunState::kRunning);
  EXPECT_EQ(m_observer.events.back(), "Network Training");
}

class TrainingRunInterfaceTime : public SteppedRun {};

TEST_F(TrainingRunInterfaceTime, CountsForTheTimeRemainingButNotForTheSpeed) {
  m_network.MaxIterations = 4;
  m_observer.on_screen = [this] { m_clock.Advance(500); };
  TrainingRun run(m_network, m_clock, m_observer, kHistory);
  EXPECT_TRUE(run.Start().ok());
  int slices = 0;
  while (m_network.iteration == 0) {
    m_clock.Advance(100);
    run.RunFor(0);
    ++slices;
  }
  EXPECT_EQ(run.figures().speed, 0.0);
  EXPECT_EQ(run.figures().seconds_remaining, slices * 3 / 10);
  while (m_network.iteration < 2) {
    m_clock.Advance(100);
    run.RunFor(0);
  }
  const double connections = 401 * 250 + 251;
  EXPECT_DOUBLE_EQ(run.figures().speed, 3 * 2 * connections / 500);
}

}  // namespace
}  // namespace tarn
