#include <algorithm>
#include <cstdint>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/paths.h"
#include "browser/divergence_check.h"
#include "browser/report.h"
#include "browser/report_text.h"
#include "engine/small_network.h"
#include "golden/golden_files.h"
#include "golden/trained_scenario.h"

namespace tarn {
namespace {

const std::vector<std::pair<ReportKind, std::string>> kKinds = {
    {ReportKind::kInformation, "information"}, {ReportKind::kWeights, "weights"},
    {ReportKind::kOutputs, "outputs"},         {ReportKind::kStatistics, "statistics"},
    {ReportKind::kTolerance, "tolerance"},     {ReportKind::kThreshold, "threshold"}};

constexpr Thresholds kBoth = {0.6F, 0.3F};

// The file report_NAME_KIND.txt.
void ExpectReport(const std::string& name, ReportKind kind, const Network& network,
                  const Thresholds& thresholds = kBoth) {
  ReportFile report;
  ASSERT_TRUE(MakeReport(kind, network, {0.2F, thresholds}, TemporaryFolder(), report).ok());
  TVirtText text;
  ASSERT_TRUE(text.Open(report.path()));
  std::string bytes;
  const Status written = WriteReportText(text, [&bytes](std::string_view line) {
    bytes += line;
    return true;
  });
  ASSERT_TRUE(written.ok()) << written.message();
  for (const auto& [named, kind_name] : kKinds) {
    if (named == kind) ExpectGoldenFile("report_" + name + "_" + kind_name + ".txt", bytes);
  }
}

void ExpectAllReports(const std::string& name, const Network& network) {
  for (const auto& kind : kKinds) ExpectReport(name, kind.first, network);
}

using ReportGolden = TrainedScenario;

TEST_F(ReportGolden, OfATrainedNetwork) {
  Train("iris");
  LoadTrained();
  ExpectAllReports("iris", m_session.network);
}

TEST_F(ReportGolden, OfANetworkWithRemovedConnections) {
  Train("fast_prop_removed");
  LoadTrained();
  ExpectAllReports("removed", m_session.network);
}

TEST_F(ReportGolden, OfANetworkOfManyLayersWithFunctionsOfTheirOwn) {
  Train("fast_prop_deep");
  LoadTrained();
  ExpectAllReports("deep", m_session.network);
}

TEST_F(ReportGolden, OfARecallWithTargets) {
  Train("iris");
  Recall(true);
  ExpectAllReports("recall", m_session.network);
}

TEST_F(ReportGolden, OfARecallWithoutTargets) {
  Train("iris");
  Recall(false);
  ExpectReport("inputs_alone", ReportKind::kOutputs, m_session.network);
}

TEST_F(ReportGolden, OfARecallWithoutNames) {
  Train("fast_prop_removed");
  Recall(false);
  ExpectReport("unnamed_alone", ReportKind::kOutputs, m_session.network);
}

TEST_F(ReportGolden, OfARecallWithTargetsWithoutNames) {
  Train("fast_prop_removed");
  Recall(true);
  ExpectAllReports("unnamed_recall", m_session.network);
}

TEST_F(ReportGolden, OfMixedFunctionsWithRemovedConnections) {
  Train("fast_prop_deep");
  LoadTrained();
  RemoveConnections(m_session.network);
  ASSERT_TRUE(PropagateAll(m_session.network).ok());
  ExpectAllReports("mixed_removed", m_session.network);
}

TEST_F(ReportGolden, OfOneThresholdAlone) {
  Train("iris");
  LoadTrained();
  ExpectReport("upper", ReportKind::kThreshold, m_session.network, {0.6F, std::nullopt});
  ExpectReport("lower", ReportKind::kThreshold, m_session.network, {std::nullopt, 0.3F});
}

// With the iterations, errors, activations and changes of weights that the run has left.
TEST(ReportGoldenOfARun, StandsStraightAfterIt) {
  const SetClock clock;
  ScenarioRun training(GoldenScenario("iris"), clock);
  ASSERT_TRUE(training.run().Start().ok());
  ASSERT_EQ(training.run().RunFor(kNoLimitMs), RunState::kComplete);
  ExpectAllReports("after_run", training.network());
}

// Without normalization, every pattern a training pattern.
Network NetworkWith(const std::vector<std::vector<float>>& outputs,
                    const std::vector<std::vector<float>>& targets) {
  const auto nodes = static_cast<int32_t>(outputs.front().size());
  Network network = MakeNetwork({1, 1, nodes}, {kSigmoid}, static_cast<int32_t>(outputs.size()));
  network.NetName = "Values";
  for (size_t p = 0; p < outputs.size(); ++p) {
    std::ranges::copy(outputs[p], OutputLayer(network).activations.Row(p).begin());
    std::ranges::copy(targets[p], network.targets.Row(p).begin());
  }
  return network;
}

TEST(ReportGoldenOfValues, ShowsTheBoundariesOfTheNumberForms) {
  const std::vector<float> values = {0.0001F,  0.00011F, 99999.99F,    100000.0F, -0.0F,
                                     0.00009F, -0.0001F, -99999.99F,   -1e12F,    1e-30F,
                                     0.5F,     -0.5F,    123456789.0F, 0.00025F,  12345.678F};
  const Network network = NetworkWith({values}, {std::vector<float>(values.size())});
  ExpectAllReports("boundaries", network);
}

TEST(ReportGoldenOfValues, ShowsTheFormThatTheLimitsOfANodeChoose) {
  const std::vector<std::pair<float, float>> limits = {
      {0.0F, 0.00025F},   {0.0F, 0.000249F},       {-0.00025F, 0.0F},  {-0.0001F, 0.0002F},
      {0.0F, 99999.992F}, {0.0F, 100000.0F},       {-100000.0F, 0.0F}, {1.0F, 2.0F},
      {-1e12F, 1e12F},    {-99999.992F, 99999.0F}, {0.0F, 1e-30F}};
  const std::vector<float> outputs(limits.size(), 0.85F);
  const std::vector<float> targets(limits.size(), 0.15F);
  Network network = NetworkWith({outputs, targets}, {targets, outputs});
  network.targ_norm = 1;
  for (size_t j = 0; j < limits.size(); ++j) {
    network.target_limits.lower[j] = limits[j].first;
    network.target_limits.upper[j] = limits[j].second;
  }
  ExpectAllReports("limits", network);
  HoldBack(network, 1);
  network.output_names.assign(limits.size(), "name");
  ExpectAllReports("limits_named", network);
  network.output_names.clear();
  network.mode = Mode::kRecall;
  network.RecallTargets = true;
  ExpectAllReports("limits_recall", network);
  network.RecallTargets = false;
  ExpectReport("limits_alone", ReportKind::kOutputs, network);
  network.output_names.assign(limits.size(), "a name that is longer than its column");
  ExpectReport("long_names_alone", ReportKind::kOutputs, network);
  network.RecallTargets = true;
  ExpectAllReports("long_names", network);
}

TEST(ReportGoldenOfValues, ShowsOnePattern) {
  ExpectAllReports("one_pattern", NetworkWith({{0.25F, 0.75F}}, {{0.5F, 0.75F}}));
}

TEST(ReportGoldenOfValues, ShowsConstantOutputs) {
  Network network =
      NetworkWith({{0.5F}, {0.5F}, {0.5F}, {0.5F}}, {{0.0F}, {1.0F}, {0.5F}, {0.25F}});
  HoldBack(network, 1);
  ExpectAllReports("constant", network);
}

TEST(ReportGoldenOfValues, ShowsFortyDivergedNodes) {
  std::vector<float> outputs(40, 0.00005F);
  for (size_t j = 1; j < outputs.size(); j += 2) outputs[j] = 0.99995F;
  const Network network = NetworkWith({outputs, outputs}, {outputs, outputs});
  ExpectAllReports("diverged", network);
  const Message message = DivergenceMessage(network);
  ExpectGoldenFile("report_diverged_divergence.txt", message.caption + "\n" + message.text + "\n");
}

}  // namespace
}  // namespace tarn
