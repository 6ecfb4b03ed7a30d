#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/status.h"
#include "browser/report_file.h"
#include "browser/target_checks.h"
#include "engine/network.h"

namespace tarn {

enum class ReportKind { kInformation, kWeights, kOutputs, kStatistics, kTolerance, kThreshold };

// The caption of the window that shows it.
std::string_view ReportCaption(ReportKind kind);

// What the two checks ask for.
struct CheckValues {
  float tolerance = 0;    // of kTolerance, in data units
  Thresholds thresholds;  // of kThreshold
};

// Writes a report on a loaded network, with the activations of all patterns, into a temporary file
// in `folder`. kReportFileDenied when there cannot be one, kOutOfMemory when there is no room for
// the work; there is no file then.
Status MakeReport(ReportKind kind, const Network& network, const CheckValues& values,
                  const std::string& folder, ReportFile& report);

}  // namespace tarn
