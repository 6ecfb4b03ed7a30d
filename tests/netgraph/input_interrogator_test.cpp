#include "netgraph/input_interrogator.h"

#include <cmath>
#include <numeric>

#include "netgraph/analysis_test.h"

namespace tarn {
namespace {

using Floats = std::vector<float>;

class Interrogator : public AnalysisTest {
 protected:
  // By the plain loops: one input after the other at its low, then each at its high value.
  Floats PlainContributions(size_t output) {
    const bool scaled = m_network.pat_norm != 0;
    Floats sums(3);
    for (size_t p = 0; p < 20; ++p) {
      const float base = Outputs(Inputs(p))[output];
      for (const float value : {scaled ? 0.15F : 0.0F, scaled ? 0.85F : 1.0F}) {
        for (size_t i = 0; i < sums.size(); ++i) {
          Floats inputs = Inputs(p);
          inputs[i] = value;
          sums[i] += std::fabs(Outputs(inputs)[output] - base);
        }
      }
    }
    const float total = std::accumulate(sums.begin(), sums.end(), 0.0F);
    for (float& sum : sums) sum /= total;
    return sums;
  }
};

TEST_F(Interrogator, MeasuresWhatEachInputMoves) {
  InputInterrogator interrogator(m_network);
  Complete(interrogator);
  for (const size_t output : {0U, 1U}) {
    const Floats shares = interrogator.Contributions(output);
    EXPECT_EQ(shares, PlainContributions(output));
    EXPECT_NEAR(std::accumulate(shares.begin(), shares.end(), 0.0), 1.0, 1e-6);
  }
}

TEST_F(Interrogator, StaysWithinTheBandOfNormalizedInputs) {
  InputInterrogator of_raw_inputs(m_network);
  Complete(of_raw_inputs);
  m_network.pat_norm = 1;
  InputInterrogator interrogator(m_network);
  Complete(interrogator);
  EXPECT_EQ(interrogator.Contributions(1), PlainContributions(1));
  EXPECT_NE(interrogator.Contributions(1), of_raw_inputs.Contributions(1));
}

TEST_F(Interrogator, GivesAnOutputThatNothingMovesNoShares) {
  for (float& weight : m_network.layers[3].weights.Row(0)) weight = 0;
  InputInterrogator interrogator(m_network);
  Complete(interrogator);
  EXPECT_EQ(interrogator.Contributions(0), Floats(3, 0.0F));
  EXPECT_NE(interrogator.Contributions(1), Floats(3, 0.0F));
}

TEST_F(Interrogator, IsPlottedInPerCent) {
  InputInterrogator interrogator(m_network);
  Complete(interrogator);
  Graph graph = ContributionPlot(interrogator, m_network, 1);
  EXPECT_EQ(graph.title, "Percent Contributions From Inputs on Output Node 2");
  EXPECT_EQ(graph.x_label, "Input Node");
  EXPECT_EQ(graph.y_label, "Percent Contribution");
  EXPECT_FALSE(graph.range.IsFixed());
  ASSERT_EQ(graph.curves.size(), 1U);
  EXPECT_EQ(graph.curves[0].x, (Floats{1, 2, 3}));
  for (size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(graph.curves[0].y[i], 100.0F * interrogator.Contributions(1)[i]);
  }
  m_network.output_names = {"One", "Two"};
  graph = ContributionPlot(interrogator, m_network, 0);
  EXPECT_EQ(graph.title, "Percent Contributions From Inputs on One");
}

TEST_F(Interrogator, ShowsEveryTwentiethOfThePatterns) {
  // So many connections that a slice has fewer passes than a pattern needs.
  m_network = MakeNetwork({3, 1600, 1600, 1}, {kSigmoid}, 20);
  InputInterrogator interrogator(m_network);
  const std::vector<std::string> texts = Progress(interrogator);
  ASSERT_EQ(texts.size(), 20U);
  EXPECT_EQ(texts.front(), "Inputs/Patterns Processed 5%");
  EXPECT_EQ(texts.back(), "Inputs/Patterns Processed 100%");
}

TEST_F(Interrogator, WorksInSlicesOverTheWeightsOfTheBeginning) {
  InputInterrogator whole(m_network);
  Complete(whole);
  InputInterrogator sliced(m_network);
  InitializeRandomWeights(m_network, 99);
  Progress(sliced);
  EXPECT_EQ(sliced.Contributions(0), whole.Contributions(0));
}

}  // namespace
}  // namespace tarn
