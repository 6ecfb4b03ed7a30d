#include "support/doomed_file.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fmt/printf.h>
#include <gtest/gtest.h>

#include "base/file_layer.h"
#include "base/random.h"
#include "support/doomed_process.h"
#include "support/temp_folder.h"

namespace tarn {
namespace {

constexpr uint32_t kSeed = 20240229;
constexpr int kMostTries = 20;

// So long that the process gets through some saves on this disk, as busy as it is.
int LongestWait(const DoomedFile& file) {
  constexpr int kSaves = 4;
  constexpr int kMostMicroseconds = 400000;
  const auto start = std::chrono::steady_clock::now();
  EXPECT_TRUE(file.save());
  const auto taken = std::chrono::steady_clock::now() - start;
  const auto us = std::chrono::duration_cast<std::chrono::microseconds>(taken).count();
  return static_cast<int>(std::clamp<int64_t>(kSaves * us, 1000, kMostMicroseconds));
}

// One kill and what it has left.
void KillOnce(const DoomedFile& file, int32_t wait_us, std::string& before, KillFigures& figures) {
  const size_t names = SystemFiles().NamesIn(file.folder).size();
  ASSERT_TRUE(DoomedProcess(file.work, file.folder).KillAfter(wait_us));
  ++figures.kills;
  const std::string found = ReadFile(file.path);
  ASSERT_NE(std::ranges::find(file.contents, found), file.contents.end())
      << found.size() << " bytes";
  figures.changes += found == before ? 0 : 1;
  before = found;
  // The killed process can have left the one file that it was writing.
  const size_t left = SystemFiles().NamesIn(file.folder).size() - names;
  ASSERT_LE(left, 1U);
  if (left == 0) return;
  ++figures.leftovers;
  ASSERT_TRUE(file.save());
  ASSERT_EQ(SystemFiles().NamesIn(file.folder).size(), names);
  before = ReadFile(file.path);
}

}  // namespace

KillFigures KillOver(const DoomedFile& file) {
  KillFigures figures;
  Random random(kSeed);
  std::string before = file.contents.front();
  WriteFile(file.path, before);
  const int kills = ManyKills(file.percent_of_kills);
  const int longest_wait = LongestWait(file);
  WriteFile(file.path, before);
  // More, should none of them have struck within a save, or none behind one.
  const auto wanted = [&](int i) {
    const bool enough = figures.leftovers > 0 && figures.changes > 0;
    return i < kills || (!enough && i < kMostTries * kills);
  };
  for (int i = 0; wanted(i) && !testing::Test::HasFatalFailure(); ++i) {
    SCOPED_TRACE(i);
    if (file.restart) WriteFile(file.path, before = file.contents.front());
    const int wait = static_cast<int>(int64_t{random.Next()} * longest_wait / Random::kLargest);
    KillOnce(file, wait, before, figures);
  }
  TellKills(file.work, fmt::sprintf("%d kills, %d within a save, %d changes", figures.kills,
                                    figures.leftovers, figures.changes));
  return figures;
}

void TellKills(std::string_view name, const std::string& figures) {
  if (std::getenv("TARN_KILLS") == nullptr) return;
  std::puts(fmt::sprintf("%s: %s", name, figures).c_str());
}

}  // namespace tarn
