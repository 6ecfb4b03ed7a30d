#include <array>
#include <cstdint>
#include <fmt/printf.h>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "cli/commands.h"
#include "cli/common.h"
#include "cli/kinds.h"
#include "cli/studied_network.h"
#include "netgraph/contour_analysis.h"
#include "netgraph/graph_file.h"
#include "netgraph/hidden_node_analyzer.h"
#include "netgraph/history_plots.h"
#include "netgraph/input_interrogator.h"
#include "netgraph/node_selection.h"
#include "netgraph/pattern_plots.h"

namespace tarn {
namespace {

constexpr std::string_view kCommand = "plot";

enum class Plot { kHistory, kScatter, kOutputs, kError, kInputs, kInterrogator, kHidden, kContour };

struct Kind {
  std::string_view name;
  Plot plot;
  HistoryKind history = HistoryKind::kRms;  // of kHistory
};

constexpr std::array<Kind, 14> kKinds = {
    {{"rms", Plot::kHistory, HistoryKind::kRms},
     {"test-rms", Plot::kHistory, HistoryKind::kTestRms},
     {"learn-rate", Plot::kHistory, HistoryKind::kLearnRate},
     {"correlation", Plot::kHistory, HistoryKind::kCorrelation},
     {"test-correlation", Plot::kHistory, HistoryKind::kTestCorrelation},
     {"tolerance", Plot::kHistory, HistoryKind::kTolerance},
     {"test-tolerance", Plot::kHistory, HistoryKind::kTestTolerance},
     {"scatter", Plot::kScatter},
     {"outputs", Plot::kOutputs},
     {"error", Plot::kError},
     {"inputs", Plot::kInputs},
     {"interrogator", Plot::kInterrogator},
     {"hidden", Plot::kHidden},
     {"contour", Plot::kContour}}};

// As typed.
struct PlotArguments {
  std::string kind;
  StudiedNetwork network;
  std::string history;
  std::optional<int32_t> node;
  std::optional<int32_t> first_input;
  std::optional<int32_t> second_input;
  std::optional<int> width;
  std::optional<int> height;
  std::string output;

