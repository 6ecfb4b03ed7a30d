#include "browser/target_checks.h"

#include "browser/report_test.h"

namespace tarn {
namespace {

class TargetChecks : public ReportTest {
 protected:
  std::vector<NodeCounts> Within(float tolerance) {
    return CountWithinTolerance(m_network, PatternSets(m_network).front(), tolerance);
  }
  std::vector<NodeCounts> Beyond(const Thresholds& thresholds) {
    return CountBeyondThresholds(m_network, PatternSets(m_network).front(), thresholds);
  }
  NodeCounts BeyondOne(float output, float target, const Thresholds& thresholds) {
    m_network = WithValues({{output}}, {{target}});
    return Beyond(thresholds).front();
  }
  std::vector<std::string> ThresholdReport(const Thresholds& thresholds) {
    return Lines([&](ReportFile& report) { WriteThresholdCheck(m_network, thresholds, report); });
  }

  Network m_network =
      WithValues({{0.5F, 0.0F}, {0.25F, 1.0F}, {1.0F, 0.5F}}, {{0.25F, 0.0F}, {0.5F, 0}, {1, 1}});
};

TEST_F(TargetChecks, ToleranceIsStrict) {
  using Counts = std::vector<NodeCounts>;
  EXPECT_EQ(Within(0.25F), (Counts{{1, 2}, {1, 2}}));
  EXPECT_EQ(Within(0.2500001F), (Counts{{3, 0}, {1, 2}}));
  EXPECT_EQ(Within(2.0F), (Counts{{3, 0}, {3, 0}}));
}

TEST_F(TargetChecks, WithToleranceZeroEveryPatternIsWrong) {
  EXPECT_EQ(Within(0.0F), (std::vector<NodeCounts>{{0, 3}, {0, 3}}));
}

TEST_F(TargetChecks, AnErrorThatIsNoNumberIsWrong) {
  m_network.targets.Row(0)[0] = NAN;
  EXPECT_EQ(Within(2.0F)[0], (NodeCounts{2, 1}));
}

TEST_F(TargetChecks, OutputsAboveTheUpperThresholdAgreeInSign) {
  const Thresholds upper{0.5F, {}};
  EXPECT_EQ(BeyondOne(0.7F, -1.0F, upper), (NodeCounts{0, 1}));
  EXPECT_EQ(BeyondOne(0.7F, 0.0F, upper), (NodeCounts{1, 0}));
  EXPECT_EQ(BeyondOne(0.7F, 0.1F, upper), (NodeCounts{1, 0}));
  EXPECT_EQ(BeyondOne(0.5F, -1.0F, upper), (NodeCounts{0, 0}));
  EXPECT_EQ(BeyondOne(-9.0F, 1.0F, upper), (NodeCounts{0, 0}));
}

TEST_F(TargetChecks, OutputsBelowTheLowerThresholdAgreeInSign) {
  const Thresholds lower{{}, -0.5F};
  EXPECT_EQ(BeyondOne(-0.7F, -1.0F, lower), (NodeCounts{1, 0}));
  EXPECT_EQ(BeyondOne(-0.7F, 1.0F, lower), (NodeCounts{0, 1}));
  EXPECT_EQ(BeyondOne(-0.7F, 0.0F, lower), (NodeCounts{1, 0}));
  EXPECT_EQ(BeyondOne(-0.5F, 1.0F, lower), (NodeCounts{0, 0}));
  EXPECT_EQ(BeyondOne(9.0F, -1.0F, lower), (NodeCounts{0, 0}));
}

TEST_F(TargetChecks, SignsOfTheSmallestValuesStillDisagree) {
  EXPECT_EQ(BeyondOne(-1e-30F, 1e-30F, {{}, 0.0F}), (NodeCounts{0, 1}));
}

// 0.15 as a float lies a little above the lower end of the band, and so does the target that is
// turned back into data units.
TEST_F(TargetChecks, ANormalizedTargetOfZeroIsWhatItTurnsBackInto) {
  m_network = WithValues({{-0.5F}}, {{0.15F}});
  m_network.targ_norm = 1;
  m_network.target_limits = {{0.0F}, {1.0F}};
  EXPECT_EQ(Beyond({{}, 0.0F}).front(), (NodeCounts{0, 1}));
}

TEST_F(TargetChecks, AnOutputBeyondBothThresholdsCountsTwice) {
  EXPECT_EQ(BeyondOne(0.5F, 1.0F, {0.2F, 0.8F}), (NodeCounts{2, 0}));
  EXPECT_EQ(BeyondOne(0.5F, -1.0F, {0.2F, 0.8F}), (NodeCounts{0, 2}));
  EXPECT_EQ(BeyondOne(0.5F, 1.0F, {0.8F, 0.2F}), (NodeCounts{0, 0}));
}

TEST_F(TargetChecks, AProductThatIsNoNumberIsNotCounted) {
  EXPECT_EQ(BeyondOne(0.7F, NAN, {0.5F, {}}), (NodeCounts{0, 0}));
}

TEST_F(TargetChecks, ComparesInDataUnits) {
  m_network = WithValues({{0.85F}, {0.15F}}, {{0.15F}, {0.15F}});
  m_network.targ_norm = 1;
  m_network.target_limits.lower = {-10.0F};
  m_network.target_limits.upper = {30.0F};
  EXPECT_EQ(Within(39.0F)[0], (NodeCounts{1, 1}));
  EXPECT_EQ(Within(41.0F)[0], (NodeCounts{2, 0}));
  EXPECT_EQ(Beyond({20.0F, -5.0F})[0], (NodeCounts{1, 1}));
}

TEST_F(TargetChecks, ToleranceReportOfTrainingAndTestData) {
  m_network.iteration = 9;
  HoldBack(m_network, 1);
  const std::vector<std::string> lines =
      Lines([this](ReportFile& report) { WriteToleranceCheck(m_network, 0.3F, report); });
  EXPECT_EQ(lines, (std::vector<std::string>{
                       " Tolerance Checking", "", " Network Name:  Net", " Iterations:    9",
                       " Tolerance:     0.300000", "",
                       " TRAINING DATA:", " Node                      Correct       Wrong",
                       " ----                      -------       -----",
                       " 1                               2           0",
                       " 2                               1           1", "",
                       " TEST DATA:", " Node                      Correct       Wrong",
                       " ----                      -------       -----",
                       " 1                               1           0",
                       " 2                               0           1"}));
}

TEST_F(TargetChecks, ReportOfRecallDataHasNoIterations) {
  m_network.mode = Mode::kRecall;
  m_network.RecallTargets = true;
  m_network.output_names = {"Rain", "A name of exactly 25 byte"};
  EXPECT_EQ(ThresholdReport({0.4F, 0.1F}),
            (std::vector<std::string>{" Threshold Checking", "", " Network Name:  Net",
                                      " Thresholds:     0.400000, 0.100000", "", " RECALL DATA:",
                                      " Node                      Correct       Wrong",
                                      " ----                      -------       -----",
                                      " Rain                            2           0",
                                      " A name of exactly 25 byte       3           0"}));
}

TEST_F(TargetChecks, ThresholdReportNamesWhatIsGiven) {
  EXPECT_EQ(ThresholdReport({0.4F, {}})[4], " Upper Threshold:     0.400000");
  EXPECT_EQ(ThresholdReport({{}, -0.4F})[4], " Lower Threshold:     -0.400000");
  EXPECT_FALSE(Thresholds().Given());
  EXPECT_TRUE((Thresholds{0.0F, {}}).Given());
  EXPECT_TRUE((Thresholds{{}, 0.0F}).Given());
}

TEST_F(TargetChecks, LoseNoCountToANameOfManyBytes) {
  m_network.output_names = {"Größe", "気温気温気温気温気温気温気温気温気温気温気温気温気"};
  const std::vector<std::string> lines = ThresholdReport({0.4F, {}});
  EXPECT_EQ(lines[lines.size() - 2], " Größe                           2           0");
  EXPECT_TRUE(lines.back().ends_with("       2           0")) << lines.back();
  EXPECT_TRUE(lines.back().starts_with(" 気温気温気温気温")) << lines.back();
}

}  // namespace
}  // namespace tarn
