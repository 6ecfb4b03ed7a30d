#include "netgraph/pattern_plots.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "engine/small_network.h"

namespace tarn {
namespace {

using Floats = std::vector<float>;

class PatternPlots : public testing::Test {
 protected:
  // Outputs p + node / 4 and targets that much below 0, inputs p / 8, for patterns p from 0.
  PatternPlots() {
    for (size_t p = 0; p < 4; ++p) {
      for (size_t j = 0; j < 2; ++j) {
        const float value = static_cast<float>(p) + static_cast<float>(j) / 4;
        OutputLayer(m_network).activations.Row(p)[j] = value;
        m_network.targets.Row(p)[j] = -value;
      }
      m_network.layers[0].activations.Row(p)[0] = static_cast<float>(p) / 8;
    }
  }

  void HoldBackOddPatterns(int32_t method = kTestBeginning) {
    m_network.train_list = {0, 2};
    m_network.test_list = {1, 3};
    m_network.nTrain = m_network.testPats = 2;
    m_network.overMeth = method;
  }
  void ToRecall(bool targets) {
    m_network.mode = Mode::kRecall;
    m_network.RecallTargets = targets;
  }
  void Normalize() {
    m_network.targ_norm = m_network.pat_norm = 1;
    m_network.target_limits = {{0, 10}, {1, 80}};
    m_network.input_limits = {{100}, {800}};
  }
  static std::vector<std::string> Names(const Graph& graph) {
    std::vector<std::string> names;
    for (const CURVE_DEF& curve : graph.curves) names.push_back(curve.name);
    return names;
  }
  static void ExpectLine(const CURVE_DEF& curve, const Colour& colour) {
    EXPECT_EQ(curve.colour, colour) << curve.name;
    EXPECT_EQ(curve.mode, 1) << curve.name;
    EXPECT_EQ(curve.marker, 0) << curve.name;
  }
  static void ExpectMarkers(const CURVE_DEF& curve, const Colour& colour) {
    EXPECT_EQ(curve.colour, colour) << curve.name;
    EXPECT_EQ(curve.mode, 2) << curve.name;
    EXPECT_EQ(curve.marker, 5) << curve.name;
  }

