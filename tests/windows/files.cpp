#include "windows/files.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "base/wide_text.h"

namespace tarn {
namespace {

std::filesystem::path PathOf(const std::string& path) {
  return Widen(path);
}

}  // namespace

bool IsFile(const std::string& path) {
  std::error_code ignored;
  return std::filesystem::is_regular_file(PathOf(path), ignored);
}

bool IsEmptyFolder(const std::string& path) {
  std::error_code ignored;
  return std::filesystem::is_empty(PathOf(path), ignored);
}

void MakeFolder(const std::string& path) {
  std::error_code ignored;
  std::filesystem::create_directories(PathOf(path), ignored);
}

void RemoveFile(const std::string& path) {
  std::error_code ignored;
  std::filesystem::remove(PathOf(path), ignored);
}

bool CopyFileTo(const std::string& from, const std::string& to) {
  std::error_code ignored;
  return std::filesystem::copy_file(PathOf(from), PathOf(to),
                                    std::filesystem::copy_options::overwrite_existing, ignored);
}

std::string ReadWhole(const std::string& path) {
  std::ifstream file(PathOf(path), std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

bool WriteWhole(const std::string& path, const std::string& bytes) {
  std::ofstream file(PathOf(path), std::ios::binary);
  file << bytes;
  file.close();
  return file.good();
}

bool HasWindowsLines(const std::string& bytes) {
  if (!bytes.ends_with("\r\n")) return false;
  const auto returns = std::ranges::count(bytes, '\r');
  size_t pairs = 0;
  for (size_t at = bytes.find("\r\n"); at != std::string::npos; at = bytes.find("\r\n", at + 2)) {
    ++pairs;
  }
  return pairs == LineCount(bytes) && pairs == static_cast<size_t>(returns);
}

size_t LineCount(const std::string& bytes) {
  return static_cast<size_t>(std::ranges::count(bytes, '\n'));
}

}  // namespace tarn
