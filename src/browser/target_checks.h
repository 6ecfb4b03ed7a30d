#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "browser/report_data.h"
#include "browser/report_file.h"
#include "engine/network.h"

namespace tarn {

// Patterns of a set that an output node gets right and wrong.
struct NodeCounts {
  int32_t correct = 0;
  int32_t wrong = 0;

  bool operator==(const NodeCounts&) const = default;
};

// In data units; either may be missing.
struct Thresholds {
  std::optional<float> upper;
  std::optional<float> lower;

  bool Given() const { return upper || lower; }
};

// For every output node of a network with targets; output o and target t in data units. Throw
// std::bad_alloc.
//
// Correct where |o - t| < tolerance, else wrong.
std::vector<NodeCounts> CountWithinTolerance(const Network& network, const PatternSet& set,
                                             float tolerance);
// Where o is above the upper threshold, and again where it is below the lower one: correct when
// o t >= 0, wrong when o t < 0. An output between them is not counted.
std::vector<NodeCounts> CountBeyondThresholds(const Network& network, const PatternSet& set,
                                              const Thresholds& thresholds);

// The counts of the training and the test set, or of all patterns. The network has targets. Throw
// std::bad_alloc.
void WriteToleranceCheck(const Network& network, float tolerance, ReportFile& report);
// At least one threshold is given.
void WriteThresholdCheck(const Network& network, const Thresholds& thresholds, ReportFile& report);

}  // namespace tarn
