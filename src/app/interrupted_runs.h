#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "app/dialogs.h"
#include "app/session.h"
#include "netfile/autosave_store.h"

// A training run that was killed leaves its AutoSave store, and beside it a note of whose it is.
// The next start of the program offers its newest snapshot.

namespace tarn {

// The note of a run that has a store: a file "Tarn<process>-xxxxxx.run" in the folder of the store,
// that belongs to the user alone where files have modes. It holds "TARN RUN 1", the full path of
// the network file, the name of the store and how many of its snapshots are older than that file,
// with a zero byte behind each. Removed with the object.
class RunNote {
 public:
  RunNote() = default;
  ~RunNote() { Remove(); }
  RunNote(const RunNote&) = delete;
  RunNote& operator=(const RunNote&) = delete;

  // Makes the note, or another in its place; there is one at any moment. A run whose note cannot be
  // written is not offered.
  void Write(const std::string& network, const std::string& store, int64_t older_snapshots);
  bool IsThere() const { return !m_path.empty(); }
  void Remove();
  // It stays behind.
  void Release() { m_path.clear(); }

 private:
  std::string m_path;
};

struct InterruptedRun {
  std::string note;
  std::string network;
  std::string store;
  int64_t older_snapshots = 0;  // than the network file
};

// What the notes in `folder` tell whose process has ended. Notes and stores that are not files of
// this user are passed over.
std::vector<InterruptedRun> FindInterruptedRuns(const std::string& folder);

// Finds them when the program starts, and removes the temporary files in `folder` that no live
// process owns. The stores of these runs stay, and whatever may be the store of a note that cannot
// be read now. To be called before this process makes any temporary files of its own.
std::vector<InterruptedRun> ClearTemporaryFolder(const std::string& folder);

// Asks for each run whose network was not saved after its newest whole snapshot, or whose file is
// missing, whether to save the snapshot as a network file, which is the open network then. Says so
// when the file is newer all the same: by another process, or another clock. Removes the notes and
// stores of runs that have nothing to offer, that were saved and could be opened, and that the user
// does not want; what cannot be read or told now stays for the next start.
void OfferInterruptedRuns(const std::vector<InterruptedRun>& runs, Session& session,
                          Dialogs& dialogs);

}  // namespace tarn
