#include "app/interrupted_runs.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <fmt/printf.h>
#include <string_view>
#include <utility>

#include "app/messages.h"
#include "app/saving.h"
#include "base/file_layer.h"
#include "base/output_file.h"
#include "base/paths.h"
#include "base/temp_file.h"
#include "base/text_numbers.h"
#include "base/text_reader.h"

namespace tarn {
namespace {

constexpr std::string_view kExtension = ".run";
constexpr std::string_view kFirstLine = "TARN RUN 1";
constexpr size_t kLongestNote = size_t{1} << 16;

// The beginning of a longer file; nothing when it cannot be read.
std::optional<std::string> ReadNote(const std::string& path) {
  const FileLayer::Handle file = Files().Open(path, FileLayer::Mode::kRead);
  if (file == FileLayer::kNoFile) return std::nullopt;
  std::string text(kLongestNote, '\0');
  size_t size = 0;
  int64_t count = 1;
  while (count > 0 && size < text.size()) {
    count = Files().Read(file, text.data() + size, text.size() - size);
    size += static_cast<size_t>(std::max<int64_t>(count, 0));
  }
  Files().Close(file);
  if (count < 0) return std::nullopt;
  text.resize(size);
  return text;
}

// What stands in front of the next zero byte; nothing when there is none.
std::string_view TakeField(std::string_view& text) {
  const size_t end = text.find('\0');
  if (end == std::string_view::npos) return {};
  const std::string_view field = text.substr(0, end);
  text.remove_prefix(end + 1);
  return field;
}

bool IsName(const std::string& text) {
  return !text.empty() && PathText(NativePath(text).filename()) == text;
}

// What is known of a note: the run that it tells of, that it tells of none, or nothing now.
enum class Known { kRun, kNoRun, kNothing };

Known Read(const std::string& folder, const std::string& note, InterruptedRun& run) {
  if (!Files().IsOwnFile(note)) return Known::kNothing;
  const std::optional<std::string> text = ReadNote(note);
  if (!text) return Known::kNothing;
  std::string_view rest = *text;
  if (TakeField(rest) != kFirstLine) return Known::kNoRun;
  run.note = note;
  run.network = TakeField(rest);
  const std::string store(TakeField(rest));
  if (run.network.empty() || !IsName(store)) return Known::kNoRun;
  run.store = JoinPath(folder, store);
  run.older_snapshots = ToInt(TakeField(rest));
  const bool other = !Files().IsOwnFile(run.store) && Files().WriteTime(run.store);
  return other ? Known::kNothing : Known::kRun;
}

struct Found {
  std::vector<InterruptedRun> runs;
  std::vector<std::string> kept;  // their stores, and what may be one
};

void Look(const std::string& folder, const std::vector<std::string>& names, const std::string& name,
          Found& found) {
  const std::string_view stem = std::string_view(name).substr(0, name.size() - kExtension.size());
  InterruptedRun run;
  const Known known =
      IsAbandonedName(stem) ? Read(folder, JoinPath(folder, name), run) : Known::kNothing;
  if (known == Known::kRun) {
    found.kept.push_back(run.store);
    found.runs.push_back(std::move(run));
  }
  if (known != Known::kNothing) return;
  // The store is one of the files of the same process.
  const std::string_view owner = stem.substr(0, stem.find('-') + 1);
  for (const std::string& other : names) {
    if (!owner.empty() && other.starts_with(owner)) found.kept.push_back(JoinPath(folder, other));
  }
}

Found LookThrough(const std::string& folder, const std::vector<std::string>& names) {
  Found found;
  for (const std::string& name : names) {
    if (name.ends_with(kExtension)) Look(folder, names, name, found);
  }
  return found;
}

void Forget(const InterruptedRun& run) {
  Files().Remove(run.store);
  Files().Remove(run.note);
}

enum class Outcome { kKeep, kForget };

Outcome Offer(const InterruptedRun& run, const StoredSnapshot& snapshot, bool newer,
              Session& session, Dialogs& dialogs) {
  const std::string_view text = newer ? kAskToTakeUp : kAskToTakeUpOlder;
  const Message question = {std::string(kTarnWarningCaption),
                            fmt::sprintf(text.data(), run.network, snapshot.iteration),
                            MessageIcon::kQuestion};
  const Answer answer = dialogs.Ask(question, AnswerChoice::kYesNoCancel);
  if (answer != Answer::kYes) return answer == Answer::kNo ? Outcome::kForget : Outcome::kKeep;
  const std::optional<std::string> path = SaveStoredSnapshot(run.store, snapshot, dialogs);
  if (!path) return Outcome::kKeep;
  const Status opened = OpenNetwork(session, *path);
  if (opened.ok()) return Outcome::kForget;
  dialogs.Tell(*path, opened.message());
  return Outcome::kKeep;
}

Outcome Settle(const InterruptedRun& run, Session& session, Dialogs& dialogs) {
  const std::optional<int64_t> stored = Files().WriteTime(run.store);
  if (!stored) return Files().IsOwnFile(run.store) ? Outcome::kKeep : Outcome::kForget;
  const std::optional<int64_t> saved = Files().WriteTime(run.network);
  if (!saved && TextReader().Open(run.network)) return Outcome::kKeep;
  std::optional<StoredSnapshot> snapshot;
  if (!FindNewestSnapshot(run.store, snapshot).ok()) return Outcome::kKeep;
  if (!snapshot || (saved && snapshot->number <= run.older_snapshots)) return Outcome::kForget;
  return Offer(run, *snapshot, !saved || *stored > *saved, session, dialogs);
}

}  // namespace

void RunNote::Write(const std::string& network, const std::string& store, int64_t older_snapshots) {
  const std::filesystem::path place = NativePath(store);
  const std::string path = PathText(place.parent_path() / NativePath(FreshTemporaryName()));
  std::string text;
  for (const std::string& field : {std::string(kFirstLine), network, PathText(place.filename()),
                                   std::to_string(older_snapshots)}) {
    text.append(field).push_back('\0');
  }
  // Under its own name it is whole, whenever the process is killed.
  OutputFile file;
  if (!file.OpenPrivate(path) || !file.Write(text) || !file.Commit()) return;
  const std::string name = IsThere() ? m_path : path + std::string(kExtension);
  if (Files().Rename(path, name)) {
    m_path = name;
  } else {
    Files().Remove(path);
  }
}

void RunNote::Remove() {
  if (!m_path.empty()) Files().Remove(m_path);
  m_path.clear();
}

std::vector<InterruptedRun> FindInterruptedRuns(const std::string& folder) {
  return LookThrough(folder, Files().NamesIn(folder)).runs;
}

std::vector<InterruptedRun> ClearTemporaryFolder(const std::string& folder) {
  const std::vector<std::string> names = Files().NamesIn(folder);
  Found found = LookThrough(folder, names);
  // Where no notes can be listed now, nobody knows the stores.
  if (!names.empty()) RemoveAbandonedFiles(folder, found.kept);
  return std::move(found.runs);
}

void OfferInterruptedRuns(const std::vector<InterruptedRun>& runs, Session& session,
                          Dialogs& dialogs) {
  for (const InterruptedRun& run : runs) {
    if (Settle(run, session, dialogs) == Outcome::kForget) Forget(run);
  }
}

}  // namespace tarn
