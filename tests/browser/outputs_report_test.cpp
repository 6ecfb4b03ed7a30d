#include "browser/outputs_report.h"

#include <cmath>

#include "browser/report_test.h"

namespace tarn {
namespace {

class OutputsReport : public ReportTest {
 protected:
  OutputsReport() : m_network(WithValues({{0.25F, 0.5F}, {-0.5F, 2.0F}}, {{1.0F, 0.0F}, {0, 1}})) {
    m_network.iteration = 77;
  }

  std::vector<std::string> Report() {
    return Lines([this](ReportFile& report) { WriteOutputsReport(m_network, report); });
  }
  // The line of the last value.
  std::string LastLine() { return Report().back(); }

  void ToRecall(bool targets) {
    m_network.mode = Mode::kRecall;
    m_network.RecallTargets = targets;
  }

  // Node 2 is normalized between these.
  void SetLimits(float lower, float upper) {
    m_network.targ_norm = 1;
    m_network.target_limits.lower = {0.0F, lower};
    m_network.target_limits.upper = {1.0F, upper};
    for (float& target : m_network.targets.All()) target = 0.5F;
    for (float& output : OutputLayer(m_network).activations.All()) output = 0.85F;
  }

  Network m_network;
};

TEST_F(OutputsReport, PutsTargetAndOutputOfEveryNodeInLines) {
  EXPECT_EQ(Report(),
            (std::vector<std::string>{
                " Targets and Network Outputs", "", " Network Name:  Net", " Iterations:    77", "",
                "   1 => Output Node 1   (target,output) =      1.00000,      0.25000",
                "   1 => Output Node 2   (target,output) =      0.00000,      0.50000",
                "   2 => Output Node 1   (target,output) =      0.00000,     -0.50000",
                "   2 => Output Node 2   (target,output) =      1.00000,      2.00000"}));
}

TEST_F(OutputsReport, MarksTestPatterns) {
  m_network = WithValues(Table(4, {0.5F}), Table(4, {0.25F}));
  m_network.train_list = {1, 3};
  m_network.test_list = {0, 2};
  m_network.nTrain = m_network.testPats = 2;
  const std::vector<std::string> lines = Report();
  ASSERT_EQ(lines.size(), 10U);
  EXPECT_EQ(lines[4], " (Note: * = Test Pattern)");
  EXPECT_EQ(lines[5], "");
  EXPECT_EQ(lines[6], "   1*=> Output Node 1   (target,output) =      0.25000,      0.50000");
  EXPECT_EQ(lines[7], "   2 => Output Node 1   (target,output) =      0.25000,      0.50000");
  EXPECT_EQ(lines[8], "   3*=> Output Node 1   (target,output) =      0.25000,      0.50000");
  EXPECT_EQ(lines[9], "   4 => Output Node 1   (target,output) =      0.25000,      0.50000");
}

TEST_F(OutputsReport, NamesNodesInFifteenCharactersBesideTargets) {
  m_network.output_names = {"Rain", "A name of more than fifteen"};
  const std::vector<std::string> lines = Report();
  EXPECT_EQ(lines[5], "   1 => Rain            (target,output) =      1.00000,      0.25000");
  EXPECT_EQ(lines[6], "   1 => A name of more  (target,output) =      0.00000,      0.50000");
}

TEST_F(OutputsReport, RecallWithTargetsHasNoIterationsAndNoMarks) {
  ToRecall(true);
  m_network.testPats = 2;
  m_network.test_list = {0, 1};
  const std::vector<std::string> lines = Report();
  EXPECT_EQ(lines[0], " Targets and Network Outputs");
  EXPECT_EQ(lines[2], " Network Name:  Net");
  EXPECT_EQ(lines[3], "");
  EXPECT_EQ(lines[4], "   1 => Output Node 1   (target,output) =      1.00000,      0.25000");
}

TEST_F(OutputsReport, RecallWithoutTargetsPrintsOutputsAlone) {
  ToRecall(false);
  EXPECT_EQ(Report(), (std::vector<std::string>{" Network Outputs", "", " Network Name:  Net", "",
                                                "   1 => Output Node 1   =      0.25000",
                                                "   1 => Output Node 2   =      0.50000",
                                                "   2 => Output Node 1   =     -0.50000",
                                                "   2 => Output Node 2   =      2.00000"}));
}

TEST_F(OutputsReport, NamesWithoutTargetsArePaddedAndNotCut) {
  ToRecall(false);
  m_network.output_names = {"Rain", "Exactly twenty-five bytes"};
  const std::vector<std::string> lines = Report();
  EXPECT_EQ(lines[4], "   1 => Rain                      =      0.25000");
  EXPECT_EQ(lines[5], "   1 => Exactly twenty-five bytes =      0.50000");
  m_network.output_names[0] = "A name that has more than twenty-five";
  EXPECT_EQ(Report()[4], "   1 => A name that has more than twenty-five =      0.25000");
}

TEST_F(OutputsReport, TurnsValuesBackToDataUnits) {
  SetLimits(-10.0F, 30.0F);
  EXPECT_EQ(LastLine(), "   2 => Output Node 2   (target,output) =     10.00000,     30.00000");
}

TEST_F(OutputsReport, TakesTheFormOfANodeFromItsLimits) {
  const auto fixed = [this](float lower, float upper) {
    SetLimits(lower, upper);
    const std::string line = LastLine();
    return line.find("e+") == std::string::npos && line.find("e-") == std::string::npos;
  };
  EXPECT_TRUE(fixed(0.0F, 1.0F));
  EXPECT_TRUE(fixed(-0.00025F, 0.0F));
  EXPECT_TRUE(fixed(0.0F, 0.00025F));
  EXPECT_FALSE(fixed(0.0F, std::nextafter(0.00025F, 0.0F)));
  EXPECT_FALSE(fixed(-0.0002F, 0.0002F));
  EXPECT_TRUE(fixed(0.0F, 99999.99F));
  EXPECT_FALSE(fixed(0.0F, 100000.0F));
  EXPECT_FALSE(fixed(-100000.0F, 0.0F));
  EXPECT_TRUE(fixed(-99999.99F, 0.0001F));
}

TEST_F(OutputsReport, ExponentTwinsOfAllFourForms) {
  SetLimits(0.0F, 200000.0F);
  EXPECT_EQ(LastLine(), "   2 => Output Node 2   (target,output) =   1.0000e+05,   2.0000e+05");
  m_network.output_names = {"a", "b"};
  EXPECT_EQ(LastLine(), "   2 => b               (target,output) =   1.0000e+05,   2.0000e+05");
  ToRecall(false);
  EXPECT_EQ(LastLine(), "   2 => b                         =   2.0000e+05");
  m_network.output_names.clear();
  EXPECT_EQ(LastLine(), "   2 => Output Node 2   =   2.0000e+05");
}

TEST_F(OutputsReport, UnmeasuredLimitsTakeTheFixedForm) {
  OutputLayer(m_network).activations.Row(1)[1] = 1e-7F;
  EXPECT_EQ(LastLine(), "   2 => Output Node 2   (target,output) =      1.00000,      0.00000");
}

TEST_F(OutputsReport, OddValuesAreWrittenAsTheyAre) {
  const auto last = [this](float output) {
    OutputLayer(m_network).activations.Row(1)[1] = output;
    return LastLine().substr(41);
  };
  EXPECT_EQ(last(-0.0F), "      1.00000,     -0.00000");
  EXPECT_EQ(last(INFINITY), "      1.00000,          inf");
  EXPECT_EQ(last(-1e9F), "      1.00000, -1000000000.00000");
}

TEST_F(OutputsReport, NumbersOfFourDigitsPushTheLine) {
  m_network = WithValues(Table(1000, {0.5F}), Table(1000, {0.25F}));
  EXPECT_EQ(LastLine(), " 1000 => Output Node 1   (target,output) =      0.25000,      0.50000");
}

TEST_F(OutputsReport, LosesNoFigureToANameBehindALongPatternNumber) {
  m_network = WithValues(Table(10000, {0.25F}), Table(10000, {0.75F}));
  m_network.output_names = {"Температура воздуха"};
  EXPECT_TRUE(LastLine().ends_with("(target,output) =      0.75000,      0.25000")) << LastLine();
  m_network.mode = Mode::kRecall;
  m_network.RecallTargets = false;
  m_network.output_names = {"気温気温気温気温気温気温気温気温気温気温気温気温気"};
  EXPECT_TRUE(LastLine().ends_with(" =      0.25000")) << LastLine();
}

TEST_F(OutputsReport, LosesNoFigureToANameOfManyBytes) {
  m_network.output_names = {"name", "気温気温気温気温気温気温気温気"};
  EXPECT_EQ(LastLine(),
            "   2 => 気温気温気温          (target,output) =      1.00000,      2.00000");
}

}  // namespace
}  // namespace tarn
