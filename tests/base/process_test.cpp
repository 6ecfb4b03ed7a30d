#include "base/process.h"

#include <gtest/gtest.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

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

TEST(IsLiveProcess, RefusesWhatIsNoProcessNumber) {
  const std::string own = ProcessName();
  for (const std::string& name :
       {std::string(), std::string("0"), std::string("-1"), "+" + own, " " + own, own + " ",
        own + "x", std::string("notes"), std::string("99999999999999999999")}) {
    EXPECT_FALSE(IsLiveProcess(name)) << name;
  }
}

TEST(PhysicalMemory, IsThatOfAMachine) {
  EXPECT_GE(PhysicalMemory(), uint64_t{1} << 26);
  EXPECT_LE(PhysicalMemory(), uint64_t{1} << 50);
}

}  // namespace
}  // namespace tarn
