#include "golden/golden_files.h"

#include <bit>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <fmt/printf.h>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <sstream>

#include "base/file_layer.h"
#include "support/line_ends.h"
#include "support/temp_folder.h"

namespace tarn {
namespace {

const std::string kHashFile = "hashes.txt";

std::string GoldenPath(const std::string& name) {
  return TARN_SOURCE_DIR "/tests/data/golden/" + name;
}

bool Updating() {
  const char* const update = std::getenv("TARN_UPDATE_GOLDEN");
  return update != nullptr && std::string_view(update) == "1";
}

void Write(const std::string& name, const std::string& bytes) {
  std::filesystem::create_directories(GoldenPath(""));
  WriteFile(GoldenPath(name), bytes);
  ADD_FAILURE() << "tests/data/golden/" << name << " was written, not compared";
}

std::string FirstDifference(const std::string& golden, const std::string& now) {
  std::istringstream golden_lines(golden);
  std::istringstream now_lines(now);
  std::string golden_line;
  std::string now_line;
  int number = 0;
  do {
    ++number;
    if (!std::getline(golden_lines, golden_line)) golden_line = "(no line)";
    if (!std::getline(now_lines, now_line)) now_line = "(no line)";
  } while (golden_line == now_line && (golden_lines || now_lines));
  return fmt::sprintf("line %d\n  golden: %s\n  now:    %s", number, golden_line, now_line);
}

std::map<std::string, std::string> ReadHashes() {
  std::map<std::string, std::string> hashes;
  std::ifstream file(GoldenPath(kHashFile));
  std::string name;
  std::string hash;
  while (file >> name >> hash) hashes[name] = hash;
  return hashes;
}

}  // namespace

void Hash::AddByte(unsigned char byte) {
  m_value = (m_value ^ byte) * 1099511628211U;
}

void Hash::Add(std::string_view bytes) {
  for (char c : bytes) AddByte(static_cast<unsigned char>(c));
}

void Hash::Add(std::span<const float> values) {
  for (float value : values) {
    const uint32_t bits = std::bit_cast<uint32_t>(value);
    for (int shift = 0; shift < 32; shift += 8) AddByte(static_cast<unsigned char>(bits >> shift));
  }
}

void ExpectGoldenFile(const std::string& name, const std::string& bytes) {
  if (Updating()) return Write(name, Plain(bytes, SystemFiles().LineEnd()));
  const std::string golden = ReadFile(GoldenPath(name));
  const std::string now = Plain(bytes, SystemFiles().LineEnd());
  EXPECT_TRUE(golden == now) << name << " differs in " << FirstDifference(golden, now);
}

void ExpectGoldenHash(const std::string& name, uint64_t hash) {
  const std::string text = fmt::sprintf("%016x", hash);
  std::map<std::string, std::string> hashes = ReadHashes();
  if (!Updating()) {
    EXPECT_EQ(hashes[name], text) << "hash of " << name;
    return;
  }
  hashes[name] = text;
  std::string lines;
  for (const auto& [key, value] : hashes) lines += fmt::sprintf("%s %s\n", key, value);
  Write(kHashFile, lines);
}

std::set<std::string> GoldenFileNames() {
  std::set<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(GoldenPath(""))) {
    names.insert(entry.path().filename().string());
  }
  names.erase(kHashFile);
  return names;
}

std::set<std::string> GoldenHashNames() {
  std::set<std::string> names;
  for (const auto& [name, hash] : ReadHashes()) names.insert(name);
  return names;
}

}  // namespace tarn
