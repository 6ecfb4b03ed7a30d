#include "base/process.h"

#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace tarn {
namespace {

TEST(IsLiveProcess, RefusesWhatIsNoProcessNumber) {
  const std::string own = ProcessName();
  for (const std::string& name :
       {std::string(), std::string("0"), std::string("-1"), "+" + own, " " + own, own + " ",
        own + "x", std::string("notes"), std::string("99999999999999999999")}) {
    EXPECT_FALSE(IsLiveProcess(name)) << name;
  }
}

TEST(PhysicalMemory, IsNoMoreThanAProgramCanAddress) {
  EXPECT_LT(PhysicalMemory(), std::numeric_limits<size_t>::max());
}

TEST(PhysicalMemory, IsThatOfAMachine) {
  EXPECT_GE(PhysicalMemory(), uint64_t{1} << 26);
  EXPECT_LE(PhysicalMemory(), uint64_t{1} << 50);
}

}  // namespace
}  // namespace tarn
