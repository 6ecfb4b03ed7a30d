#include "base/clock.h"

#include <chrono>
#include <gtest/gtest.h>
#include <thread>

#include "support/set_clock.h"

namespace tarn {
namespace {

TEST(SteadyClock, NeverGoesBack) {
  int64_t last = SteadyClock().NowMs();
  for (int i = 0; i < 10000; ++i) {
    const int64_t now = SteadyClock().NowMs();
    ASSERT_GE(now, last);
    last = now;
  }
}

TEST(SteadyClock, CountsMilliseconds) {
  const int64_t before = SteadyClock().NowMs();
  std::this_thread::sleep_for(std::chrono::milliseconds(30));
  const int64_t passed = SteadyClock().NowMs() - before;
  EXPECT_GE(passed, 29);
  EXPECT_LT(passed, 30000);
}

TEST(SetClock, StandsStillUntilItIsMoved) {
  SetClock clock(5);
  const Clock& seen = clock;
  EXPECT_EQ(seen.NowMs(), 5);
  EXPECT_EQ(seen.NowMs(), 5);
  clock.Advance(10);
  EXPECT_EQ(seen.NowMs(), 15);
  clock.Set(1000);
  EXPECT_EQ(seen.NowMs(), 1000);
}

}  // namespace
}  // namespace tarn
