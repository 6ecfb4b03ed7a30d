#include "browser/target_checks.h"

#include <cmath>
#include <cstddef>

namespace tarn {
namespace {

size_t OutputNodes(const Network& network) {
  return static_cast<size_t>(OutputLayer(network).nUnits);
}

// Beside the name: a blank and both counts.
constexpr NameColumn kName = {25, false, kReportWidth - 1 - 20};

void WriteCounts(const Network& network, const PatternSet& set,
                 const std::vector<NodeCounts>& counts, ReportFile& report) {
  WriteSetLabel(network, set, report);
  report.Write(" Node                      Correct       Wrong");
  report.Write(" ----                      -------       -----");
  for (size_t j = 0; j < counts.size(); ++j) {
    const NodeCounts& node = counts[j];
    if (network.output_names.empty()) {
      report.Printf(" %-25d%8d    %8d", j + 1, node.correct, node.wrong);
    } else {
      report.Printf(" %s%8d    %8d", kName.Text(network.output_names[j]), node.correct, node.wrong);
    }
  }
}

}  // namespace

std::vector<NodeCounts> CountWithinTolerance(const Network& network, const PatternSet& set,
                                             float tolerance) {
  std::vector<NodeCounts> counts(OutputNodes(network));
  ForEachOutput(network, set, [&](size_t node, float output, float target) {
    ++(std::fabs(output - target) < tolerance ? counts[node].correct : counts[node].wrong);
  });
  return counts;
}

std::vector<NodeCounts> CountBeyondThresholds(const Network& network, const PatternSet& set,
                                              const Thresholds& thresholds) {
  std::vector<NodeCounts> counts(OutputNodes(network));
  ForEachOutput(network, set, [&](size_t node, float output, float target) {
    const double product = double{output} * target;  // its sign counts: it must not underflow
    const auto judge = [product, &of_node = counts[node]] {
      of_node.correct += product >= 0 ? 1 : 0;
      of_node.wrong += product < 0 ? 1 : 0;
    };
    if (thresholds.upper && output > *thresholds.upper) judge();
    if (thresholds.lower && output < *thresholds.lower) judge();
  });
  return counts;
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
