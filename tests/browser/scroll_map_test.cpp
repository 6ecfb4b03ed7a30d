#include "browser/scroll_map.h"

#include <gtest/gtest.h>

namespace tarn {
namespace {

TEST(ScrollMap, HasAPositionForEveryLine) {
  const ScrollMap map(10000000, 25);
  EXPECT_EQ(map.range(), 10000000);
  EXPECT_EQ(map.thumb(), 25);
  for (const int line : {0, 1, 24, 25, 4999999, 9999974, 9999975}) {
    EXPECT_EQ(map.PositionOf(line), line);
    EXPECT_EQ(map.LineAt(line), line);
  }
}

TEST(ScrollMap, StaysWithinItsEnds) {
  const ScrollMap map(100, 25);
  EXPECT_EQ(map.PositionOf(-1), 0);
  EXPECT_EQ(map.PositionOf(99), 75);
  EXPECT_EQ(map.LineAt(-1), 0);
  EXPECT_EQ(map.LineAt(100), 75);
}

TEST(ScrollMap, HasNowhereToGoWhenAllLinesAreVisible) {
  for (const int lines : {0, 1, 25}) {
    const ScrollMap map(lines, 25);
    EXPECT_EQ(map.thumb(), map.range()) << lines;
    EXPECT_GE(map.range(), 1);
    EXPECT_EQ(map.PositionOf(5), 0);
    EXPECT_EQ(map.LineAt(5), 0);
  }
}

TEST(ScrollMap, IsExactAtBothEndsOfMoreLinesThanItHasPositions) {
  for (const int64_t lines : {int64_t{1} << 31U, int64_t{3000000007}, int64_t{1} << 55U}) {
    const ScrollMap map(lines, 25);
    const int last = map.range() - map.thumb();
    EXPECT_GE(map.thumb(), 1);
    EXPECT_LE(map.range(), 1 << 30U);
    EXPECT_EQ(map.PositionOf(0), 0);
    EXPECT_EQ(map.LineAt(0), 0);
    EXPECT_EQ(map.PositionOf(lines - 25), last);
    EXPECT_EQ(map.LineAt(last), lines - 25);
    EXPECT_LT(map.PositionOf(lines / 2), map.PositionOf(lines / 2 + lines / 1000));
    EXPECT_NEAR(map.PositionOf(lines / 2), last / 2, 25);
  }
}

}  // namespace
}  // namespace tarn
