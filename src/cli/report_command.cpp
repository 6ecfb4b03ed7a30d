#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "base/paths.h"
#include "base/text_numbers.h"
#include "browser/divergence_check.h"
#include "browser/report.h"
#include "browser/report_text.h"
#include "cli/commands.h"
#include "cli/common.h"
#include "cli/interrupt.h"
#include "cli/recall_data.h"
#include "engine/recall_run.h"

namespace tarn {
namespace {

struct Kind {
  std::string_view name;
  std::optional<ReportKind> report;  // empty: the divergence check, which makes none
  bool compares;                     // outputs with targets
};

constexpr std::array<Kind, 7> kKinds = {{{"information", ReportKind::kInformation, false},
                                         {"weights", ReportKind::kWeights, false},
                                         {"outputs", ReportKind::kOutputs, false},
                                         {"statistics", ReportKind::kStatistics, true},
                                         {"tolerance", ReportKind::kTolerance, true},
                                         {"threshold", ReportKind::kThreshold, true},
                                         {"divergence", std::nullopt, false}}};

const Kind* FindKind(std::string_view name) {
  for (const Kind& kind : kKinds) {
    if (kind.name == name) return &kind;
  }
  return nullptr;
}

// As typed.
struct ReportArguments {
  std::string kind;
  std::string path;
  RecallData data;
  std::optional<uint32_t> seed;
  std::string tolerance;
  std::string upper;
  std::string lower;

  bool IsRecall() const { return !data.inputs.empty(); }
};

ExitStatus Refuse(const std::string& text) {
  PrintError(text + "; see 'tarn-cli report --help'");
  return kWrongUsage;
}

ExitStatus TakeNumber(std::string_view option, const std::string& text,
                      std::optional<float>& value) {
  if (text.empty()) return kDone;
  std::string_view rest = text;
  float number = 0;
  if (!ScanFloat(rest, number) || !rest.empty()) {
    return Refuse("--" + std::string(option) + " takes a number, not '" + text + "'");
  }
  value = number;
  return kDone;
}

ExitStatus CheckArguments(const ReportArguments& arguments) {
  const RecallData& data = arguments.data;
  if (!arguments.IsRecall() && !(data.targets.empty() && data.targets_column.empty())) {
    return Refuse("targets are named for new inputs: --inputs is missing");
  }
  if (arguments.IsRecall() && FindKind(arguments.kind)->compares && data.targets.empty()) {
    return Refuse("report " + arguments.kind + " compares with targets: --targets is missing");
  }
  return kDone;
}

// The network with the activations of all patterns.
ExitStatus Load(ReportArguments& arguments, Session& session) {
  CompletePaths({&arguments.path, &arguments.data.inputs, &arguments.data.targets});
  session.seeds = SeedSource(arguments.seed);
  const ExitStatus opened = Open(session, arguments.path);
  if (opened != kDone) return opened;
  if (arguments.IsRecall()) {
    const ExitStatus taken = TakeRecallData(arguments.data, session.network);
    if (taken != kDone) return taken;
  }
  Notices notices;
  Status loaded =
      arguments.IsRecall() ? LoadAndRecall(session, notices) : LoadForTraining(session, notices);
  PrintNotices(notices);
  if (loaded.ok() && !arguments.IsRecall()) loaded = PropagateAll(session.network);
  return Report(loaded);
}

ExitStatus PrintReport(ReportKind kind, const Network& network, const CheckValues& values) {
  // Without a threshold there is nothing to count.
  if (kind == ReportKind::kThreshold && !values.thresholds.Given()) return kDone;
  ReportFile report;
  const Status made = MakeReport(kind, network, values, TemporaryFolder(), report);
  if (!made.ok()) return Report(made);
  RemoveWhenInterrupted(report.path());
  TVirtText text;
  if (!text.Open(report.path())) return Report(Status::Failure("the report cannot be read"));
  // What could not be printed is told at the end of the program.
  (void)WriteReportText(text, PrintResult);
  return kDone;
}

ExitStatus RunReport(ReportArguments& arguments) {
  const ExitStatus checked = CheckArguments(arguments);
  if (checked != kDone) return checked;
  std::optional<float> tolerance;
  CheckValues values;
  for (const ExitStatus taken : {TakeNumber("tolerance", arguments.tolerance, tolerance),
                                 TakeNumber("upper", arguments.upper, values.thresholds.upper),
                                 TakeNumber("lower", arguments.lower, values.thresholds.lower)}) {
    if (taken != kDone) return taken;
  }
  Session session;
  const ExitStatus loaded = Load(arguments, session);
  if (loaded != kDone) return loaded;
  values.tolerance = tolerance.value_or(session.network.Tolerance);
  const Kind& kind = *FindKind(arguments.kind);
  if (kind.report) return PrintReport(*kind.report, session.network, values);
  PrintResult(DivergenceMessage(session.network).text + "\n");
  return kDone;
}

std::string CheckKind(const std::string& name) {
  if (FindKind(name) != nullptr) return {};
  std::string text = "'" + name + "' is no kind of report; there are";
  for (const Kind& kind : kKinds) text.append(" ").append(kind.name);
  return text;
}

}  // namespace

void AddReportCommand(CLI::App& program, ExitStatus& exit_status) {
  CLI::App& command = *program.add_subcommand("report", "Print a report on a network");
  const auto arguments = std::make_shared<ReportArguments>();
  command
      .add_option("KIND", arguments->kind,
                  "information, weights, outputs, statistics, tolerance, threshold or divergence")
      ->required()
      ->type_name("")
      ->check(CheckKind);
  AddNetworkArgument(command, arguments->path);
  AddRecallDataOptions(command, arguments->data);
  AddSeedOption(command, arguments->seed);
  const auto add_number = [&command](const char* name, std::string& value, const char* help) {
    command.add_option(name, value, help)->type_name("X");
  };
  add_number("--tolerance", arguments->tolerance,
             "Of the tolerance check, in the units of the targets; the network's own unless given");
  add_number("--upper", arguments->upper, "Count outputs above this in the threshold check");
  add_number("--lower", arguments->lower, "Count outputs below this in the threshold check");
  command.footer(
      "Without --inputs the report is on the network's own training and test data, with it on\n"
      "a run of the trained network over these inputs. The threshold check prints\n"
      "nothing without --upper or --lower. Examples:\n"
      "  tarn-cli report statistics trained.net\n"
      "  tarn-cli report tolerance trained.net --tolerance 0.1 --inputs new.txt \\\n"
      "      --targets new.txt --targets-column 5");
  command.callback([arguments, &exit_status] { exit_status = RunReport(*arguments); });
}

}  // namespace tarn
