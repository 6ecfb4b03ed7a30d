#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <gtest/gtest.h>
#include <string>
#include <utility>

#include "base/file_layer.h"

namespace tarn {

// The empty folder of a small disk that tests may fill. Its tests are made only where
// TARN_FULL_DISK names it: they take their parameters through this.
template <typename Parameters>
Parameters WhereThereIsAFullDisk(Parameters parameters) {
  return std::getenv("TARN_FULL_DISK") != nullptr ? parameters : Parameters();
}

inline std::string FullDiskFolder() {
  const char* folder = std::getenv("TARN_FULL_DISK");
  return folder == nullptr ? "" : folder;
}

// Takes all the room of a disk but for some pages, as long as it lives.
class Filler {
 public:
  Filler(std::string path, int pages) : m_path(std::move(path)) {
    constexpr size_t kPage = 4096;
    const std::string page(kPage, 'f');
    const FileLayer::Handle file = Files().Open(m_path, FileLayer::Mode::kCreate);
    while (Files().Write(file, page.data(), page.size()) > 0) {
    }
    const int64_t rest = Files().Size(file) - int64_t{pages} * int64_t{kPage};
    EXPECT_TRUE(rest > 0 && Files().Truncate(file, rest));
    EXPECT_TRUE(Files().Close(file));
  }
  ~Filler() { Files().Remove(m_path); }
  Filler(const Filler&) = delete;
  Filler& operator=(const Filler&) = delete;

 private:
  std::string m_path;
};

}  // namespace tarn
