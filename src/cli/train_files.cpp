#include "cli/train_files.h"

#include <array>
#include <fmt/printf.h>
#include <random>
#include <string>
#include <string_view>

#include "base/file_layer.h"
#include "base/output_file.h"
#include "base/paths.h"
#include "base/process.h"
#include "cli/common.h"
#include "cli/messages.h"
#include "data/messages.h"
#include "data/outputs_export.h"
#include "engine/error_history.h"
#include "engine/messages.h"
#include "netfile/autosave_store.h"
#include "netfile/messages.h"
#include "netfile/network_writer.h"

namespace tarn {
namespace {

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
      PrintError(fmt::sprintf(kWrittenTwice.data(), path));
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

// A run that was killed has left nothing but its snapshots: they stay until the network has been
// saved. `saved` is empty where no network is saved.
ExitStatus SpareSnapshots(const std::string& store, const std::string& saved,
                          const Network& network) {
  // A device has nothing to lose, and may never end.
  if (Files().IsSpecial(store)) return kDone;
  const std::string& file = saved.empty() ? network.file_name : saved;
  const std::optional<int64_t> taken = Files().WriteTime(store);
  if (!taken || taken <= Files().WriteTime(file)) return kDone;
  std::optional<StoredSnapshot> newest;
  if (!FindNewestSnapshot(store, newest).ok() || !newest) return kDone;
  PrintError(fmt::sprintf(kSnapshotIsNewer.data(), store, newest->iteration, file));
  return kFailed;
}

}  // namespace

ExitStatus PrepareFiles(const TrainArguments& arguments, const Network& network) {
  const bool can_be_kept = (arguments.no_save || CanBeReadBack(network)) &&
                           (arguments.autosave.empty() || SnapshotCanBeReadBack(network));
  if (!can_be_kept) return Report(Status::Failure(kNotReadBack));
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
  const ExitStatus spared = SpareSnapshots(arguments.autosave, targets.front().path, network);
  return spared == kDone ? Report(CreateStore(arguments.autosave)) : spared;
}

ExitStatus SaveTrained(const TrainArguments& arguments, Network& network) {
  if (!CanBeReadBack(network)) return Report(Status::Failure(kNotReadBack));
  if (!arguments.output.empty()) network.file_name = arguments.output;
  const ExitStatus saved = Report(WriteNetworkFile(network.file_name, network));
  if (saved == kDone) return kDone;
  // A network that cannot be saved where it belongs is kept where it can be.
  network.file_name = JoinPath(TemporaryFolder(), RescueName());
  OutputFile file;
  if (file.OpenPrivate(network.file_name) && WriteNetwork(file, network) && file.Commit()) {
    PrintNotices({fmt::sprintf(kNetworkRescued.data(), network.file_name)});
  }
  return saved;
}

ExitStatus WriteExports(const TrainArguments& arguments, const Network& network,
                        const std::optional<std::string>& history_path) {
  ExitStatus status = kDone;
  const auto keep = [&status](const Status& written) {
    if (Report(written) != kDone) status = kFailed;
  };
  if (!arguments.error_history.empty() && history_path) {
    keep(ExportErrorHistory(*history_path, arguments.error_history));
  }
  if (!arguments.outputs.empty()) keep(ExportOutputs(network, arguments.outputs));
  return status;
}

}  // namespace tarn
