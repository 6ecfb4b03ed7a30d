#include "engine/workers.h"

#include <chrono>
#include <cstdint>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

namespace tarn {
namespace {

TEST(Workers, CallEveryPartOfEveryPieceOfWorkOnce) {
  for (const size_t parts : {1, 2, 3, 7}) {
    Workers workers(parts);
    ASSERT_EQ(workers.parts(), parts);
    std::vector<int> calls(parts);
    constexpr int kPieces = 2000;
    for (int piece = 0; piece < kPieces; ++piece) {
      workers.Run([&](size_t part) { ++calls[part]; });
      // All have returned: what they wrote is to be seen here.
      for (const int count : calls) ASSERT_EQ(count, piece + 1);
    }
  }
}

TEST(Workers, DoTheFirstPartOnTheCallersThread) {
  Workers workers(2);
  std::vector<std::thread::id> threads(2);
  workers.Run([&](size_t part) { threads[part] = std::this_thread::get_id(); });
  EXPECT_EQ(threads[0], std::this_thread::get_id());
  EXPECT_NE(threads[1], std::this_thread::get_id());
}

TEST(Workers, WakeUpAfterALongRest) {
  Workers workers(3);
  std::vector<int> calls(3);
  for (int piece = 0; piece < 3; ++piece) {
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    workers.Run([&](size_t part) { ++calls[part]; });
  }
  EXPECT_EQ(calls, std::vector<int>(3, 3));
}

TEST(Workers, WaitForTheSlowest) {
  Workers workers(2);
  bool done = false;
  workers.Run([&](size_t part) {
    if (part == 0) return;
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
    done = true;
  });
  EXPECT_TRUE(done);
}

TEST(Workers, EndWithoutEverHavingWorked) {
  for (int i = 0; i < 50; ++i) {
    const Workers workers(3);
    EXPECT_EQ(workers.parts(), 3U);
  }
}

TEST(UsefulThreads, AreOneToEight) {
  EXPECT_GE(UsefulThreads(), 1U);
  EXPECT_LE(UsefulThreads(), 8U);
}

}  // namespace
}  // namespace tarn
