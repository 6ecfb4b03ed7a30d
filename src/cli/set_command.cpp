#include <memory>

#include "app/network_loader.h"
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

struct SetArguments {
  std::string path;
  std::string output;
  SetupOptions options;
};

ExitStatus RunSet(SetArguments& arguments) {
  CompletePaths({&arguments.path, &arguments.output});
  Session session;
  Network& network = session.network;
  const ExitStatus opened = Open(session, arguments.path);
  if (opened != kDone) return opened;
  const Status header = ReadHeader(network);
  if (!header.ok()) return Report(header);
  const NetworkShape shape = ShapeOf(network);
  const ExitStatus applied = ApplyAndReport(arguments.options, network);
  if (applied != kDone) return applied;
  if (!SetupCanBeReadBack(network)) return Report(Status::Failure(kNotReadBack));
  const std::string& destination = arguments.output.empty() ? network.file_name : arguments.output;
  const bool fits = ShapeOf(network) == shape;
  const bool loses = !fits && HoldsWeights(network.file_name).value_or(false);
  const ExitStatus saved =
      Report(SaveSetup(network, destination, session.scratch.path(),
                       fits ? SetupWeights::kAsStored : SetupWeights::kLeftOut));
  if (saved == kDone && loses) PrintNotices({std::string(kWeightsLeftOut)});
  return saved;
}

}  // namespace

void AddSetCommand(CLI::App& program, ExitStatus& exit_status) {
  CLI::App& command =
      *program.add_subcommand("set", "Change the design, data or training of a network file");
  const auto arguments = std::make_shared<SetArguments>();
  AddNetworkArgument(command, arguments->path);
  command.add_option("-o,--output", arguments->output, "Write to this file and leave NET as it is")
      ->type_name("FILE");
  AddSetupFlags(command, arguments->options);
  command.footer(
      "Weights, a stored random test set and stored normalization limits are kept as\n"
      "they are; weights that do not fit changed --layers are given up. Relative names\n"
      "of data files are looked up in the folder of NET.\n"
      "Example:\n"
      "  tarn-cli set iris.net --eta 0.05 --iterations 2000");
  command.callback([arguments, &exit_status] { exit_status = RunSet(*arguments); });
}

}  // namespace tarn
