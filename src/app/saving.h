#pragma once

#include <optional>
#include <string>

#include "app/dialogs.h"
#include "app/session.h"
#include "netfile/autosave_store.h"

// The user's save commands. After a failure, which is told, network, saved flag and file are as
// they were.

namespace tarn {

// Save: to the network's own file; a network that has none yet is asked for one. False when
// nothing was saved.
bool SaveNetwork(Session& session, Dialogs& dialogs);

// Save As: to a chosen file, which is the network's from then on.
bool SaveNetworkAs(Session& session, Dialogs& dialogs);

// Saves the setup alone to a chosen file, which is the network's from then on: weights, test set
// and limits stand as in the old file.
bool SaveSetupAs(Session& session, Dialogs& dialogs);

// Before the network is left: asks whether to save when there is something to lose. False when the
// user wants to stay, or when the save that was asked for failed.
bool MayLeave(Session& session, Dialogs& dialogs);

// Saves a snapshot of a store to a chosen file, whose path is the result; nothing when nothing was
// saved.
std::optional<std::string> SaveStoredSnapshot(const std::string& store,
                                              const StoredSnapshot& snapshot, Dialogs& dialogs);

// The outputs/targets export to a chosen file.
void SaveOutputs(const Session& session, Dialogs& dialogs);

}  // namespace tarn
