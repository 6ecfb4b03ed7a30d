#include "browser/target_checks.h"

#include <cmath>
#include <cstddef>
#include <span>

namespace tarn {
namespace {

// Calls judge(counts of the node, output, target) for every output of the set.
template <typename Judge>
std::vector<NodeCounts> Count(const Network& network, const PatternSet& set, const Judge& judge) {
  const std::vector<NodeScale> scales = NodeScales(network);
  std::vector<NodeCounts> counts(scales.size());
  for (int32_t k = 0; k < set.count; ++k) {
    const size_t p = set.Pattern(k);
    const std::span<const float> outputs = OutputLayer(network).activations.Row(p);
    const std::span<const float> targets = network.targets.Row(p);
    for (size_t j = 0; j < counts.size(); ++j) {
      judge(counts[j], scales[j](outputs[j]), scales[j](targets[j]));
    }
  }
  return counts;
}

void WriteCounts(const Network& network, const PatternSet& set,
                 const std::vector<NodeCounts>& counts, ReportFile& report) {
  WriteSetLabel(set, report);
  report.Write(" Node                      Correct       Wrong");
  report.Write(" ----                      -------       -----");
  for (size_t j = 0; j < counts.size(); ++j) {
    const NodeCounts& node = counts[j];
    if (network.output_names.empty()) {
      report.Printf(" %-25d%8d    %8d", j + 1, node.correct, node.wrong);
    } else {
      report.Printf(" %-25s%8d    %8d", network.output_names[j], node.correct, node.wrong);
    }
  }
}

}  // namespace

std::vector<NodeCounts> CountWithinTolerance(const Network& network, const PatternSet& set,
                                             float tolerance) {
  return Count(network, set, [tolerance](NodeCounts& counts, float output, float target) {
    ++(std::fabs(output - target) < tolerance ? counts.correct : counts.wrong);
  });
}

std::vector<NodeCounts> CountBeyondThresholds(const Network& network, const PatternSet& set,
                                              const Thresholds& thresholds) {
  return Count(network, set, [&thresholds](NodeCounts& counts, float output, float target) {
    const float product = output * target;
    const auto judge = [&] {
      counts.correct += product >= 0 ? 1 : 0;
      counts.wrong += product < 0 ? 1 : 0;
    };
    if (thresholds.upper && output > *thresholds.upper) judge();
    if (thresholds.lower && output < *thresholds.lower) judge();
  });
}

void WriteToleranceCheck(const Network& network, float tolerance, ReportFile& report) {
  WriteReportHead(network, " Tolerance Checking", report);
  report.Printf(" Tolerance:     %f", double{tolerance});
  report.WriteBlank();
  for (const PatternSet& set : PatternSets(network)) {
    WriteCounts(network, set, CountWithinTolerance(network, set, tolerance), report);
  }
}

void WriteThresholdCheck(const Network& network, const Thresholds& thresholds, ReportFile& report) {
  WriteReportHead(network, " Threshold Checking", report);
  if (thresholds.upper && thresholds.lower) {
    report.Printf(" Thresholds:     %f, %f", double{*thresholds.upper}, double{*thresholds.lower});
  } else if (thresholds.lower) {
    report.Printf(" Lower Threshold:     %f", double{*thresholds.lower});
  } else if (thresholds.upper) {
    report.Printf(" Upper Threshold:     %f", double{*thresholds.upper});
  }
  report.WriteBlank();
  for (const PatternSet& set : PatternSets(network)) {
    WriteCounts(network, set, CountBeyondThresholds(network, set, thresholds), report);
  }
}

}  // namespace tarn
