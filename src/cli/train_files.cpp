#include "cli/train_files.h"

#include <array>
#include <random>
#include <string>
#include <string_view>

#include "base/file_layer.h"
#include "base/output_file.h"
#include "base/paths.h"
#include "base/process.h"
#include "cli/common.h"
#include "data/messages.h"
#include "data/outputs_export.h"
#include "engine/error_history.h"
#include "engine/messages.h"
#include "netfile/autosave_store.h"
#include "netfile/messages.h"
#include "netfile/network_writer.h"

namespace tarn {
namespace {

constexpr std::string_view kNotReadable =
    "the file of this network could not be read back: a value of it is infinite or not a number, "
    "or a name begins like a section";

// A file that the command is to write, and the message when it cannot.
struct Target {
  std::string path;  // empty: not wanted
  std::string_view message;
};

// The file of the trained network first.
std::array<Target, 5> TargetsOf(const TrainArguments& arguments, const Network& network) {
  const std::string& saved = arguments.output.empty() ? network.file_name : arguments.output;
  return {{{arguments.no_save ? "" : saved, kSaveFailed},
           {arguments.error_history, kErrorHistoryWriteError},
           {arguments.outputs, kOutputsWriteError},
           {arguments.history, kErrorHistoryWriteError},
           {arguments.autosave, kStoreNotCreated}}};
}

ExitStatus KeepFilesApart(const std::array<Target, 5>& targets) {
  for (size_t i = 0; i < targets.size(); ++i) {
    const std::string& path = targets[i].path;
    if (path.empty() || Files().IsSpecial(path)) continue;
    for (size_t j = i + 1; j < targets.size(); ++j) {
      if (path != targets[j].path && !SameFile(path, targets[j].path)) continue;
      PrintError("'" + path + "' is to be written twice");
      return kWrongUsage;
    }
  }
  return kDone;
}

// A name in a folder that others can write to, which they cannot have foreseen.
std::string RescueName() {
  return "Tarn-rescued-" + ProcessName() + "-" + std::to_string(std::random_device()()) + ".net";
}

ExitStatus TryFiles(const std::array<Target, 5>& targets) {
  for (const Target& target : targets) {
    OutputFile file;
    if (target.path.empty() || file.OpenReplacing(target.path)) continue;
    PrintError(target.message);
    return kFailed;
  }
  return kDone;
}

}  // namespace

ExitStatus PrepareFiles(const TrainArguments& arguments, const Network& network) {
  if (!arguments.no_save && !CanBeReadBack(network)) {
    return Report(Status::Failure(kNotReadable));
  }
  ExitStatus safe = KeepInputsSafe(
      {&arguments.error_history, &arguments.outputs, &arguments.history, &arguments.autosave},
      {&network.PatName, &network.TargName, &network.file_name});
  if (safe == kDone) {
    safe = KeepInputsSafe({&arguments.output}, {&network.PatName, &network.TargName});
  }
  if (safe != kDone) return safe;
  const std::array<Target, 5> targets = TargetsOf(arguments, network);
  const ExitStatus apart = KeepFilesApart(targets);
  if (apart != kDone) return apart;
  const ExitStatus tried = TryFiles(targets);
  if (tried != kDone || arguments.autosave.empty()) return tried;
  return Report(CreateStore(arguments.autosave));
}

ExitStatus SaveTrained(const TrainArguments& arguments, Network& network) {
  if (!CanBeReadBack(network)) return Report(Status::Failure(kNotReadable));
  if (!arguments.output.empty()) network.file_name = arguments.output;
  const ExitStatus saved = Report(WriteNetworkFile(network.file_name, network));
  if (saved == kDone) return kDone;
  // A network that cannot be saved where it belongs is kept where it can be.
  network.file_name = JoinPath(TemporaryFolder(), RescueName());
  OutputFile file;
  if (file.OpenPrivate(network.file_name) && WriteNetwork(file, network) && file.Commit()) {
    PrintNotices({"the trained network is kept in " + network.file_name});
  }
  return saved;
}

ExitStatus WriteExports(const TrainArguments& arguments, const Network& network,
                        const std::string& history_path) {
  ExitStatus status = kDone;
  const auto keep = [&status](const Status& written) {
    if (Report(written) != kDone) status = kFailed;
  };
  if (!arguments.error_history.empty()) {
    keep(ExportErrorHistory(history_path, arguments.error_history));
  }
  if (!arguments.outputs.empty()) keep(ExportOutputs(network, arguments.outputs));
  return status;
}

}  // namespace tarn
