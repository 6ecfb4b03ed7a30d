#include "netfile/setup_save.h"

#include <algorithm>
#include <vector>

#include "base/output_file.h"
#include "base/paths.h"
#include "base/text_reader.h"
#include "netfile/connections_section.h"
#include "netfile/find_section.h"
#include "netfile/header.h"
#include "netfile/messages.h"
#include "netfile/weights_section.h"

namespace tarn {
namespace {

// One part of the file that waits in the scratch folder; removed with the object.
class ScratchPart {
 public:
  ScratchPart(const std::string& folder, std::string_view name) : m_path(JoinPath(folder, name)) {}
  ~ScratchPart() { Files().Remove(m_path); }
  ScratchPart(const ScratchPart&) = delete;
  ScratchPart& operator=(const ScratchPart&) = delete;

  const std::string& path() const { return m_path; }

  bool AppendTo(OutputFile& file) const {
    TextReader part;
    if (!part.Open(m_path)) return false;
    TextReader::Line line;
    while (part.ReadLine(kSectionLineLimit, line)) {
      file.Write(line.text);
      if (line.ended) file.Write("\n");
    }
    return !part.Failed();
  }

 private:
  std::string m_path;
};

// Copies a section, `prefix` such as "WEIGHTS:", from the old file: with the mode READ up to
// its end line, else the key line alone. The copy ends with a line end even where the file has
// none: the next section begins on a line of its own.
bool CopySection(TextReader& old_file, std::string_view prefix, const std::string& path) {
  const std::string mode = FindSection(old_file, prefix);
  OutputFile part;
  if (!part.OpenReplacing(path)) return false;
  if (!mode.starts_with("READ")) {
    part.Printf("%s%s\n", prefix, mode);
    return !old_file.Failed() && part.Commit();
  }
  part.Printf("%sREAD\n", prefix);
  TextReader::Line line;
  bool line_start = true;
  bool stopped = false;
  while (!stopped && old_file.ReadLine(kSectionLineLimit, line)) {
    stopped = line_start && line.text.starts_with(prefix);
    part.Write(line.text);
    if (line.ended || stopped) part.Write("\n");
    line_start = line.ended || stopped;
  }
  if (!line_start) part.Write("\n");
  return !old_file.Failed() && part.Commit();
}

// Below 0 when it cannot be told.
int64_t SizeOf(const std::string& path) {
  const FileLayer::Handle file = Files().Open(path, FileLayer::Mode::kRead);
  if (file == FileLayer::kNoFile) return -1;
  const int64_t size = Files().Size(file);
  Files().Close(file);
  return size;
}

// Whether the weights of a sound design can stand in so many bytes, of which each takes one at
// least: memory for more than there can be is not asked for. The sum of all may be too large.
bool CanHoldWeights(const Network& network, int64_t bytes) {
  for (size_t l = 1; l < static_cast<size_t>(network.nLayers); ++l) {
    const int64_t sources = int64_t{network.layers[l - 1].nUnits} + 1;
    if (sources > bytes / network.layers[l].nUnits) return false;
    bytes -= sources * network.layers[l].nUnits;
  }
  return true;
}

// The weights of the oldest version stand in the file without key lines: they are read and written
// anew. Those that do not fit the file's own design are random at the next load, as they are now.
bool ConvertWeights(const std::string& old_path, const std::string& path) {
  Network old;
  old.file_name = old_path;
  if (!ReadHeader(old).ok()) return false;
  StoredWeights stored = StoredWeights::kNone;
  const Status shape = CheckShape(old);
  const int64_t size = SizeOf(old_path);
  if (size < 0) return false;
  const bool sound = shape.ok() || shape.message() == kOutOfMemory;
  if (sound && CanHoldWeights(old, size)) {
    if (!AllocateArrays(old).ok()) return false;
    stored = ReadStoredWeights(old);
  }
  OutputFile part;
  if (stored == StoredWeights::kFailed || !part.OpenReplacing(path)) return false;
  if (stored == StoredWeights::kRead) {
    WriteWeights(part, old);
  } else {
    part.Write("WEIGHTS:RANDOM\n");
  }
  return part.Commit();
}

bool WriteLine(std::string_view line, const std::string& path) {
  OutputFile part;
  return part.OpenReplacing(path) && part.Printf("%s\n", line) && part.Commit();
}

// Writes a triple for every removed connection and counts them; below 0 when they could not be
// found out or not be written.
int64_t WriteRemovedConnections(const Network& network, const std::string& scratch_folder,
                                const std::string& path) {
  OutputFile part;
  if (!part.OpenReplacing(path)) return -1;
  int64_t count = 0;
  std::vector<RemovedConnection> removed;
  for (int32_t layer = 1; layer < std::min(network.nLayers, kMaxLayers); ++layer) {
    if (!FindRemovedConnections(network, layer, scratch_folder, removed)) return -1;
    for (const RemovedConnection& connection : removed) {
      part.Printf("%d %d %d\n", layer, connection.node, connection.source);
    }
    count += static_cast<int64_t>(removed.size());
  }
  return part.Commit() ? count : -1;
}

bool WriteSetup(OutputFile& file, const Network& network, const ScratchPart& weights,
                const ScratchPart& connections, int64_t removed, const ScratchPart& patterns,
                const ScratchPart& limits) {
  if (!WriteHeader(file, network, HeaderKind::kSetup) || !weights.AppendTo(file)) return false;
  if (removed == 0) {
    file.Write("CONNECTIONS:FULL\n");
  } else {
    file.Printf("CONNECTIONS:READ\n%d\n", removed);
    if (!connections.AppendTo(file)) return false;
    file.Write("CONNECTIONS:STOP\n");
  }
  return patterns.AppendTo(file) && limits.AppendTo(file);
}

}  // namespace

Status SaveSetup(Network& network, const std::string& destination,
                 const std::string& scratch_folder, SetupWeights which) {
  const ScratchPart weights(scratch_folder, "~tarn.wts");
  const ScratchPart limits(scratch_folder, "~tarn.nrm");
  const ScratchPart patterns(scratch_folder, "~tarn.pat");
  const ScratchPart connections(scratch_folder, "~tarn.cnx");
  TextReader old_file;
  if (!old_file.Open(network.file_name)) return Status::Failure(kSetupSaveNoOldFile);
  const bool oldest =
      network.version == 0 && FindSection(old_file, "WEIGHTS:").empty() && !old_file.Failed();
  const bool weights_copied = which == SetupWeights::kLeftOut
                                  ? WriteLine("WEIGHTS:RANDOM", weights.path())
                              : oldest ? ConvertWeights(network.file_name, weights.path())
                                       : CopySection(old_file, "WEIGHTS:", weights.path());
  const bool copied = oldest ? WriteLine("TESTPATTERNS:COMPUTE", patterns.path()) &&
                                   WriteLine("NORMALIZE:NONE", limits.path())
                             : CopySection(old_file, "TESTPATTERNS:", patterns.path()) &&
                                   CopySection(old_file, "NORMALIZE:", limits.path());
  if (!weights_copied || !copied) return Status::Failure(kSetupSaveFailed);
  old_file.Close();
  const int64_t removed = WriteRemovedConnections(network, scratch_folder, connections.path());
  OutputFile file;
  if (removed < 0 || !file.OpenReplacing(destination) ||
      !WriteSetup(file, network, weights, connections, removed, patterns, limits) ||
      !file.Commit()) {
    return Status::Failure(kSetupSaveFailed);
  }
  network.connections_edited.fill(false);
  network.version = kCurrentVersion;
  return {};
}

}  // namespace tarn
