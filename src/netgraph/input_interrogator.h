#pragma once

#include <cstddef>
#include <vector>

#include "engine/forward_probe.h"
#include "engine/matrix.h"
#include "engine/network.h"
#include "netgraph/analysis.h"
#include "netgraph/graph.h"

namespace tarn {

// How much each input node moves each output node. For every pattern in order, with B its outputs:
//   C_ij += |output_j - B_j| with input i at its low value, then with it at its high value
// low and high being 0 and 1, or 0.15 and 0.85 where inputs are normalized. Then each C_ij is
// divided by the sum of C over the inputs where that is above 0. Single precision throughout. The
// network outlives it. Throws std::bad_alloc.
class InputInterrogator : public Analysis {
 public:
  explicit InputInterrogator(const Network& network);

  // To output node `output`, from 0, once it is done: shares by input node, their sum 1, or all 0
  // when no input moves that output.
  std::vector<float> Contributions(size_t output) const;

 protected:
  bool Advance() override;

 private:
  void FillRow(size_t pass, size_t row);
  void TakeRow(size_t pass, size_t row);
  size_t PassesOfPattern() const { return 1 + 2 * m_inputs; }

  const Network& m_network;
  size_t m_inputs;
  size_t m_passes;    // of all patterns: for each its own inputs, every input low, every one high
  size_t m_pass = 0;  // the next one
  ForwardProbe m_probe;
  std::vector<float> m_base;  // the outputs of the pattern under way
  Matrix m_contributions;     // inputs x outputs
};

// The graph of an output node, from 0.
Graph ContributionPlot(const InputInterrogator& interrogator, const Network& network,
                       size_t output);

}  // namespace tarn
