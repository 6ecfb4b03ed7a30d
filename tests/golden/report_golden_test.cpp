#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "base/paths.h"
#include "browser/report.h"
#include "browser/report_text.h"
#include "golden/golden_files.h"
#include "golden/trained_scenario.h"

namespace tarn {
namespace {

const std::vector<std::pair<ReportKind, std::string>> kKinds = {
    {ReportKind::kInformation, "information"}, {ReportKind::kWeights, "weights"},
    {ReportKind::kOutputs, "outputs"},         {ReportKind::kStatistics, "statistics"},
    {ReportKind::kTolerance, "tolerance"},     {ReportKind::kThreshold, "threshold"}};

class ReportGolden : public TrainedScenario {
 protected:
  // The file report_NAME_KIND.txt.
  void ExpectGolden(const std::string& name, ReportKind kind, const std::string& kind_name) {
    CheckValues values;
    values.tolerance = 0.2F;
    values.thresholds = {0.6F, 0.3F};
    ReportFile report;
    ASSERT_TRUE(MakeReport(kind, m_session.network, values, TemporaryFolder(), report).ok());
    TVirtText text;
    ASSERT_TRUE(text.Open(report.path()));
    std::string bytes;
    ASSERT_TRUE(WriteReportText(text, [&bytes](std::string_view line) {
      bytes += line;
      return true;
    }));
    ExpectGoldenFile("report_" + name + "_" + kind_name + ".txt", bytes);
  }

  void ExpectAllGolden(const std::string& name) {
    for (const auto& [kind, kind_name] : kKinds) ExpectGolden(name, kind, kind_name);
  }
};

TEST_F(ReportGolden, OfATrainedNetwork) {
  Train("iris");
  LoadTrained();
  ExpectAllGolden("iris");
}

TEST_F(ReportGolden, OfANetworkWithRemovedConnections) {
  Train("fast_prop_removed");
  LoadTrained();
  ExpectAllGolden("removed");
}

TEST_F(ReportGolden, OfANetworkOfManyLayersWithFunctionsOfTheirOwn) {
  Train("fast_prop_deep");
  LoadTrained();
  ExpectAllGolden("deep");
}

TEST_F(ReportGolden, OfARecallWithTargets) {
  Train("iris");
  Recall(true);
  ExpectAllGolden("recall");
}

TEST_F(ReportGolden, OfARecallWithoutTargets) {
  Train("iris");
  Recall(false);
  ExpectGolden("inputs_alone", ReportKind::kOutputs, "outputs");
}

TEST_F(ReportGolden, OfARecallWithoutNames) {
  Train("fast_prop_removed");
  Recall(false);
  ExpectGolden("unnamed_alone", ReportKind::kOutputs, "outputs");
}

}  // namespace
}  // namespace tarn
