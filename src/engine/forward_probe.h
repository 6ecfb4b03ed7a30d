#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "engine/network.h"
#include "engine/packed_network.h"

namespace tarn {

// Runs input vectors of its owner's through a network, with the forward pass of the engine and the
// weights that the network has when this is made. The network itself is neither touched nor
// needed afterwards. Throws std::bad_alloc when memory is short.
class ForwardProbe {
 public:
  // Room for as many vectors as make good use of the machine, at most `most_rows` (1 at least).
  ForwardProbe(const Network& network, size_t most_rows);
  ForwardProbe(const ForwardProbe&) = delete;
  ForwardProbe& operator=(const ForwardProbe&) = delete;

  size_t rows() const { return m_rows.size(); }

  // One input vector, in the network's own units; to be filled before Run.
  std::span<float> Inputs(size_t row) { return m_network.layers[0].activations.Row(row); }
  // Propagates rows 0..count-1.
  void Run(size_t count);
  // What a layer, from 1, gives for a row of the last run.
  std::span<const float> Activations(size_t layer, size_t row) const {
    return m_network.layers[layer].activations.Row(row);
  }
  std::span<const float> Outputs(size_t row) const {
    return OutputLayer(m_network).activations.Row(row);
  }

 private:
  Network m_network;  // the shape and the weights alone
  std::vector<int32_t> m_rows;
  PackedNetwork m_packed;
};

}  // namespace tarn
