#include <gtest/gtest.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

#include "base/process.h"

namespace tarn {
namespace {

TEST(ProcessName, IsTheProcessNumber) {
  EXPECT_EQ(ProcessName(), std::to_string(::getpid()));
}

TEST(IsLiveProcess, HoldsForProcessesThatRun) {
  EXPECT_TRUE(IsLiveProcess(ProcessName()));
  EXPECT_TRUE(IsLiveProcess("1"));
}

TEST(IsLiveProcess, EndsWithTheProcess) {
  int ends[2] = {};
  ASSERT_EQ(::pipe(ends), 0);
  const pid_t child = ::fork();
  if (child == 0) {
    ::close(ends[1]);
    char byte = 0;
    ::_exit(::read(ends[0], &byte, 1) == 0 ? 0 : 1);
  }
  ::close(ends[0]);
  const std::string name = std::to_string(child);
  EXPECT_TRUE(IsLiveProcess(name));
  ::close(ends[1]);
  int status = 0;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  EXPECT_FALSE(IsLiveProcess(name));
}

}  // namespace
}  // namespace tarn
