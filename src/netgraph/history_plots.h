#pragma once

#include <cstdint>
#include <string>

#include "base/status.h"
#include "netgraph/graph.h"

namespace tarn {

enum class HistoryKind : int32_t {
  kRms = 0,
  kTestRms = 1,
  kLearnRate = 2,
  kCorrelation = 3,
  kTestCorrelation = 4,
  kTolerance = 5,
  kTestTolerance = 6
};

// One figure of an error history against the iterations. Of n records every s-th is taken,
// s = n / 500 + 1 in whole numbers. kHistoryUnreadable when there is no such file. Throws
// std::bad_alloc.
Status BuildHistoryPlot(HistoryKind kind, const std::string& history_path, Graph& graph);

}  // namespace tarn
