#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "cli/cli_test.h"

namespace tarn {
namespace {

class Usage : public CliTest {};

TEST_F(Usage, IsHelpedOutOnStdout) {
  const RunResult result = Run({"--help"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err, "");
  for (const char* command : {"new", "set", "train", "recall", "report", "plot", "restore"}) {
    EXPECT_NE(result.out.find(std::string("\n  ") + command + " "), std::string::npos);
    const RunResult help = Run({command, "--help"});
    EXPECT_EQ(help.status, 0) << command;
    EXPECT_EQ(help.err, "");
    EXPECT_NE(help.out.find(":\n  tarn-cli " + std::string(command)), std::string::npos);
  }
}

TEST_F(Usage, HelpFitsATerminalOfEightyColumns) {
  for (const char* command : {"new", "set", "train", "recall", "report", "plot", "restore"}) {
    std::string text = Run({command, "--help"}).out;
    for (size_t end = text.find('\n'); end != std::string::npos; end = text.find('\n')) {
      EXPECT_LE(end, 80U) << text.substr(0, end);
      text.erase(0, end + 1);
    }
  }
}

TEST_F(Usage, HelpNamesEveryOption) {
  const std::vector<std::string> setup = {"--name",
                                          "--layers",
                                          "--transfer",
                                          "--inputs",
                                          "--inputs-column",
                                          "--targets",
                                          "--targets-column",
                                          "--normalize-inputs",
                                          "--eta",
                                          "--normalize-targets",
                                          "--test-patterns",
                                          "--test-method",
                                          "--eta-min",
                                          "--eta-max",
                                          "--momentum",
                                          "--fast-prop",
                                          "--tolerance",
                                          "--patterns-per-update",
                                          "--iterations",
                                          "--lrc-start",
                                          "--autosave-rate",
                                          "--update-rate"};
  const auto expect_all = [&](const std::string& command, const std::vector<std::string>& names) {
    const std::string help = Run({command, "--help"}).out;
    for (const std::string& name : names) {
      EXPECT_NE(help.find(name + " "), std::string::npos) << command << ' ' << name;
    }
  };
  expect_all("new", setup);
  expect_all("set", setup);
  expect_all("new", {"--force"});
  expect_all("set", {"-o,--output"});
  expect_all("train", {"-o,--output", "--no-save", "--seed", "--iterations", "--error-history",
                       "--outputs", "--history", "--autosave", "--quiet"});
  expect_all("recall",
             {"--inputs", "--inputs-column", "--targets", "--targets-column", "--outputs"});
  expect_all("plot",
             {"--inputs", "--inputs-column", "--targets", "--targets-column", "--seed", "--history",
              "--node", "--first-input", "--second-input", "--width", "--height", "-o,--output"});
  expect_all("report", {"--inputs", "--inputs-column", "--targets", "--targets-column", "--seed",
                        "--tolerance", "--upper", "--lower"});
}

TEST_F(Usage, VersionIsOneLine) {
  const RunResult result = Run({"--version"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out.substr(0, 9), "tarn-cli ");
  EXPECT_EQ(Lines(result.out), 1);
  EXPECT_EQ(result.err, "");
}

TEST_F(Usage, IsWrongWithExitStatus2AndAHint) {
  struct Case {
    std::vector<std::string> arguments;
    std::string message;
  };
  for (const Case& c : std::vector<Case>{
           {{}, "a command is wanted; see 'tarn-cli --help'"},
           {{"frob"}, "'frob' is no command; see 'tarn-cli --help'"},
           {{"--frob"}, "'--frob' is no option; see 'tarn-cli --help'"},
           {{"train"}, "NET is required; see 'tarn-cli train --help'"},
           {{"recall", "a.net"}, "--inputs is required; see 'tarn-cli recall --help'"},
           {{"restore", "a"}, "ITERATION is required; see 'tarn-cli restore --help'"},
           {{"train", "a.net", "--frob"},
            "The following argument was not expected: --frob; see 'tarn-cli train --help'"},
           {{"train", "a.net", "b.net"},
            "The following argument was not expected: b.net; see 'tarn-cli train --help'"},
           {{"set", "a.net", "--eta"}, "--eta: 1 required X missing; see 'tarn-cli set --help'"},
           {{"train", "a.net", "-o", "b.net", "--no-save"},
            "--output excludes --no-save; see 'tarn-cli train --help'"},
           {{"train", "a.net", "--iterations", "0"},
            "--iterations: Value 0 not in range 1 to 2147483647; see 'tarn-cli train --help'"},
           {{"train", "a.net", "--seed", "-1"},
            "--seed: Value -1 not in range 0 to 4294967295; see 'tarn-cli train --help'"},
           {{"train", "a.net", "--seed", "x"},
            "--seed: Value x not in range 0 to 4294967295; see 'tarn-cli train --help'"}}) {
    const RunResult result = Run(c.arguments);
    EXPECT_EQ(result.status, 2) << c.message;
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "tarn-cli: " + c.message + "\n");
  }
}

}  // namespace
}  // namespace tarn
