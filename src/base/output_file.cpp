#include "base/output_file.h"

#include <cstdint>
#include <filesystem>
#include <random>

#include "base/paths.h"
#include "base/process.h"
#include "base/utf8.h"

namespace tarn {
namespace {

constexpr size_t kBlock = size_t{1} << 16;
constexpr std::string_view kStoredAsWritten = "\n";
constexpr std::string_view kMark = ".tarn-save-";
// Of a file, in the units of the system: bytes, or UTF-16 on Windows.
constexpr size_t kLongestName = 255;
// The mark and the numbers behind it need their part.
constexpr size_t kLongestStart = 180;

// What tells this process from an earlier one that had the same number, as the only process
// of a container always has.
const std::string& ProcessMark() {
  static const std::string mark = std::to_string(std::random_device()());
  return mark;
}

// NAME.tarn-save- in the folder of NAME.
std::string TemporaryPrefix(const std::filesystem::path& target) {
  const std::string name = PathText(target.filename());
  // A character that is cut in two would come back as another on Windows.
  std::string_view rest = name;
  while (!rest.empty() && name.size() - rest.size() < kLongestStart) TakeCharacter(rest);
  return name.substr(0, name.size() - rest.size()) + std::string(kMark);
}

std::string FreshTemporary(const std::string& path) {
  static uint32_t count = 0;
  const std::filesystem::path target = NativePath(path);
  const std::string name =
      TemporaryPrefix(target) + ProcessName() + "-" + ProcessMark() + "-" + std::to_string(++count);
  return PathText(target.parent_path() / NativePath(name));
}

// Whether what follows the mark, PROCESS-MARK-COUNT, names a temporary that nobody will
// commit any more. Names of another form are no temporaries of ours.
bool IsAbandoned(std::string_view owner) {
  if (owner.find_first_not_of("0123456789-") != std::string_view::npos) return false;
  const size_t first = owner.find('-');
  const size_t second = owner.find('-', first + 1);
  if (first == std::string_view::npos || second == std::string_view::npos) return false;
  const std::string_view process = owner.substr(0, first);
  if (process == ProcessName()) return owner.substr(first + 1, second - first - 1) != ProcessMark();
  return !IsLiveProcess(process);
}

// What a process that was killed while saving has left beside the file.
void RemoveLeftovers(const std::string& path) {
  const std::filesystem::path target = NativePath(path);
  const std::string prefix = TemporaryPrefix(target);
  const std::filesystem::path folder = target.has_parent_path() ? target.parent_path() : ".";
  for (const std::string& name : Files().NamesIn(PathText(folder))) {
    if (!name.starts_with(prefix)) continue;
    if (IsAbandoned(std::string_view(name).substr(prefix.size()))) {
      Files().Remove(PathText(folder / NativePath(name)));
    }
  }
}

}  // namespace

bool OutputFile::Start(Way way, const std::string& path, FileLayer::Mode mode) {
  m_way = way;
  m_written = path;
  m_failed = false;
  m_created = false;
  m_file = Files().Open(path, mode);
  return m_file != FileLayer::kNoFile;
}

bool OutputFile::OpenReplacing(const std::string& path, Content content, Links links) {
  Discard();
  m_line_end = content == Content::kText ? Files().LineEnd() : kStoredAsWritten;
  const bool follow = links == Links::kFollowed;
  const std::string target = follow ? Files().ResolveLinks(path) : path;
  if (path.empty() || target.empty()) return false;
  // A device is asked for by the name given: what its links lead to need not be a name.
  if (follow && Files().IsSpecial(path)) return Start(Way::kDirect, path, FileLayer::Mode::kAppend);
  // The current directory may be another when the file is committed.
  m_path = FullPath(target);
  // Found out now: the temporary has a shorter name.
  if (NativePath(m_path).filename().native().size() > kLongestName) return false;
  if (Files().IsDirectory(m_path) || Files().IsWriteProtected(m_path)) return false;
  RemoveLeftovers(m_path);
  return Start(Way::kReplace, FreshTemporary(m_path), FileLayer::Mode::kCreateNew);
}

bool OutputFile::OpenNew(const std::string& path) {
  if (!OpenPrivate(path)) return false;
  Files().GiveDefaultMode(m_path);
  return true;
}

bool OutputFile::OpenPrivate(const std::string& path) {
  Discard();
  m_line_end = Files().LineEnd();
  m_path = FullPath(path);
  m_created = !path.empty() && Start(Way::kNew, m_path, FileLayer::Mode::kCreateNew);
  return m_created;
}

bool OutputFile::OpenAppending(const std::string& path) {
  Discard();
  m_line_end = Files().LineEnd();
  const std::string target = Files().ResolveLinks(path);
  if (path.empty() || target.empty()) return false;
  m_path = Files().IsSpecial(path) ? path : FullPath(target);
  m_created = Start(Way::kAppend, m_path, FileLayer::Mode::kCreateNew);
  if (m_created) {
    Files().GiveDefaultMode(m_path);
  } else if (!Start(Way::kAppend, m_path, FileLayer::Mode::kAppend)) {
    return false;
  }
  m_old_size = m_created ? 0 : Files().Size(m_file);
  if (m_old_size >= 0) return true;
  Close();
  return false;
}

bool OutputFile::Write(std::string_view text) {
  if (m_file == FileLayer::kNoFile || m_failed) return false;
  if (m_line_end == kStoredAsWritten) {
    m_pending.append(text);
  } else {
    AppendText(text);
  }
  return m_pending.size() < kBlock || Flush();
}

void OutputFile::AppendText(std::string_view text) {
  for (size_t end = text.find('\n'); end != std::string_view::npos; end = text.find('\n')) {
    m_pending.append(text.substr(0, end)).append(m_line_end);
    text.remove_prefix(end + 1);
  }
  m_pending.append(text);
}

bool OutputFile::Flush() {
  std::string_view rest = m_pending;
  while (!rest.empty() && !m_failed) {
    const int64_t written = Files().Write(m_file, rest.data(), rest.size());
    if (written <= 0) {
      m_failed = true;
    } else {
      rest.remove_prefix(static_cast<size_t>(written));
    }
  }
  m_pending.clear();
  return !m_failed;
}

bool OutputFile::Close() {
  const bool closed = Files().Close(m_file);
  m_file = FileLayer::kNoFile;
  return closed;
}

bool OutputFile::Commit() {
  if (m_file == FileLayer::kNoFile) return false;
  const bool syncs = m_way == Way::kReplace || m_way == Way::kNew;
  if (!Flush() || (syncs && !Files().Sync(m_file))) {
    Discard();
    return false;
  }
  if (Close()) return m_way != Way::kReplace || Replace();
  // The system may tell of a failed write as late as here.
  if (m_way == Way::kAppend && !m_created) m_file = Files().Open(m_path, FileLayer::Mode::kAppend);
  if (m_file != FileLayer::kNoFile) {
    Discard();
  } else if (m_way == Way::kReplace || m_created) {
    Files().Remove(m_written);
  }
  return false;
}

bool OutputFile::Replace() {
  if (!Files().CopyMode(m_path, m_written)) Files().GiveDefaultMode(m_written);
  if (Files().Rename(m_written, m_path)) return true;
  Files().Remove(m_written);
  return false;
}

void OutputFile::Discard() {
  m_pending.clear();
  if (m_file == FileLayer::kNoFile) return;
  if (m_way == Way::kAppend && !m_created) Files().Truncate(m_file, m_old_size);
  Close();
  if (m_way == Way::kReplace || m_created) Files().Remove(m_written);
}

}  // namespace tarn
