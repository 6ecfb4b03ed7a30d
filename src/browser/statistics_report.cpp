#include "browser/statistics_report.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>
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

  void Add(float o, float t) {
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

NodeStatistics StatisticsOf(const NodeSums& sums, int32_t count) {
  const auto n = static_cast<float>(count);
  const float mean_square = sums.error_squared / n;
  return {std::sqrt(mean_square < 0 ? 0.0F : mean_square), sums.error / n, sums.largest_error,
          Correlation(sums.ForCorrelation(), count)};
}

std::string ValueText(float value) {
  const double magnitude = std::fabs(value);
  const bool exponent = magnitude >= 100000.0 || magnitude <= 0.0001;
  return fmt::sprintf(exponent ? "   %12.4e" : "   %12.5f", double{value});
}

std::string NodeText(const Network& network, size_t node) {
  if (network.output_names.empty()) return fmt::sprintf(" %-13d", node + 1);
  return fmt::sprintf(" %-13.13s", network.output_names[node]);
}

void WriteSet(const Network& network, const PatternSet& set, ReportFile& report) {
  constexpr const char* kHeading = " %-13s%15s%15s%15s%15s";
  WriteSetLabel(set, report);
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
  const std::vector<NodeScale> scales = NodeScales(network);
  std::vector<NodeSums> sums(scales.size());
  for (int32_t k = 0; k < set.count; ++k) {
    const size_t p = set.Pattern(k);
    const std::span<const float> outputs = OutputLayer(network).activations.Row(p);
    const std::span<const float> targets = network.targets.Row(p);
    for (size_t j = 0; j < sums.size(); ++j) {
      sums[j].Add(scales[j](outputs[j]), scales[j](targets[j]));
    }
  }
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
