#include <algorithm>
#include <fmt/printf.h>
#include <memory>

#include "base/output_file.h"
#include "base/paths.h"
#include "cli/commands.h"
#include "cli/common.h"
#include "cli/messages.h"
#include "cli/setup_flags.h"
#include "netfile/header.h"
#include "netfile/messages.h"
#include "netfile/network_writer.h"
#include "netfile/setup_save.h"

namespace tarn {
namespace {

struct NewArguments {
  std::string path;
  SetupOptions options;
  bool force = false;
};

bool AnyGiven(const SetupOptions& options) {
  return std::ranges::any_of(kSetupOptions, [&](const SetupOptionEntry& entry) {
    return (options.*entry.value).has_value();
  });
}

ExitStatus WriteTemplate(const NewArguments& arguments) {
  OutputFile file;
  const bool opened =
      arguments.force ? file.OpenReplacing(arguments.path) : file.OpenNew(arguments.path);
  const bool written = opened && file.Write(NewNetworkText()) && file.Commit();
  return Report(written ? Status() : Status::Failure(kSetupSaveFailed));
}

// The options are applied to a template in the scratch folder; the network file itself appears
// only when all of them have passed.
ExitStatus WriteWithOptions(const NewArguments& arguments) {
  Session session;
  TidyWhenInterrupted(session);
  Network& network = session.network;
  network.file_name = JoinPath(session.scratch.path(), "template.net");
  const Status status = ReadHeader(network);
  if (!status.ok()) return Report(status);
  EnterFolderOf(arguments.path);
  const ExitStatus applied = ApplyAndReport(arguments.options, network);
  if (applied != kDone) return applied;
  if (!SetupCanBeReadBack(network)) return Report(Status::Failure(kNotReadBack));
  return Report(SaveSetup(network, arguments.path, session.scratch.path()));
}

ExitStatus RunNew(NewArguments& arguments) {
  CompletePaths({&arguments.path});
  if (!arguments.force && SameFile(arguments.path, arguments.path)) {
    PrintError(fmt::sprintf(kFileExists.data(), arguments.path));
    return kFailed;
  }
  return AnyGiven(arguments.options) ? WriteWithOptions(arguments) : WriteTemplate(arguments);
}

}  // namespace

void AddNewCommand(CLI::App& program, ExitStatus& exit_status) {
  CLI::App& command = *program.add_subcommand("new", "Make a new network file");
  const auto arguments = std::make_shared<NewArguments>();
  AddNetworkArgument(command, arguments->path);
  command.add_flag("--force", arguments->force, "Replace the file when it exists");
  AddSetupFlags(command, arguments->options);
  command.footer(
      "A new network has 2 inputs, 2 hidden nodes, 1 output and no data files; the\n"
      "options change that. Relative names of data files are looked up in the folder of\n"
      "NET. Example:\n"
      "  tarn-cli new iris.net --layers 4,8,3 --inputs iris.txt --targets iris.txt\n"
      "      --targets-column 5 --test-method random --test-patterns 30");
  command.callback([arguments, &exit_status] { exit_status = RunNew(*arguments); });
}

}  // namespace tarn
