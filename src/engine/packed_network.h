#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <hwy/aligned_allocator.h>
#include <memory>
#include <span>
#include <vector>

#include "engine/kernels/kernels.h"
#include "engine/network.h"
#include "engine/workers.h"

namespace tarn {

// A network's weights in the layout of the kernels, and room for a batch of patterns: the
// forward pass, the deltas and the weight update of many patterns at once. Activations are
// written to the record at once; weights, weight changes, derivatives and deltas by Publish.
//
// For every node j of every computed layer, from the second on, with the activations a of the
// layer below,
//   x = -bias_j - w_j0 a_0 - w_j1 a_1 - ...     in single precision, in this order,
// then the layer's transfer function of -x. Removed connections take part with the weight that
// they hold. A layer whose transfer code is none of the four keeps its activations.
//
// A group of patterns, from propagated to moved weights: for each batch of it
// ForwardWithDerivatives, Backpropagate and AddGradients, the last time with the step that the
// group ends with. In single precision, every product and sum rounded on its own, sums by
// ascending index and pattern after pattern:
//   output nodes: delta_j = (t_j - a_j) d_j
//   hidden nodes: delta_i = (sum of delta_j w_ji over the nodes j above) d_i, without the bias
//   bias_gradient_j += delta_j,  gradient_ji += (FastProp delta_i + a_i) delta_j
//   change = Alpha change + Eta gradient,  weight += change mask
// Deltas of the input layer are 0, so FAST-Prop has no effect into the first hidden layer. Bias
// weights are never masked; a removed connection keeps its weight while its change goes on.
// Gradient sums are not divided by the size of the group.
//
// The network is not owned, outlives this and keeps its arrays. Throws std::bad_alloc when
// memory is short.
class PackedNetwork {
 public:
  enum class Use { kForward, kTraining };

  // Work that is long enough to pay for it is shared by up to so many threads; the results are
  // the same for any number.
  PackedNetwork(Network& network, Use use, size_t threads = UsefulThreads());
  PackedNetwork(const PackedNetwork&) = delete;
  PackedNetwork& operator=(const PackedNetwork&) = delete;

  // Most patterns of one call.
  size_t batch() const { return m_batch; }

  // Takes weights, weight changes and masks from the record; the batch under way stays.
  void Pack();
  // Brings the record up to date: weights and weight changes, and the derivatives and deltas of
  // the pattern last propagated.
  void Publish();

  // Activations of the patterns: 1 to batch() of them, each 0..nPats-1, in any order, the same one
  // more than once if need be.
  void Forward(std::span<const int32_t> patterns);
  // The same for a group; derivatives are kept.
  void ForwardWithDerivatives(std::span<const int32_t> patterns);
  // Deltas of the patterns last propagated.
  void Backpropagate();
  // Adds their gradients to the group's; `begins` when they are its first.
  void AddGradients(bool begins);
  // The same for the last patterns of a group, and moves the weights.
  void AddGradientsAndUpdate(bool begins);
  // For groups of one pattern, after Backpropagate of one. For each of the patterns that follow, at
  // most batch_of_single_patterns() of them: AddGradientsAndUpdate(true) and ForwardWithDerivatives
  // in one sweep over the weights, and Backpropagate for all but the last.
  void UpdateAndForward(std::span<const int32_t> next_patterns);
  size_t batch_of_single_patterns() const { return m_batch_of_single_patterns; }

 private:
  using Floats = hwy::AlignedFreeUniquePtr<float[]>;

  // What LayerPanels of the same layer points to.
  struct LayerMemory {
    Floats weights, changes, gradients, masks, transposed;
    Floats outputs, derivatives, deltas, factors;
    std::vector<const float*> output_rows;
    std::vector<const float*> factor_rows;
  };

  void Allocate(size_t l);
  void AllocateForTraining(size_t l);
  void AllocateNets();
  void PackMasks(size_t l);
  void PackDerivatives(size_t l);
  template <typename Task>
  void InParts(const Task& task);
  size_t Parts() const;
  void ForwardInParts(std::span<const int32_t> patterns, bool derivatives);
  void GradientsInParts(const kernels::GroupStep& group);
  void Begin(std::span<const int32_t> patterns);
  void StoreOutputs(std::span<const int32_t> patterns, size_t first);
  Layer& RecordOf(size_t l) { return m_network.layers[l + 1]; }

  Network& m_network;
  Use m_use;
  size_t m_batch = 1;
  size_t m_batch_of_single_patterns = 1;
  size_t m_first = 0;        // place in the batch of the patterns under way
  size_t m_count = 0;        // how many they are
  size_t m_last = 0;         // the place of the pattern whose derivatives Publish gives
  size_t m_last_deltas = 0;  // and the deltas
  bool m_descending = false;
  kernels::NetworkPanels m_panels;
  std::array<LayerMemory, kernels::kMostComputedLayers> m_memory;
  size_t m_connections = 0;
  std::unique_ptr<Workers> m_workers;  // of more than one thread
  Floats m_nets;
  std::vector<float*> m_nets_of_part;
  std::vector<const float*> m_input_rows;
  std::vector<const float*> m_target_rows;
};

}  // namespace tarn