  bool IsPicture() const { return output.ends_with(".svg"); }
};

bool ComparesWithTargets(Plot plot) {
  return plot == Plot::kScatter || plot == Plot::kError;
}

bool TakesNode(Plot plot) {
  return plot != Plot::kHistory && plot != Plot::kScatter;
}

ExitStatus CheckHistoryOptions(const PlotArguments& arguments, bool wanted) {
  if (!wanted && !arguments.history.empty()) {
    return RefuseUsage(kCommand, "--history is of the plots against iterations alone");
  }
  if (wanted && arguments.history.empty()) {
    return RefuseUsage(kCommand,
                       "plot " + arguments.kind + " reads an error history: --history is missing");
  }
  if (wanted && arguments.network.IsRecall()) {
    return RefuseUsage(kCommand,
                       "plot " + arguments.kind + " takes no --inputs: it reads an error history");
  }
  return kDone;
}

ExitStatus CheckNodeOptions(const PlotArguments& arguments, Plot plot) {
  if (arguments.node && !TakesNode(plot)) {
    return RefuseUsage(kCommand, "plot " + arguments.kind + " takes no --node");
  }
  if ((arguments.first_input || arguments.second_input) && plot != Plot::kContour) {
    return RefuseUsage(kCommand, "--first-input and --second-input are of the contour plot alone");
  }
  return kDone;
}

ExitStatus CheckArguments(const PlotArguments& arguments, Plot plot) {
  const ExitStatus history = CheckHistoryOptions(arguments, plot == Plot::kHistory);
  if (history != kDone) return history;
  const ExitStatus nodes = CheckNodeOptions(arguments, plot);
  if (nodes != kDone) return nodes;
  if (ComparesWithTargets(plot) && arguments.network.IsRecall() &&
      arguments.network.data.targets.empty()) {
    return RefuseUsage(kCommand,
                       "plot " + arguments.kind + " compares with targets: --targets is missing");
  }
  if (!arguments.IsPicture() && !arguments.output.ends_with(".csv")) {
    return RefuseUsage(kCommand, "the output is a picture, FILE.svg, or a table, FILE.csv");
  }
  if (!arguments.IsPicture() && (arguments.width || arguments.height)) {
    return RefuseUsage(kCommand, "--width and --height are of a picture, FILE.svg");
  }
  return kDone;
}

// The node meant by an option, from 0: the nearest that there is, as where a window asks.
size_t Node(std::string_view option, const std::optional<int32_t>& number, size_t otherwise,
            int32_t count) {
  const int32_t wanted = number.value_or(static_cast<int32_t>(otherwise) + 1);
  const size_t node = ChooseNode(std::to_string(wanted), count);
  if (number && static_cast<size_t>(*number) != node + 1) {
    PrintNotices(
        {fmt::sprintf("%s %d is taken as %d: there are %d", option, *number, node + 1, count)});
  }
  return node;
}

size_t OutputNode(const PlotArguments& arguments, const Network& network) {
  return Node("--node", arguments.node, 0, OutputLayer(network).nUnits);
}

// Runs an analysis to its end; its progress on a terminal.
void Complete(Analysis& analysis) {
  constexpr int64_t kSliceMs = 50;
  const Clock& clock = SteadyClock();
  ProgressLine progress(true, clock.NowMs());
  while (!analysis.RunFor(kSliceMs, clock)) {
    if (!analysis.progress().empty()) progress.ShowText(analysis.progress(), clock.NowMs());
  }
}

ExitStatus Interrogate(const PlotArguments& arguments, const Network& network, Graph& graph) {
  const size_t output = OutputNode(arguments, network);
  InputInterrogator interrogator(network);
  Complete(interrogator);
  graph = ContributionPlot(interrogator, network, output);
  return kDone;
}

ExitStatus AnalyzeHidden(const PlotArguments& arguments, const Network& network, Graph& graph) {
  const size_t layer = Node("--node", arguments.node, 0, network.nLayers - 2) + 1;
  const std::optional<Message> refused = CheckHiddenLayer(network, layer);
  if (refused) return Report(Status::Failure(refused->text));
  HiddenNodeAnalyzer analyzer(network);
  Complete(analyzer);
  graph = HiddenNodePlot(analyzer, layer);
  return kDone;
}

ContourNodes ChooseContourNodes(const PlotArguments& arguments, const Network& network) {
  ContourNodes nodes;
  if (AsksForInputs(network)) {
    const int32_t inputs = network.layers[0].nUnits;
    nodes.first_input = Node("--first-input", arguments.first_input, 0, inputs);
    nodes.second_input =
        Node("--second-input", arguments.second_input, nodes.first_input + 1, inputs);
  } else if (arguments.first_input || arguments.second_input) {
    PrintNotices({"the network has two inputs: the plot is over both, in their order"});
  }
  nodes.output = OutputNode(arguments, network);
  return nodes;
}

ExitStatus TraceContours(const PlotArguments& arguments, const Network& network, Graph& graph) {
  std::optional<Message> refused = CheckContourNetwork(network);
  ContourNodes nodes;
  if (!refused) {
    nodes = ChooseContourNodes(arguments, network);
    refused = CheckContourNodes(nodes);
  }
  if (refused) return Report(Status::Failure(refused->text));
  ContourAnalysis analysis(network, nodes);
  Complete(analysis);
  graph = ContourPlot(analysis.surface(), network, nodes);
  return kDone;
}

ExitStatus Build(const PlotArguments& arguments, const Kind& kind, const Network& network,
                 Graph& graph) {
  switch (kind.plot) {
    case Plot::kHistory:
      return Report(BuildHistoryPlot(kind.history, arguments.history, graph));
    case Plot::kScatter:
      graph = ScatterPlot(network);
      return kDone;
    case Plot::kOutputs:
      graph = OutputsPlot(network, OutputNode(arguments, network));
      return kDone;
    case Plot::kError:
      graph = ErrorPlot(network, OutputNode(arguments, network));
      return kDone;
    case Plot::kInputs:
      graph = InputsPlot(network, Node("--node", arguments.node, 0, network.layers[0].nUnits));
      return kDone;
    case Plot::kInterrogator:
      return Interrogate(arguments, network, graph);
    case Plot::kHidden:
      return AnalyzeHidden(arguments, network, graph);
    case Plot::kContour:
      return TraceContours(arguments, network, graph);
  }
  return kFailed;
}

constexpr int Pixels(double length) {
  return static_cast<int>(length);
}

ExitStatus Save(const PlotArguments& arguments, const Graph& graph) {
  if (!arguments.IsPicture()) return Report(SaveTable(graph, arguments.output));
  const int width = arguments.width.value_or(Pixels(kPictureSize.width));
  const int height = arguments.height.value_or(Pixels(kPictureSize.height));
  const Size size = {static_cast<double>(width), static_cast<double>(height)};
  return Report(SavePicture(graph, size, arguments.output));
}

ExitStatus RunPlot(PlotArguments& arguments) {
  const Kind& kind = *FindKind(kKinds, arguments.kind);
  const ExitStatus checked = CheckArguments(arguments, kind.plot);
  if (checked != kDone) return checked;
  StudiedNetwork& network = arguments.network;
  CompletePaths({&network.path, &arguments.history, &arguments.output});
  Session session;
  const ExitStatus loaded =
      kind.plot == Plot::kHistory ? Open(session, network.path) : LoadStudied(network, session);
  if (loaded != kDone) return loaded;
  const ExitStatus safe =
      KeepInputsSafe({&arguments.output},
                     {&network.path, &network.data.inputs, &network.data.targets,
                      &arguments.history, &session.network.PatName, &session.network.TargName});
  if (safe != kDone) return safe;
  Graph graph;
  const ExitStatus built = Build(arguments, kind, session.network, graph);
  return built == kDone ? Save(arguments, graph) : built;
}

void AddNodeOptions(CLI::App& command, PlotArguments& arguments) {
  const auto add = [&command](const char* name, std::optional<int32_t>& value, const char* help) {
    command.add_option(name, value, help)->type_name("N");
  };
  add("--node", arguments.node,
      "The output node, for inputs the input node, for hidden the hidden layer; 1 unless given");
  add("--first-input", arguments.first_input,
      "Of the contour plot: the input along the x axis; 1 unless given");
  add("--second-input", arguments.second_input,
      "Of the contour plot: the input along the y axis; the next one unless given");
}

void AddPictureOptions(CLI::App& command, PlotArguments& arguments) {
  command.add_option("--width", arguments.width, "Pixels; 800 unless given")
      ->type_name("W")
      ->check(CLI::Range(Pixels(kSmallestPicture.width), Pixels(kLargestPicture.width)));
  command.add_option("--height", arguments.height, "Pixels; 600 unless given")
      ->type_name("H")
      ->check(CLI::Range(Pixels(kSmallestPicture.height), Pixels(kLargestPicture.height)));
  command.add_option("-o,--output", arguments.output, "The picture, FILE.svg, or table, FILE.csv")
      ->type_name("FILE")
      ->required();
}

}  // namespace

void AddPlotCommand(CLI::App& program, ExitStatus& exit_status) {
  CLI::App& command = *program.add_subcommand(std::string(kCommand), "Draw a graph of a network");
  const auto arguments = std::make_shared<PlotArguments>();
  AddKindArgument(command, kKinds, std::string(kCommand),
                  "rms, test-rms, learn-rate, correlation, test-correlation, tolerance or "
                  "test-tolerance, of an error history; scatter, outputs, error, inputs, "
                  "interrogator, hidden or contour, of the network",
                  arguments->kind);
  AddStudiedNetwork(command, arguments->network);
  command
      .add_option("--history", arguments->history,
                  "The error history that 'train --history' has kept")
      ->type_name("FILE");
  AddNodeOptions(command, *arguments);
  AddPictureOptions(command, *arguments);
  command.footer(
      "Without --inputs the plot is of the network's own training and test data, with\n"
      "it of a run of the trained network over these inputs. Examples:\n"
      "  tarn-cli plot scatter trained.net -o scatter.svg\n"
      "  tarn-cli plot rms trained.net --history trained.his -o rms.csv");
  command.callback([arguments, &exit_status] { exit_status = RunPlot(*arguments); });
}

}  // namespace tarn
