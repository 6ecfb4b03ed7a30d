#include "netgraph/pattern_plots.h"

#include <fmt/printf.h>
#include <string>
#include <utility>

#include "data/normalization.h"
#include "engine/pattern_sets.h"

namespace tarn {
namespace {

// The frame of a scatter plot: what normalized values fill, with some room.
constexpr GraphRange kScatterRange = {-0.1F, 1.1F, -0.1F, 1.1F};
constexpr int kAgreementSteps = 100;

CURVE_DEF EmptyCurve(std::string name, Colour colour, CurveStyle style) {
  CURVE_DEF curve;
  curve.name = std::move(name);
  curve.colour = colour;
  curve.style = style;
  return curve;
}

void DrawAsMarkers(CURVE_DEF& curve) {
  curve.marker = kPointMarker;
  curve.mode = kMarkersOnly;
}

CurveStyle StyleOf(const PatternSet& set) {
  return set.is_test ? kDashedDiamond : kSolidCircle;
}

// Patterns of a random test set lie between those of the training set: a line would join what does
// not belong together.
bool IsSplitAtRandom(const Network& network) {
  return network.mode == Mode::kTraining && network.testPats > 0 && network.overMeth == kTestRandom;
}

// A curve over the patterns of a set, y = value(pattern).
template <typename Value>
CURVE_DEF SequenceCurve(const PatternSet& set, std::string name, Colour colour,
                        const Value& value) {
  CURVE_DEF curve = EmptyCurve(std::move(name), colour, StyleOf(set));
  curve.x.reserve(static_cast<size_t>(set.count));
  curve.y.reserve(static_cast<size_t>(set.count));
  for (int32_t k = 0; k < set.count; ++k) {
    const size_t p = set.Pattern(k);
    curve.x.push_back(static_cast<float>(p + 1));
    curve.y.push_back(value(p));
  }
  return curve;
}

CURVE_DEF ScatterCurve(const Network& network, const PatternSet& set) {
  CURVE_DEF curve = EmptyCurve(set.is_test ? "Test Patterns" : "Training Patterns",
                               set.is_test ? kGreen : kBlue, StyleOf(set));
  DrawAsMarkers(curve);
  for (int32_t k = 0; k < set.count; ++k) {
    const auto targets = network.targets.Row(set.Pattern(k));
    const auto outputs = OutputLayer(network).activations.Row(set.Pattern(k));
    curve.x.insert(curve.x.end(), targets.begin(), targets.end());
    curve.y.insert(curve.y.end(), outputs.begin(), outputs.end());
  }
  return curve;
}

CURVE_DEF OptimalAgreement() {
  CURVE_DEF curve = EmptyCurve("Optimal Agreement", kRed, kSolidCircle);
  for (int i = 0; i <= kAgreementSteps; ++i) {
    curve.x.push_back(static_cast<float>(i / static_cast<double>(kAgreementSteps)));
  }
  curve.y = curve.x;
  return curve;
}

std::string OutputsTitle(const Network& network, size_t node, bool targets) {
  const char* const what = targets ? "Targets/Outputs" : "Outputs";
  if (network.output_names.empty()) {
    return fmt::sprintf("Output Node %d - %s vs Pattern Number", node + 1, what);
  }
  return fmt::sprintf("Output %s - %s vs Pattern Number", network.output_names[node], what);
}

std::string ErrorName(const Network& network, const PatternSet& set, size_t node) {
  const char* const which = set.is_test ? "Test" : "Train";
  if (network.output_names.empty()) {
    return fmt::sprintf("%s Output - Target (Node %d)", which, node + 1);
  }
  return fmt::sprintf("%s Output - %s", which, network.output_names[node]);
}

}  // namespace

Graph ScatterPlot(const Network& network) {
  Graph graph;
  graph.title = network.targ_norm != 0 ? "Scatter Comparison of Normalized Targets vs. Net Outputs"
                                       : "Scatter Comparison of Targets vs. Network Outputs";
  graph.x_label = "Training Targets";
  graph.y_label = "Network Outputs";
  graph.range = kScatterRange;
  for (const PatternSet& set : PatternSets(network)) {
    graph.curves.push_back(ScatterCurve(network, set));
  }
  graph.curves.push_back(OptimalAgreement());
  return graph;
}

Graph OutputsPlot(const Network& network, size_t node) {
  const bool targets = HasTargets(network);
  const OutputScale scale(network, node);
  const Matrix& outputs = OutputLayer(network).activations;
  Graph graph;
  graph.title = OutputsTitle(network, node, targets);
  graph.x_label = "Pattern Sequence";
  graph.y_label = targets ? "Targets/Net Outputs" : "Network Outputs";
  const std::vector<PatternSet> sets = PatternSets(network);
  const bool divided = sets.size() > 1;
  for (const PatternSet& set : sets) {
    const char* const name = !divided      ? "Network Outputs"
                             : set.is_test ? "Test Outputs"
                                           : "Training Outputs";
    graph.curves.push_back(SequenceCurve(set, name, set.is_test ? kBlue : kGreen,
                                         [&](size_t p) { return scale(outputs.Row(p)[node]); }));
    if (IsSplitAtRandom(network)) DrawAsMarkers(graph.curves.back());
  }
  if (!targets) return graph;
  const PatternSet all = {{}, network.nPats, true, false};
  CURVE_DEF curve = SequenceCurve(all, divided ? "Training Set Targets" : "Network Targets", kRed,
                                  [&](size_t p) { return scale(network.targets.Row(p)[node]); });
  curve.style = kDottedCross;
  graph.curves.push_back(std::move(curve));
  return graph;
}

Graph ErrorPlot(const Network& network, size_t node) {
  const OutputScale scale(network, node);
  const Matrix& outputs = OutputLayer(network).activations;
  Graph graph;
  graph.title = "Targets - Network Output Error vs Input Sequence Number";
  graph.x_label = "Input Sequence";
  graph.y_label = "Error";
  for (const PatternSet& set : PatternSets(network)) {
    graph.curves.push_back(SequenceCurve(
        set, ErrorName(network, set, node), set.is_test ? kBlue : kGreen, [&](size_t p) {
          return scale(outputs.Row(p)[node]) - scale(network.targets.Row(p)[node]);
        }));
  }
  return graph;
}

Graph InputsPlot(const Network& network, size_t node) {
  const Matrix& inputs = network.layers[0].activations;
  Graph graph;
  graph.title = network.input_names.empty() ? fmt::sprintf("Input Node %d", node + 1)
                                            : fmt::sprintf("Input - %s", network.input_names[node]);
  graph.x_label = "Input Sequence Number";
  graph.y_label = "Node Value";
  for (const PatternSet& set : PatternSets(network)) {
    graph.curves.push_back(SequenceCurve(
        set, set.is_test ? "Test Patterns" : "Training Patterns", set.is_test ? kGreen : kBlue,
        [&](size_t p) { return InputToDataUnits(network, node, inputs.Row(p)[node]); }));
  }
  return graph;
}

}  // namespace tarn
