#include <gtest/gtest.h>

#include "engine/error_history.h"

namespace tarn {
namespace {

TEST(HistoryReader, ReadsNoDeviceThatGivesBytesWithoutEnd) {
  HistoryReader reader("/dev/zero");
  EXPECT_FALSE(reader.IsOpen());
}

}  // namespace
}  // namespace tarn
