#include <cstdlib>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "resources/controls.h"
#include "ui/main_window_fixture.h"

namespace tarn {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class TrainingWindow : public MainWindowFixture {
 protected:
  // What the command line writes for the same steps.
  void RunCommandLine(const std::string& arguments) {
    const std::string command = std::string(TARN_CLI) + " " + arguments + " > /dev/null 2>&1";
    ASSERT_EQ(std::system(command.c_str()), 0) << arguments;
  }
};

TEST_F(TrainingWindow, TrainsToTheLastIterationAndWritesWhatTheCommandLineWrites) {
  OpenForTraining("iris.net");
  EXPECT_EQ(StatusText(), "Network Training");
  EXPECT_EQ(Text(210), "Hybrid");
  EXPECT_EQ(Text(209), "From Iteration 300");
  Train();
  EXPECT_EQ(StatusText(), "Training Run Complete!");
  EXPECT_EQ(Text(207), "1500");
  EXPECT_EQ(Text(213), "100.0%");
  EXPECT_EQ(Text(214), "0:0:0");
  EXPECT_EQ(Text(209), "On");
  m_dialogs->files = {m_folder / "w.err", m_folder / "w.out", m_folder / "w.net"};
  Choose(103);
  Choose(102);
  Choose(112);
  EXPECT_THAT(m_native.boxes, IsEmpty());
  EXPECT_EQ(Caption(), "Tarn - " + m_folder / "w.net");
  RunCommandLine("train iris.net --seed 1 -o c.net --error-history c.err --outputs c.out");
  EXPECT_EQ(ReadFile(m_folder / "w.net"), ReadFile(m_folder / "c.net"));
  EXPECT_EQ(ReadFile(m_folder / "w.err"), ReadFile(m_folder / "c.err"));
  EXPECT_EQ(ReadFile(m_folder / "w.out"), ReadFile(m_folder / "c.out"));
}

}  // namespace
}  // namespace tarn
