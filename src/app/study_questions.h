#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>

#include "app/dialogs.h"
#include "browser/target_checks.h"
#include "engine/network.h"
#include "netgraph/contour_analysis.h"
#include "netgraph/node_selection.h"

// What the graph and report commands ask before they begin. Nodes are counted from 0. Nothing is
// returned where the user has left a question.

namespace tarn {

bool AsksYes(Dialogs& dialogs, const PlotQuestion& question);

// The node of 1..count that is nearest to the number entered.
std::optional<size_t> AskForNode(Dialogs& dialogs, const NodePrompt& prompt, int32_t count);

// All output nodes, or the one that is asked for.
std::optional<std::deque<size_t>> AskForOutputs(Dialogs& dialogs, const PlotQuestion& question,
                                                const Network& network);

// Asks for what the network leaves open, and tells why it cannot be plotted.
std::optional<ContourNodes> AskForContourNodes(Dialogs& dialogs, const Network& network);

// In the units of the targets; the network's own is offered.
std::optional<float> AskForTolerance(Dialogs& dialogs, const Network& network);

// Those that were entered, which may be none.
std::optional<Thresholds> AskForThresholds(Dialogs& dialogs);

// Every node of so many, ascending.
std::deque<size_t> AllNodes(int32_t count);

}  // namespace tarn
