#pragma once

#include <cstdint>

#include "engine/network.h"

namespace tarn {

// The size of a network in a few numbers.
struct NetworkSummary {
  int64_t input_nodes = 0;
  int64_t hidden_nodes = 0;  // of all hidden layers
  int64_t output_nodes = 0;
  int64_t connections = 0;  // those of biases included, removed ones not
};

// Needs the network's arrays.
NetworkSummary Summarize(const Network& network);

}  // namespace tarn
