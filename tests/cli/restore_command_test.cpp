#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "cli/cli_test.h"

namespace tarn {
namespace {

class RestoreCommand : public CliTest {
 protected:
  RestoreCommand() {
    PutNetwork();
    Do({"train", "test.net", "--seed", "1", "--quiet", "--autosave", "a.store", "--iterations",
        "60"});
  }

  void ExpectFailure(const std::vector<std::string>& arguments, const std::string& message,
                     int status = 1) {
    const RunResult result = Run(arguments);
    EXPECT_EQ(result.status, status) << message;
    EXPECT_EQ(result.err, "tarn-cli: " + message + "\n");
  }
};

TEST_F(RestoreCommand, TakesBackTheNetworkOfAnIteration) {
  Do({"restore", "a.store", "60", "last.net"});
  EXPECT_EQ(Read("last.net"), Read("test.net"));
  Do({"restore", "a.store", "30", "earlier.net"});
  EXPECT_NE(Read("earlier.net"), Read("test.net"));
  // As the network was when it had been trained for so long.
  PutNetwork("short.net");
  Do({"train", "short.net", "--seed", "1", "--quiet", "--iterations", "30"});
  std::string earlier = Read("earlier.net");
  earlier.replace(earlier.find("\n60\n"), 4, "\n30\n");
  EXPECT_EQ(Read("short.net"), earlier);
}

TEST_F(RestoreCommand, MatchesAnIterationByItsBeginning) {
  Do({"restore", "a.store", "5", "a.net"});
  const std::string text = Read("a.net");
  // 5 and 50; 55 stands directly behind a copied one, which takes its line.
  size_t networks = 0;
  for (size_t at = text.find("TARNV2.1"); at != std::string::npos;
       at = text.find("TARNV2.1", at + 1)) {
    ++networks;
  }
  EXPECT_EQ(networks, 2U);
  Do({"train", "a.net", "--quiet", "--iterations", "1"});
}

TEST_F(RestoreCommand, LeavesTheDestinationWhenThereIsNoSuchSnapshot) {
  Write("mine.net", "mine");
  for (const char* iteration : {"7", "0", "-5", "99999999999"}) {
    ExpectFailure({"restore", "a.store", iteration, "mine.net"}, "File Not Saved");
    EXPECT_EQ(Read("mine.net"), "mine");
    ExpectFailure({"restore", "a.store", iteration, "none.net"}, "File Not Saved");
    EXPECT_FALSE(Exists("none.net"));
  }
}

TEST_F(RestoreCommand, TakesAWholeNumberAlone) {
  for (const char* iteration : {"x", "5x", "5.5", "-", ""}) {
    const RunResult result = Run({"restore", "a.store", iteration, "a.net"});
    EXPECT_EQ(result.status, 2) << iteration;
    EXPECT_EQ(result.err, std::string("tarn-cli: ITERATION: '") + iteration +
                              "' is no whole number; see 'tarn-cli restore --help'\n");
    EXPECT_FALSE(Exists("a.net"));
  }
}

TEST_F(RestoreCommand, AnswersForAMissingStore) {
  ExpectFailure({"restore", "gone.store", "5", "a.net"}, "AutoSave File Not Found");
  EXPECT_FALSE(Exists("a.net"));
}

TEST_F(RestoreCommand, AnswersForADestinationThatCannotBeWritten) {
  ExpectFailure({"restore", "a.store", "5", "no/a.net"}, "Error Writing Network File");
  ExpectFailure({"restore", "a.store", "5", "/dev/full"}, "Error Writing Network File");
}

TEST_F(RestoreCommand, DoesNotOverwriteItsStore) {
  ExpectFailure({"restore", "a.store", "5", "./a.store"},
                "'" + Path("a.store") + "' is read by this command and cannot be written over", 2);
}

}  // namespace
}  // namespace tarn
