#include "browser/statistics_report.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <string>

#include "engine/monitors.h"

namespace tarn {
namespace {

struct NodeSums {
  float output = 0;
  float target = 0;
  float output_squared = 0;
  float target_squared = 0;
  float output_target = 0;
  float error = 0;
  float error_squared = 0;
  float largest_error = 0;
  std::optional<float> first_output;
  float first_target = 0;
  bool outputs_vary = false;
  bool targets_vary = false;

  void Add(float o, float t) {
    if (!first_output) {
      first_output = o;
      first_target = t;
    }
    outputs_vary |= o != *first_output;
    targets_vary |= t != first_target;
    const float difference = o - t;
    output += o;
    target += t;
    output_squared += o * o;
    target_squared += t * t;
    output_target += o * t;
    error += difference;
    error_squared += difference * difference;
    largest_error = std::max(largest_error, std::fabs(difference));
  }

  MonitorSums<float> ForCorrelation() const {
    MonitorSums<float> sums;
    sums.output_target = output_target;
    sums.output = output;
    sums.target = target;
    sums.output_squared = output_squared;
    sums.target_squared = target_squared;
    return sums;
  }
};

// Rounded sums of equal values leave a rest that is no correlation, however large it looks.
float CorrelationOf(const NodeSums& sums, int32_t count) {
  return sums.outputs_vary && sums.targets_vary ? Correlation(sums.ForCorrelation(), count) : 0.0F;
}

NodeStatistics StatisticsOf(const NodeSums& sums, int32_t count) {
  const auto n = static_cast<float>(count);
  const float mean_square = sums.error_squared / n;
  return {std::sqrt(mean_square < 0 ? 0.0F : mean_square), sums.error / n, sums.largest_error,
          CorrelationOf(sums, count)};
}

// Magnitudes between these, without them, are printed in the fixed form.
constexpr float kTooSmall = 0.0001F;
constexpr float kTooLarge = 100000.0F;

std::string ValueText(float value) {
  const float magnitude = std::fabs(value);
  const bool fixed = magnitude > kTooSmall && magnitude < kTooLarge;
  return fmt::sprintf(fixed ? "   %12.5f" : "   %12.4e", double{value});
}

// Beside the name: a blank and four values.
constexpr NameColumn kName = {13, true, kReportWidth - 1 - size_t{4} * 15};

std::string NodeText(const Network& network, size_t node) {
  if (network.output_names.empty()) return fmt::sprintf(" %-13d", node + 1);
  return " " + kName.Text(network.output_names[node]);
}

void WriteSet(const Network& network, const PatternSet& set, ReportFile& report) {
  constexpr const char* kHeading = " %-13s%15s%15s%15s%15s";
  WriteSetLabel(network, set, report);
  report.Printf(kHeading, "Node", "Std Dev", "Bias", "Max Error", "Correlation");
  report.Printf(kHeading, "----", "-------", "----", "---------", "-----------");
  const std::vector<NodeStatistics> nodes = ComputeStatistics(network, set);
  for (size_t j = 0; j < nodes.size(); ++j) {
    const NodeStatistics& node = nodes[j];
    report.Write(NodeText(network, j) + ValueText(node.rms_error) + ValueText(node.bias) +
                 ValueText(node.largest_error) + ValueText(node.correlation));
  }
}

}  // namespace

std::vector<NodeStatistics> ComputeStatistics(const Network& network, const PatternSet& set) {
  std::vector<NodeSums> sums(static_cast<size_t>(OutputLayer(network).nUnits));
  ForEachOutput(network, set, [&sums](size_t node, float output, float target) {
    sums[node].Add(output, target);
  });
  std::vector<NodeStatistics> statistics;
  statistics.reserve(sums.size());
  for (const NodeSums& node : sums) statistics.push_back(StatisticsOf(node, set.count));
  return statistics;
}

void WriteStatistics(const Network& network, ReportFile& report) {
  WriteReportHead(network, " Network Statistics", report);
  report.WriteBlank();
  for (const PatternSet& set : PatternSets(network)) WriteSet(network, set, report);
}

}  // namespace tarn
