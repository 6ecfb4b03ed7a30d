#pragma once

#include <cstdint>

#include "engine/network.h"

namespace tarn {

// The weight update, one group of patterns at a time: ClearGradients, then for each pattern
// ForwardWithDerivatives, Backpropagate and AccumulateGradients, then UpdateWeights. All of it
// in single precision, every product and sum rounded on its own, sums by ascending index.

// All gradient sums 0.
void ClearGradients(Network& network);

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
void AccumulateGradients(Network& network, int32_t pattern);

// Moves every weight, bias weights (never masked) included, with the change kept as momentum:
//   change = Alpha change + Eta gradient,  weight += change
// Unless the network is fully connected the last step is weight += change mask: a removed
// connection keeps its weight while its change goes on. Gradient sums are not divided by the
// size of the group.
void UpdateWeights(Network& network);

}  // namespace tarn
