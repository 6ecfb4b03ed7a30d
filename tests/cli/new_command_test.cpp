#include <gtest/gtest.h>
#include <string>

#include "cli/cli_test.h"

namespace tarn {
namespace {

class NewCommand : public CliTest {};

constexpr const char* kTemplate =
    "TARNV2.1\n"
    "NO NAME\n"
    "3\n"
    "2 2 1 0 0\n"
    "0.0  0.01  0.001  0.3  0.8\n"
    "10000\n"
    "100 5\n"
    "500 0\n"
    "none\n"
    "1\n"
    "1 1\n"
    "none\n"
    "1\n"
    "0 0\n"
    "WEIGHTS:RANDOM\n"
    "CONNECTIONS:FULL\n"
    "TESTPATTERNS:COMPUTE\n"
    "NORMALIZE:NONE\n";

TEST_F(NewCommand, WritesTheTemplateAsItIs) {
  const RunResult result = Run({"new", "a.net"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out, "");
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(Read("a.net"), kTemplate);
}

TEST_F(NewCommand, AppliesEverySetupOption) {
  Write("in.txt", "1 2\n");
  Write("out.txt", "1 2\n");
  Do({"new",
      "a.net",
      "--name",
      "Two Rivers",
      "--layers",
      "4,8,5,3",
      "--transfer",
      "tanh,sech,gaussian",
      "--inputs",
      "in.txt",
      "--inputs-column",
      "2",
      "--targets",
      "out.txt",
      "--targets-column",
      "7",
      "--normalize-inputs",
      "off",
      "--normalize-targets",
      "on",
      "--test-patterns",
      "30",
      "--test-method",
      "end",
      "--eta",
      "0.05",
      "--eta-min",
      "0.02",
      "--eta-max",
      "0.4",
      "--momentum",
      "0.7",
      "--fast-prop",
      "1.5",
      "--tolerance",
      "0.25",
      "--patterns-per-update",
      "6",
      "--iterations",
      "1234",
      "--lrc-start",
      "77",
      "--autosave-rate",
      "50",
      "--update-rate",
      "9"});
  EXPECT_EQ(Read("a.net"),
            "TARNV2.1\n"
            "Two Rivers\n"
            "4\n"
            "4 8 5 3 2 3 1 \n"
            "1.500000 0.050000 0.020000 0.400000 0.700000 0.250000\n"
            "1234\n"
            "77 9\n"
            "50 6\n"
            "in.txt\n"
            "2\n"
            "0 1\n"
            "out.txt\n"
            "7\n"
            "2 30\n"
            "WEIGHTS:RANDOM\n"
            "CONNECTIONS:FULL\n"
            "TESTPATTERNS:COMPUTE\n"
            "NORMALIZE:NONE\n");
}

TEST_F(NewCommand, RefusesAnExistingFileUnlessForced) {
  Write("a.net", "mine");
  for (const auto& arguments : std::vector<std::vector<std::string>>{
           {"new", "a.net"}, {"new", "a.net", "--layers", "1,2,3"}}) {
    const RunResult result = Run(arguments);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "tarn-cli: '" + Path("a.net") + "' exists; --force replaces it\n");
    EXPECT_EQ(Read("a.net"), "mine");
  }
  Do({"new", "a.net", "--force"});
  EXPECT_EQ(Read("a.net"), kTemplate);
  Do({"new", "a.net", "--force", "--layers", "1,2,3"});
  EXPECT_EQ(Read("a.net").substr(0, 26), "TARNV2.1\nNO NAME\n3\n1 2 3 0");
}

TEST_F(NewCommand, LeavesNothingBehindWhenAnOptionFails) {
  RunResult result = Run({"new", "a.net", "--layers", "4,0,3"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err, "tarn-cli: Hidden layer 1 has an invalid node count\n");
  EXPECT_FALSE(Exists("a.net"));
  result = Run({"new", "a.net", "--eta", "2"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err, "tarn-cli: Learn rate range is >0. to 1.\n");
  EXPECT_FALSE(Exists("a.net"));
  result = Run({"new", "a.net", "--eta", "fast"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.err, "tarn-cli: --eta takes a number, not \"fast\"\n");
  EXPECT_FALSE(Exists("a.net"));
  EXPECT_TRUE(NamesIn(m_scene.folder).empty());
}

TEST_F(NewCommand, KeepsTheOldFileWhenAnOptionFailsInSpiteOfForce) {
  Write("a.net", "mine");
  EXPECT_EQ(Run({"new", "a.net", "--force", "--layers", "4"}).status, 1);
  EXPECT_EQ(Read("a.net"), "mine");
}

TEST_F(NewCommand, RefusesANameThatHidesTheWeights) {
  const RunResult result = Run({"new", "a.net", "--name", "WEIGHTS:mine"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err, "tarn-cli: " + kNotReadBackText + "\n");
  EXPECT_FALSE(Exists("a.net"));
}

TEST_F(NewCommand, LooksUpDataFilesBesideTheNetwork) {
  std::filesystem::create_directory(Path("sub"));
  Write("sub/in.txt", "1 2\n");
  Do({"new", "sub/a.net", "--inputs", "in.txt"});
  EXPECT_NE(Read("sub/a.net").find("\nin.txt\n"), std::string::npos);
  const RunResult result = Run({"new", "b.net", "--inputs", "in.txt"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err, "tarn-cli: Input node data file not found\n");
}

TEST_F(NewCommand, AnswersForAFolderThatDoesNotExist) {
  for (const auto& arguments : std::vector<std::vector<std::string>>{
           {"new", "sub/a.net"}, {"new", "sub/a.net", "--layers", "1,2,3"}}) {
    const RunResult result = Run(arguments);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "tarn-cli: Tarn Network File Error Detected\n");
  }
}

}  // namespace
}  // namespace tarn
