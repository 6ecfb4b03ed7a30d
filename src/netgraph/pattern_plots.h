#pragma once

#include <cstddef>

#include "engine/network.h"
#include "netgraph/graph.h"

// Plots of a loaded network's patterns: pattern numbers from 1 on the x axis, training set and
// test set as curves of their own where there is a test set. Nodes are counted from 0. All throw
// std::bad_alloc.

namespace tarn {

// Targets against outputs of all nodes, in the network's own units. The network has targets.
Graph ScatterPlot(const Network& network);

// An output node's outputs and, where there are any, targets in data units.
Graph OutputsPlot(const Network& network, size_t node);

// Output minus target of an output node in data units. The network has targets.
Graph ErrorPlot(const Network& network, size_t node);

// The values of an input node in data units.
Graph InputsPlot(const Network& network, size_t node);

}  // namespace tarn
