#include "base/status.h"

#include <gtest/gtest.h>

namespace tarn {
namespace {

TEST(Status, IsASuccessWithoutATextAtFirst) {
  const Status status;
  EXPECT_TRUE(status.ok());
  EXPECT_EQ(status.message(), "");
}

TEST(Status, CarriesTheTextOfAFailure) {
  const Status status = Status::Failure("Tarn has run out of memory!");
  EXPECT_FALSE(status.ok());
  EXPECT_EQ(status.message(), kOutOfMemory);
}

TEST(Status, IsAFailureEvenWithoutAText) {
  EXPECT_FALSE(Status::Failure("").ok());
}

}  // namespace
}  // namespace tarn
