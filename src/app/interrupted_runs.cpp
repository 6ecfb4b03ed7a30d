#include "app/interrupted_runs.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <fmt/printf.h>
#include <string_view>

#include "app/messages.h"
#include "app/saving.h"
#include "base/file_layer.h"
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

bool IsIn(const std::string& folder, const std::string& path) {
  const std::filesystem::path given = NativePath(path).lexically_normal();
  return given.has_filename() &&
         given == (NativePath(folder) / given.filename()).lexically_normal();
}

std::optional<InterruptedRun> RunOf(const std::string& folder, const std::string& note) {
  if (!Files().IsOwnFile(note)) return std::nullopt;
  const std::string text = ReadNote(note);
  std::string_view rest = text;
  if (TakeField(rest) != kFirstLine) return std::nullopt;
  InterruptedRun run;
  run.note = note;
  run.network = TakeField(rest);
  run.store = TakeField(rest);
  if (run.network.empty() || !IsIn(folder, run.store)) return std::nullopt;
  if (!Files().IsOwnFile(run.store)) run.store.clear();
  return run;
}

void Forget(const InterruptedRun& run) {
  if (!run.store.empty()) Files().Remove(run.store);
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
  if (!opened.ok()) dialogs.Tell(*path, opened.message());
  return Outcome::kForget;
}

}  // namespace

void RunNote::Write(const std::string& folder, const std::string& network,
                    const std::string& store) {
  Remove();
  const std::string path = JoinPath(folder, FreshTemporaryName() + std::string(kExtension));
  const FileLayer::Handle file = Files().Open(path, FileLayer::Mode::kCreateNew);
  if (file == FileLayer::kNoFile) return;
  std::string text;
  for (const std::string_view field :
       {kFirstLine, std::string_view(network), std::string_view(store)}) {
    text.append(field).push_back('\0');
  }
  const auto size = static_cast<int64_t>(text.size());
  const bool written = Files().Write(file, text.data(), text.size()) == size;
  m_path = path;
  if (!Files().Close(file) || !written) Remove();
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
  for (const InterruptedRun& run : runs) stores.push_back(run.store);
  return stores;
}

std::optional<StoredSnapshot> NewerSnapshot(const InterruptedRun& run) {
  const std::optional<int64_t> stored = Files().WriteTime(run.store);
  const std::optional<int64_t> saved = Files().WriteTime(run.network);
  if (!stored || (saved && *saved >= *stored)) return std::nullopt;
  return FindNewestSnapshot(run.store);
}

void OfferInterruptedRuns(const std::vector<InterruptedRun>& runs, Session& session,
                          Dialogs& dialogs) {
  for (const InterruptedRun& run : runs) {
    const std::optional<StoredSnapshot> snapshot = NewerSnapshot(run);
    if (!snapshot || Offer(run, *snapshot, session, dialogs) == Outcome::kForget) Forget(run);
  }
}

}  // namespace tarn
