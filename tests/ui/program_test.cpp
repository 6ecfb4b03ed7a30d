#include <cstdlib>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "support/doomed_process.h"
#include "support/temp_folder.h"

namespace tarn {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

constexpr int kTimedOut = 124;

// The exit status of a line for the shell, with the program's folders in `folder`.
int RunIn(const TempFolder& folder, const std::string& line) {
  const std::string command = "cd " + folder.path() +
                              " && export XDG_CONFIG_HOME=" + folder.path() +
                              " TMPDIR=" + folder.path() + " && " + line;
  const int status = std::system(command.c_str());
  return WEXITSTATUS(status);
}

// Runs the program for four seconds; what it said.
std::string RunProgram(const TempFolder& folder, const std::string& arguments) {
  const int status =
      RunIn(folder, std::string("timeout 4 ") + TARN_PROGRAM + " " + arguments + " > said 2>&1");
  EXPECT_EQ(status, kTimedOut) << "it ran on until it was told to end";
  return ReadFile(folder / "said");
}

// Its exit status without a display; `said` and `complained` get what it wrote.
int RunWithoutDisplay(const TempFolder& folder, const std::string& arguments) {
  return RunIn(folder, std::string("env -u DISPLAY -u WAYLAND_DISPLAY XDG_RUNTIME_DIR=. ") +
                           "timeout 60 " + TARN_PROGRAM + " " + arguments +
                           " > said 2> complained");
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

// It leaves tarn.cfg in the folder of the network that it opened.
TEST(Program, OpensAFileOfAnyNameInTheLocaleC) {
  const TempFolder folder;
  std::filesystem::create_directory(folder / "nets");
  const std::string name = "nets/\xC3\xBC 'n\".net";
  std::filesystem::copy(std::string(TARN_SOURCE_DIR) + "/examples/xor/xor.net", folder / name);
  const int status =
      RunIn(folder, std::string("(LC_ALL=C timeout 60 ") + TARN_PROGRAM +
                        " \"$(echo nets/*)\" > said 2>&1 & tarn=$!; " + TARN_SOURCE_DIR +
                        "/tests/packaging/close_window Tarn 20 > title; wait $tarn)");
  EXPECT_EQ(status, 0);
  EXPECT_EQ(ReadFile(folder / "said"), "");
  EXPECT_THAT(ReadFile(folder / "title"), HasSubstr(" 'n\".net"));
  EXPECT_TRUE(std::filesystem::exists(folder / "nets/tarn.cfg"));
}

TEST(Program, TellsHelpAndVersionWithoutADisplay) {
  const TempFolder folder;
  EXPECT_EQ(RunWithoutDisplay(folder, "--help"), 0);
  EXPECT_THAT(ReadFile(folder / "said"), StartsWith("tarn [FILE]\n"));
  EXPECT_EQ(RunWithoutDisplay(folder, "--version"), 0);
  EXPECT_THAT(ReadFile(folder / "said"), StartsWith("tarn "));
  EXPECT_EQ(ReadFile(folder / "complained"), "");
}

TEST(Program, RefusesWrongWordsAndAMissingDisplay) {
  const TempFolder folder;
  EXPECT_EQ(RunWithoutDisplay(folder, "a.net b.net"), 2);
  EXPECT_EQ(ReadFile(folder / "said"), "");
  EXPECT_THAT(ReadFile(folder / "complained"), StartsWith("tarn: 'a.net' and 'b.net'"));
  EXPECT_EQ(RunWithoutDisplay(folder, ""), 1);
  EXPECT_THAT(ReadFile(folder / "complained"), HasSubstr("DISPLAY"));
}

}  // namespace
}  // namespace tarn
