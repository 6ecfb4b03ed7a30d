#include "fuzz_files.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <utility>

#include "fuzz_target.h"

namespace tarn::fuzz {
namespace {

constexpr std::string_view kFolder = "/fuzz/";
// Room for what runs write, so that growing files do not count as memory of the program.
constexpr size_t kRoom = size_t{1} << 18;

// Windows has backslashes in its paths, which are kept with slashes.
constexpr bool kWindows = std::filesystem::path::preferred_separator == '\\';

constexpr char Slashed(char c) {
  return kWindows && c == '\\' ? '/' : c;
}

bool SamePath(std::string_view path, std::string_view kept) {
  return std::ranges::equal(path, kept, {}, Slashed);
}

bool StartsAtTheRoot(std::string_view path) {
  return !path.empty() && Slashed(path.front()) == '/';
}

// A name alone is one of the current folder.
bool Names(std::string_view path, std::string_view full_path) {
  if (StartsAtTheRoot(path)) return SamePath(path, full_path);
  return full_path.starts_with(kFolder) && SamePath(path, full_path.substr(kFolder.size()));
}

void KeepPath(std::string_view path, std::string& kept) {
  kept.assign(StartsAtTheRoot(path) ? "" : kFolder).append(path);
  std::ranges::transform(kept, kept.begin(), Slashed);
}

}  // namespace

FuzzFiles::FuzzFiles() {
  for (File& file : m_files) file.bytes.reserve(kRoom);
}

void FuzzFiles::Clear() {
  for (File& file : m_files) file.path.clear();
  m_open.fill({});
  m_read = m_written = 0;
}

const FuzzFiles::File* FuzzFiles::Find(std::string_view path) const {
  const auto* const found = std::ranges::find_if(
      m_files, [path](const File& file) { return !path.empty() && Names(path, file.path); });
  return found == m_files.end() ? nullptr : found;
}

FuzzFiles::File* FuzzFiles::Find(std::string_view path) {
  return const_cast<File*>(std::as_const(*this).Find(path));
}

FuzzFiles::File& FuzzFiles::Make(std::string_view path) {
  auto* const free = std::ranges::find_if(m_files, [](const File& f) { return f.path.empty(); });
  Require(free != m_files.end(), "few files are made");
  KeepPath(path, free->path);
  free->bytes.clear();
  return *free;
}

void FuzzFiles::Put(std::string_view path, std::string_view bytes) {
  File* const file = Find(path);
  (file == nullptr ? Make(path) : *file).bytes = bytes;
}

std::string_view FuzzFiles::Get(const std::string& path) const {
  const File* const file = Find(path);
  return file == nullptr ? std::string_view() : file->bytes;
}

size_t FuzzFiles::Count() const {
  return static_cast<size_t>(
      std::ranges::count_if(m_files, [](const File& file) { return !file.path.empty(); }));
}

int FuzzFiles::OpenHandles() const {
  return static_cast<int>(
      std::ranges::count_if(m_open, [](const OpenFile& opened) { return opened.file != nullptr; }));
}

FuzzFiles::OpenFile* FuzzFiles::Opened(Handle file) {
  if (file < 0 || static_cast<size_t>(file) >= m_open.size()) return nullptr;
  OpenFile& opened = m_open[static_cast<size_t>(file)];
  return opened.file == nullptr ? nullptr : &opened;
}

FileLayer::Handle FuzzFiles::Open(const std::string& path, Mode mode) {
  if (path.empty() || Slashed(path.back()) == '/' || IsDirectory(path)) return kNoFile;
  if (path.find('\0') != std::string::npos) return kNoFile;
  File* file = Find(path);
  if (mode == (file == nullptr ? Mode::kRead : Mode::kCreateNew)) return kNoFile;
  if (file == nullptr) file = &Make(path);
  if (mode == Mode::kCreate) file->bytes.clear();
  auto* const free =
      std::ranges::find_if(m_open, [](const OpenFile& f) { return f.file == nullptr; });
  Require(free != m_open.end(), "few files are open at once");
  *free = {.file = file,
           .readable = mode == Mode::kRead,
           .writable = mode != Mode::kRead,
           .appends = mode == Mode::kAppend};
  return static_cast<Handle>(free - m_open.begin());
}

int64_t FuzzFiles::Read(Handle file, void* data, size_t size) {
  OpenFile* const opened = Opened(file);
  if (opened == nullptr || !opened->readable) return -1;
  const std::string& bytes = opened->file->bytes;
  if (opened->position >= bytes.size()) return 0;
  const size_t count = std::min(size, bytes.size() - opened->position);
  std::memcpy(data, bytes.data() + opened->position, count);
  opened->position += count;
  m_read += static_cast<int64_t>(count);
  return static_cast<int64_t>(count);
}

int64_t FuzzFiles::Write(Handle file, const void* data, size_t size) {
  OpenFile* const opened = Opened(file);
  if (opened == nullptr || !opened->writable) return -1;
  std::string& bytes = opened->file->bytes;
  if (opened->appends) opened->position = bytes.size();
  const size_t end = opened->position + size;
  if (bytes.size() < end) bytes.resize(end);
  if (size > 0) std::memcpy(bytes.data() + opened->position, data, size);
  opened->position = end;
  m_written += static_cast<int64_t>(size);
  return static_cast<int64_t>(size);
}

bool FuzzFiles::Seek(Handle file, int64_t position) {
  OpenFile* const opened = Opened(file);
  if (opened == nullptr || position < 0) return false;
  opened->position = static_cast<size_t>(position);
  return true;
}

int64_t FuzzFiles::Size(Handle file) {
  const OpenFile* const opened = Opened(file);
  return opened == nullptr ? -1 : static_cast<int64_t>(opened->file->bytes.size());
}

bool FuzzFiles::Truncate(Handle file, int64_t size) {
  const OpenFile* const opened = Opened(file);
  if (opened == nullptr || !opened->writable || size < 0) return false;
  opened->file->bytes.resize(static_cast<size_t>(size));
  return true;
}

bool FuzzFiles::Close(Handle file) {
  OpenFile* const opened = Opened(file);
  if (opened == nullptr) return false;
  *opened = OpenFile();
  return true;
}

bool FuzzFiles::Rename(const std::string& from, const std::string& to) {
  File* const source = Find(from);
  if (source == nullptr || IsDirectory(to)) return false;
  Remove(to);
  KeepPath(to, source->path);
  return true;
}

bool FuzzFiles::Remove(const std::string& path) {
  File* const file = Find(path);
  if (file == nullptr) return false;
  const bool open =
      std::ranges::any_of(m_open, [file](const OpenFile& opened) { return opened.file == file; });
  Require(!open, "no open file is removed");
  file->path.clear();
  return true;
}

bool FuzzFiles::CopyMode(const std::string& from, const std::string& to) {
  return Exists(from) && Exists(to);
}

bool FuzzFiles::IsDirectory(const std::string& path) {
  return SamePath(path, "/fuzz") || SamePath(path, "/tmp") || SamePath(path, "/");
}

std::vector<std::string> FuzzFiles::NamesIn(const std::string& folder) {
  std::vector<std::string> names;
  for (const File& file : m_files) {
    if (file.path.size() > folder.size() && file.path[folder.size()] == '/' &&
        SamePath(folder, std::string_view(file.path).substr(0, folder.size()))) {
      names.push_back(file.path.substr(folder.size() + 1));
    }
  }
  return names;
}

std::optional<int64_t> FuzzFiles::WriteTime(const std::string& path) {
  return Exists(path) ? std::optional<int64_t>(0) : std::nullopt;
}

std::string FuzzFiles::MakeTemporary(const std::string& folder, const char* prefix,
                                     Lifetime /*lifetime*/) {
  const std::string path = folder + "/" + prefix;
  if (Exists(path)) return {};
  Make(path);
  return path;
}

}  // namespace tarn::fuzz
