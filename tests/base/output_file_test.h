#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "base/file_layer.h"
#include "base/output_file.h"
#include "support/line_ends.h"

namespace tarn {

using Names = std::vector<std::string>;

// More than the writer keeps before it hands bytes on.
inline const std::string kLong(200000, 'n');

inline bool Save(const std::string& path, std::string_view text) {
  OutputFile file;
  return file.OpenReplacing(path) && file.Write(text) && file.Commit();
}

inline bool Append(const std::string& path, std::string_view text) {
  OutputFile file;
  return file.OpenAppending(path) && file.Write(text) && file.Commit();
}

// What a text is on the disk.
inline std::string OnDisk(std::string_view text) {
  return Stored(text, SystemFiles().LineEnd());
}

// On the disk, sorted.
inline Names NamesIn(const std::string& folder) {
  Names names = SystemFiles().NamesIn(folder);
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace tarn
