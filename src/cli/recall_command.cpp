#include <memory>

#include "cli/commands.h"
#include "cli/common.h"
#include "cli/recall_data.h"
#include "data/outputs_export.h"

namespace tarn {
namespace {

struct RecallArguments {
  std::string path;
  RecallData data;
  std::string outputs;
};

ExitStatus RunRecallCommand(RecallArguments& arguments) {
  RecallData& data = arguments.data;
  CompletePaths({&arguments.path, &data.inputs, &data.targets, &arguments.outputs});
  Session session;
  const ExitStatus opened = Open(session, arguments.path);
  if (opened != kDone) return opened;
  const ExitStatus taken = TakeRecallData(data, session.network);
  if (taken != kDone) return taken;
  const ExitStatus safe = KeepInputsSafe({&arguments.outputs},
                                         {&data.inputs, &data.targets, &session.network.file_name});
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
  AddRecallDataOptions(command, arguments->data)->required();
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
