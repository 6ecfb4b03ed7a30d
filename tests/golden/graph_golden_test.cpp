#include <cstddef>
#include <gtest/gtest.h>
#include <numeric>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "golden/golden_files.h"
#include "golden/trained_scenario.h"
#include "netgraph/contour_analysis.h"
#include "netgraph/graph_csv.h"
#include "netgraph/graph_file.h"
#include "netgraph/graph_renderer.h"
#include "netgraph/hidden_node_analyzer.h"
#include "netgraph/history_plots.h"
#include "netgraph/input_interrogator.h"
#include "netgraph/pattern_plots.h"
#include "netgraph/svg_canvas.h"
#include "support/set_clock.h"

namespace tarn {
namespace {

// The files graph_NAME.csv and graph_NAME.svg.
void ExpectGraph(const std::string& name, const Graph& graph) {
  ExpectGoldenFile("graph_" + name + ".csv", GraphCsv(graph));
  SvgCanvas canvas(kPictureSize, graph.title);
  DrawGraph(graph, GraphView(graph), canvas);
  ExpectGoldenFile("graph_" + name + ".svg", canvas.Document());
}

void Complete(Analysis& analysis) {
  const SetClock clock;
  ASSERT_TRUE(analysis.RunFor(1, clock));
}

// Of the last nodes, where names and limits of their own count.
void ExpectPatternPlots(const std::string& name, const Network& network) {
  const auto output = static_cast<size_t>(OutputLayer(network).nUnits - 1);
  const auto input = static_cast<size_t>(network.layers[0].nUnits - 1);
  ExpectGraph(name + "_scatter", ScatterPlot(network));
  ExpectGraph(name + "_outputs", OutputsPlot(network, output));
  ExpectGraph(name + "_error", ErrorPlot(network, output));
  ExpectGraph(name + "_inputs", InputsPlot(network, input));
}

void ExpectAnalyses(const std::string& name, const Network& network) {
  const auto output = static_cast<size_t>(OutputLayer(network).nUnits - 1);
  InputInterrogator interrogator(network);
  Complete(interrogator);
  ExpectGraph(name + "_interrogator", ContributionPlot(interrogator, network, output));
  HiddenNodeAnalyzer analyzer(network);
  Complete(analyzer);
  ExpectGraph(name + "_hidden", HiddenNodePlot(analyzer, 1));
  const auto inputs = static_cast<size_t>(network.layers[0].nUnits);
  const ContourNodes nodes = {inputs - 2, inputs - 1, output};
  ContourAnalysis contours(network, nodes);
  Complete(contours);
  ExpectGraph(name + "_contour", ContourPlot(contours.surface(), network, nodes));
}

void MakeAllTraining(Network& network) {
  network.nTrain = network.nPats;
  network.testPats = 0;
  network.test_list.clear();
  network.train_list.resize(static_cast<size_t>(network.nPats));
  std::iota(network.train_list.begin(), network.train_list.end(), 0);
}

class GraphGolden : public TrainedScenario {
 protected:
  // Of the data to be recalled.
  void LeaveEverySecondPattern() {
    std::istringstream data(ReadFile(m_folder / "inputs"));
    std::string kept;
    std::string line;
    for (int number = 0; std::getline(data, line); ++number) {
      const bool comment = line.find('"') != std::string::npos;
      if (comment || number % 2 == 0) kept += line + "\n";
    }
    WriteFile(m_folder / "inputs", kept);
  }

  // With and without the test set, and as a recall.
  void ExpectAll(const std::string& name, const std::string& scenario) {
    Train(scenario);
    LoadTrained();
    ExpectPatternPlots(name + "_test", m_session.network);
    ExpectAnalyses(name + "_test", m_session.network);
    MakeAllTraining(m_session.network);
    ExpectPatternPlots(name + "_training", m_session.network);
    ExpectAnalyses(name + "_training", m_session.network);
    LeaveEverySecondPattern();
    Recall(true);
    ExpectPatternPlots(name + "_recall", m_session.network);
    ExpectAnalyses(name + "_recall", m_session.network);
  }
};

TEST_F(GraphGolden, OfAClassifier) {
  ExpectAll("iris", "iris");
}

TEST_F(GraphGolden, OfARegression) {
  ExpectAll("surface", "surface");
}

TEST_F(GraphGolden, OfARecallWithoutTargets) {
  Train("iris");
  Recall(false);
  ExpectGraph("alone_outputs", OutputsPlot(m_session.network, 1));
}

const std::vector<std::pair<HistoryKind, std::string>> kHistories = {
    {HistoryKind::kRms, "rms"},
    {HistoryKind::kTestRms, "test_rms"},
    {HistoryKind::kLearnRate, "learn_rate"},
    {HistoryKind::kCorrelation, "correlation"},
    {HistoryKind::kTestCorrelation, "test_correlation"},
    {HistoryKind::kTolerance, "tolerance"},
    {HistoryKind::kTestTolerance, "test_tolerance"}};

void ExpectHistories(const std::string& name, const std::string& scenario) {
  const SetClock clock;
  ScenarioRun training(GoldenScenario(scenario), clock);
  ASSERT_TRUE(training.run().Start().ok());
  ASSERT_EQ(training.run().RunFor(kNoLimitMs), RunState::kComplete);
  for (const auto& [kind, kind_name] : kHistories) {
    Graph graph;
    const Status built = BuildHistoryPlot(kind, training.run().history().path(), graph);
    ASSERT_TRUE(built.ok()) << built.message();
    ExpectGraph(name + "_" + kind_name, graph);
  }
}

TEST(HistoryGolden, OfAClassifier) {
  ExpectHistories("iris", "iris_full");
}

TEST(HistoryGolden, OfARegression) {
  ExpectHistories("surface", "surface");
}

}  // namespace
}  // namespace tarn
