#include <array>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "base/paths.h"
#include "base/text_numbers.h"
#include "browser/divergence_check.h"
#include "browser/messages.h"
#include "browser/report.h"
#include "browser/report_text.h"
#include "cli/commands.h"
#include "cli/interrupt.h"
#include "cli/kinds.h"
#include "cli/studied_network.h"

namespace tarn {
namespace {

constexpr std::string_view kCommand = "report";

struct Kind {
  std::string_view name;
  std::optional<ReportKind> report;  // empty: the divergence check, which makes none
};

constexpr std::array<Kind, 7> kKinds = {{{"information", ReportKind::kInformation},
                                         {"weights", ReportKind::kWeights},
                                         {"outputs", ReportKind::kOutputs},
                                         {"statistics", ReportKind::kStatistics},
                                         {"tolerance", ReportKind::kTolerance},
                                         {"threshold", ReportKind::kThreshold},
                                         {"divergence", std::nullopt}}};

// As typed.
struct ReportArguments {
  std::string kind;
  StudiedNetwork network;
  std::optional<std::string> tolerance;
  std::optional<std::string> upper;
  std::optional<std::string> lower;
};

ExitStatus TakeNumber(std::string_view option, const std::optional<std::string>& text,
                      std::optional<float>& value) {
  if (!text || text->empty()) return kDone;
  std::string_view rest = *text;
  float number = 0;
  if (!ScanFloat(rest, number) || !rest.empty()) {
    return RefuseUsage(kCommand,
                       "--" + std::string(option) + " takes a number, not '" + *text + "'");
  }
  value = number;
  return kDone;
}

ExitStatus CheckArguments(const ReportArguments& arguments, const Kind& kind) {
  if (arguments.tolerance && kind.report != ReportKind::kTolerance) {
    return RefuseUsage(kCommand, "--tolerance is of the tolerance check alone");
  }
  const bool thresholds = arguments.upper || arguments.lower;
  if (thresholds && kind.report != ReportKind::kThreshold) {
    return RefuseUsage(kCommand, "--upper and --lower are of the threshold check alone");
  }
  const bool wanted = kind.report != ReportKind::kThreshold || thresholds;
  if (arguments.network.IsRecall() && arguments.network.data.targets.empty() && kind.report &&
      wanted && NeedsTargets(*kind.report)) {
    return RefuseUsage(kCommand,
                       "report " + arguments.kind + " compares with targets: --targets is missing");
  }
  return kDone;
}

ExitStatus PrintReport(ReportKind kind, const Network& network, const CheckValues& values) {
  ReportFile report;
  Status made;
  {
    const HoldInterrupts hold;
    made = report.Create(TemporaryFolder());
    RemoveWhenInterrupted(report.path());
  }
  if (!made.ok()) return Report(made);
  made = WriteReport(kind, network, values, report);
  if (!made.ok()) return Report(made);
  TVirtText text;
  if (!text.Open(report.path())) return Report(Status::Failure(kReportUnreadable));
  // What could not be printed is told at the end of the program.
  return Report(WriteReportText(text, PrintResult));
}

ExitStatus RunReport(ReportArguments& arguments) {
  const Kind& kind = *FindKind(kKinds, arguments.kind);
  const ExitStatus checked = CheckArguments(arguments, kind);
  if (checked != kDone) return checked;
  std::optional<float> tolerance;
  CheckValues values;
  for (const ExitStatus taken : {TakeNumber("tolerance", arguments.tolerance, tolerance),
                                 TakeNumber("upper", arguments.upper, values.thresholds.upper),
                                 TakeNumber("lower", arguments.lower, values.thresholds.lower)}) {
    if (taken != kDone) return taken;
  }
  Session session;
  const ExitStatus loaded = LoadStudied(arguments.network, session);
  if (loaded != kDone) return loaded;
  values.tolerance = tolerance.value_or(session.network.Tolerance);
  if (kind.report && !IsReportWanted(*kind.report, values)) return kDone;
  if (kind.report) return PrintReport(*kind.report, session.network, values);
  PrintResult(DivergenceMessage(session.network).text + "\n");
  return kDone;
}

}  // namespace

void AddReportCommand(CLI::App& program, ExitStatus& exit_status) {
  CLI::App& command = *program.add_subcommand(std::string(kCommand), "Print a report on a network");
  const auto arguments = std::make_shared<ReportArguments>();
  AddKindArgument(command, kKinds, std::string(kCommand),
                  "information, weights, outputs, statistics, tolerance, threshold or divergence",
                  arguments->kind);
  AddStudiedNetwork(command, arguments->network);
  const auto add_number = [&command](const char* name, std::optional<std::string>& value,
                                     const char* help) {
    command.add_option(name, value, help)->type_name("X");
  };
  add_number("--tolerance", arguments->tolerance,
             "Of the tolerance check, in the units of the targets; the network's own unless given");
  add_number("--upper", arguments->upper, "Count outputs above this in the threshold check");
  add_number("--lower", arguments->lower, "Count outputs below this in the threshold check");
  command.footer(
      "Without --inputs the report is on the network's own training and test data,\n"
      "with it on a run of the trained network over these inputs. The threshold check\n"
      "prints nothing without --upper or --lower. Examples:\n"
      "  tarn-cli report statistics trained.net\n"
      "  tarn-cli report tolerance trained.net --tolerance 0.1 --inputs new.txt \\\n"
      "      --targets new.txt --targets-column 5");
  command.callback([arguments, &exit_status] { exit_status = RunReport(*arguments); });
}

}  // namespace tarn
