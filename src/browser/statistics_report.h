#pragma once

#include <vector>

#include "browser/report_data.h"
#include "browser/report_file.h"
#include "engine/network.h"

namespace tarn {

// Of one output node over one set of patterns, output o and target t in data units.
struct NodeStatistics {
  float rms_error = 0;      // sqrt of the mean of (o - t)^2; headed "Std Dev"
  float bias = 0;           // mean of o - t
  float largest_error = 0;  // of |o - t|
  float correlation = 0;    // 0 where outputs or targets are constant
};

// For every output node of a network with targets, over a set that is not empty. Sums are single
// precision, pattern after pattern; the correlation
//   (N Sum(ot) - Sum(o) Sum(t)) / (sqrt(Dt) sqrt(Do)),  Do = N Sum(o^2) - Sum(o)^2, Dt likewise,
// is computed in double from them, 0 unless Do and Dt are above 0, and where the outputs or the
// targets of the set are all the same. Where they hardly vary, the rounding of the sums shows: it
// can leave -1..1. Throws std::bad_alloc.
std::vector<NodeStatistics> ComputeStatistics(const Network& network, const PatternSet& set);

// The statistics of the training and the test set, or of all patterns. Each value is in "%12.5f"
// where 0.0001 < |value| < 100000, in "%12.4e" elsewhere.
void WriteStatistics(const Network& network, ReportFile& report);

}  // namespace tarn
