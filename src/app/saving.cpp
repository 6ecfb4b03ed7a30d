#include "app/saving.h"

#include <optional>
#include <string>
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

bool WriteTo(const std::string& path, Session& session, Dialogs& dialogs) {
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
  if (!path) return false;
  const Status saved =
      WhileBusy(dialogs, [&] { return SaveSetup(session.network, *path, session.scratch.path()); });
  if (!saved.ok()) {
    dialogs.Tell(kNetworkErrorCaption, saved.message());
    return false;
  }
  session.network.file_name = *path;
  session.network.trained = HoldsWeights(*path);
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

void SaveOutputs(const Session& session, Dialogs& dialogs) {
  const std::optional<std::string> path = dialogs.ChooseFile(kSaveOutputsQuestion);
  if (!path) return;
  const Status written = WhileBusy(dialogs, [&] { return ExportOutputs(session.network, *path); });
  if (!written.ok()) dialogs.Tell(kOutputsAbortedCaption, written.message());
}

}  // namespace tarn
