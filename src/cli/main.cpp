#include <CLI/CLI.hpp>
#include <algorithm>
#include <exception>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "base/command_line.h"
#include "base/status.h"
#include "cli/commands.h"
#include "cli/console.h"
#include "cli/interrupt.h"
#include "cli/messages.h"
#include "cli/terminal.h"
#include "cli/usage.h"

namespace {

constexpr const char* kDescription =
    "Tarn: model your own data with multilayer feed-forward neural networks.\n"
    "A network file holds the design, the training parameters, the names of its data files\n"
    "and, once trained, the weights. Make one with 'new', change it with 'set', train it with\n"
    "'train', run new data through it with 'recall', read about it with 'report'.";

int RunProgram(int argc, char** argv) {
  CLI::App program(kDescription, "tarn-cli");
  program.set_version_flag("--version", std::string("tarn-cli ") + TARN_VERSION);
  program.require_subcommand(1);
  // A path may begin with a slash on Windows, too.
  program.allow_windows_style_options(false);
  tarn::UseHelpFormat(program);
  program.footer("'tarn-cli COMMAND --help' tells all about one command.");
  tarn::ExitStatus exit_status = tarn::kDone;
  tarn::AddNewCommand(program, exit_status);
  tarn::AddSetCommand(program, exit_status);
  tarn::AddTrainCommand(program, exit_status);
  tarn::AddRecallCommand(program, exit_status);
  tarn::AddReportCommand(program, exit_status);
  tarn::AddPlotCommand(program, exit_status);
  tarn::AddRestoreCommand(program, exit_status);
  for (CLI::App* command : program.get_subcommands({})) command->group("Commands");
  try {
    std::vector<std::string> words = tarn::CommandLineWords(argc, argv);
    std::reverse(words.begin(), words.end());  // as the parser takes them
    program.parse(std::move(words));
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() != static_cast<int>(CLI::ExitCodes::Success)) {
      tarn::PrintError(tarn::ExplainWrongUsage(program, error));
      return tarn::kWrongUsage;
    }
    program.exit(error);  // help was asked for, and is a result
  }
  if (!tarn::FlushResults()) {
    tarn::PrintError(tarn::kResultsLost);
    return tarn::kFailed;
  }
  return exit_status;
}

}  // namespace

int main(int argc, char** argv) {
  tarn::HandleInterrupts();
  const tarn::TerminalTexts texts;
  try {
    return RunProgram(argc, argv);
  } catch (const std::bad_alloc&) {
    tarn::PrintError(tarn::kOutOfMemory);
    tarn::PrintError(tarn::kAborting);
  } catch (const std::exception& error) {
    tarn::PrintError(error.what());
  }
  return tarn::kFailed;
}
