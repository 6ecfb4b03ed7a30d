#include <memory>
#include <string_view>

#include "cli/commands.h"
#include "cli/common.h"
#include "netfile/autosave_store.h"

namespace tarn {
namespace {

struct RestoreArguments {
  std::string store;
  std::string iteration;
  std::string path;
};

std::string RefuseOtherThanWholeNumbers(const std::string& text) {
  std::string_view digits = text;
  if (digits.starts_with('-')) digits.remove_prefix(1);
  const bool whole =
      !digits.empty() && digits.find_first_not_of("0123456789") == std::string_view::npos;
  return whole ? "" : "'" + text + "' is no whole number";
}

ExitStatus RunRestore(RestoreArguments& arguments) {
  CompletePaths({&arguments.store, &arguments.path});
  const ExitStatus safe = KeepInputsSafe({&arguments.path}, {&arguments.store});
  if (safe != kDone) return safe;
  return Report(
      RestoreStatus(RestoreSnapshot(arguments.store, arguments.path, arguments.iteration)));
}

}  // namespace

void AddRestoreCommand(CLI::App& program, ExitStatus& exit_status) {
  CLI::App& command =
      *program.add_subcommand("restore", "Write a snapshot of an AutoSave store to a network file");
  const auto arguments = std::make_shared<RestoreArguments>();
  command.add_option("STORE", arguments->store, "The AutoSave store")->required()->type_name("");
  command.add_option("ITERATION", arguments->iteration, "The iteration of the snapshot")
      ->required()
      ->type_name("")
      ->check(CLI::Validator(&RefuseOtherThanWholeNumbers, ""));
  AddNetworkArgument(command, arguments->path);
  command.footer(
      "A store is kept by 'train --autosave'. Example:\n"
      "  tarn-cli restore iris.store 500 earlier.net");
  command.callback([arguments, &exit_status] { exit_status = RunRestore(*arguments); });
}

}  // namespace tarn
