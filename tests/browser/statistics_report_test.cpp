#include "browser/statistics_report.h"

#include <cmath>
#include <numeric>

#include "browser/report_test.h"

namespace tarn {
namespace {

class StatisticsReport : public ReportTest {
 protected:
  std::vector<std::string> Report() {
    return Lines([this](ReportFile& report) { WriteStatistics(m_network, report); });
  }
  NodeStatistics First() {
    return ComputeStatistics(m_network, PatternSets(m_network).front()).front();
  }

  // One pattern whose error has this size.
  std::vector<std::string> WithError(float error) {
    m_network = WithValues({{error}}, {{0.0F}});
    return Report();
  }

  Network m_network = WithValues({{0.5F}, {0.25F}, {1.0F}}, {{0.25F}, {0.5F}, {0.5F}});
};

TEST_F(StatisticsReport, ComputesErrorBiasAndCorrelationByNode) {
  // Errors 0.25, -0.25, 0.5.
  const NodeStatistics node = First();
  EXPECT_EQ(node.rms_error, std::sqrt(0.375F / 3.0F));
  EXPECT_EQ(node.bias, 0.5F / 3.0F);
  EXPECT_EQ(node.largest_error, 0.5F);
  // n Sum(ot) - Sum(o) Sum(t) = 3 * 0.75 - 1.75 * 1.25, Do = 3 * 1.3125 - 1.75^2,
  // Dt = 3 * 0.5625 - 1.25^2.
  EXPECT_EQ(node.correlation, static_cast<float>(0.0625 / (std::sqrt(0.125) * std::sqrt(0.875))));
}

TEST_F(StatisticsReport, WritesAHeadingAndALinePerNode) {
  m_network.iteration = 5;
  EXPECT_EQ(Report(), (std::vector<std::string>{
                          " Network Statistics", "", " Network Name:  Net", " Iterations:    5", "",
                          " TRAINING DATA:",
                          " Node                 Std Dev           Bias      Max Error    "
                          "Correlation",
                          " ----                 -------           ----      ---------    "
                          "-----------",
                          " 1                    0.35355        0.16667        0.50000        "
                          "0.18898"}));
}

TEST_F(StatisticsReport, TellsTestDataFromTrainingData) {
  HoldBack(m_network, 1);
  const std::vector<std::string> lines = Report();
  ASSERT_EQ(lines.size(), 14U);
  EXPECT_EQ(lines[5], " TRAINING DATA:");
  EXPECT_EQ(lines[8], " 1                    0.25000     0.0000e+00        0.25000       -1.00000");
  EXPECT_EQ(lines[9], "");
  EXPECT_EQ(lines[10], " TEST DATA:");
  EXPECT_EQ(lines[13],
            " 1                    0.50000        0.50000        0.50000     0.0000e+00");
}

TEST_F(StatisticsReport, TakesTheSetsFromTheirLists) {
  m_network.train_list = {0, 2};
  m_network.test_list = {1};
  m_network.nTrain = 2;
  m_network.testPats = 1;
  const std::vector<PatternSet> sets = PatternSets(m_network);
  ASSERT_EQ(sets.size(), 2U);
  EXPECT_EQ(ComputeStatistics(m_network, sets[0])[0].bias, 0.375F);
  EXPECT_EQ(ComputeStatistics(m_network, sets[1])[0].bias, -0.25F);
}

TEST_F(StatisticsReport, RecallHasOneSetOfAllPatternsAndNoIterations) {
  m_network.mode = Mode::kRecall;
  m_network.RecallTargets = true;
  HoldBack(m_network, 1);
  const std::vector<std::string> lines = Report();
  ASSERT_EQ(lines.size(), 8U);
  EXPECT_EQ(lines[3], "");
  EXPECT_EQ(lines[4], " RECALL DATA:");
  EXPECT_EQ(lines[7], " 1                    0.35355        0.16667        0.50000        0.18898");
}

TEST_F(StatisticsReport, NamesNodesInThirteenCharacters) {
  m_network.output_names = {"A name of more than thirteen"};
  EXPECT_TRUE(Report()[8].starts_with(" A name of mor        0.35355")) << Report()[8];
}

TEST_F(StatisticsReport, OnePatternAndConstantOutputsHaveNoCorrelation) {
  EXPECT_EQ(WithError(0.5F)[8],
            " 1                    0.50000        0.50000        0.50000     0.0000e+00");
  m_network = WithValues({{0.5F}, {0.5F}, {0.5F}}, {{0.1F}, {0.7F}, {0.3F}});
  EXPECT_EQ(First().correlation, 0.0F);
  m_network = WithValues({{0.1F}, {0.7F}, {0.3F}}, {{0.5F}, {0.5F}, {0.5F}});
  EXPECT_EQ(First().correlation, 0.0F);
}

TEST_F(StatisticsReport, TakesNoRoundedRestForACorrelation) {
  for (const float output : {0.1F, 0.83F, 7.7F}) {
    m_network = WithValues({{output}}, {{0.1F}});
    EXPECT_EQ(First().correlation, 0.0F) << output;
  }
  Table varying;
  for (int i = 0; i < 150; ++i) varying.push_back({static_cast<float>(i % 7) * 0.1F});
  m_network = WithValues(Table(150, {0.37F}), varying);
  EXPECT_EQ(First().correlation, 0.0F);
  m_network = WithValues(varying, Table(150, {0.37F}));
  EXPECT_EQ(First().correlation, 0.0F);
}

TEST_F(StatisticsReport, LosesNoFigureToANameOfManyBytes) {
  const std::string before = Report()[8];
  const std::string word = "Температура воздуха";
  m_network.output_names = {word};
  const std::string line = Report()[8];
  EXPECT_EQ(line.substr(line.size() - 60), before.substr(before.size() - 60));
  EXPECT_EQ(line.substr(0, 13), " " + word.substr(0, 12));
  m_network.output_names = {"Größe"};
  EXPECT_TRUE(Report()[8].starts_with(" Größe        " + before.substr(14))) << Report()[8];
}

TEST_F(StatisticsReport, ChoosesTheFormByTheMagnitudeOfEachValue) {
  const auto maximum = [this](float error) { return WithError(error)[8].substr(44, 15); };
  EXPECT_EQ(maximum(0.00011F), "        0.00011");
  EXPECT_EQ(maximum(0.0001F), "     1.0000e-04");
  EXPECT_EQ(maximum(std::nextafter(0.0001F, 1.0F)), "        0.00010");
  EXPECT_EQ(maximum(0.0F), "     0.0000e+00");
  EXPECT_EQ(maximum(99999.99F), "    99999.99219");
  EXPECT_EQ(maximum(100000.0F), "     1.0000e+05");
  EXPECT_EQ(WithError(-0.00011F)[8].substr(29, 15), "       -0.00011");
  EXPECT_EQ(WithError(-100000.0F)[8].substr(29, 15), "    -1.0000e+05");
}

TEST_F(StatisticsReport, AddsUpInSinglePrecision) {
  // 2^24 + 1 is no float.
  m_network = WithValues({{16777216.0F}, {1.0F}, {1.0F}}, {{0}, {0}, {0}});
  EXPECT_EQ(First().bias, 16777216.0F / 3.0F);
}

TEST_F(StatisticsReport, ComparesInDataUnits) {
  m_network = WithValues({{0.85F}, {0.15F}}, {{0.15F}, {0.15F}});
  m_network.targ_norm = 1;
  m_network.target_limits.lower = {-10.0F};
  m_network.target_limits.upper = {30.0F};
  EXPECT_NEAR(First().largest_error, 40.0F, 1e-5F);
  EXPECT_NEAR(First().bias, 20.0F, 1e-5F);
}

TEST_F(StatisticsReport, ErrorsThatAreNoNumbersAreTold) {
  const std::vector<std::string> lines = WithError(NAN);
  EXPECT_EQ(lines[8].substr(0, 33), " 1                        nan    ");
  EXPECT_EQ(WithError(INFINITY)[8].substr(44, 15), "            inf");
}

}  // namespace
}  // namespace tarn
