#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/status.h"
#include "engine/network.h"

// The AutoSave store: whole network files one after the other, each behind a line
// "ITERATION %ld" with the iteration at which it was taken, in rising order.

namespace tarn {

// Creates the store, empty; an old one is as it was after a failure.
Status CreateStore(const std::string& path);

// Appends the network as it is; on a failure the store keeps what it held before. One that could
// not be read back is not stored.
bool AppendSnapshot(const std::string& path, const Network& network);

// The iteration numbers in the store, as text, in file order.
Status ListSnapshots(const std::string& path, std::vector<std::string>& iterations);

// The newest of the snapshots that are there as a whole: the last one need not be when the program
// was killed while it wrote it.
struct StoredSnapshot {
  int32_t iteration = 0;
  int64_t number = 0;  // in file order, from 1
};
// "AutoSave File Not Found" when the store cannot be read.
Status FindNewestSnapshot(const std::string& store, std::optional<StoredSnapshot>& newest);

// Replaces `destination` by that snapshot and no other; its failures are those of RestoreSnapshot.
Status WriteSnapshot(const std::string& store, const StoredSnapshot& snapshot,
                     const std::string& destination);

struct RestoreResult {
  Status status;
  int32_t iteration = 0;  // the snapshot restored, 0 when none was
};

// Writes the snapshot of the chosen iteration to `destination`. `choice` is the entry as the
// user typed it; below 1 nothing is done. An iteration is matched by the beginning of its
// line: the snapshots of 50 and 500 follow that of 5 in the destination unless they stand
// directly behind a copied one, and a network reader reads the first. `destination` is
// replaced whole, and left alone when no snapshot is found.
RestoreResult RestoreSnapshot(const std::string& store, const std::string& destination,
                              std::string_view choice);

// What the user is told of a restore: its failure, or "File Not Saved" when no snapshot was
// restored.
Status RestoreStatus(const RestoreResult& result);

}  // namespace tarn