  Network m_network = MakeNetwork({1, 1, 2}, {kSigmoid}, 4);
};

TEST_F(PatternPlots, ScatterComparesAllNodesOfEveryPattern) {
  const Graph graph = ScatterPlot(m_network);
  EXPECT_EQ(graph.title, "Scatter Comparison of Targets vs. Network Outputs");
  EXPECT_EQ(graph.x_label, "Training Targets");
  EXPECT_EQ(graph.y_label, "Network Outputs");
  EXPECT_EQ(graph.range, (GraphRange{-0.1F, 1.1F, -0.1F, 1.1F}));
  ASSERT_EQ(Names(graph), (std::vector<std::string>{"Training Patterns", "Optimal Agreement"}));
  EXPECT_EQ(graph.curves[0].y, (Floats{0, 0.25F, 1, 1.25F, 2, 2.25F, 3, 3.25F}));
  EXPECT_EQ(graph.curves[0].x, (Floats{0, -0.25F, -1, -1.25F, -2, -2.25F, -3, -3.25F}));
  ExpectMarkers(graph.curves[0], kBlue);
}

TEST_F(PatternPlots, ScatterDrawsTheDiagonalInHundredSteps) {
  const CURVE_DEF diagonal = ScatterPlot(m_network).curves.back();
  ExpectLine(diagonal, kRed);
  ASSERT_EQ(diagonal.x.size(), 101U);
  EXPECT_EQ(diagonal.x, diagonal.y);
  for (int i = 0; i <= 100; ++i) {
    EXPECT_EQ(diagonal.x[static_cast<size_t>(i)], static_cast<float>(i / 100.0));
  }
}

TEST_F(PatternPlots, ScatterTellsTheTestSetApart) {
  HoldBackOddPatterns();
  const Graph graph = ScatterPlot(m_network);
  ASSERT_EQ(Names(graph),
            (std::vector<std::string>{"Training Patterns", "Test Patterns", "Optimal Agreement"}));
  EXPECT_EQ(graph.curves[0].y, (Floats{0, 0.25F, 2, 2.25F}));
  EXPECT_EQ(graph.curves[1].y, (Floats{1, 1.25F, 3, 3.25F}));
  ExpectMarkers(graph.curves[0], kBlue);
  ExpectMarkers(graph.curves[1], kGreen);
}

TEST_F(PatternPlots, ScatterKeepsTheNetworksOwnUnits) {
  const Floats before = ScatterPlot(m_network).curves[0].y;
  Normalize();
  const Graph graph = ScatterPlot(m_network);
  EXPECT_EQ(graph.title, "Scatter Comparison of Normalized Targets vs. Net Outputs");
  EXPECT_EQ(graph.curves[0].y, before);
}

TEST_F(PatternPlots, ScatterOfAPerfectNetworkLiesOnTheDiagonal) {
  std::ranges::copy(OutputLayer(m_network).activations.All(), m_network.targets.All().begin());
  const CURVE_DEF curve = ScatterPlot(m_network).curves[0];
  EXPECT_EQ(curve.x, curve.y);
}

TEST_F(PatternPlots, ScatterOfARecallTakesAllPatterns) {
  HoldBackOddPatterns();
  ToRecall(true);
  const Graph graph = ScatterPlot(m_network);
  ASSERT_EQ(Names(graph), (std::vector<std::string>{"Training Patterns", "Optimal Agreement"}));
  EXPECT_EQ(graph.curves[0].x.size(), 8U);
}

TEST_F(PatternPlots, OutputsAreSeenBesideTheirTargets) {
  const Graph graph = OutputsPlot(m_network, 1);
  EXPECT_EQ(graph.title, "Output Node 2 - Targets/Outputs vs Pattern Number");
  EXPECT_EQ(graph.x_label, "Pattern Sequence");
  EXPECT_EQ(graph.y_label, "Targets/Net Outputs");
  EXPECT_FALSE(graph.range.IsFixed());
  ASSERT_EQ(Names(graph), (std::vector<std::string>{"Network Outputs", "Network Targets"}));
  EXPECT_EQ(graph.curves[0].x, (Floats{1, 2, 3, 4}));
  EXPECT_EQ(graph.curves[0].y, (Floats{0.25F, 1.25F, 2.25F, 3.25F}));
  EXPECT_EQ(graph.curves[1].x, (Floats{1, 2, 3, 4}));
  EXPECT_EQ(graph.curves[1].y, (Floats{-0.25F, -1.25F, -2.25F, -3.25F}));
  ExpectLine(graph.curves[0], kGreen);
  ExpectLine(graph.curves[1], kRed);
}

TEST_F(PatternPlots, OutputsOfATestSetAreACurveOfTheirOwnBesideAllTargets) {
  HoldBackOddPatterns();
  m_network.output_names = {"One", "Two"};
  const Graph graph = OutputsPlot(m_network, 0);
  EXPECT_EQ(graph.title, "Output One - Targets/Outputs vs Pattern Number");
  ASSERT_EQ(Names(graph),
            (std::vector<std::string>{"Training Outputs", "Test Outputs", "Training Set Targets"}));
  EXPECT_EQ(graph.curves[0].x, (Floats{1, 3}));
  EXPECT_EQ(graph.curves[1].x, (Floats{2, 4}));
  EXPECT_EQ(graph.curves[1].y, (Floats{1, 3}));
  EXPECT_EQ(graph.curves[2].x, (Floats{1, 2, 3, 4}));
  ExpectLine(graph.curves[0], kGreen);
  ExpectLine(graph.curves[1], kBlue);
  ExpectLine(graph.curves[2], kRed);
}

TEST_F(PatternPlots, OutputsOfARandomTestSetAreMarkers) {
  HoldBackOddPatterns(kTestRandom);
  const Graph graph = OutputsPlot(m_network, 0);
  ExpectMarkers(graph.curves[0], kGreen);
  ExpectMarkers(graph.curves[1], kBlue);
  ExpectLine(graph.curves[2], kRed);
}

TEST_F(PatternPlots, ErrorsAndInputsOfARandomTestSetStayLines) {
  HoldBackOddPatterns(kTestRandom);
  ExpectLine(ErrorPlot(m_network, 0).curves[0], kGreen);
  ExpectLine(ErrorPlot(m_network, 0).curves[1], kBlue);
  ExpectLine(InputsPlot(m_network, 0).curves[0], kBlue);
  ExpectLine(InputsPlot(m_network, 0).curves[1], kGreen);
}

TEST_F(PatternPlots, OutputsAloneWhereARecallHasNoTargets) {
  ToRecall(false);
  Graph graph = OutputsPlot(m_network, 0);
  EXPECT_EQ(graph.title, "Output Node 1 - Outputs vs Pattern Number");
  EXPECT_EQ(graph.y_label, "Network Outputs");
  ASSERT_EQ(Names(graph), (std::vector<std::string>{"Network Outputs"}));
  ExpectLine(graph.curves[0], kGreen);
  m_network.output_names = {"One", "Two"};
  graph = OutputsPlot(m_network, 1);
  EXPECT_EQ(graph.title, "Output Two - Outputs vs Pattern Number");
}

TEST_F(PatternPlots, OutputsAndErrorsAreInDataUnits) {
  Normalize();
  OutputLayer(m_network).activations.Row(0)[1] = 0.85F;
  m_network.targets.Row(0)[1] = 0.15F;
  const Graph outputs = OutputsPlot(m_network, 1);
  EXPECT_FLOAT_EQ(outputs.curves[0].y[0], 80.0F);
  EXPECT_FLOAT_EQ(outputs.curves[1].y[0], 10.0F);
  EXPECT_FLOAT_EQ(ErrorPlot(m_network, 1).curves[0].y[0], 70.0F);
}

TEST_F(PatternPlots, ErrorIsOutputMinusTarget) {
  const Graph graph = ErrorPlot(m_network, 1);
  EXPECT_EQ(graph.title, "Targets - Network Output Error vs Input Sequence Number");
  EXPECT_EQ(graph.x_label, "Input Sequence");
  EXPECT_EQ(graph.y_label, "Error");
  ASSERT_EQ(Names(graph), (std::vector<std::string>{"Train Output - Target (Node 2)"}));
  EXPECT_EQ(graph.curves[0].x, (Floats{1, 2, 3, 4}));
  EXPECT_EQ(graph.curves[0].y, (Floats{0.5F, 2.5F, 4.5F, 6.5F}));
  ExpectLine(graph.curves[0], kGreen);
}

TEST_F(PatternPlots, ErrorOfTheTestSetHasItsNode) {
  HoldBackOddPatterns();
  EXPECT_EQ(Names(ErrorPlot(m_network, 0)),
            (std::vector<std::string>{"Train Output - Target (Node 1)",
                                      "Test Output - Target (Node 1)"}));
  m_network.output_names = {"One", "Two"};
  const Graph graph = ErrorPlot(m_network, 1);
  EXPECT_EQ(Names(graph), (std::vector<std::string>{"Train Output - Two", "Test Output - Two"}));
  EXPECT_EQ(graph.curves[1].y, (Floats{2.5F, 6.5F}));
  ExpectLine(graph.curves[1], kBlue);
}

TEST_F(PatternPlots, InputsAreSeenPatternByPattern) {
  const Graph graph = InputsPlot(m_network, 0);
  EXPECT_EQ(graph.title, "Input Node 1");
  EXPECT_EQ(graph.x_label, "Input Sequence Number");
  EXPECT_EQ(graph.y_label, "Node Value");
  ASSERT_EQ(Names(graph), (std::vector<std::string>{"Training Patterns"}));
  EXPECT_EQ(graph.curves[0].y, (Floats{0, 0.125F, 0.25F, 0.375F}));
}

TEST_F(PatternPlots, InputsOfTheTestSetAreACurveOfTheirOwnInDataUnits) {
  HoldBackOddPatterns();
  Normalize();
  m_network.input_names = {"Depth"};
  m_network.layers[0].activations.Row(3)[0] = 0.85F;
  const Graph graph = InputsPlot(m_network, 0);
  EXPECT_EQ(graph.title, "Input - Depth");
  ASSERT_EQ(Names(graph), (std::vector<std::string>{"Training Patterns", "Test Patterns"}));
  EXPECT_EQ(graph.curves[1].x, (Floats{2, 4}));
  EXPECT_FLOAT_EQ(graph.curves[1].y[1], 800.0F);
}

}  // namespace
}  // namespace tarn
