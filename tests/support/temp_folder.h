#pragma once

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <system_error>

#include "base/file_layer.h"
#include "base/paths.h"
#include "support/slashes.h"

namespace tarn {

// A fresh, empty folder on the disk, removed with the object. The current directory that
// stood when the object was made comes back at its end.
class TempFolder {
 public:
  TempFolder() : m_before(std::filesystem::current_path()) {
    const std::filesystem::path parent =
        std::filesystem::canonical(std::filesystem::temp_directory_path());
    std::random_device random;
    do {
      m_path = Slashes(PathText(parent / ("tarn-test-" + std::to_string(random()))));
    } while (!std::filesystem::create_directory(NativePath(m_path)));
    std::filesystem::permissions(NativePath(m_path), std::filesystem::perms::owner_all);
  }
  ~TempFolder() {
    std::error_code error;
    std::filesystem::current_path(m_before, error);
    // The standard library removes nothing whose path is long on Windows.
    SystemFiles().RemoveFolder(m_path);
  }
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  // Absolute, with "/" between its folders, without symbolic links and without a separator at its
  // end.
  const std::string& path() const { return m_path; }
  // The path of a name in the folder.
  std::string operator/(std::string_view name) const { return m_path + "/" + std::string(name); }
  // Makes the folder the current directory.
  void Enter() const { std::filesystem::current_path(NativePath(m_path)); }

 private:
  std::filesystem::path m_before;
  std::string m_path;
};

// The bytes of a file on the disk; a failed expectation when there is none.
inline std::string ReadFile(const std::string& path) {
  std::ifstream file(NativePath(path), std::ios::binary);
  EXPECT_TRUE(file.is_open()) << path;
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// Makes a file on the disk hold exactly these bytes.
inline void WriteFile(const std::string& path, std::string_view bytes) {
  std::ofstream file(NativePath(path), std::ios::binary | std::ios::trunc);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  file.close();
  EXPECT_TRUE(file.good()) << path;
}

}  // namespace tarn
