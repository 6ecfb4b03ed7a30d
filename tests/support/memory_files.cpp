#include "support/memory_files.h"

#include <algorithm>
#include <cstring>
#include <filesystem>

#include "base/paths.h"
#include "support/slashes.h"

namespace tarn {
namespace {

// The root, and a drive, is in itself.
std::string FolderOf(const std::string& full_path) {
  const size_t separator = full_path.rfind('/');
  return separator == 0 ? "/" : full_path.substr(0, separator);
}

constexpr bool kWindows = std::filesystem::path::preferred_separator == '\\';

// What tells names apart.
std::string Folded(std::string name) {
  if (!kWindows) return name;
  for (char& c : name) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  return name;
}

bool BeginsWith(const std::string& path, const std::string& prefix) {
  return Folded(path).starts_with(Folded(prefix));
}

// Windows has "C:" at the beginning of a path.
bool IsDrive(std::string_view part) {
  return kWindows && part.size() == 2 && part[1] == ':';
}

bool StartsAtTheRoot(std::string_view path) {
  return path.front() == '/' || IsDrive(path.substr(0, 2));
}

// What the paths of everything in a folder begin with.
std::string Inside(const std::string& folder) {
  return folder == "/" ? folder : folder + "/";
}

}  // namespace

bool MemoryFiles::Before::operator()(const std::string& a, const std::string& b) const {
  return Folded(a) < Folded(b);
}

MemoryFiles::MemoryFiles(const std::string& folder) : m_folders{"/", "/tmp"} {
#ifdef _WIN32
  AddFolder(PathText(std::filesystem::temp_directory_path()));
#endif
  AddFolder(folder);
  m_current = Absolute(folder);
}

std::string MemoryFiles::Absolute(const std::string& path) const {
  if (path.empty() || path.find('\0') != std::string::npos) return {};
  const std::string named = Slashes(path);
  const std::string given = StartsAtTheRoot(named) ? named : m_current + "/" + named;
  std::string full;
  for (size_t begin = 0; begin < given.size();) {
    const size_t end = std::min(given.find('/', begin), given.size());
    const std::string_view part = std::string_view(given).substr(begin, end - begin);
    if (part == "..") {
      full.resize(std::min(full.rfind('/'), full.size()));
    } else if (begin == 0 && IsDrive(part)) {
      full = part;
    } else if (!part.empty() && part != ".") {
      full.append("/").append(part);
    }
    begin = end + 1;
  }
  return full.empty() ? "/" : full;
}

void MemoryFiles::AddFolder(const std::string& path) {
  std::string folder = Absolute(path);
  while (m_folders.insert(folder).second) folder = FolderOf(folder);
}

void MemoryFiles::Put(const std::string& path, std::string_view bytes) {
  const std::string full = Absolute(path);
  AddFolder(FolderOf(full));
  m_files[full] = std::make_shared<Content>(Content{std::string(bytes)});
  Touch(*m_files[full]);
}

std::optional<std::string> MemoryFiles::Get(const std::string& path) const {
  const auto found = m_files.find(Absolute(path));
  if (found == m_files.end()) return std::nullopt;
  return found->second->bytes;
}

std::vector<std::string> MemoryFiles::Paths() const {
  std::vector<std::string> paths;
  for (const auto& [path, bytes] : m_files) paths.push_back(path);
  return paths;
}

int MemoryFiles::OpenHandles() const {
  return static_cast<int>(std::count_if(
      m_open.begin(), m_open.end(), [](const OpenFile& file) { return file.bytes != nullptr; }));
}

MemoryFiles::OpenFile* MemoryFiles::Find(Handle file) {
  if (file < 0 || static_cast<size_t>(file) >= m_open.size()) return nullptr;
  OpenFile& opened = m_open[static_cast<size_t>(file)];
  return opened.bytes == nullptr ? nullptr : &opened;
}

FileLayer::Handle MemoryFiles::Keep(OpenFile opened) {
  for (size_t i = 0; i < m_open.size(); ++i) {
    if (m_open[i].bytes != nullptr) continue;
    m_open[i] = std::move(opened);
    return static_cast<Handle>(i);
  }
  m_open.push_back(std::move(opened));
  return static_cast<Handle>(m_open.size() - 1);
}

MemoryFiles::Bytes MemoryFiles::Create(const std::string& full_path) {
  if (m_folders.count(FolderOf(full_path)) == 0) return nullptr;
  Bytes content = std::make_shared<Content>();
  Touch(*content);
  return m_files[full_path] = std::move(content);
}

FileLayer::Handle MemoryFiles::Open(const std::string& path, Mode mode) {
  const std::string full = Absolute(path);
  if (full.empty() || Slashes(path).back() == '/' || m_folders.count(full) > 0) return kNoFile;
  const auto found = m_files.find(full);
  Bytes bytes = found == m_files.end() ? nullptr : found->second;
  if (bytes != nullptr && mode == Mode::kCreateNew) return kNoFile;
  if (bytes == nullptr && mode != Mode::kRead) bytes = Create(full);
  if (bytes == nullptr) return kNoFile;
  if (mode == Mode::kCreate) {
    bytes->bytes.clear();
    Touch(*bytes);
  }
  return Keep({.bytes = bytes,
               .readable = mode == Mode::kRead || mode == Mode::kCreateNew,
               .writable = mode != Mode::kRead,
               .appends = mode == Mode::kAppend});
}

int64_t MemoryFiles::Read(Handle file, void* data, size_t size) {
  OpenFile* opened = Find(file);
  if (opened == nullptr || !opened->readable) return -1;
  const std::string& bytes = opened->bytes->bytes;
  if (opened->position >= bytes.size()) return 0;
  const size_t count = std::min(size, bytes.size() - opened->position);
  std::memcpy(data, bytes.data() + opened->position, count);
  opened->position += count;
  return static_cast<int64_t>(count);
}

int64_t MemoryFiles::Write(Handle file, const void* data, size_t size) {
  OpenFile* opened = Find(file);
  if (opened == nullptr || !opened->writable) return -1;
  std::string& bytes = opened->bytes->bytes;
  Touch(*opened->bytes);
  if (opened->appends) opened->position = bytes.size();
  if (bytes.size() < opened->position + size) bytes.resize(opened->position + size);
  if (size > 0) std::memcpy(bytes.data() + opened->position, data, size);
  opened->position += size;
  return static_cast<int64_t>(size);
}

bool MemoryFiles::Seek(Handle file, int64_t position) {
  OpenFile* opened = Find(file);
  if (opened == nullptr || position < 0) return false;
  opened->position = static_cast<size_t>(position);
  return true;
}

int64_t MemoryFiles::Size(Handle file) {
  const OpenFile* opened = Find(file);
  return opened == nullptr ? -1 : static_cast<int64_t>(opened->bytes->bytes.size());
}

bool MemoryFiles::Truncate(Handle file, int64_t size) {
  const OpenFile* opened = Find(file);
  if (opened == nullptr || !opened->writable || size < 0) return false;
  opened->bytes->bytes.resize(static_cast<size_t>(size));
  Touch(*opened->bytes);
  return true;
}

bool MemoryFiles::Close(Handle file) {
  OpenFile* opened = Find(file);
  if (opened == nullptr) return false;
  *opened = OpenFile();
  return true;
}

bool MemoryFiles::Rename(const std::string& from, const std::string& to) {
  const std::string target = Absolute(to);
  const auto found = m_files.find(Absolute(from));
  if (found == m_files.end() || target.empty() || m_folders.count(target) > 0) return false;
  if (m_folders.count(FolderOf(target)) == 0) return false;
  Bytes bytes = found->second;
  m_files.erase(found);
  m_files[target] = std::move(bytes);
  return true;
}

bool MemoryFiles::Remove(const std::string& path) {
  return m_files.erase(Absolute(path)) > 0;
}

bool MemoryFiles::CopyMode(const std::string& from, const std::string& to) {
  return Exists(from) && Exists(to);
}

bool MemoryFiles::IsDirectory(const std::string& path) {
  return m_folders.count(Absolute(path)) > 0;
}

std::optional<int64_t> MemoryFiles::WriteTime(const std::string& path) {
  const auto found = m_files.find(Absolute(path));
  if (found == m_files.end()) return std::nullopt;
  return found->second->written;
}

bool MemoryFiles::EnterDirectory(const std::string& path) {
  if (!IsDirectory(path)) return false;
  m_current = Absolute(path);
  return true;
}

std::vector<std::string> MemoryFiles::NamesIn(const std::string& folder) {
  if (!IsDirectory(folder)) return {};
  const std::string prefix = Inside(Absolute(folder));
  std::vector<std::string> names;
  const auto take = [&](const std::string& path) {
    if (path.size() > prefix.size() && BeginsWith(path, prefix) &&
        path.find('/', prefix.size()) == std::string::npos) {
      names.push_back(path.substr(prefix.size()));
    }
  };
  for (auto it = m_files.lower_bound(prefix); it != m_files.end(); ++it) {
    if (!BeginsWith(it->first, prefix)) break;
    take(it->first);
  }
  for (const std::string& path : m_folders) take(path);
  return names;
}

bool MemoryFiles::MakeFolder(const std::string& path) {
  const std::string full = Absolute(path);
  if (full.empty() || Exists(path) || m_folders.count(FolderOf(full)) == 0) return false;
  return m_folders.insert(full).second;
}

bool MemoryFiles::RemoveFolder(const std::string& path) {
  const std::string full = Absolute(path);
  if (m_folders.erase(full) == 0) return false;
  const std::string prefix = Inside(full);
  std::erase_if(m_files, [&](const auto& file) { return BeginsWith(file.first, prefix); });
  std::erase_if(m_folders, [&](const std::string& folder) { return BeginsWith(folder, prefix); });
  return true;
}

}  // namespace tarn
