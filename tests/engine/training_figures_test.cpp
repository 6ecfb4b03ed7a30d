#include "engine/training_figures.h"

#include <gtest/gtest.h>

namespace tarn {
namespace {

class TrainingFiguresTest : public testing::Test {
 protected:
  TrainingFiguresTest() {
    m_network.iteration = 6;
    m_network.rms_train = 0.125F;
    m_network.rms_test = 0.25F;
    m_network.Eta = 0.5F;
    m_network.correlation_train = 0.75F;
    m_network.correlation_test = -0.5F;
    m_network.within_train = 99.96F;
    m_network.within_test = 50.0F;
    m_network.testPats = 3;
    m_network.Tolerance = 0.1F;
    m_run.fraction_complete = 0.5;
    m_run.seconds_remaining = 3661;
    m_run.speed = 1234.6;
  }

  TrainingFigures Figures() const { return FiguresOf(m_network, m_run); }

  Network m_network;
  RunFigures m_run;
};

TEST_F(TrainingFiguresTest, HaveTheirFormats) {
  const TrainingFigures figures = Figures();
  EXPECT_EQ(figures.rms_train, "0.125000");
  EXPECT_EQ(figures.rms_test, "0.250000");
  EXPECT_EQ(figures.eta, "0.500000");
  EXPECT_EQ(figures.percent_complete, " 50.0%");
  EXPECT_EQ(figures.speed, "1235");
  EXPECT_EQ(figures.within_train, "100.0%");
  EXPECT_EQ(figures.within_test, " 50.0%");
  EXPECT_EQ(figures.correlation_train, "0.750000");
  EXPECT_EQ(figures.correlation_test, "-0.500000");
  EXPECT_EQ(figures.time_remaining, "1:1:1");
}

TEST_F(TrainingFiguresTest, ShowNothingOfATestSetThatIsNotThere) {
  m_network.testPats = 0;
  const TrainingFigures figures = Figures();
  EXPECT_EQ(figures.rms_test + figures.within_test + figures.correlation_test, "");
  EXPECT_EQ(figures.within_train, "100.0%");
}

TEST_F(TrainingFiguresTest, ShowNoPercentagesWithoutATolerance) {
  m_network.Tolerance = 0;
  const TrainingFigures figures = Figures();
  EXPECT_EQ(figures.within_train + figures.within_test, "");
  EXPECT_EQ(figures.rms_test, "0.250000");
}

TEST_F(TrainingFiguresTest, EstimateTheTimeFromTheSixthIterationOn) {
  m_network.iteration = 5;
  EXPECT_EQ(Figures().time_remaining, "");
}

TEST_F(TrainingFiguresTest, TitleAMinimizedWindow) {
  EXPECT_EQ(MinimizedTitle(m_network), "Tarn: Iteration - 6; Error 0.12500");
}

}  // namespace
}  // namespace tarn
