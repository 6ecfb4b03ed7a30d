#include "browser/report.h"

#include <new>

#include "browser/descriptive_reports.h"
#include "browser/outputs_report.h"
#include "browser/statistics_report.h"

namespace tarn {
namespace {

void Write(ReportKind kind, const Network& network, const CheckValues& values, ReportFile& report) {
  switch (kind) {
    case ReportKind::kInformation:
      return WriteInformation(network, report);
    case ReportKind::kWeights:
      return WriteWeights(network, report);
    case ReportKind::kOutputs:
      return WriteOutputsReport(network, report);
    case ReportKind::kStatistics:
      return WriteStatistics(network, report);
    case ReportKind::kTolerance:
      return WriteToleranceCheck(network, values.tolerance, report);
    case ReportKind::kThreshold:
      return WriteThresholdCheck(network, values.thresholds, report);
  }
}

}  // namespace

std::string_view ReportCaption(ReportKind kind) {
  switch (kind) {
    case ReportKind::kInformation:
      return "Network Information";
    case ReportKind::kWeights:
      return "Weight Information";
    case ReportKind::kOutputs:
      return "Network Outputs and Targets";
    case ReportKind::kStatistics:
      return "Network Statistics";
    case ReportKind::kTolerance:
      return "Network Tolerance Check";
    case ReportKind::kThreshold:
      return "Network Threshold Check";
  }
  return "";
}

bool NeedsTargets(ReportKind kind) {
  return kind == ReportKind::kStatistics || kind == ReportKind::kTolerance ||
         kind == ReportKind::kThreshold;
}

bool IsReportWanted(ReportKind kind, const CheckValues& values) {
  return kind != ReportKind::kThreshold || values.thresholds.Given();
}

Status WriteReport(ReportKind kind, const Network& network, const CheckValues& values,
                   ReportFile& report) {
  try {
    Write(kind, network, values, report);
  } catch (const std::bad_alloc&) {
    report.Discard();
    return Status::Failure(kOutOfMemory);
  }
  return report.Finish();
}

Status MakeReport(ReportKind kind, const Network& network, const CheckValues& values,
                  const std::string& folder, ReportFile& report) {
  Status created = report.Create(folder);
  return created.ok() ? WriteReport(kind, network, values, report) : created;
}

}  // namespace tarn
