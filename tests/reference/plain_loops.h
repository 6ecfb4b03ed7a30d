#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "engine/network.h"

// The engine's arithmetic in plain loops: the definition that the kernels are held against bit
// for bit, and what they are measured beside.

namespace tarn::reference {

// Propagates one pattern (0..nPats-1) through the network: for every node j of every computed
// layer, from the second on, with the activations a of the layer below,
//   x = -bias_j - w_j0 a_0 - w_j1 a_1 - ...     in single precision, in this order,
// then the layer's transfer function of -x, stored in the layer's activations of the pattern.
// Removed connections take part with the weight that they hold. A layer whose transfer code is
// none of the four keeps its activations.
void Forward(Network& network, int32_t pattern);

// The same, and stores the transfer functions' derivatives in the layers.
void ForwardWithDerivatives(Network& network, int32_t pattern);

// The weight update, one group of patterns at a time: ClearGradients, then for each pattern
// ForwardWithDerivatives, Backpropagate and AccumulateGradients, then UpdateWeights. All of it
// in single precision, every product and sum rounded on its own, sums by ascending index.

// The gradient sums of one layer.
struct LayerSums {
  Matrix weight_gradients;            // nUnits x prev
  std::vector<float> bias_gradients;  // nUnits
};
using GradientSums = std::array<LayerSums, kMaxLayers>;

// All gradient sums 0, in the shape of the network.
void ClearGradients(const Network& network, GradientSums& sums);

// The deltas of the pattern last propagated with derivatives d. Output nodes, with targets t and
// activations a:
//   delta_j = (t_j - a_j) d_j
// Hidden nodes, from the last hidden layer down, over the nodes j of the layer above:
//   delta_i = (sum of delta_j w_ji) d_i
// Bias weights take no part; removed connections do, with the weight that they hold.
void Backpropagate(Network& network, int32_t pattern);

// Adds the pattern's gradients to the sums of the group, for every node j and every node i of
// the layer below:
//   bias_gradient_j += delta_j
//   gradient_ji     += (FastProp delta_i + a_i) delta_j
// The deltas of the input layer are 0, so FAST-Prop has no effect into the first hidden layer.
void AccumulateGradients(const Network& network, GradientSums& sums, int32_t pattern);

// Moves every weight, bias weights (never masked) included, with the change kept as momentum:
//   change = Alpha change + Eta gradient,  weight += change
// Unless the network is fully connected the last step is weight += change mask: a removed
// connection keeps its weight while its change goes on. Gradient sums are not divided by the
// size of the group.
void UpdateWeights(Network& network, const GradientSums& sums);

}  // namespace tarn::reference
