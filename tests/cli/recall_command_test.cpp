#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>
#include <vector>

#include "cli/cli_test.h"

namespace tarn {
namespace {

class RecallCommand : public CliTest {
 protected:
  RecallCommand() {
    PutTrainedNetwork();
    Write("new.txt", "9 0 0 1\n9 3 2 9\n9 1 1 5\n");
  }

  void ExpectFailure(const std::vector<std::string>& options, const std::string& messages,
                     int status = 1) {
    std::vector<std::string> arguments = {"recall", "test.net"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const RunResult result = Run(arguments);
    EXPECT_EQ(result.status, status);
    EXPECT_EQ(result.err, messages);
    EXPECT_EQ(result.out, "");
  }
};

TEST_F(RecallCommand, PrintsNumberAndOutputOfEveryPattern) {
  const RunResult result = Run({"recall", "test.net", "--inputs", "new.txt"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err, "");
  EXPECT_THAT(result.out, testing::MatchesRegex("1\t-?[0-9]+\\.[0-9]+\n2\t-?[0-9]+\\.[0-9]+\n"
                                                "3\t-?[0-9]+\\.[0-9]+\n"));
}

TEST_F(RecallCommand, TakesInputsFromTheColumnGiven) {
  Write("other.txt", "0 0\n3 2\n1 1\n");
  const std::string first = Run({"recall", "test.net", "--inputs", "other.txt"}).out;
  EXPECT_EQ(Run({"recall", "test.net", "--inputs", "new.txt", "--inputs-column", "2"}).out, first);
  EXPECT_NE(Run({"recall", "test.net", "--inputs", "new.txt"}).out, first);
  EXPECT_EQ(Run({"recall", "test.net", "--inputs", "other.txt", "--inputs-column", "1"}).out,
            first);
}

TEST_F(RecallCommand, PutsTargetsBesideTheOutputs) {
  const RunResult result = Run({"recall", "test.net", "--inputs", "new.txt", "--inputs-column", "2",
                                "--targets", "new.txt", "--targets-column", "4"});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.out,
              testing::MatchesRegex("1\t1\\.0+\t[-0-9.]+\n2\t9\\.0+\t[-0-9.]+\n3\t5\\.0+\t"
                                    "[-0-9.]+\n"));
}

TEST_F(RecallCommand, WritesToAFileWhatItWouldPrint) {
  const std::string before = Read("test.net");
  const RunResult printed = Run({"recall", "test.net", "--inputs", "new.txt"});
  const RunResult written =
      Run({"recall", "test.net", "--inputs", "new.txt", "--outputs", "new.out"});
  EXPECT_EQ(written.status, 0);
  EXPECT_EQ(written.out + written.err, "");
  EXPECT_EQ(Read("new.out"), printed.out);
  EXPECT_EQ(Read("test.net"), before);
}

TEST_F(RecallCommand, RefusesAnUntrainedNetwork) {
  PutNetwork();
  ExpectFailure({"--inputs", "new.txt"},
                "tarn-cli: Untrained Networks Cannot be used for Recall!\n");
}

TEST_F(RecallCommand, AnswersWithTheMessagesOfTheRecallDialog) {
  ExpectFailure({"--inputs", "gone.txt"}, "tarn-cli: Input node data file not found\n");
  ExpectFailure({"--inputs", "new.txt", "--inputs-column", "0"},
                "tarn-cli: Invalid start column specified for inputs\n");
  ExpectFailure({"--inputs", "new.txt", "--inputs-column", "-2"},
                "tarn-cli: Invalid start column specified for inputs\n");
  ExpectFailure({"--inputs", "new.txt", "--targets", "gone.txt", "--targets-column", "1"},
                "tarn-cli: Target node data file not found\n");
  ExpectFailure({"--inputs", "new.txt", "--targets", "new.txt"},
                "tarn-cli: Invalid start column specified for targets\n");
  ExpectFailure({"--inputs", "gone.txt", "--targets", "gone.txt", "--targets-column", "1"},
                "tarn-cli: Input node data file not found\n"
                "tarn-cli: Target node data file not found\n");
}

TEST_F(RecallCommand, AnswersForDataThatCannotBeRead) {
  ExpectFailure({"--inputs", "new.txt", "--inputs-column", "4"},
                "tarn-cli: Insufficient input node data - Data record 1\n");
  Write("new.txt", "");
  ExpectFailure({"--inputs", "new.txt"}, "tarn-cli: Invalid or Empty Training Data File\n");
}

TEST_F(RecallCommand, OverwritesNoInputs) {
  for (const char* name : {"new.txt", "test.net"}) {
    const std::string before = Read(name);
    ExpectFailure(
        {"--inputs", "new.txt", "--outputs", name},
        "tarn-cli: '" + Path(name) + "' is read by this command and cannot be written over\n", 2);
    EXPECT_EQ(Read(name), before);
  }
}

TEST_F(RecallCommand, FailsWhenItsOutputsCannotBeWritten) {
  ExpectFailure({"--inputs", "new.txt", "--outputs", "no/new.out"},
                "tarn-cli: File Error Writting Outputs\n");
  ExpectFailure({"--inputs", "new.txt", "--outputs", "/dev/full"},
                "tarn-cli: File Error Writting Outputs\n");
  m_scene.stdout_fd = ::open("/dev/full", O_WRONLY | O_CLOEXEC);
  ExpectFailure({"--inputs", "new.txt"}, "tarn-cli: the results could not be written\n");
  ::close(m_scene.stdout_fd);
}

}  // namespace
}  // namespace tarn
