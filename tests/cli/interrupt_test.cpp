#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <string>
#include <thread>

#include "cli/cli_test.h"

namespace tarn {
namespace {

class Interrupt : public CliTest {
 protected:
  // A run that does not end by itself, with its first figures printed.
  std::vector<std::string> EndlessRun() {
    PutNetwork();
    Do({"set", "test.net", "--update-rate", "1000000", "--autosave-rate", "10"});
    return {"train", "test.net", "--iterations", "2000000000"};
  }

  // long.txt, which takes a while to read and to report on.
  void PutLongData() const {
    std::ofstream data(Path("long.txt"));
    for (int i = 0; i < 1500000; ++i) data << "1 2\n";
  }

  // Whether a report is being written: a file beside the folder of the session.
  bool ReportHasBegun() {
    const std::filesystem::directory_iterator entries(m_scene.environment["TMPDIR"]);
    return std::any_of(begin(entries), end(entries),
                       [](const auto& entry) { return entry.is_regular_file(); });
  }
};

TEST_F(Interrupt, StopsSavesAndPrintsTheSummary) {
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    Program program(EndlessRun(), m_scene);
    ASSERT_TRUE(program.WaitForOutput("\n1 "));
    program.Signal(signal);
    const RunResult result = program.Wait();
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err.substr(0, 21), "Training Run Stopped\n");
    EXPECT_NE(result.err.find("\niterations "), std::string::npos);
    EXPECT_NE(result.err.find("\nsaved "), std::string::npos);
    EXPECT_NE(Read("test.net").find("WEIGHTS:READ\n"), std::string::npos);
  }
}

TEST_F(Interrupt, WritesTheExportsOfWhatWasDone) {
  std::vector<std::string> arguments = EndlessRun();
  for (const char* word : {"--no-save", "--outputs", "a.out", "--error-history", "a.err"}) {
    arguments.emplace_back(word);
  }
  Program program(arguments, m_scene);
  ASSERT_TRUE(program.WaitForOutput("\n1 "));
  program.Signal(SIGINT);
  EXPECT_EQ(program.Wait().status, 0);
  EXPECT_EQ(Lines(Read("a.out")), 10);
  EXPECT_EQ(Read("a.err").substr(0, 2), "1,");
}

TEST_F(Interrupt, LeavesAtOnceTheSecondTimeWithTheOldFileWhole) {
  // So many weights that saving them takes a while.
  PutNetwork();
  Do({"set", "test.net", "--layers", "2,2000,2000,1", "--iterations", "1000000"});
  const std::string before = Read("test.net");
  Program program({"train", "test.net"}, m_scene);
  ASSERT_TRUE(program.WaitForOutput("iteration"));
  program.Signal(SIGINT);
  std::this_thread::sleep_for(std::chrono::milliseconds(60));
  program.Signal(SIGINT);
  const RunResult result = program.Wait();
  EXPECT_EQ(result.status, 130);
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(Read("test.net"), before);
}

TEST_F(Interrupt, EndsACommandAtOnceThatDoesNotTrain) {
  PutTrainedNetwork();
  PutLongData();
  Program program({"recall", "test.net", "--inputs", "long.txt"}, m_scene);
  while (NamesIn(m_scene.environment["TMPDIR"]).empty()) std::this_thread::yield();
  std::this_thread::sleep_for(std::chrono::milliseconds(20));
  program.Signal(SIGINT);
  const RunResult result = program.Wait();
  EXPECT_EQ(result.status, 130);
  EXPECT_EQ(result.out + result.err, "");
}

TEST_F(Interrupt, LeavesNoHalfWrittenReport) {
  PutTrainedNetwork();
  PutLongData();
  Program program({"report", "outputs", "test.net", "--inputs", "long.txt"}, m_scene);
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::minutes(1);
  while (!ReportHasBegun()) {
    ASSERT_LT(std::chrono::steady_clock::now(), deadline);
    std::this_thread::yield();
  }
  program.Signal(SIGTERM);
  const RunResult result = program.Wait();
  EXPECT_EQ(result.status, 130);
  EXPECT_EQ(result.out + result.err, "");
}

TEST_F(Interrupt, LeavesARestorableStoreEvenWhenKilled) {
  std::vector<std::string> arguments = EndlessRun();
  arguments.insert(arguments.end(), {"--autosave", "a.store", "--seed", "1"});
  const std::string before = Read("test.net");
  Program program(arguments, m_scene);
  ASSERT_TRUE(program.WaitForOutput("\n1 "));
  while (!Exists("a.store") || std::filesystem::file_size(Path("a.store")) < 20000) {
    std::this_thread::yield();
  }
  program.Signal(SIGKILL);
  EXPECT_EQ(program.Wait().status, -SIGKILL);
  m_left_over = NamesIn(m_scene.environment["TMPDIR"]);  // nothing can be tidied up
  EXPECT_EQ(Read("test.net"), before);
  Do({"restore", "a.store", "20", "a.net"});
  EXPECT_NE(Read("a.net").find("WEIGHTS:READ\n"), std::string::npos);
  Do({"train", "a.net", "--iterations", "1", "--quiet"});
}

}  // namespace
}  // namespace tarn
