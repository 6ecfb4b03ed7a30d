#include <memory>

#include "app/messages.h"
#include "cli/commands.h"
#include "cli/common.h"
#include "data/outputs_export.h"
#include "setup/recall_data_draft.h"

namespace tarn {
namespace {

struct RecallArguments {
  std::string path;
  std::string inputs;
  std::string inputs_column = "1";
  std::string targets;
  std::string targets_column;
  std::string outputs;
};

// The checks of the recall data dialog, with its messages.
ExitStatus TakeRecallData(const RecallArguments& arguments, Network& network) {
  RecallDataDraft draft;
  draft.input_path = arguments.inputs;
  draft.input_column = arguments.inputs_column;
  draft.target_path = arguments.targets;
  draft.target_column = arguments.targets_column;
  const DraftResult result = draft.Apply(network);
  for (const Message& message : result.messages) PrintError(message.text);
  return result.may_close ? kDone : kFailed;
}

ExitStatus RunRecallCommand(RecallArguments& arguments) {
  CompletePaths({&arguments.path, &arguments.inputs, &arguments.targets, &arguments.outputs});
  Session session;
  const ExitStatus opened = Open(session, arguments.path);
  if (opened != kDone) return opened;
  if (!session.network.trained) {
    PrintError(kUntrainedRecall);
    return kFailed;
  }
  const ExitStatus taken = TakeRecallData(arguments, session.network);
  if (taken != kDone) return taken;
  const ExitStatus safe = KeepInputsSafe(
      {&arguments.outputs}, {&arguments.inputs, &arguments.targets, &session.network.file_name});
  if (safe != kDone) return safe;
  Notices notices;
  const Status recalled = LoadAndRecall(session, notices);
  PrintNotices(notices);
  if (!recalled.ok()) return Report(recalled);
  if (!arguments.outputs.empty()) return Report(ExportOutputs(session.network, arguments.outputs));
  // What could not be printed is told at the end of the program.
  (void)WriteOutputs(session.network, PrintResult);
  return kDone;
}

}  // namespace

void AddRecallCommand(CLI::App& program, ExitStatus& exit_status) {
  CLI::App& command = *program.add_subcommand("recall", "Run new data through a trained network");
  const auto arguments = std::make_shared<RecallArguments>();
  AddNetworkArgument(command, arguments->path);
  command.add_option("--inputs", arguments->inputs, "Text file with the inputs")
      ->required()
      ->type_name("FILE");
  command
      .add_option("--inputs-column", arguments->inputs_column,
                  "Column of the first input value, from 1")
      ->type_name("N")
      ->capture_default_str();
  command.add_option("--targets", arguments->targets, "Text file with targets to compare with")
      ->type_name("FILE");
  command
      .add_option("--targets-column", arguments->targets_column,
                  "Column of the first target value, from 1; needed with --targets")
      ->type_name("N");
  command
      .add_option("--outputs", arguments->outputs,
                  "Write the outputs to this file, not to the terminal")
      ->type_name("FILE");
  command.footer(
      "Prints a line per pattern: its number, then for every output node the target,\n"
      "when there are targets, and the output, in the units of the data. Example:\n"
      "  tarn-cli recall trained.net --inputs new.txt --outputs new.out");
  command.callback([arguments, &exit_status] { exit_status = RunRecallCommand(*arguments); });
}

}  // namespace tarn
