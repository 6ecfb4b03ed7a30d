#include "app/interrupted_runs.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <fmt/printf.h>
#include <string_view>

#include "app/messages.h"
#include "app/saving.h"
#include "base/file_layer.h"
#include "base/output_file.h"
#include "base/paths.h"
#include "base/temp_file.h"

namespace tarn {
namespace {

constexpr std::string_view kExtension = ".run";
constexpr std::string_view kFirstLine = "TARN RUN 1";
constexpr size_t kLongestNote = size_t{1} << 16;

// The beginning of the file, if it cannot be read to its end.
std::string ReadNote(const std::string& path) {
  const FileLayer::Handle file = Files().Open(path, FileLayer::Mode::kRead);
  if (file == FileLayer::kNoFile) return {};
  std::string text(kLongestNote, '\0');
  size_t size = 0;
  for (int64_t count = 1; count > 0 && size < text.size(); size += static_cast<size_t>(count)) {
    count = std::max<int64_t>(Files().Read(file, text.data() + size, text.size() - size), 0);
  }
  Files().Close(file);
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

std::optional<InterruptedRun> RunOf(const std::string& folder, const std::string& note) {
  if (!Files().IsOwnFile(note)) return std::nullopt;
  const std::string text = ReadNote(note);
  std::string_view rest = text;
  if (TakeField(rest) != kFirstLine) return std::nullopt;
  InterruptedRun run;
  run.note = note;
  run.network = TakeField(rest);
  const std::string store(TakeField(rest));
  if (run.network.empty() || !IsName(store)) return std::nullopt;
  run.store = JoinPath(folder, store);
  if (Files().WriteTime(run.store) && !Files().IsOwnFile(run.store)) return std::nullopt;
  return run;
}

void Forget(const InterruptedRun& run) {
  Files().Remove(run.store);
  Files().Remove(run.note);
}

enum class Outcome { kKeep, kForget };

Outcome Offer(const InterruptedRun& run, const StoredSnapshot& snapshot, Session& session,
              Dialogs& dialogs) {
  const Message question = {std::string(kTarnWarningCaption),
                            fmt::sprintf(kAskToTakeUp.data(), run.network, snapshot.iteration),
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

bool IsNewerThanItsFile(const InterruptedRun& run) {
  const std::optional<int64_t> stored = Files().WriteTime(run.store);
  const std::optional<int64_t> saved = Files().WriteTime(run.network);
  return stored && (!saved || *stored > *saved);
}

Outcome Look(const InterruptedRun& run, Session& session, Dialogs& dialogs) {
  if (!IsNewerThanItsFile(run)) return Outcome::kForget;
  std::optional<StoredSnapshot> snapshot;
  if (!FindNewestSnapshot(run.store, snapshot).ok()) return Outcome::kKeep;
  return snapshot ? Offer(run, *snapshot, session, dialogs) : Outcome::kForget;
}

}  // namespace

void RunNote::Write(const std::string& network, const std::string& store) {
  const std::filesystem::path place = NativePath(store);
  const std::string path = PathText(place.parent_path() / NativePath(FreshTemporaryName()));
  std::string text;
  for (const std::string& field : {std::string(kFirstLine), network, PathText(place.filename())}) {
    text.append(field).push_back('\0');
  }
  // Under its own name it is whole, whenever the process is killed.
  OutputFile file;
  if (!file.OpenPrivate(path) || !file.Write(text) || !file.Commit()) return;
  if (!Files().Rename(path, path + std::string(kExtension))) {
    Files().Remove(path);
    return;
  }
  Remove();
  m_path = path + std::string(kExtension);
}

void RunNote::Remove() {
  if (!m_path.empty()) Files().Remove(m_path);
  m_path.clear();
}

std::vector<InterruptedRun> FindInterruptedRuns(const std::string& folder) {
  std::vector<InterruptedRun> runs;
  for (const std::string& name : Files().NamesIn(folder)) {
    if (!name.ends_with(kExtension)) continue;
    if (!IsAbandonedName(std::string_view(name).substr(0, name.size() - kExtension.size()))) {
      continue;
    }
    if (std::optional<InterruptedRun> run = RunOf(folder, JoinPath(folder, name))) {
      runs.push_back(*std::move(run));
    }
  }
  return runs;
}

std::vector<std::string> StoresOf(const std::vector<InterruptedRun>& runs) {
  std::vector<std::string> stores;
  stores.reserve(runs.size());
  for (const InterruptedRun& run : runs) stores.push_back(run.store);
  return stores;
}

void OfferInterruptedRuns(const std::vector<InterruptedRun>& runs, Session& session,
                          Dialogs& dialogs) {
  for (const InterruptedRun& run : runs) {
    if (Look(run, session, dialogs) == Outcome::kForget) Forget(run);
  }
}

}  // namespace tarn
