#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "cli/cli_test.h"

namespace tarn {
namespace {

class SetCommand : public CliTest {
 protected:
  SetCommand() { PutNetwork(); }

  // The file from its fifteenth line on.
  std::string Sections(const std::string& name) const {
    const std::string text = Read(name);
    return text.substr(text.find("WEIGHTS:"));
  }
  std::string Line(int number) const {
    std::string text = Read("test.net");
    for (int i = 1; i < number; ++i) text.erase(0, text.find('\n') + 1);
    return text.substr(0, text.find('\n'));
  }
};

TEST_F(SetCommand, ChangesWhatIsGivenAndNothingElse) {
  const std::string before = Read("test.net");
  const RunResult result = Run({"set", "test.net", "--iterations", "99"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out + result.err, "");
  std::string expected = before;
  expected.replace(expected.find("\n20\n"), 4, "\n99\n");
  EXPECT_EQ(Read("test.net"), expected);
  Do({"set", "test.net"});
  EXPECT_EQ(Read("test.net"), expected);
}

TEST_F(SetCommand, KeepsWeightsTestSetAndLimits) {
  PutTrainedNetwork();
  std::string text = Read("test.net");
  text.replace(text.find("CONNECTIONS:FULL\n"), 17,
               "CONNECTIONS:READ\n1\n1 2 0\nCONNECTIONS:STOP\n");
  Write("test.net", text);
  Do({"set", "test.net", "--eta", "0.2", "--name", "Other"});
  EXPECT_EQ(Sections("test.net"), text.substr(text.find("WEIGHTS:")));
  EXPECT_NE(Sections("test.net").find("WEIGHTS:READ\n"), std::string::npos);
  EXPECT_NE(Sections("test.net").find("TESTPATTERNS:READ\n10 7 3\n"), std::string::npos);
  EXPECT_EQ(Line(2), "Other");
  EXPECT_EQ(Line(5), "0.000000 0.200000 0.010000 0.300000 0.500000 2.000000");
}

TEST_F(SetCommand, GivesUpWeightsThatDoNotFitAChangedDesign) {
  PutTrainedNetwork();
  // Of these, the first has as many weights as before.
  for (const char* layers : {"2,2,2,1", "2,5,1"}) {
    const RunResult result = Run({"set", "test.net", "-o", "other.net", "--layers", layers});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err,
              "tarn-cli: notice: the weights do not fit the changed design and are not kept\n");
    EXPECT_EQ(Read("other.net").find("WEIGHTS:READ"), std::string::npos);
    EXPECT_NE(Read("other.net").find("\nWEIGHTS:RANDOM\n"), std::string::npos);
    EXPECT_EQ(Run({"recall", "other.net", "--inputs", "data.txt"}).status, 1);
  }
  Do({"set", "other.net", "--layers", "2,3,1"});
  Do({"set", "test.net", "--layers", "2,3,1"});
  EXPECT_NE(Read("test.net").find("WEIGHTS:READ"), std::string::npos);
}

TEST_F(SetCommand, RefusesANameThatHidesTheWeights) {
  PutTrainedNetwork();
  const std::string before = Read("test.net");
  Write("WEIGHTS:mine", Read("data.txt"));
  for (const char* option : {"--name", "--inputs"}) {
    const RunResult result = Run({"set", "test.net", option, "WEIGHTS:mine"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "tarn-cli: " + kNotReadBackText + "\n");
    EXPECT_EQ(Read("test.net"), before);
  }
  SetLine(2, "CONNECTIONS:");
  EXPECT_EQ(Run({"set", "test.net", "--eta", "0.2"}).status, 1);
  Do({"set", "test.net", "--name", "mine"});
  EXPECT_EQ(Read("test.net").substr(Read("test.net").find("WEIGHTS:")),
            before.substr(before.find("WEIGHTS:")));
}

TEST_F(SetCommand, WritesToAnotherFileAndLeavesTheFirst) {
  const std::string before = Read("test.net");
  Write("other.net", "old");
  Do({"set", "test.net", "--name", "Copy", "-o", "other.net"});
  EXPECT_EQ(Read("test.net"), before);
  EXPECT_EQ(Read("other.net").substr(0, 14), "TARNV2.1\nCopy\n");
  Do({"set", "test.net", "--output", "third.net"});
  EXPECT_EQ(Read("third.net"), before);
}

TEST_F(SetCommand, RefusesWhatTheDialogsRefuseAndKeepsTheFile) {
  const std::string before = Read("test.net");
  struct Case {
    std::vector<std::string> options;
    std::string message;
  };
  for (const Case& c :
       std::vector<Case>{{{"--eta", "5"}, "Learn rate range is >0. to 1."},
                         {{"--eta-min", "0"}, "Learn rate minimum range is >0. to 1."},
                         {{"--eta-max", "1.1"}, "Learn rate maximum range is >0. to 1."},
                         {{"--momentum", "-0.1"}, "Momentum factor range is 0. to 1."},
                         {{"--fast-prop", "-1"}, "Fast-Prop coefficient range is 0. to 3."},
                         {{"--iterations", "0"}, "Maximum iterations out of range (>0)"},
                         {{"--lrc-start", "0"}, "Learn rate control out of range (>0)"},
                         {{"--inputs", "gone.txt"}, "Input node data file not found"},
                         {{"--targets", "gone.txt"}, "Target node data file not found"},
                         {{"--inputs-column", "0"}, "Invalid start column specified for inputs"},
                         {{"--targets-column", "-1"}, "Invalid start column specified for targets"},
                         {{"--layers", "4,3"}, "Set number of network layers between 3 and 10"},
                         {{"--layers", "0,3,1"}, "Invalid value for input node count"},
                         {{"--layers", "1,3,0"}, "Invalid value for output node count"}}) {
    std::vector<std::string> arguments = {"set", "test.net"};
    arguments.insert(arguments.end(), c.options.begin(), c.options.end());
    const RunResult result = Run(arguments);
    EXPECT_EQ(result.status, 1) << c.message;
    EXPECT_EQ(result.err.substr(0, 10 + c.message.size() + 1), "tarn-cli: " + c.message + "\n");
    EXPECT_EQ(Read("test.net"), before) << c.message;
  }
}

TEST_F(SetCommand, NotesWhatTheDialogsCorrect) {
  RunResult result = Run({"set", "test.net", "--test-patterns", "-3"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err, "tarn-cli: notice: Invalid number of test cases - set to ZERO\n");
  EXPECT_EQ(Line(14), "3 0");
  result = Run({"set", "test.net", "--update-rate", "0", "--autosave-rate", "-1"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err,
            "tarn-cli: notice: Screen update rate out of range; set to 1\n"
            "tarn-cli: notice: AutoSave rate out of range; feature disabled\n");
  EXPECT_EQ(Line(7), "100 1");
  EXPECT_EQ(Line(8), "0 0");
}

TEST_F(SetCommand, TakesWordsItDoesNotKnowForWrongUsage) {
  const std::string before = Read("test.net");
  struct Case {
    const char* option;
    const char* value;
    const char* message;
  };
  for (const Case& c : std::vector<Case>{
           {"--eta", "abc", "--eta takes a number, not \"abc\""},
           {"--eta", "0,5", "--eta takes a number, not \"0,5\""},
           {"--iterations", "1.5", "--iterations takes a whole number, not \"1.5\""},
           {"--iterations", "", "--iterations takes a whole number, not \"\""},
           {"--normalize-inputs", "maybe", "--normalize-inputs takes on or off, not \"maybe\""},
           {"--test-method", "some",
            "--test-method takes none, beginning, end or random, not \"some\""},
           {"--transfer", "relu", "--transfer takes sigmoid, gaussian, tanh or sech, not \"relu\""},
           {"--transfer", "tanh,tanh,tanh",
            "--transfer takes one name, or one for each of the 2 layers above the input layer, "
            "not 3"}}) {
    const RunResult result = Run({"set", "test.net", c.option, c.value});
    EXPECT_EQ(result.status, 2) << c.message;
    EXPECT_EQ(result.err, std::string("tarn-cli: ") + c.message + "\n");
    EXPECT_EQ(Read("test.net"), before);
  }
}

TEST_F(SetCommand, RepairsANetworkWithAbsurdLayers) {
  struct Case {
    int line;
    const char* text;
    const char* message;
  };
  for (const Case& c : std::vector<Case>{
           {3, "-5", "Set number of network layers between 3 and 10"},
           {3, "0", "Set number of network layers between 3 and 10"},
           {3, "1", "Set number of network layers between 3 and 10"},
           {3, "2", "Set number of network layers between 3 and 10"},
           {3, "-2147483648", "Set number of network layers between 3 and 10"},
           {4, "-1 3 1 0 0", "Invalid value for input node count"},
           {4, "2 2147483647 1 0 0", "Tarn has run out of memory!"},
           {4, "2147483647 2147483647 2147483647 0 0", "Tarn has run out of memory!"}}) {
    PutNetwork();
    SetLine(c.line, c.text);
    const RunResult broken = Run({"train", "test.net"});
    EXPECT_EQ(broken.status, 1) << c.text;
    EXPECT_EQ(broken.err, std::string("tarn-cli: ") + c.message + "\n");
    Do({"set", "test.net", "--layers", "2,3,1"});
    EXPECT_EQ(Line(3), "3");
    EXPECT_EQ(Line(4).substr(0, 6), "2 3 1 ");
    Do({"train", "test.net", "--quiet", "--seed", "1"});
  }
}

TEST_F(SetCommand, NeverHarmsAnAbsurdNetworkThatItCannotRepair) {
  for (const char* layers : {"-5", "2147483647", "x", ""}) {
    PutNetwork();
    SetLine(3, layers);
    const RunResult result = Run({"set", "test.net", "--name", "Other"});
    EXPECT_TRUE(result.status == 0 || result.status == 1) << layers << ": " << result.status;
    if (result.status == 1) {
      EXPECT_EQ(Line(3), layers);
    }
  }
  PutNetwork();
  SetLine(3, "11");
  const RunResult result = Run({"set", "test.net", "--layers", "2,3,1"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err, "tarn-cli: Error - Too many layers requested, adjust Layer Count!\n");
}

TEST_F(SetCommand, OpensWithTheMessagesOfTheOpenCommand) {
  RunResult result = Run({"set", "gone.net", "--eta", "0.1"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err, "tarn-cli: File Not Found!\n");
  EXPECT_FALSE(Exists("gone.net"));
  result = Run({"set", "data.txt", "--eta", "0.1"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err, "tarn-cli: Not a valid Tarn Network Definition File!\n");
}

TEST_F(SetCommand, AnswersForAFileThatCannotBeWritten) {
  RunResult result = Run({"set", "test.net", "-o", "nowhere/a.net"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err, "tarn-cli: Tarn Network File Error Detected\n");
  result = Run({"set", "test.net", "-o", "/dev/full"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err, "tarn-cli: Tarn Network File Error Detected\n");
}

}  // namespace
}  // namespace tarn
