#pragma once

#include <cstddef>
#include <vector>

#include "engine/forward_probe.h"
#include "engine/network.h"
#include "netgraph/analysis.h"
#include "netgraph/contour_surface.h"
#include "netgraph/graph.h"

namespace tarn {

// The nodes of a contour plot, from 0; two different inputs.
struct ContourNodes {
  size_t first_input = 0;
  size_t second_input = 1;
  size_t output = 0;
};

// An output node over the ranges of two inputs, all others held at the values of the pattern in
// the middle of the file. The outputs are the network's own, not turned into data units. The
// network outlives it. Throws std::bad_alloc.
class ContourAnalysis : public Analysis {
 public:
  ContourAnalysis(const Network& network, const ContourNodes& nodes);

  const ContourSurface& surface() const { return m_surface; }

 protected:
  bool Advance() override;

 private:
  const Network& m_network;
  ContourNodes m_nodes;
  ForwardProbe m_probe;
  std::vector<float> m_reference;
  ContourSurface m_surface;
  size_t m_point = 0;  // the next one of the grid
};

// The graph of a surface that is done: over the two inputs in data units.
Graph ContourPlot(const ContourSurface& surface, const Network& network, const ContourNodes& nodes);

}  // namespace tarn
