#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/status.h"
#include "engine/network.h"
#include "netgraph/contour_analysis.h"

// Which nodes a plot is of: what the user is asked, and what the answers mean. Windows ask; the
// command line takes the answers from its options.

namespace tarn {

// Answered by yes or no.
struct PlotQuestion {
  std::string_view caption;
  std::string_view text;
};

inline constexpr PlotQuestion kAllOutputsCompared = {"Output/Target Comparison Plots",
                                                     "Plot all output nodes?"};
inline constexpr PlotQuestion kAllOutputErrors = {"Output/Target Error Plots",
                                                  "Plot all output nodes?"};
inline constexpr PlotQuestion kAllOutputsInterrogated = {"Input Node Interrogator",
                                                         "Plot all output nodes?"};
inline constexpr PlotQuestion kAllInputs = {"Input Node Plots", "Plot all input nodes?"};
// After each of all the input plots.
inline constexpr PlotQuestion kContinueInputs = {"Tarn", "Continue plotting inputs?"};

// Answered by the number of a node, from 1.
struct NodePrompt {
  std::string_view caption;
  std::string_view prompt;
  std::string initial;  // the answer that is offered
};

NodePrompt OutputNodePrompt();
NodePrompt InputNodePrompt();
NodePrompt FirstInputPrompt();
// After the first one was chosen; `first_input` from 0.
NodePrompt SecondInputPrompt(size_t first_input);

// The node meant by an answer, from 0: the nearest of 1..count; what is no number counts as 0.
size_t ChooseNode(std::string_view answer, int32_t count);

// What the user is told of a hidden layer, from 1, that has nothing to compare: a single node.
std::optional<Message> CheckHiddenLayer(const Network& network, size_t layer);

// The contour plot of a network with two inputs does not ask for them, that of one with one output
// not for it.
bool AsksForInputs(const Network& network);
bool AsksForOutput(const Network& network);
// What the user is told when the network, or the choice of nodes, gives no contours.
std::optional<Message> CheckContourNetwork(const Network& network);
std::optional<Message> CheckContourNodes(const ContourNodes& nodes);

}  // namespace tarn
