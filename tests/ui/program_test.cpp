#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>

#include "support/temp_folder.h"

namespace tarn {
namespace {

constexpr int kTimedOut = 124;

// Runs the program for two seconds; what it said.
std::string RunProgram(const TempFolder& folder, const std::string& arguments) {
  const std::string command = "cd " + folder.path() + " && XDG_CONFIG_HOME=" + folder.path() +
                              " timeout 2 " + TARN_PROGRAM + " " + arguments + " > said 2>&1";
  const int status = std::system(command.c_str());
  EXPECT_EQ(WEXITSTATUS(status), kTimedOut) << "it ran on until it was told to end";
  return ReadFile(folder / "said");
}

TEST(Program, StartsWithoutAWord) {
  const TempFolder folder;
  EXPECT_EQ(RunProgram(folder, ""), "");
}

// Opening a network enters its folder.
TEST(Program, OpensTheFileThatIsNamed) {
  const TempFolder folder;
  for (const char* file : {"/xor.net", "/xor.txt"}) {
    std::filesystem::copy(std::string(TARN_SOURCE_DIR) + "/examples/xor" + file, folder.path());
  }
  EXPECT_EQ(RunProgram(folder, "xor.net"), "");
}

}  // namespace
}  // namespace tarn
