#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <ios>
#include <iterator>
#include <string>
#include <vector>

#include "fuzz_target.h"

// Runs a fuzz target over files and over all files in folders. Each is named before it is run,
// so that the last name is the one that failed.

namespace {

std::vector<std::filesystem::path> FilesUnder(const std::filesystem::path& path) {
  if (!std::filesystem::is_directory(path)) return {path};
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(path)) {
    if (entry.is_regular_file()) files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  return files;
}

bool Replay(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  const std::vector<char> bytes{std::istreambuf_iterator<char>(file),
                                std::istreambuf_iterator<char>()};
  if (!file.is_open() || file.bad()) return false;
  std::printf("%s\n", path.string().c_str());
  std::fflush(stdout);
  LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fprintf(stderr, "usage: %s FILE-OR-FOLDER...\n", argv[0]);
    return 2;
  }
  for (int i = 1; i < argc; ++i) {
    const std::vector<std::filesystem::path> files = FilesUnder(argv[i]);
    if (files.empty()) {
      std::fprintf(stderr, "%s: no files\n", argv[i]);
      return 1;
    }
    for (const auto& path : files) {
      if (Replay(path)) continue;
      std::fprintf(stderr, "%s: cannot be read\n", path.string().c_str());
      return 1;
    }
  }
  return 0;
}
