#include "cli/studied_network.h"

#include "cli/common.h"
#include "engine/recall_run.h"

namespace tarn {

void AddStudiedNetwork(CLI::App& command, StudiedNetwork& studied) {
  AddNetworkArgument(command, studied.path);
  studied.inputs = AddRecallDataOptions(command, studied.data);
  AddSeedOption(command, studied.seed);
}

ExitStatus LoadStudied(StudiedNetwork& studied, Session& session) {
  CompletePaths({&studied.path, &studied.data.inputs, &studied.data.targets});
  session.seeds = SeedSource(studied.seed);
  const ExitStatus opened = Open(session, studied.path);
  if (opened != kDone) return opened;
  const bool recall = studied.IsRecall();
  if (recall) {
    const ExitStatus taken = TakeRecallData(studied.data, session.network);
    if (taken != kDone) return taken;
  }
  Notices notices;
  Status loaded = recall ? LoadAndRecall(session, notices) : LoadForTraining(session, notices);
  PrintNotices(notices);
  if (loaded.ok() && !recall) loaded = PropagateAll(session.network);
  return Report(loaded);
}

}  // namespace tarn
