#include "base/paths.h"

#include <algorithm>
#include <filesystem>

#include "base/file_layer.h"
#include "base/native_paths.h"

namespace tarn {
namespace {

char Lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

std::string Lowercase(std::string_view text) {
  std::string lower(text);
  std::transform(lower.begin(), lower.end(), lower.begin(), Lower);
  return lower;
}

}  // namespace

std::string JoinPath(std::string_view folder, std::string_view name) {
  std::string path(folder);
  if (!path.empty() && PathSeparators().find(path.back()) == std::string_view::npos) {
    path.push_back(PathSeparators().front());
  }
  return path.append(name);
}

std::string FullPath(const std::string& path) {
  const std::filesystem::path given = NativePath(path);
  if (path.empty() || given.is_absolute() || NamesServer(path)) return path;
  const std::string current = Files().CurrentDirectory();
  if (current.empty()) return path;
  const std::filesystem::path whole = NativePath(current) / given;
  // In the current folder of another drive.
  if (NamesDrive(path.substr(0, 2)) && !whole.is_absolute()) return FromItsDrive(path);
  const std::string normal = PathText(whole.lexically_normal());
  return NamesServer(PathText(whole)) ? PathSeparators().front() + normal : normal;
}

bool IsUntitled(std::string_view path) {
  return Lowercase(path).find(Lowercase(kUntitledName)) != std::string::npos;
}

void EnterFolderOf(const std::string& path) {
  if (Files().EnterDirectory(path) || Files().IsDirectory(path)) return;
  const size_t separator = path.find_last_of(PathSeparators());
  if (separator == std::string::npos) return;
  // A file in the root folder, of a drive as well, has nothing before its separator but the root.
  const bool in_root = separator == 0 || NamesDrive(path.substr(0, separator));
  Files().EnterDirectory(path.substr(0, in_root ? separator + 1 : separator));
}

std::string TemporaryFolder() {
  const std::string named = NamedTemporaryFolder();
  return Files().IsDirectory(named) ? named : Files().CurrentDirectory();
}

}  // namespace tarn
