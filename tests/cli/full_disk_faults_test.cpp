// The commands on a disk that is really full. There are none of these tests without such a disk:
// TARN_FULL_DISK names its empty folder.

#include <fcntl.h>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <ostream>
#include <string>
#include <unistd.h>
#include <vector>

#include "cli/cli_test.h"
#include "support/faulty_disk.h"

namespace tarn {
namespace {

using testing::StartsWith;
using Words = std::vector<std::string>;

struct Command {
  const char* name;
  Words words;
  std::string told;
  const char* grown = "";  // the file that is there from the start of the run

  friend void PrintTo(const Command& command, std::ostream* stream) { *stream << command.name; }
};

std::vector<Command> Commands() {
  const std::string setup = "tarn-cli: Tarn Network File Error Detected\n";
  const std::string history = "tarn-cli: File Error Writting Error History\n";
  const std::string outputs = "tarn-cli: File Error Writting Outputs\n";
  const std::string graph = "tarn-cli: The graph cannot be written\n";
  const Words train = {"train", "test.net", "--quiet", "--no-save"};
  const auto with = [](Words words, const Words& more) {
    words.insert(words.end(), more.begin(), more.end());
    return words;
  };
  return {
      {"train", {"train", "test.net", "--quiet"}, "tarn-cli: Cannot Write to Network File\n"},
      {"train_elsewhere",
       {"train", "test.net", "--quiet", "-o", "old"},
       "tarn-cli: Cannot Write to Network File\n"},
      {"train_outputs", with(train, {"--outputs", "old"}), outputs},
      {"train_error_history", with(train, {"--error-history", "old"}), history},
      {"train_history", with(train, {"--history", "grown"}), history, "grown"},
      {"train_autosave", with(train, {"--autosave", "grown"}),
       "tarn-cli: a snapshot could not be added to '", "grown"},
      {"set", {"set", "test.net", "--eta", "0.5"}, setup},
      {"set_elsewhere", {"set", "test.net", "--eta", "0.5", "-o", "old"}, setup},
      {"new", {"new", "fresh.net"}, setup},
      {"new_over_a_file", {"new", "old", "--force"}, setup},
      {"new_with_options", {"new", "old", "--force", "--eta", "0.5"}, setup},
      {"recall", {"recall", "test.net", "--inputs", "data.txt", "--outputs", "old"}, outputs},
      {"plot_svg", {"plot", "scatter", "test.net", "-o", "old.svg"}, graph},
      {"plot_csv", {"plot", "scatter", "test.net", "-o", "old.csv"}, graph},
      {"restore", {"restore", "a.store", "5", "old"}, "tarn-cli: Error Writing Network File\n"}};
}

class FullDisk : public CliTest, public testing::WithParamInterface<Command> {
 protected:
  FullDisk() : m_work(FullDiskFolder() + "/work") {
    std::filesystem::create_directory(m_work);
    std::filesystem::create_directory(m_work + "/temporary");
    m_scene.folder = m_work;
    PutTrainedNetwork();
    Do({"train", "test.net", "--quiet", "--no-save", "--autosave", "a.store"});
    for (const char* name : {"old", "old.svg", "old.csv"}) Write(name, "what stood there\n");
  }
  ~FullDisk() override { std::filesystem::remove_all(m_work); }

  std::map<std::string, std::string> WholeFiles(const std::string& but) const {
    std::map<std::string, std::string> files;
    for (const std::string& name : NamesIn(m_work)) {
      if (name != but && name != "temporary") files[name] = Read(name);
    }
    return files;
  }
  RunResult RunOnFullDisk(const Words& words) {
    const Filler filler(FullDiskFolder() + "/filler", 0);
    return Run(words);
  }
  void KeepTemporaryFilesThereToo() { m_scene.environment["TMPDIR"] = m_work + "/temporary"; }

  std::string m_work;
};

TEST_P(FullDisk, IsToldAndLeavesTheFilesAsTheyWere) {
  const std::string temporary = m_scene.environment["TMPDIR"];
  const auto before = WholeFiles(GetParam().grown);
  const RunResult result = RunOnFullDisk(GetParam().words);
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.err, StartsWith(GetParam().told));
  EXPECT_EQ(WholeFiles(GetParam().grown), before);
  // Weights that cannot be saved are kept where there is room.
  m_left_over = NamesIn(temporary);
  const bool rescued = GetParam().told == "tarn-cli: Cannot Write to Network File\n";
  EXPECT_EQ(m_left_over.size(), rescued ? 1U : 0U);
  Do(GetParam().words);
}

TEST_P(FullDisk, IsToldWhenItHoldsTheTemporaryFilesToo) {
  KeepTemporaryFilesThereToo();
  const auto before = WholeFiles(GetParam().grown);
  const RunResult result = RunOnFullDisk(GetParam().words);
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.err, StartsWith("tarn-cli: "));
  EXPECT_EQ(WholeFiles(GetParam().grown), before);
  EXPECT_EQ(NamesIn(m_work + "/temporary").size(), 0U);
  Do(GetParam().words);
}

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(FullDisk);
INSTANTIATE_TEST_SUITE_P(Of, FullDisk, testing::ValuesIn(WhereThereIsAFullDisk(Commands())),
                         [](const auto& of) { return std::string(of.param.name); });

class FullDiskOutput : public FullDisk {};

TEST_P(FullDiskOutput, IsMissedByReportsAndPrintedResults) {
  const std::string path = Path("printed");
  m_scene.stdout_fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
  ASSERT_GE(m_scene.stdout_fd, 0);
  for (const Words& words :
       {Words{"report", "outputs", "test.net"}, Words{"recall", "test.net", "--inputs", "data.txt"},
        Words{"report", "weights", "test.net"}}) {
    const RunResult result = RunOnFullDisk(words);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "tarn-cli: the results could not be written\n");
  }
  ::close(m_scene.stdout_fd);
  m_scene.stdout_fd = -1;
  KeepTemporaryFilesThereToo();
  const RunResult result = RunOnFullDisk({"report", "outputs", "test.net"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err, "tarn-cli: File Creation Access Denied\n");
}

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(FullDiskOutput);
INSTANTIATE_TEST_SUITE_P(Of, FullDiskOutput,
                         testing::ValuesIn(WhereThereIsAFullDisk(std::vector<Command>{{}})));

}  // namespace
}  // namespace tarn
