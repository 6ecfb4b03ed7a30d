#include "netfile/autosave_store.h"

#include "base/output_file.h"
#include "base/text_numbers.h"
#include "base/text_reader.h"
#include "netfile/find_section.h"
#include "netfile/messages.h"
#include "netfile/network_writer.h"

namespace tarn {
namespace {

constexpr std::string_view kSnapshot = "ITERATION";
constexpr size_t kChoiceLimit = 511;

// Copies the matching snapshots; false when a line could not be read or written.
bool CopySnapshots(TextReader& store, const std::string& wanted, OutputFile& file, bool& found) {
  TextReader::Line line;
  bool copying = false;
  while (store.ReadLine(kSectionLineLimit, line)) {
    if (copying && !line.text.starts_with(kSnapshot)) {
      file.Write(line.text);
      if (line.ended && !file.Write("\n")) return false;
    } else if (copying) {
      copying = false;  // the line that ends a snapshot is not looked at as a start
    } else if (line.text.starts_with(wanted)) {
      copying = found = true;
    }
  }
  return !store.Failed();
}

// The last line of a network file: a snapshot that ends with it is there as a whole.
bool EndsNetwork(const TextReader::Line& line) {
  return line.ended && (line.text == "NORMALIZE:NONE" || line.text == "NORMALIZE:STOP");
}

// Copies the snapshot of this number; false when a line could not be read or written.
bool CopySnapshot(TextReader& store, int64_t number, OutputFile& file) {
  TextReader::Line line;
  int64_t found = 0;
  while (found <= number && store.ReadLine(kSectionLineLimit, line)) {
    if (line.text.starts_with(kSnapshot)) {
      ++found;
    } else if (found == number) {
      file.Write(line.text);
      if (line.ended && !file.Write("\n")) return false;
      // Behind it may be the beginning of a line that should have been the next snapshot's first.
      if (EndsNetwork(line)) break;
    }
  }
  return !store.Failed();
}

}  // namespace

Status CreateStore(const std::string& path) {
  OutputFile file;
  const bool created = file.OpenReplacing(path) && file.Commit();
  return created ? Status() : Status::Failure(kStoreNotCreated);
}

bool AppendSnapshot(const std::string& path, const Network& network) {
  if (!CanBeReadBack(network)) return false;
  OutputFile file;
  return file.OpenAppending(path) && file.Printf("ITERATION %d\n", network.iteration) &&
         WriteNetwork(file, network) && file.Commit();
}

Status ListSnapshots(const std::string& path, std::vector<std::string>& iterations) {
  constexpr std::string_view kEntry = "ITERATION ";
  iterations.clear();
  TextReader store;
  if (!store.Open(path)) return Status::Failure(kStoreNotFound);
  TextReader::Line line;
  while (store.ReadLine(kSectionLineLimit, line)) {
    if (line.text.starts_with(kEntry)) iterations.emplace_back(line.text.substr(kEntry.size()));
  }
  return store.Failed() ? Status::Failure(kStoreNotFound) : Status();
}

std::optional<StoredSnapshot> FindNewestSnapshot(const std::string& store) {
  TextReader file;
  if (!file.Open(store)) return std::nullopt;
  std::optional<StoredSnapshot> newest;
  StoredSnapshot current;
  TextReader::Line line;
  while (file.ReadLine(kSectionLineLimit, line)) {
    if (line.text.starts_with(kSnapshot)) {
      current = {ToInt(line.text.substr(kSnapshot.size())), current.number + 1};
    } else if (current.number > 0 && EndsNetwork(line)) {
      newest = current;
    }
  }
  return newest;
}

Status WriteSnapshot(const std::string& store, const StoredSnapshot& snapshot,
                     const std::string& destination) {
  TextReader file;
  if (!file.Open(store)) return Status::Failure(kStoreNotFound);
  OutputFile output;
  const bool written = output.OpenReplacing(destination) &&
                       CopySnapshot(file, snapshot.number, output) && output.Commit();
  return written ? Status() : Status::Failure(kRestoreWriteError);
}

RestoreResult RestoreSnapshot(const std::string& store, const std::string& destination,
                              std::string_view choice) {
  const int32_t iteration = ToInt(choice.substr(0, kChoiceLimit));
  if (iteration < 1) return {};
  TextReader file;
  if (!file.Open(store)) return {Status::Failure(kStoreNotFound), 0};
  OutputFile output;
  bool found = false;
  if (!output.OpenReplacing(destination) ||
      !CopySnapshots(file, fmt::sprintf("ITERATION %d", iteration), output, found)) {
    return {Status::Failure(kRestoreWriteError), 0};
  }
  if (!found) return {};
  if (!output.Commit()) return {Status::Failure(kRestoreWriteError), 0};
  return {Status(), iteration};
}

Status RestoreStatus(const RestoreResult& result) {
  return result.status.ok() && result.iteration < 1 ? Status::Failure(kNotRestored) : result.status;
}

}  // namespace tarn
