#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>
#include <utility>
#include <vector>

#include "cli/cli_test.h"

namespace tarn {
namespace {

class ReportCommand : public CliTest {
 protected:
  ReportCommand() { PutTrainedNetwork(); }

  std::string Report(const std::vector<std::string>& arguments) {
    std::vector<std::string> all = {"report"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    const RunResult result = Run(all);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    return result.out;
  }
  std::string RecallReport(const std::string& kind) {
    return Report({kind, "test.net", "--inputs", "data.txt", "--targets", "data.txt",
                   "--targets-column", "3"});
  }

  void ExpectRefusal(const std::vector<std::string>& arguments, const std::string& message,
                     int status = 2) {
    std::vector<std::string> all = {"report"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    const RunResult result = Run(all);
    EXPECT_EQ(result.status, status);
    EXPECT_EQ(result.err, "tarn-cli: " + message + "\n");
    EXPECT_EQ(result.out, "");
  }
};

TEST_F(ReportCommand, PrintsEveryKindWithoutTrailingBlanks) {
  const std::vector<std::pair<const char*, const char*>> kinds = {
      {"information", " Network Name:         Test\n"},
      {"weights", " Network Weights and Current Adjustment Deltas\n"},
      {"outputs", " Targets and Network Outputs\n"},
      {"statistics", " Network Statistics\n"},
      {"tolerance", " Tolerance Checking\n"}};
  for (const auto& [kind, start] : kinds) {
    const std::string text = Report({kind, "test.net"});
    EXPECT_TRUE(text.starts_with(start)) << text;
    EXPECT_EQ(text.find(" \n"), std::string::npos) << kind;
    EXPECT_GT(Lines(text), 7) << kind;
  }
  EXPECT_TRUE(
      Report({"threshold", "test.net", "--upper", "5"}).starts_with(" Threshold Checking\n"));
  EXPECT_EQ(Report({"divergence", "test.net"}), "Network Training OK - No Divergences Found\n");
}

TEST_F(ReportCommand, PropagatesTheNetworksOwnPatterns) {
  Do({"recall", "test.net", "--inputs", "data.txt", "--outputs", "recalled.out"});
  const std::string outputs = Report({"outputs", "test.net"});
  // " 10*=> Output Node 1   (target,output) =     10.00000,      5.12345": the output recalled.
  const std::string recalled = Read("recalled.out");
  const std::string last = recalled.substr(recalled.rfind("10\t") + 3, 7);
  EXPECT_THAT(outputs.substr(outputs.rfind("  10")), testing::HasSubstr("10.00000,      " + last));
  EXPECT_THAT(outputs, testing::HasSubstr(" (Note: * = Test Pattern)\n"));
}

TEST_F(ReportCommand, ReportsOnNewInputsInRecallMode) {
  EXPECT_THAT(RecallReport("statistics"), testing::HasSubstr("\n RECALL DATA:\n"));
  EXPECT_THAT(RecallReport("tolerance"), testing::HasSubstr("\n RECALL DATA:\n"));
  EXPECT_THAT(RecallReport("outputs"), testing::Not(testing::HasSubstr("Iterations")));
  EXPECT_THAT(RecallReport("information"), testing::Not(testing::HasSubstr("Connections")));
  EXPECT_EQ(RecallReport("divergence"), "Network Training OK - No Divergences Found\n");
  const std::string alone = Report({"outputs", "test.net", "--inputs", "data.txt"});
  EXPECT_TRUE(alone.starts_with(" Network Outputs\n")) << alone;
}

TEST_F(ReportCommand, TakesToleranceAndThresholds) {
  EXPECT_THAT(Report({"tolerance", "test.net"}), testing::HasSubstr(" Tolerance:     2.000000\n"));
  EXPECT_THAT(Report({"tolerance", "test.net", "--tolerance", "0.25"}),
              testing::HasSubstr(" Tolerance:     0.250000\n"));
  EXPECT_THAT(Report({"threshold", "test.net", "--upper", "5", "--lower", "-1e1"}),
              testing::HasSubstr(" Thresholds:     5.000000, -10.000000\n"));
  EXPECT_EQ(Report({"threshold", "test.net"}), "");
  EXPECT_EQ(Report({"threshold", "test.net", "--upper", "", "--lower", ""}), "");
  EXPECT_EQ(Report({"threshold", "test.net", "--inputs", "data.txt"}), "");
}

TEST_F(ReportCommand, LeavesTheNetworkFileAlone) {
  const std::string before = Read("test.net");
  Report({"statistics", "test.net"});
  RecallReport("statistics");
  EXPECT_EQ(Read("test.net"), before);
}

TEST_F(ReportCommand, SeedsDrawTheWeightsOfAnUntrainedNetwork) {
  PutNetwork("untrained.net");
  const std::string first = Report({"weights", "untrained.net", "--seed", "5"});
  EXPECT_EQ(Report({"weights", "untrained.net", "--seed", "5"}), first);
  EXPECT_NE(Report({"weights", "untrained.net", "--seed", "6"}), first);
  ExpectRefusal({"outputs", "untrained.net", "--inputs", "data.txt"},
                "Untrained Networks Cannot be used for Recall!", 1);
}

TEST_F(ReportCommand, RefusesWhatItCannotMake) {
  const std::string help = "; see 'tarn-cli report --help'";
  ExpectRefusal({"gossip", "test.net"},
                "KIND: 'gossip' is no kind of report; there are information weights outputs "
                "statistics tolerance threshold divergence" +
                    help);
  ExpectRefusal({"tolerance", "test.net", "--tolerance", "much"},
                "--tolerance takes a number, not 'much'" + help);
  ExpectRefusal({"threshold", "test.net", "--upper", "1x"},
                "--upper takes a number, not '1x'" + help);
  ExpectRefusal({"outputs", "test.net", "--targets", "data.txt", "--targets-column", "3"},
                "--targets requires --inputs" + help);
  ExpectRefusal({"outputs", "test.net", "--inputs-column", "2"},
                "--inputs-column requires --inputs" + help);
  ExpectRefusal({"outputs", "test.net", "--inputs", "data.txt", "--targets-column", "3"},
                "--targets-column requires --targets" + help);
  ExpectRefusal({"outputs", "test.net", "--tolerance", "1"},
                "--tolerance is of the tolerance check alone" + help);
  for (const char* option : {"--upper", "--lower"}) {
    ExpectRefusal({"divergence", "test.net", option, "1"},
                  "--upper and --lower are of the threshold check alone" + help);
  }
  const std::string missing = " compares with targets: --targets is missing" + help;
  for (const std::string kind : {"statistics", "tolerance"}) {
    ExpectRefusal({kind, "test.net", "--inputs", "data.txt"}, "report " + kind + missing);
  }
  ExpectRefusal({"threshold", "test.net", "--inputs", "data.txt", "--upper", "1"},
                "report threshold" + missing);
  ExpectRefusal({"outputs", "none.net"}, "File Not Found!", 1);
  ExpectRefusal({"outputs", "test.net", "--inputs", ""}, "Input node data file not found", 1);
}

TEST_F(ReportCommand, AnswersWithoutAPlaceForTheReport) {
  m_scene.environment["TMPDIR"] = "/proc";
  ExpectRefusal({"information", "test.net"}, "File Creation Access Denied", 1);
}

TEST_F(ReportCommand, TellsThatItCouldNotPrint) {
  m_scene.stdout_fd = open("/dev/full", O_WRONLY);
  ASSERT_GE(m_scene.stdout_fd, 0);
  const RunResult result = Run({"report", "outputs", "test.net"});
  close(m_scene.stdout_fd);
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err, "tarn-cli: the results could not be written\n");
}

}  // namespace
}  // namespace tarn
