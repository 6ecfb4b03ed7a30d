#pragma once

#include <algorithm>
#include <filesystem>
#include <string>

namespace tarn {

// The path with "/" for every separator, as the tests write their paths on every system.
inline std::string Slashes(std::string path) {
  if (std::filesystem::path::preferred_separator == '\\') {
    std::replace(path.begin(), path.end(), '\\', '/');
  }
  return path;
}

}  // namespace tarn
