#include "browser/descriptive_reports.h"

#include "browser/report_test.h"

namespace tarn {
namespace {

class DescriptiveReports : public ReportTest {
 protected:
  DescriptiveReports() : m_network(MakeNetwork({2, 3, 4, 1}, {kGaussian, kTanh, kSech}, 5)) {
    m_network.NetName = "Weather";
    m_network.PatName = "days.txt";
    m_network.TargName = "rain.txt";
    m_network.PatCol = 2;
    m_network.TargCol = 7;
    m_network.pat_norm = 1;
    m_network.iteration = 1234567;
    m_network.rms_train = 0.125F;
    m_network.rms_test = 0.25F;
    m_network.Eta = 0.3F;
    m_network.Alpha = 0.9F;
    m_network.FastProp = 1.5F;
  }

  std::vector<std::string> Information() {
    return Lines([this](ReportFile& report) { WriteInformation(m_network, report); });
  }
  std::vector<std::string> Weights() {
    return Lines([this](ReportFile& report) { WriteWeights(m_network, report); });
  }

  Network m_network;
};

TEST_F(DescriptiveReports, InformationTellsLayersConnectionsAndTraining) {
  HoldBack(m_network, 2);
  m_network.overMeth = kTestEnding;
  EXPECT_EQ(Information(), (std::vector<std::string>{" Network Name:         Weather",
                                                     "",
                                                     " Number of Layers:     4",
                                                     "",
                                                     " Input Layer:",
                                                     "   Nodes:              2",
                                                     "   Transfer Function:  Linear",
                                                     "",
                                                     " Hidden Layer 1:",
                                                     "   Nodes:              3",
                                                     "   Transfer Function:  Gaussian",
                                                     "",
                                                     " Hidden Layer 2:",
                                                     "   Nodes:              4",
                                                     "   Transfer Function:  Tanh",
                                                     "",
                                                     " Output Layer:",
                                                     "   Nodes:              1",
                                                     "   Transfer Function:  Sech",
                                                     "",
                                                     " Connections:FULL",
                                                     "",
                                                     " Training Information:",
                                                     "   Iterations:         1234567",
                                                     "   Training Error:     0.125000",
                                                     "   Test Set Error:     0.250000",
                                                     "   Learn Rate:         0.300000",
                                                     "   Momentum Factor:    0.900000",
                                                     "   Fast-Prop Coef:     1.500000",
                                                     "   Input Node File:    days.txt",
                                                     "   Input Start Column: 2",
                                                     "   Normalize Inputs:   YES",
                                                     "   Output Node File:   rain.txt",
                                                     "   Output Start Column:7",
                                                     "   Normalize Outputs:  NO",
                                                     "   Training Patterns:  3",
                                                     "   Test Patterns:      2",
                                                     "   Inclusion Method:   ENDING"}));
}

TEST_F(DescriptiveReports, InformationListsRemovedConnectionsByLayerNodeAndSource) {
  m_network.fully_connected = false;
  m_network.layers[1].masks.Row(0)[1] = 0.0F;
  m_network.layers[1].masks.Row(2)[0] = 0.0F;
  m_network.layers[1].masks.Row(2)[1] = 0.0F;
  m_network.layers[3].masks.Row(0)[3] = 0.0F;
  const std::vector<std::string> lines = Information();
  const std::vector<std::string> part(lines.begin() + 20, lines.begin() + 27);
  EXPECT_EQ(part,
            (std::vector<std::string>{
                " Connections Removed:", "   From:  Layer 1 Node 2    To: Layer 2 Node 1",
                "   From:  Layer 1 Node 1    To: Layer 2 Node 3",
                "   From:  Layer 1 Node 2    To: Layer 2 Node 3",
                "   From:  Layer 3 Node 4    To: Layer 4 Node 1", "", " Training Information:"}));
}

TEST_F(DescriptiveReports, InformationEndsAfterTheOutputLayerInRecall) {
  m_network.mode = Mode::kRecall;
  const std::vector<std::string> lines = Information();
  ASSERT_EQ(lines.size(), 20U);
  EXPECT_EQ(lines[16], " Output Layer:");
  EXPECT_EQ(lines[18], "   Transfer Function:  Sech");
  EXPECT_EQ(lines[19], "");
}

TEST_F(DescriptiveReports, InformationOfThreeLayersHasOneHiddenLayerNumberedOne) {
  m_network = MakeNetwork({2, 3, 1}, {kSigmoid}, 1);
  const std::vector<std::string> lines = Information();
  EXPECT_EQ(lines[8], " Hidden Layer 1:");
  EXPECT_EQ(lines[10], "   Transfer Function:  Sigmoid");
  EXPECT_EQ(lines[12], " Output Layer:");
}

TEST_F(DescriptiveReports, InformationNamesTheInclusionMethod) {
  const auto method = [this](int32_t code) {
    m_network.overMeth = code;
    return Information().back();
  };
  EXPECT_EQ(method(kTestNone), "   Inclusion Method:   NONE");
  EXPECT_EQ(method(kTestBeginning), "   Inclusion Method:   BEGINNING");
  EXPECT_EQ(method(kTestEnding), "   Inclusion Method:   ENDING");
  EXPECT_EQ(method(kTestRandom), "   Inclusion Method:   RANDOM");
  EXPECT_EQ(method(77), "   Inclusion Method:   NONE");
}

TEST_F(DescriptiveReports, AnUnknownTransferFunctionHasNoName) {
  m_network.layers[1].TransFunc = 9;
  m_network.layers[2].TransFunc = -1;
  const std::vector<std::string> lines = Information();
  EXPECT_EQ(lines[10], "   Transfer Function:");
  EXPECT_EQ(lines[14], "   Transfer Function:");
}

TEST_F(DescriptiveReports, LongNamesAreCutAtTheWidth) {
  m_network.NetName = std::string(254, 'n');
  EXPECT_EQ(Information()[0], " Network Name:         " + std::string(57, 'n'));
}

TEST_F(DescriptiveReports, WeightsListEveryConnectionWithItsChangeButNoBias) {
  m_network = MakeNetwork({2, 1, 2}, {kSigmoid}, 1);
  m_network.NetName = "Small";
  m_network.iteration = 12;
  float value = 0.5F;
  for (size_t l = 1; l < 3; ++l) {
    for (float& weight : m_network.layers[l].weights.All()) weight = value += 1.0F;
    for (float& change : m_network.layers[l].weight_changes.All()) change = -value / 1024.0F;
  }
  EXPECT_EQ(Weights(), (std::vector<std::string>{
                           " Network Weights and Current Adjustment Deltas", "",
                           " Network Name:  Small", " Iterations:    12", "",
                           " Layer   Node   Connection          Weight      Weight Delta",
                           " -----   ----   ----------          ------      ------------",
                           "  2         1       1              1.50000       -0.003418",
                           "  2         1       2              2.50000       -0.003418",
                           "  3         1       1              4.50000       -0.007324",
                           "  3         2       1              6.50000       -0.007324"}));
}

TEST_F(DescriptiveReports, WeightsTooWideForTheirColumnPushTheRest) {
  m_network = MakeNetwork({1, 1, 1}, {kSigmoid}, 1);
  m_network.layers[1].weights.Row(0)[0] = -1e15F;
  m_network.layers[1].weight_changes.Row(0)[0] = -0.0F;
  EXPECT_EQ(Weights()[7], "  2         1       1       -999999986991104.00000       -0.000000");
}

}  // namespace
}  // namespace tarn
