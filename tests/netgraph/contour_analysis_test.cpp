#include "netgraph/contour_analysis.h"

#include "netgraph/analysis_test.h"

namespace tarn {
namespace {

using Floats = std::vector<float>;

class Contours : public AnalysisTest {
 protected:
  ContourSurface Surface(const ContourNodes& nodes) {
    ContourAnalysis analysis(m_network, nodes);
    Complete(analysis);
    return analysis.surface();
  }

  // By the plain loops.
  float PlainValue(const ContourNodes& nodes, float first, float second) {
    Floats inputs = Inputs(10);
    inputs[nodes.first_input] = first;
    inputs[nodes.second_input] = second;
    return Outputs(inputs)[nodes.output];
  }

  const ContourNodes m_nodes = {0, 2, 1};
};

TEST_F(Contours, CoverBothInputsFromEndToEnd) {
  const ContourSurface surface = Surface(m_nodes);
  EXPECT_EQ(surface.values.size(), 1602U);
  EXPECT_EQ(surface.values[0], 1.0F);
  EXPECT_EQ(surface.values[1], 3.0F);
  EXPECT_EQ(surface.At(0, 0), PlainValue(m_nodes, 0, 0));
  EXPECT_EQ(surface.At(0, 39), PlainValue(m_nodes, 1, 0));
  EXPECT_EQ(surface.At(39, 0), PlainValue(m_nodes, 0, 1));
  EXPECT_EQ(surface.At(39, 39), PlainValue(m_nodes, 1, 1));
  EXPECT_EQ(surface.At(7, 31),
            PlainValue(m_nodes, static_cast<float>(31.0 / 39.0), static_cast<float>(7.0 / 39.0)));
  EXPECT_EQ(surface.values[2 + 40 * 7 + 31], surface.At(7, 31));
}

TEST_F(Contours, CoverTheBandOfNormalizedInputs) {
  m_network.pat_norm = 1;
  const ContourSurface surface = Surface(m_nodes);
  EXPECT_EQ(surface.At(0, 0), PlainValue(m_nodes, 0.15F, 0.15F));
  EXPECT_EQ(surface.At(39, 39), PlainValue(m_nodes, 0.85F, 0.85F));
  EXPECT_EQ(surface.At(0, 13),
            PlainValue(m_nodes, static_cast<float>(0.7 * (13.0 / 39.0) + 0.15), 0.15F));
}

TEST_F(Contours, HoldTheOtherInputsAtTheMiddlePattern) {
  const ContourSurface before = Surface(m_nodes);
  m_network.layers[0].activations.Row(9)[1] += 0.5F;
  m_network.layers[0].activations.Row(11)[1] += 0.5F;
  EXPECT_EQ(Surface(m_nodes).values, before.values);
  m_network.layers[0].activations.Row(10)[1] += 0.5F;
  EXPECT_NE(Surface(m_nodes).values, before.values);
}

TEST_F(Contours, AreTitledByNumbersOrNames) {
  const ContourSurface surface;
  Graph graph = ContourPlot(surface, m_network, m_nodes);
  EXPECT_EQ(graph.title, "Input nodes 1, 3 Influence on Output node 2");
  EXPECT_EQ(graph.x_label, "Input Node 1");
  EXPECT_EQ(graph.y_label, "Input Node 3");
  EXPECT_EQ(graph.range, (GraphRange{0, 1, 0, 1}));
  EXPECT_TRUE(graph.contours.has_value());
  m_network.input_names = {"Length", "Width", "Depth"};
  EXPECT_EQ(ContourPlot(surface, m_network, m_nodes).title,
            "Input nodes 1, 3 Influence on Output node 2");
  m_network.output_names = {"One", "Two"};
  EXPECT_EQ(ContourPlot(surface, m_network, m_nodes).title,
            "Inputs Length, Depth Influence on Output Two");
}

TEST_F(Contours, HaveAxesInDataUnits) {
  m_network.pat_norm = 1;
  m_network.input_limits = {{10, 20, 30}, {11, 22, 33}};
  EXPECT_EQ(ContourPlot({}, m_network, m_nodes).range, (GraphRange{10, 11, 30, 33}));
}

TEST_F(Contours, ShowEveryTwentiethOfTheRows) {
  m_network = MakeNetwork({2, 600, 1}, {kSigmoid}, 1);
  ContourAnalysis analysis(m_network, {});
  const SetClock clock;
  EXPECT_FALSE(analysis.RunFor(0, clock));
  EXPECT_TRUE(analysis.RunFor(1, clock));
  EXPECT_EQ(analysis.progress(), "Contours Processed 100%");
  m_network = MakeNetwork({2, 3000, 300, 1}, {kSigmoid}, 1);
  ContourAnalysis slow(m_network, {});
  const std::vector<std::string> texts = Progress(slow);
  ASSERT_EQ(texts.size(), 21U);
  EXPECT_EQ(texts[0], "");
  EXPECT_EQ(texts[1], "Contours Processed 5%");
  EXPECT_EQ(texts[2], "Contours Processed 10%");
  EXPECT_EQ(texts[20], "Contours Processed 100%");
}

}  // namespace
}  // namespace tarn
