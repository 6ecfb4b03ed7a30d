#include <gtest/gtest.h>
#include <string>
#include <windows.h>

#include "base/process.h"
#include "support/doomed_process.h"
#include "support/doomed_work.h"

namespace tarn {
namespace {

TEST(ProcessName, IsTheProcessNumber) {
  EXPECT_EQ(ProcessName(), std::to_string(::GetCurrentProcessId()));
}

TEST(IsLiveProcess, HoldsForProcessesThatRun) {
  EXPECT_TRUE(IsLiveProcess(ProcessName()));
  EXPECT_TRUE(IsLiveProcess(OtherProcess()));
}

TEST(IsLiveProcess, EndsWithTheProcessThoughItsHandleIsKept) {
  DoomedProcess process(kWait, "/");
  const std::string name = process.name();
  EXPECT_TRUE(IsLiveProcess(name));
  ASSERT_TRUE(process.Kill());
  EXPECT_FALSE(IsLiveProcess(name));
}

TEST(IsLiveProcess, DoesNotHoldForTheLargestNumbers) {
  EXPECT_FALSE(IsLiveProcess("4294967295"));
  EXPECT_FALSE(IsLiveProcess("4294967296"));
}

}  // namespace
}  // namespace tarn
