#include "netgraph/history_plots.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "engine/error_history.h"
#include "support/faulty_files.h"
#include "support/memory_files.h"

namespace tarn {
namespace {

constexpr const char* kPath = "/tmp/history";

class HistoryPlots : public testing::Test {
 protected:
  // Records of the iterations 1..count, figure f being iteration + f / 8.
  void PutHistory(int32_t count, const std::string& rest = "") {
    std::string bytes;
    for (int32_t i = 1; i <= count; ++i) {
      const auto at = static_cast<float>(i);
      const HistoryBytes record = EncodeHistoryRecord(
          {i, at, at + 0.125F, at + 0.25F, at + 0.375F, at + 0.5F, at + 0.625F, at + 0.75F});
      bytes.append(record.begin(), record.end());
    }
    m_files.Put(kPath, bytes + rest);
  }

  Graph Plot(HistoryKind kind = HistoryKind::kRms) {
    Graph graph;
    const Status built = BuildHistoryPlot(kind, kPath, graph);
    EXPECT_TRUE(built.ok()) << built.message();
    return graph;
  }
  std::vector<float> Iterations() { return Plot().curves.at(0).x; }

  MemoryFiles m_files;
  ScopedFileLayer m_layer{m_files};
};

TEST_F(HistoryPlots, HaveTheirTitlesAndFigures) {
  struct Expected {
    const char* title;
    const char* y_label;
  };
  const std::vector<Expected> kinds = {
      {"Root Mean Square Error of Training Set", "RMS Error"},
      {"Root Mean Square Error of Test Set", "RMS Error"},
      {"Learn Rate (ETA) History", "ETA"},
      {"Correlation Coefficient History", "Correlation Coef."},
      {"Test Set Correlation Coefficient History", "Test Correlation Coef."},
      {"Predictions Within Tolerance", "Percent Correct"},
      {"Test Set Predictions Within Tolerance", "Percent Correct"}};
  PutHistory(2);
  for (size_t k = 0; k < kinds.size(); ++k) {
    const Graph graph = Plot(static_cast<HistoryKind>(k));
    EXPECT_EQ(graph.title, kinds[k].title);
    EXPECT_EQ(graph.x_label, "Iteration");
    EXPECT_EQ(graph.y_label, kinds[k].y_label);
    EXPECT_FALSE(graph.range.IsFixed());
    ASSERT_EQ(graph.curves.size(), 1U);
    const float figure = static_cast<float>(k) / 8.0F;
    EXPECT_EQ(graph.curves[0].x, (std::vector<float>{1, 2}));
    EXPECT_EQ(graph.curves[0].y, (std::vector<float>{1 + figure, 2 + figure}));
  }
}

TEST_F(HistoryPlots, AreOneBlueLineWithoutAName) {
  PutHistory(3);
  const CURVE_DEF curve = Plot().curves.at(0);
  EXPECT_EQ(curve.colour, (Colour{0, 0, 255}));
  EXPECT_EQ(curve.marker, 0);
  EXPECT_EQ(curve.mode, 1);
  EXPECT_EQ(curve.name, "");
}

TEST_F(HistoryPlots, TakeEveryRecordOfFewerThanFiveHundred) {
  PutHistory(499);
  const std::vector<float> iterations = Iterations();
  ASSERT_EQ(iterations.size(), 499U);
  EXPECT_EQ(iterations.front(), 1.0F);
  EXPECT_EQ(iterations.back(), 499.0F);
}

TEST_F(HistoryPlots, TakeEveryStepthRecordOfMore) {
  PutHistory(500);
  std::vector<float> iterations = Iterations();
  ASSERT_EQ(iterations.size(), 250U);
  EXPECT_EQ(iterations[0], 2.0F);
  PutHistory(1000);
  iterations = Iterations();
  ASSERT_EQ(iterations.size(), 333U);
  EXPECT_EQ(iterations[0], 3.0F);
  EXPECT_EQ(iterations[1], 6.0F);
  EXPECT_EQ(iterations.back(), 999.0F);
}

TEST_F(HistoryPlots, LeaveOutATornLastRecord) {
  PutHistory(3, std::string(31, '\x7f'));
  EXPECT_EQ(Iterations(), (std::vector<float>{1, 2, 3}));
}

TEST_F(HistoryPlots, OfAnEmptyHistoryHaveNoPoint) {
  PutHistory(0);
  EXPECT_TRUE(Iterations().empty());
}

TEST_F(HistoryPlots, AnswerWhenTheHistoryCannotBeReadToItsEnd) {
  PutHistory(3);
  FaultyFiles faulty(m_files);
  const ScopedFileLayer layer(faulty);
  Graph graph;
  faulty.FailAt(6, FaultyFiles::Fault::kOnce, FaultyFiles::Kinds::kAll);
  EXPECT_EQ(BuildHistoryPlot(HistoryKind::kRms, kPath, graph).message(),
            "The error history cannot be read");
  EXPECT_EQ(faulty.Failures(), 1);
  EXPECT_EQ(m_files.OpenHandles(), 0);
}

TEST_F(HistoryPlots, AnswerWhenThereIsNoHistory) {
  Graph graph;
  graph.title = "before";
  EXPECT_EQ(BuildHistoryPlot(HistoryKind::kRms, "/tmp/none", graph).message(),
            "The error history cannot be read");
  EXPECT_EQ(graph.title, "before");
  EXPECT_EQ(m_files.OpenHandles(), 0);
}

}  // namespace
}  // namespace tarn
