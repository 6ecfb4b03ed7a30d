#include <chrono>
#include <fcntl.h>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>
#include <vector>

#include "cli/cli_test.h"

namespace tarn {
namespace {

class TrainCommand : public CliTest {
 protected:
  TrainCommand() { PutNetwork(); }

  void ExpectFailure(const std::vector<std::string>& arguments, const std::string& message,
                     int status = 1) {
    const RunResult result = Run(arguments);
    EXPECT_EQ(result.status, status) << message;
    EXPECT_EQ(result.err, "tarn-cli: " + message + "\n");
    EXPECT_EQ(result.out, "");
  }
};

TEST_F(TrainCommand, PrintsAHeaderAndALineForEveryScreenUpdate) {
  const RunResult result = Run({"train", "test.net", "--seed", "1"});
  EXPECT_EQ(result.status, 0);
  ASSERT_EQ(result.out.substr(0, kFiguresHeader.size()), kFiguresHeader);
  EXPECT_EQ(Lines(result.out), 4);
  std::string lines = result.out.substr(kFiguresHeader.size());
  for (const char* iteration : {"1", "10", "20"}) {
    const std::string line = lines.substr(0, lines.find('\n'));
    lines.erase(0, line.size() + 1);
    EXPECT_EQ(line.substr(0, line.find(' ')), iteration);
    EXPECT_THAT(line, testing::MatchesRegex("[0-9]+( -?[0-9]+\\.[0-9]+)+")) << line;
    EXPECT_EQ(std::count(line.begin(), line.end(), ' '), 7);
    for (size_t point = line.find('.'); point != std::string::npos;
         point = line.find('.', point + 1)) {
      const size_t end = std::min(line.find(' ', point), line.size());
      EXPECT_EQ(end - point, 7U) << line;
    }
  }
}

// With a momentum of ten every change is ten times the one before, until there are no numbers left.
TEST_F(TrainCommand, EndsWhenTheErrorIsNoNumberAndLeavesTheFileAlone) {
  SetLine(5, "0 0.1 0.01 0.3 10 0");
  SetLine(6, "1000");
  const std::string before = Read("test.net");
  const RunResult result = Run({"train", "test.net", "--seed", "1", "--error-history", "a.err"});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.err,
              testing::ContainsRegex("^tarn-cli: Training stopped at iteration [0-9]+: the error "
                                     "is infinite or not a number\nTraining Run Stopped\n"));
  EXPECT_EQ(result.err.find("\nsaved"), std::string::npos);
  EXPECT_EQ(Read("test.net"), before);
  EXPECT_GT(Lines(Read("a.err")), 1);
}

TEST_F(TrainCommand, NamesTheLastSnapshotOfARunThatHasDiverged) {
  SetLine(5, "0 0.1 0.01 0.3 10 0");
  SetLine(6, "1000");
  const RunResult result = Run({"train", "test.net", "--seed", "1", "--autosave", "store"});
  EXPECT_EQ(result.status, 1);
  const std::string notice =
      "tarn-cli: notice: the last snapshot in " + Path("store") + " is of iteration ";
  const size_t found = result.err.find(notice);
  ASSERT_NE(found, std::string::npos) << result.err;
  const std::string rest = result.err.substr(found + notice.size());
  Do({"restore", "store", rest.substr(0, rest.find('\n')), "back.net"});
  EXPECT_EQ(Run({"recall", "back.net", "--inputs", "data.txt"}).status, 0);
}

TEST_F(TrainCommand, SavesTheTrainedNetworkAndPrintsASummary) {
  const RunResult result = Run({"train", "test.net", "--seed", "1"});
  EXPECT_EQ(result.err.substr(0, 22), "Training Run Complete!");
  EXPECT_NE(result.err.find("\niterations                  20\n"), std::string::npos);
  EXPECT_NE(result.err.find("\nsaved                       " + Path("test.net") + "\n"),
            std::string::npos);
  const std::string saved = Read("test.net");
  EXPECT_NE(saved.find("WEIGHTS:READ\n"), std::string::npos);
  EXPECT_NE(saved.find("TESTPATTERNS:READ\n10 7 3\n"), std::string::npos);
  EXPECT_NE(saved.find("NORMALIZE:READ\n"), std::string::npos);
}

TEST_F(TrainCommand, RepeatsARunWithTheSameSeed) {
  const auto with = [&](const std::string& output, const std::string& seed) {
    return Run({"train", "test.net", "-o", output, "--seed", seed}).out;
  };
  const std::string first = with("a.net", "7");
  EXPECT_EQ(with("b.net", "7"), first);
  EXPECT_EQ(Read("b.net"), Read("a.net"));
  EXPECT_NE(with("c.net", "4294967295"), first);
  EXPECT_NE(Read("c.net"), Read("a.net"));
}

TEST_F(TrainCommand, TrainsForTheIterationsGivenAndKeepsThem) {
  const RunResult result = Run({"train", "test.net", "--iterations", "12", "--seed", "1"});
  EXPECT_NE(result.out.find("\n12 "), std::string::npos);
  EXPECT_EQ(Lines(result.out), 4);
  EXPECT_NE(Read("test.net").find("\n12\n100 10\n"), std::string::npos);
}

TEST_F(TrainCommand, StartsFromIteration0WithTheWeightsOfTheLastRun) {
  Do({"train", "test.net", "--seed", "1", "--quiet"});
  const std::string once = Read("test.net");
  const RunResult again = Run({"train", "test.net"});
  EXPECT_EQ(again.out.substr(kFiguresHeader.size(), 2), "1 ");
  EXPECT_NE(Read("test.net"), once);
}

TEST_F(TrainCommand, SavesToAnotherFileAndLeavesTheFirst) {
  const std::string before = Read("test.net");
  Write("other.net", "old");
  Do({"train", "test.net", "-o", "other.net", "--quiet"});
  EXPECT_EQ(Read("test.net"), before);
  EXPECT_NE(Read("other.net").find("WEIGHTS:READ\n"), std::string::npos);
  EXPECT_EQ(Read("other.net").substr(0, 9), "TARNV2.1\n");
}

TEST_F(TrainCommand, SavesNothingWhenToldSo) {
  const std::string before = Read("test.net");
  const RunResult result = Run({"train", "test.net", "--no-save"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err.find("saved"), std::string::npos);
  EXPECT_EQ(Read("test.net"), before);
  EXPECT_EQ(NamesIn(m_scene.folder).size(), 2U);
}

TEST_F(TrainCommand, PrintsNothingWhenItIsToBeQuiet) {
  const RunResult result = Run({"train", "test.net", "--quiet"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out + result.err, "");
}

TEST_F(TrainCommand, ExportsHistoryAndOutputs) {
  const RunResult result = Run({"train", "test.net", "--seed", "1", "--error-history", "a.err",
                                "--outputs", "a.out", "--history", "a.hst"});
  EXPECT_EQ(result.status, 0);
  // The figures with commas, without the last of them.
  std::string expected;
  std::string lines = result.out.substr(kFiguresHeader.size());
  while (!lines.empty()) {
    const std::string line = lines.substr(0, lines.find('\n'));
    lines.erase(0, line.size() + 1);
    expected += line.substr(0, line.rfind(' ')) + "\n";
  }
  std::replace(expected.begin(), expected.end(), ' ', ',');
  EXPECT_EQ(Read("a.err"), expected);
  EXPECT_EQ(Read("a.hst").size(), 3U * 32U);
  EXPECT_EQ(Read("a.hst").substr(64, 4), std::string("\x14\0\0\0", 4));
  const std::string outputs = Read("a.out");
  EXPECT_EQ(Lines(outputs), 10);
  EXPECT_THAT(outputs, testing::StartsWith("1\t"));
  EXPECT_EQ(std::count(outputs.begin(), outputs.end(), '\t'), 30);
  EXPECT_NE(outputs.find("\n5\t"), std::string::npos);
}

TEST_F(TrainCommand, KeepsAutoSaveSnapshots) {
  Write("a.store", "an older store");
  Do({"train", "test.net", "--quiet", "--autosave", "a.store"});
  const std::string store = Read("a.store");
  EXPECT_EQ(store.substr(0, 21), "ITERATION 5\nTARNV2.1\n");
  for (const char* iteration : {"\nITERATION 10\n", "\nITERATION 15\n", "\nITERATION 20\n"}) {
    EXPECT_NE(store.find(iteration), std::string::npos);
  }
}

TEST_F(TrainCommand, SparesTheSnapshotsOfARunThatWasKilled) {
  const std::vector<std::string> train = {"train", "test.net", "--quiet", "--autosave", "a.store"};
  Do({"train", "test.net", "--quiet", "--no-save", "--autosave", "a.store"});
  const std::string store = Read("a.store");
  ExpectFailure(train, "'" + Path("a.store") +
                           "' holds a snapshot of iteration 20 that is newer "
                           "than '" +
                           Path("test.net") +
                           "': 'tarn-cli restore' takes it back; remove "
                           "it to train anew");
  EXPECT_EQ(Read("a.store"), store);
  std::filesystem::remove(Path("a.store"));
  Do(train);
  Do(train);
  EXPECT_EQ(Read("a.store").substr(0, 12), "ITERATION 5\n");
}

TEST_F(TrainCommand, LooksForNoSnapshotsInADevice) {
  const auto before = std::filesystem::last_write_time("/dev/zero") - std::chrono::hours(1);
  std::filesystem::last_write_time(Path("test.net"), before);
  Do({"train", "test.net", "--quiet", "--no-save", "--autosave", "/dev/zero"});
}

TEST_F(TrainCommand, RefusesANetworkWhoseNameHidesWhatItWouldStore) {
  for (const std::string name : {"WEIGHTS:mine", "NORMALIZE:mine"}) {
    SetLine(2, name);
    ExpectFailure({"train", "test.net"}, kNotReadBackText);
    ExpectFailure({"train", "test.net", "--no-save", "--autosave", "a.store"}, kNotReadBackText);
    EXPECT_FALSE(Exists("a.store"));
  }
  SetLine(2, "ITERATION study");
  ExpectFailure({"train", "test.net", "--autosave", "a.store"}, kNotReadBackText);
  Do({"train", "test.net", "--quiet"});
}

TEST_F(TrainCommand, FailsWithTheTextOfTheLoad) {
  ExpectFailure({"train", "gone.net"}, "File Not Found!");
  ExpectFailure({"train", "."}, "File Not Found!");
  ExpectFailure({"train", ""}, "File Not Found!");
  ExpectFailure({"train", "data.txt"}, "Not a valid Tarn Network Definition File!");
  Write("UNTITLED.NE_", Read("test.net"));
  ExpectFailure({"train", "UNTITLED.NE_"}, "Not a valid Tarn Network Definition File!");
  SetLine(1, "TARNV1.9");
  ExpectFailure({"train", "test.net"}, "Invalid Input file - Not a TARN Network File!");
  SetLine(1, "TARNV2.1");
  SetLine(9, "gone.txt");
  ExpectFailure({"train", "test.net"}, "Invalid Input Node Training File - gone.txt");
  SetLine(9, "data.txt");
  SetLine(13, "4");
  ExpectFailure({"train", "test.net"}, "Insufficient target node data - Data record 1");
  SetLine(13, "3");
  SetLine(6, "0");
  ExpectFailure({"train", "test.net"}, "Maximum iterations out of range (>0)");
  SetLine(6, "many");
  ExpectFailure({"train", "test.net"}, "Input error reading NET file - MaxIterations!");
  EXPECT_FALSE(Exists("gone.net"));
}

TEST_F(TrainCommand, NotesFallbacksAndTrains) {
  SetLine(15, "WEIGHTS:READ");
  Write("data.txt", Read("data.txt") + "3 1 11");
  const RunResult result = Run({"train", "test.net", "--quiet"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err,
            "tarn-cli: notice: The last line of data.txt has no line end and is not read\n"
            "tarn-cli: notice: Error reading weights - Random initialization\n");
}

TEST_F(TrainCommand, TellsBeforehandWhatCannotBeWritten) {
  const std::string before = Read("test.net");
  ExpectFailure({"train", "test.net", "-o", "no/a.net"}, "Cannot Write to Network File");
  ExpectFailure({"train", "test.net", "--outputs", "no/a.out"}, "File Error Writting Outputs");
  ExpectFailure({"train", "test.net", "--error-history", "no/a.err"},
                "File Error Writting Error History");
  ExpectFailure({"train", "test.net", "--history", "no/a.hst"},
                "File Error Writting Error History");
  ExpectFailure({"train", "test.net", "--autosave", "no/a.store"},
                "Cannot Create AutoSave File Storage");
  ExpectFailure({"train", "test.net", "--outputs", "."}, "File Error Writting Outputs");
  EXPECT_EQ(Read("test.net"), before);
  EXPECT_EQ(NamesIn(m_scene.folder).size(), 2U);
}

TEST_F(TrainCommand, OverwritesNeitherItsInputsNorItsOutputs) {
  const std::string data = Read("data.txt");
  const std::string network = Read("test.net");
  for (const char* option : {"--outputs", "--error-history", "--history", "--autosave", "-o"}) {
    ExpectFailure({"train", "test.net", option, "data.txt"},
                  "'" + Path("data.txt") + "' is read by this command and cannot be written over",
                  2);
  }
  ExpectFailure({"train", "test.net", "--outputs", "./test.net"},
                "'" + Path("test.net") + "' is read by this command and cannot be written over", 2);
  ExpectFailure({"train", "test.net", "--outputs", "a", "--error-history", "a"},
                "'" + Path("a") + "' is to be written twice", 2);
  ExpectFailure({"train", "test.net", "-o", "a", "--autosave", "./a"},
                "'" + Path("a") + "' is to be written twice", 2);
  EXPECT_EQ(Read("data.txt"), data);
  EXPECT_EQ(Read("test.net"), network);
  Do({"train", "test.net", "-o", "test.net", "--quiet", "--outputs", "/dev/null", "--error-history",
      "/dev/null"});
}

TEST_F(TrainCommand, FailsWhenAnExportMeetsAFullDiskButSaves) {
  RunResult result = Run({"train", "test.net", "--quiet", "--outputs", "/dev/full"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err, "tarn-cli: File Error Writting Outputs\n");
  EXPECT_NE(Read("test.net").find("WEIGHTS:READ\n"), std::string::npos);
  result = Run({"train", "test.net", "--quiet", "--error-history", "/dev/full", "--outputs", "o"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err, "tarn-cli: File Error Writting Error History\n");
  EXPECT_EQ(Lines(Read("o")), 10);
}

TEST_F(TrainCommand, TellsOnceThatTheHistoryIsLost) {
  RunResult result = Run({"train", "test.net", "--quiet", "--history", "/dev/full"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err, "tarn-cli: File Error Writting Error History\n");
  EXPECT_NE(Read("test.net").find("WEIGHTS:READ\n"), std::string::npos);
}

TEST_F(TrainCommand, KeepsANetworkThatCannotBeSavedElsewhere) {
  const RunResult result = Run({"train", "test.net", "--quiet", "-o", "/dev/full"});
  EXPECT_EQ(result.status, 1);
  const std::string& folder = m_scene.environment["TMPDIR"];
  m_left_over = NamesIn(folder);
  ASSERT_EQ(m_left_over.size(), 1U);
  const std::string rescued = folder + "/" + m_left_over.front();
  EXPECT_EQ(result.err,
            "tarn-cli: Cannot Write to Network File\n"
            "tarn-cli: notice: the trained network is kept in " +
                rescued + "\n");
  EXPECT_NE(ReadFile(rescued).find("WEIGHTS:READ\n"), std::string::npos);
  using std::filesystem::perms;
  EXPECT_EQ(std::filesystem::status(rescued).permissions(), perms::owner_read | perms::owner_write);
}

TEST_F(TrainCommand, SavesAlthoughItsFiguresCannotBePrinted) {
  m_scene.stdout_fd = ::open("/dev/full", O_WRONLY | O_CLOEXEC);
  RunResult result = Run({"train", "test.net"});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.err, testing::EndsWith("tarn-cli: the results could not be written\n"));
  EXPECT_NE(Read("test.net").find("WEIGHTS:READ\n"), std::string::npos);
  ::close(m_scene.stdout_fd);
  // A pipe whose reader has gone, as "| head" leaves it.
  PutNetwork();
  int ends[2] = {-1, -1};
  ASSERT_EQ(::pipe2(ends, O_CLOEXEC), 0);
  ::close(ends[0]);
  m_scene.stdout_fd = ends[1];
  result = Run({"train", "test.net"});
  ::close(ends[1]);
  EXPECT_EQ(result.status, 1);
  EXPECT_NE(Read("test.net").find("WEIGHTS:READ\n"), std::string::npos);
}

}  // namespace
}  // namespace tarn
