#include "base/paths.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>

#include "base/file_layer.h"

namespace tarn {
namespace {

#ifdef _WIN32
constexpr std::string_view kSeparators = "\\/";
#else
constexpr std::string_view kSeparators = "/";
#endif

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
  if (!path.empty() && kSeparators.find(path.back()) == std::string_view::npos) {
    path.push_back(kSeparators.front());
  }
  return path.append(name);
}

std::string FullPath(const std::string& path) {
  const std::filesystem::path given(path);
  if (path.empty() || given.is_absolute()) return path;
  const std::string current = Files().CurrentDirectory();
  if (current.empty()) return path;
  return (std::filesystem::path(current) / given).lexically_normal().string();
}

bool IsUntitled(std::string_view path) {
  return Lowercase(path).find(Lowercase(kUntitledName)) != std::string::npos;
}

std::string OpenedPath(const std::string& path) {
#ifdef _WIN32
  return Lowercase(path);
#else
  return path;
#endif
}

void EnterFolderOf(const std::string& path) {
  if (Files().EnterDirectory(path) || Files().IsDirectory(path)) return;
  const size_t separator = path.find_last_of(kSeparators);
  if (separator == std::string::npos) return;
  // A file in the root folder has nothing before its separator but the root itself.
  Files().EnterDirectory(separator == 0 ? path.substr(0, 1) : path.substr(0, separator));
}

std::string TemporaryFolder() {
  const char* named = std::getenv("TMPDIR");
  if (named != nullptr && *named != '\0' && Files().IsDirectory(named)) return FullPath(named);
#ifndef _WIN32
  if (Files().IsDirectory("/tmp")) return "/tmp";
#endif
  return Files().CurrentDirectory();
}

}  // namespace tarn
