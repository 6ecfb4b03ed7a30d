#pragma once

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

// Whether the report compares outputs with targets, which the network has to have then.
bool NeedsTargets(ReportKind kind);

// Whether there is anything to report: a threshold check without a threshold ends silently.
bool IsReportWanted(ReportKind kind, const CheckValues& values);

// Writes a report that is wanted on a loaded network, with the activations of all its patterns (one
// at least), into the file just created. kReportFileDenied when it cannot be written,
// kOutOfMemory when there is no room for the work; there is no file then.
Status WriteReport(ReportKind kind, const Network& network, const CheckValues& values,
                   ReportFile& report);

// The same into a temporary file in `folder`, kReportFileDenied when there cannot be one.
Status MakeReport(ReportKind kind, const Network& network, const CheckValues& values,
                  const std::string& folder, ReportFile& report);

}  // namespace tarn
