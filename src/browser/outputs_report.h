#pragma once

#include "browser/report_file.h"
#include "engine/network.h"

namespace tarn {

// Every pattern's outputs, beside their targets where there are targets, in data units.
//
// All values of a node are in one form, by the magnitudes of its limits: "%12.5f" when the larger
// of them is at least 0.00025 and both are below 100000, "%12.4e" otherwise. Limits that were never
// measured, those of targets that are not normalized, ask for the former.
void WriteOutputsReport(const Network& network, ReportFile& report);

}  // namespace tarn
