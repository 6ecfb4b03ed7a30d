#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>
#include <vector>

#include "cli/cli_test.h"

namespace tarn {
namespace {

class PlotCommand : public CliTest {
 protected:
  PlotCommand() { PutTrainedNetwork(); }

  // What the plot writes to a file of that ending.
  std::string Plot(std::vector<std::string> arguments, const std::string& ending = ".csv") {
    arguments.insert(arguments.begin(), "plot");
    arguments.insert(arguments.end(), {"-o", "plot" + ending});
    Do(arguments);
    return Read("plot" + ending);
  }

  void PutHistory() { Do({"train", "test.net", "--no-save", "--quiet", "--history", "test.his"}); }

  void ExpectRefusal(std::vector<std::string> arguments, const std::string& message,
                     int status = 2) {
    arguments.insert(arguments.begin(), "plot");
    const RunResult result = Run(arguments);
    EXPECT_EQ(result.status, status);
    EXPECT_EQ(result.err, "tarn-cli: " + message + "\n");
    EXPECT_EQ(result.out, "");
  }
  // The same for a plot.csv that is not written then.
  void ExpectNoTable(std::vector<std::string> arguments, const std::string& message,
                     int status = 2) {
    arguments.insert(arguments.end(), {"-o", "plot.csv"});
    ExpectRefusal(arguments, message, status);
    EXPECT_FALSE(Exists("plot.csv"));
  }
};

constexpr const char* kHelp = "; see 'tarn-cli plot --help'";

TEST_F(PlotCommand, DrawsEveryKindAsTableAndPicture) {
  PutHistory();
  for (const char* kind : {"rms", "test-rms", "learn-rate", "correlation", "test-correlation",
                           "tolerance", "test-tolerance"}) {
    const std::string csv = Plot({kind, "test.net", "--history", "test.his"});
    EXPECT_TRUE(csv.starts_with("title,")) << kind;
    // Iterations 1, 10 and 20.
    EXPECT_EQ(Lines(csv), 7) << csv;
    EXPECT_THAT(Plot({kind, "test.net", "--history", "test.his"}, ".svg"),
                testing::HasSubstr("class=\"curve\""));
  }
  for (const char* kind :
       {"scatter", "outputs", "error", "inputs", "interrogator", "hidden", "contour"}) {
    EXPECT_TRUE(Plot({kind, "test.net"}).starts_with("title,")) << kind;
    const std::string svg = Plot({kind, "test.net"}, ".svg");
    EXPECT_TRUE(svg.starts_with("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg ")) << kind;
    EXPECT_TRUE(svg.ends_with("</svg>\n")) << kind;
  }
}

TEST_F(PlotCommand, WritesTheGraphInLines) {
  EXPECT_TRUE(Plot({"inputs", "test.net", "--node", "2"})
                  .starts_with("title,Input Node 2\nx-label,Input Sequence Number\n"
                               "y-label,Node Value\ncurve,Training Patterns,#0000ff,0,1\n"));
  const std::string contour = Plot({"contour", "test.net"});
  EXPECT_TRUE(
      contour.starts_with("title,Input nodes 1, 2 Influence on Output node 1\n"
                          "x-label,Input Node 1\ny-label,Input Node 2\n"
                          "range,0,3,0,2\ngrid\n"))
      << contour.substr(0, 200);
  EXPECT_EQ(Lines(contour), 45);
}

TEST_F(PlotCommand, LooksAtNewInputsInRecallMode) {
  const std::string recalled = Plot({"outputs", "test.net", "--inputs", "data.txt"});
  EXPECT_THAT(recalled, testing::HasSubstr("\ncurve,Network Outputs,#009600,0,1\n"));
  EXPECT_THAT(recalled, testing::Not(testing::HasSubstr("Targets")));
  EXPECT_THAT(Plot({"scatter", "test.net", "--inputs", "data.txt", "--targets", "data.txt",
                    "--targets-column", "3"}),
              testing::HasSubstr("\ncurve,Optimal Agreement,#ff0000,0,1\n"));
}

TEST_F(PlotCommand, DrawsAtTheSizeAsked) {
  EXPECT_THAT(Plot({"scatter", "test.net"}, ".svg"),
              testing::HasSubstr(" width=\"800\" height=\"600\" viewBox=\"0 0 800 600\""));
  EXPECT_THAT(Plot({"scatter", "test.net", "--width", "300", "--height", "6000"}, ".svg"),
              testing::HasSubstr(" width=\"300\" height=\"6000\" viewBox=\"0 0 300 6000\""));
  for (const std::string width : {"299", "8001", "wide"}) {
    const RunResult result =
        Run({"plot", "scatter", "test.net", "--width", width, "-o", "plot.svg"});
    EXPECT_EQ(result.status, 2) << width;
    EXPECT_THAT(result.err, testing::StartsWith("tarn-cli: --width: "));
  }
}

TEST_F(PlotCommand, TakesTheNearestNodeWithANotice) {
  const std::string first = Plot({"outputs", "test.net"});
  const RunResult result = Run({"plot", "outputs", "test.net", "--node", "7", "-o", "nearest.csv"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err, "tarn-cli: notice: --node 7 is taken as 1: there are 1\n");
  EXPECT_EQ(Read("nearest.csv"), first);
}

TEST_F(PlotCommand, LeavesTheNetworkFileAlone) {
  const std::string before = Read("test.net");
  Plot({"interrogator", "test.net"});
  EXPECT_EQ(Read("test.net"), before);
}

TEST_F(PlotCommand, RefusesOptionsThatDoNotBelongTogether) {
  ExpectNoTable({"scatter", "test.net", "--node", "1"},
                std::string("plot scatter takes no --node") + kHelp);
  ExpectNoTable(
      {"hidden", "test.net", "--first-input", "1"},
      std::string("--first-input and --second-input are of the contour plot alone") + kHelp);
  ExpectNoTable({"scatter", "test.net", "--history", "test.his"},
                std::string("--history is of the plots against iterations alone") + kHelp);
  ExpectNoTable({"rms", "test.net"},
                std::string("plot rms reads an error history: --history is missing") + kHelp);
  ExpectNoTable({"rms", "test.net", "--history", "test.his", "--inputs", "data.txt"},
                std::string("plot rms takes no --inputs: it reads an error history") + kHelp);
  ExpectNoTable({"error", "test.net", "--inputs", "data.txt"},
                std::string("plot error compares with targets: --targets is missing") + kHelp);
  ExpectNoTable({"scatter", "test.net", "--width", "400"},
                std::string("--width and --height are of a picture, FILE.svg") + kHelp);
  ExpectRefusal({"scatter", "test.net", "-o", "plot.png"},
                std::string("the output is a picture, FILE.svg, or a table, FILE.csv") + kHelp);
  ExpectNoTable({"pie", "test.net"},
                std::string("KIND: 'pie' is no kind of plot; there are rms test-rms learn-rate "
                            "correlation test-correlation tolerance test-tolerance scatter "
                            "outputs error inputs interrogator hidden contour") +
                    kHelp);
}

TEST_F(PlotCommand, AnswersWhereThereIsNothingToDraw) {
  ExpectNoTable({"rms", "test.net", "--history", "none.his"}, "The error history cannot be read",
                1);
  ExpectNoTable({"scatter", "none.net"}, "File Not Found!", 1);
  PutNetwork("untrained.net");
  Do({"set", "untrained.net", "--layers", "2,1,1"});
  ExpectNoTable({"hidden", "untrained.net", "--seed", "1"},
                "Hidden layer 1 has a single node: there is nothing to compare", 1);
  Do({"set", "untrained.net", "--layers", "1,2,1"});
  ExpectNoTable({"contour", "untrained.net", "--seed", "1"},
                "Requires at least two inputs - aborting!", 1);
  Do({"set", "untrained.net", "--layers", "3,2,1"});
  ExpectNoTable(
      {"contour", "untrained.net", "--seed", "1", "--first-input", "3", "--second-input", "3"},
      "Input node selection error - aborting!", 1);
}

TEST_F(PlotCommand, NeverWritesOverWhatItReads) {
  PutHistory();
  Write("data.csv", Read("data.txt"));
  const std::string before = Read("data.csv");
  const RunResult result =
      Run({"plot", "outputs", "test.net", "--inputs", "data.csv", "-o", "data.csv"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(Read("data.csv"), before);
}

TEST_F(PlotCommand, TellsThatThePictureCannotBeWritten) {
  ExpectRefusal({"scatter", "test.net", "-o", "nowhere/plot.svg"}, "The graph cannot be written",
                1);
}

}  // namespace
}  // namespace tarn
