#pragma once

#include <cstdint>

#include "engine/network.h"

namespace tarn {

// Propagates one pattern (0..nPats-1) through the network: for every node j of every computed
// layer, from the second on, with the activations a of the layer below,
//   x = -bias_j - w_j0 a_0 - w_j1 a_1 - ...     in single precision, in this order,
// then the layer's transfer function of -x, stored in the layer's activations of the pattern.
// Removed connections take part with the weight that they hold. A layer whose transfer code is
// none of the four keeps its activations.
void Forward(Network& network, int32_t pattern);

// The same, and stores the transfer functions' derivatives in the layers.
void ForwardWithDerivatives(Network& network, int32_t pattern);

}  // namespace tarn
