#include "netgraph/hidden_node_analyzer.h"

#include <numeric>

#include "netgraph/analysis_test.h"

namespace tarn {
namespace {

using Floats = std::vector<float>;

class HiddenNodes : public AnalysisTest {
 protected:
  // By the plain loops, sum after sum.
  Floats PlainShares(size_t l) {
    Network plain = m_network;
    for (int32_t p = 0; p < plain.nPats; ++p) reference::Forward(plain, p);
    const Matrix& activations = plain.layers[l].activations;
    Floats means(activations.columns());
    Floats shares(activations.columns());
    float total = 0;
    for (size_t i = 0; i < means.size(); ++i) {
      for (size_t p = 0; p < activations.rows(); ++p) means[i] += activations.Row(p)[i];
      means[i] /= static_cast<float>(plain.nTrain);
      for (size_t p = 0; p < activations.rows(); ++p) {
        const float difference = activations.Row(p)[i] - means[i];
        shares[i] += difference * difference;
      }
      total += shares[i];
    }
    for (float& share : shares) share /= total;
    return shares;
  }
};

TEST_F(HiddenNodes, HaveTheirShareOfTheActivityOfTheirLayer) {
  HiddenNodeAnalyzer analyzer(m_network);
  Complete(analyzer);
  for (const size_t layer : {1U, 2U}) {
    const Floats& shares = analyzer.Shares(layer);
    EXPECT_EQ(shares, PlainShares(layer));
    EXPECT_NEAR(std::accumulate(shares.begin(), shares.end(), 0.0), 1.0, 1e-6);
  }
}

TEST_F(HiddenNodes, AreDividedByTheTrainingPatternsAlone) {
  HiddenNodeAnalyzer of_all(m_network);
  Complete(of_all);
  HoldBack(m_network, 10);
  HiddenNodeAnalyzer analyzer(m_network);
  Complete(analyzer);
  EXPECT_EQ(analyzer.Shares(1), PlainShares(1));
  EXPECT_NE(analyzer.Shares(1), of_all.Shares(1));
}

TEST_F(HiddenNodes, OfAConstantLayerAreAllZero) {
  for (float& weight : m_network.layers[1].weights.All()) weight = 0;
  for (size_t j = 0; j < 5; ++j)
    m_network.layers[1].weights.Row(j).back() = 0.3F + 0.17F * static_cast<float>(j);
  HiddenNodeAnalyzer analyzer(m_network);
  Complete(analyzer);
  EXPECT_EQ(analyzer.Shares(1), Floats(5, 0.0F));
  const Graph graph = HiddenNodePlot(analyzer, 1);
  EXPECT_EQ(graph.curves[0].y, Floats(5, 0.0F));
  EXPECT_EQ(graph.range, (GraphRange{0, 6, 0, 0}));
}

TEST_F(HiddenNodes, ArePlottedInPerCent) {
  HiddenNodeAnalyzer analyzer(m_network);
  Complete(analyzer);
  const Graph graph = HiddenNodePlot(analyzer, 2);
  EXPECT_EQ(graph.title, "Cummulative Connection Strengths From Nodes in Hidden Layer 2");
  EXPECT_EQ(graph.x_label, "Node Number");
  EXPECT_EQ(graph.y_label, "Connection Strength");
  ASSERT_EQ(graph.curves.size(), 1U);
  const CURVE_DEF& curve = graph.curves[0];
  EXPECT_EQ(curve.x, (Floats{1, 2, 3, 4}));
  for (size_t i = 0; i < 4; ++i) EXPECT_EQ(curve.y[i], 100.0F * analyzer.Shares(2)[i]);
  EXPECT_EQ(curve.colour, kRed);
  EXPECT_EQ(curve.mode, 1);
  EXPECT_EQ(curve.marker, 0);
  EXPECT_EQ(curve.name, "");
  EXPECT_EQ(graph.range, (GraphRange{0, 5, *std::ranges::min_element(curve.y),
                                     *std::ranges::max_element(curve.y)}));
}

TEST_F(HiddenNodes, AreAnalyzedInSlicesOverTheWeightsOfTheBeginning) {
  HiddenNodeAnalyzer whole(m_network);
  Complete(whole);
  HiddenNodeAnalyzer sliced(m_network);
  const SetClock clock;
  EXPECT_FALSE(sliced.RunFor(0, clock));
  InitializeRandomWeights(m_network, 99);
  EXPECT_TRUE(sliced.RunFor(1, clock));
  EXPECT_EQ(sliced.Shares(1), whole.Shares(1));
  EXPECT_EQ(sliced.progress(), "Hidden Nodes/Patterns Processed 100%");
}

}  // namespace
}  // namespace tarn
