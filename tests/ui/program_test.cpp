#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>

#include "support/doomed_process.h"
#include "support/temp_folder.h"

namespace tarn {
namespace {

constexpr int kTimedOut = 124;

// Runs the program for four seconds; what it said.
std::string RunProgram(const TempFolder& folder, const std::string& arguments) {
  const std::string command = "cd " + folder.path() + " && XDG_CONFIG_HOME=" + folder.path() +
                              " TMPDIR=" + folder.path() + " timeout 4 " + TARN_PROGRAM + " " +
                              arguments + " > said 2>&1";
  const int status = std::system(command.c_str());
  EXPECT_EQ(WEXITSTATUS(status), kTimedOut) << "it ran on until it was told to end";
  return ReadFile(folder / "said");
}

TEST(Program, StartsWithoutAWord) {
  const TempFolder folder;
  EXPECT_EQ(RunProgram(folder, ""), "");
}

// What a training run that was killed has left is looked at.
TEST(Program, ForgetsARunWithoutAWholeSnapshot) {
  const TempFolder folder;
  const std::string start = folder / "Tarn" + EndedProcess();
  WriteFile(start + "-store1", "ITERATION 5\n");
  WriteFile(start + "-note12.run", "TARN RUN 1" + std::string(1, '\0') + folder / "a.net" + '\0' +
                                       "Tarn" + EndedProcess() + "-store1" + '\0');
  EXPECT_EQ(RunProgram(folder, ""), "");
  for (const char* name : {"-store1", "-note12.run"}) {
    EXPECT_FALSE(std::filesystem::exists(start + name));
  }
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
