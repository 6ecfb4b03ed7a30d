#include "netfile/autosave_store.h"

#include "base/output_file.h"
#include "base/text_numbers.h"
#include "base/text_reader.h"
#include "netfile/find_section.h"
#include "netfile/header.h"
#include "netfile/messages.h"
#include "netfile/network_writer.h"

namespace tarn {
namespace {

constexpr size_t kChoiceLimit = 511;

// Copies the matching snapshots; false when a line could not be read or written.
bool CopySnapshots(TextReader& store, const std::string& wanted, OutputFile& file, bool& found) {
  TextReader::Line line;
  bool copying = false;
  while (store.ReadLine(kSectionLineLimit, line)) {
    if (copying && !line.text.starts_with(kSnapshotKey)) {
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

// Goes through a store snapshot by snapshot. The lines of a header, which hold texts of the user,
// are taken for nothing else.
class SnapshotScan {
 public:
  enum class Part { kOutside, kStart, kInside, kEnd };

  // What the next line is: the one that names the iteration, one of a network file, its last one.
  Part Take(const TextReader::Line& line) {
    if (!m_inside || m_header_lines >= kHeaderLineCount) {
      if (line.ended && line.text.starts_with(kSnapshotKey)) {
        m_inside = true;
        m_header_lines = 0;
        return Part::kStart;
      }
      if (!m_inside) return Part::kOutside;
    } else if (line.ended) {
      ++m_header_lines;
      return Part::kInside;
    }
    m_inside = !(line.ended && (line.text == "NORMALIZE:NONE" || line.text == "NORMALIZE:STOP"));
    return m_inside ? Part::kInside : Part::kEnd;
  }

 private:
  bool m_inside = false;
  int m_header_lines = 0;  // that have gone by
};

// Copies the snapshot of this number; false when a line could not be read or written.
bool CopySnapshot(TextReader& store, int64_t number, OutputFile& file) {
  TextReader::Line line;
  SnapshotScan scan;
  int64_t found = 0;
  while (found <= number && store.ReadLine(kSectionLineLimit, line)) {
    const SnapshotScan::Part part = scan.Take(line);
    if (part == SnapshotScan::Part::kStart) {
      ++found;
    } else if (found == number) {
      file.Write(line.text);
      if (line.ended && !file.Write("\n")) return false;
      if (part == SnapshotScan::Part::kEnd) return true;
    }
  }
  return false;
}

}  // namespace

Status CreateStore(const std::string& path) {
  OutputFile file;
  const bool created = file.OpenReplacing(path) && file.Commit();
  return created ? Status() : Status::Failure(kStoreNotCreated);
}

bool AppendSnapshot(const std::string& path, const Network& network) {
  if (!SnapshotCanBeReadBack(network)) return false;
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

Status FindNewestSnapshot(const std::string& store, std::optional<StoredSnapshot>& newest) {
  newest.reset();
  TextReader file;
  if (!file.Open(store)) return Status::Failure(kStoreNotFound);
  StoredSnapshot current;
  TextReader::Line line;
  SnapshotScan scan;
  while (file.ReadLine(kSectionLineLimit, line)) {
    const SnapshotScan::Part part = scan.Take(line);
    if (part == SnapshotScan::Part::kStart) {
      current = {ToInt(line.text.substr(kSnapshotKey.size())), current.number + 1};
    } else if (part == SnapshotScan::Part::kEnd) {
      newest = current;
    }
  }
  if (!file.Failed()) return {};
  newest.reset();
  return Status::Failure(kStoreNotFound);
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
