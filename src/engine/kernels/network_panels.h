#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace tarn::kernels {

// The weights of a layer are kept by source node, in panels of as many receiving nodes as the
// registers of the machine take: panel after panel, a row for each node of the layer below and
// one for the bias in each, the row as wide as the panel. Every lane of a vector belongs to one
// receiving node and runs that node's own sum over its sources in ascending order. The last
// panel is narrower, but its rows too are whole vectors; what stands in the lanes beyond the
// last node is never looked at.
struct PanelShape {
  size_t lanes = 1;        // floats of a vector
  size_t panel_nodes = 1;  // nodes of a whole panel, a multiple of lanes

  size_t Padded(size_t nodes) const { return (nodes + lanes - 1) / lanes * lanes; }
  size_t Width(size_t padded_nodes, size_t first) const {
    return padded_nodes - first < panel_nodes ? padded_nodes - first : panel_nodes;
  }
};

// Rows of floats that lie anywhere, one for each pattern of a batch.
using ConstRows = const float* const*;

// One computed layer as the kernels see it; nothing is owned. "Padded" counts are whole vectors.
struct LayerPanels {
  size_t sources = 0;  // nodes of the layer below
  size_t nodes = 0;
  size_t padded_sources = 0;
  size_t padded_nodes = 0;
  int32_t code = 0;  // transfer function

  // Panels, (sources + 1) x padded_nodes floats each, aligned to whole vectors.
  float* weights = nullptr;
  float* changes = nullptr;
  float* gradients = nullptr;    // sums over the patterns of a group
  const float* masks = nullptr;  // 1 or 0, 1 for the bias; null in a full network
  // The weights by node, nodes x padded_sources, for the deltas of the layer below; null in the
  // first computed layer, below which there are none.
  float* transposed = nullptr;

  // By pattern of the batch. Rows of a layer of one panel stand side by side without gaps: the
  // transfer function runs over many narrow rows in whole vectors. Others are padded.
  size_t stride = 0;             // of nets, outputs and derivatives: nodes or padded_nodes
  ConstRows inputs = nullptr;    // outputs of the layer below
  float* outputs = nullptr;      // batch x stride, and a panel of room
  float* derivatives = nullptr;  // likewise
  float* deltas = nullptr;       // batch x padded_nodes
  ConstRows factors = nullptr;   // what the deltas are multiplied with: inputs + FAST-Prop term
  float* own_factors = nullptr;  // those of the layer above, batch x padded_nodes; null at the top
};

inline constexpr size_t kMostComputedLayers = 9;

struct NetworkPanels {
  PanelShape shape;
  size_t layer_count = 0;
  std::array<LayerPanels, kMostComputedLayers> layers;
  ConstRows targets = nullptr;
  // Room for negated net inputs: the largest stride x patterns of a call, and a panel more.
  float* nets = nullptr;
};

}  // namespace tarn::kernels
