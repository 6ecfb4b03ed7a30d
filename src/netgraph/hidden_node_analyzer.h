#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "engine/forward_probe.h"
#include "engine/network.h"
#include "netgraph/analysis.h"
#include "netgraph/graph.h"

namespace tarn {

// How much the activity of each hidden node varies over the patterns, as a share of its layer. In
// single precision, pattern after pattern, with the activations a of all patterns:
//   mean_i = sum of a_i / training patterns   (the divisor leaves the test set out, the sum not)
//   S_i = sum of (a_i - mean_i)^2, divided by the sum of S over the layer where that is above 0
// The mean of activations that are all the same, without a test set, is that activation: a rounded
// sum would leave a rest that looks like activity.
// The network outlives it. Throws std::bad_alloc.
class HiddenNodeAnalyzer : public Analysis {
 public:
  explicit HiddenNodeAnalyzer(const Network& network);

  // Of hidden layer `layer`, from 1, once it is done: shares by node, their sum 1, or all 0 in a
  // layer whose nodes are constant.
  const std::vector<float>& Shares(size_t layer) const { return m_layers[layer - 1].squares; }

 protected:
  bool Advance() override;

 private:
  struct HiddenLayer {
    std::vector<float> firsts;  // of the first pattern
    std::vector<bool> varies;
    std::vector<float> sums;  // the means after the first round
    std::vector<float> squares;

    void AddToSums(std::span<const float> activations, bool is_first);
    void AddToSquares(std::span<const float> activations);
  };

  void Add(size_t pattern, size_t row);
  void ToMeans(HiddenLayer& layer) const;
  void EndRound();

  const Network& m_network;
  ForwardProbe m_probe;
  std::vector<HiddenLayer> m_layers;
  bool m_second_round = false;
  int32_t m_pattern = 0;
};

// The graph of a hidden layer of two nodes at least; `layer` from 1.
Graph HiddenNodePlot(const HiddenNodeAnalyzer& analyzer, size_t layer);

}  // namespace tarn
