#include "app/saving.h"

#include <utility>

#include "app/main_window_rules.h"
#include "app/messages.h"
#include "base/paths.h"
#include "data/outputs_export.h"
#include "netfile/header.h"
#include "netfile/messages.h"
#include "netfile/network_writer.h"
#include "netfile/setup_save.h"

namespace tarn {
namespace {

// What no reader would take back is written only when the user wants it.
bool MayWrite(bool can_be_read_back, Dialogs& dialogs) {
  if (can_be_read_back) return true;
  const Message question = {std::string(kTarnWarningCaption),
                            std::string(kNotReadBack) + std::string(kAskAllTheSame),
                            MessageIcon::kExclamation};
  return dialogs.Ask(question, AnswerChoice::kYesNo) == Answer::kYes;
}

bool WriteTo(const std::string& path, Session& session, Dialogs& dialogs) {
  if (!MayWrite(CanBeReadBack(session.network), dialogs)) return false;
  const std::string old_name = std::exchange(session.network.file_name, path);
  const Status written =
      WhileBusy(dialogs, [&] { return WriteNetworkFile(path, session.network); });
  if (!written.ok()) {
    session.network.file_name = old_name;
    dialogs.Tell(kSaveErrorCaption, written.message());
    return false;
  }
  EnterFolderOf(path);
  session.saved = true;
  session.network.trained = true;
  return true;
}

}  // namespace

bool SaveNetwork(Session& session, Dialogs& dialogs) {
  const std::string path = session.network.file_name;
  if (IsUntitled(path)) return SaveNetworkAs(session, dialogs);
  return WriteTo(path, session, dialogs);
}

bool SaveNetworkAs(Session& session, Dialogs& dialogs) {
  const std::optional<std::string> path = dialogs.ChooseFile(kSaveNetworkQuestion);
  return path && WriteTo(*path, session, dialogs);
}

bool SaveSetupAs(Session& session, Dialogs& dialogs) {
  const std::optional<std::string> path = dialogs.ChooseFile(kSaveNetworkQuestion);
  if (!path || !MayWrite(SetupCanBeReadBack(session.network), dialogs)) return false;
  const Status saved =
      WhileBusy(dialogs, [&] { return SaveSetup(session.network, *path, session.scratch.path()); });
  if (!saved.ok()) {
    dialogs.Tell(kNetworkErrorCaption, saved.message());
    return false;
  }
  session.network.file_name = *path;
  // Weights stand as in the old file, should the new one be out of reach just now.
  session.network.trained = HoldsWeights(*path).value_or(session.network.trained);
  EnterFolderOf(*path);
  return true;
}

bool MayLeave(Session& session, Dialogs& dialogs) {
  if (!AsksToSave(session.network, session.saved)) return true;
  const Message question = {std::string(kNotSavedCaption), std::string(kAskToSave),
                            MessageIcon::kQuestion};
  const Answer answer = dialogs.Ask(question, AnswerChoice::kYesNoCancel);
  if (answer == Answer::kYes) return SaveNetwork(session, dialogs);
  return answer == Answer::kNo;
}

std::optional<std::string> SaveStoredSnapshot(const std::string& store,
                                              const StoredSnapshot& snapshot, Dialogs& dialogs) {
  std::optional<std::string> path = dialogs.ChooseFile(kSaveSnapshotQuestion);
  if (!path) return std::nullopt;
  const Status written = WhileBusy(dialogs, [&] { return WriteSnapshot(store, snapshot, *path); });
  if (written.ok()) return path;
  dialogs.Tell(kAutoSaveErrorCaption, written.message());
  return std::nullopt;
}

void SaveOutputs(const Session& session, Dialogs& dialogs) {
  const std::optional<std::string> path = dialogs.ChooseFile(kSaveOutputsQuestion);
  if (!path) return;
  const Status written = WhileBusy(dialogs, [&] { return ExportOutputs(session.network, *path); });
  if (!written.ok()) dialogs.Tell(kOutputsAbortedCaption, written.message());
}

}  // namespace tarn
