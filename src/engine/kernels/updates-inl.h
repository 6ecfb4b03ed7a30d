// Gradients and weight changes, and the one sweep of training pattern by pattern. Included once
// for every target.

#if defined(TARN_ENGINE_KERNELS_UPDATES_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef TARN_ENGINE_KERNELS_UPDATES_INL_H_
#undef TARN_ENGINE_KERNELS_UPDATES_INL_H_
#else
#define TARN_ENGINE_KERNELS_UPDATES_INL_H_
#endif

#include <cstddef>
#include <cstring>
#include <hwy/highway.h>

#include "engine/kernels/kernels.h"
#include "engine/kernels/passes-inl.h"
#include "engine/kernels/tiles-inl.h"

HWY_BEFORE_NAMESPACE();
namespace tarn::kernels::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

struct StepVectors {
  FloatVector alpha;
  FloatVector eta;
};

HWY_INLINE StepVectors VectorsOf(const WeightStep& step) {
  return {hn::Set(FloatTag(), step.alpha), hn::Set(FloatTag(), step.eta)};
}

// A panel in local pointers: those of the layer would be read again after each store.
struct PanelPointers {
  PanelPointers(const LayerPanels& layer, size_t at)
      : weights(layer.weights + at),
        changes(layer.changes + at),
        masks(layer.masks == nullptr ? nullptr : layer.masks + at) {}

  float* HWY_RESTRICT weights;
  float* HWY_RESTRICT changes;
  const float* HWY_RESTRICT masks;
};

// change = alpha change + eta gradient, weight += change mask; returns the weights.
//
// Denormals are kept: without them the results would be others. In a network that has learnt its
// patterns exactly the changes fade into them, step by step. On a processor that multiplies them
// in its ordinary way (Zen 5) a sweep of nothing else is some 15 % slower; one that takes them by
// microcode, a hundred cycles and more for a vector with one of them, is slower by several times
// as long as they last.
template <bool kMasked>
HWY_INLINE FloatVector MoveWeights(const PanelPointers& panel, size_t at, FloatVector gradient,
                                   const StepVectors& step) {
  const FloatTag d;
  const FloatVector change =
      hn::Add(hn::Mul(step.alpha, hn::Load(d, panel.changes + at)), hn::Mul(step.eta, gradient));
  hn::Store(change, d, panel.changes + at);
  FloatVector move = change;
  if constexpr (kMasked) move = hn::Mul(change, hn::Load(d, panel.masks + at));
  const FloatVector weights = hn::Add(hn::Load(d, panel.weights + at), move);
  hn::Store(weights, d, panel.weights + at);
  return weights;
}

// Rows `row`.. of a panel by source: each lane adds up its connection's gradient over the
// patterns of the batch.
template <size_t kRows, size_t kVectors, bool kMasked>
HWY_INLINE void GradientsTile(const LayerPanels& layer, size_t node, size_t row, size_t first,
                              size_t count, const GroupStep& group) {
  const FloatTag d;
  const size_t lanes = hn::Lanes(d);
  const size_t width = kVectors * lanes;
  const size_t at = node * (layer.sources + 1) + row * width;
  Tile<kRows, kVectors> sum;
  TARN_UNROLL for (size_t r = 0; r < kRows; ++r) {
    TARN_UNROLL for (size_t v = 0; v < kVectors; ++v) {
      sum.at[r][v] =
          group.begins ? hn::Zero(d) : hn::Load(d, layer.gradients + at + r * width + v * lanes);
    }
  }
  const bool bias = row == layer.sources;
  const float one = 1.0F;
  const float* delta = layer.deltas + first * layer.padded_nodes + node;
  for (size_t p = first; p < first + count; ++p, delta += layer.padded_nodes) {
    const float* const factors = bias ? &one : layer.factors[p] + row;
    FloatVector deltas[kVectors];
    TARN_UNROLL for (size_t v = 0; v < kVectors; ++v) deltas[v] = hn::Load(d, delta + v * lanes);
    TARN_UNROLL for (size_t r = 0; r < kRows; ++r) {
      const FloatVector factor = hn::Set(d, factors[r]);
      TARN_UNROLL for (size_t v = 0; v < kVectors; ++v) {
        sum.at[r][v] = hn::Add(sum.at[r][v], hn::Mul(factor, deltas[v]));
      }
    }
  }
  if (group.ends) {
    const PanelPointers panel(layer, at);
    const StepVectors step = VectorsOf(group.step);
    TARN_UNROLL for (size_t r = 0; r < kRows; ++r) {
      TARN_UNROLL for (size_t v = 0; v < kVectors; ++v) {
        MoveWeights<kMasked>(panel, r * width + v * lanes, sum.at[r][v], step);
      }
    }
    return;
  }
  float* HWY_RESTRICT gradients = layer.gradients + at;
  TARN_UNROLL for (size_t r = 0; r < kRows; ++r) {
    TARN_UNROLL for (size_t v = 0; v < kVectors; ++v) {
      hn::Store(sum.at[r][v], d, gradients + r * width + v * lanes);
    }
  }
}

template <bool kMasked>
HWY_INLINE void GradientsOfLayer(const PanelShape& shape, const LayerPanels& layer, size_t first,
                                 size_t count, const GroupStep& group, const Part& part) {
  const size_t first_row = part.Begin(layer.sources);
  const size_t rows = part.End(layer.sources) - first_row;
  const bool with_bias = part.index + 1 == part.count;
  for (size_t n = 0; n < layer.padded_nodes; n += shape.panel_nodes) {
    const size_t vectors = shape.Width(layer.padded_nodes, n) / shape.lanes;
    const auto tile = [&](auto tile_rows, auto tile_vectors, size_t row) HWY_ATTR {
      GradientsTile<tile_rows(), tile_vectors(), kMasked>(layer, n, first_row + row, first, count,
                                                          group);
    };
    ForTiles(vectors, rows, tile);
    if (!with_bias) continue;
    ForTiles(vectors, 1, [&](auto, auto tile_vectors, size_t) HWY_ATTR {
      GradientsTile<1, tile_vectors(), kMasked>(layer, n, layer.sources, first, count, group);
    });
  }
}

// Rows first..end-1 of the panels, by source, as columns of a table by node.
HWY_INLINE void TransposeRows(const PanelShape& shape, const float* panels, size_t rows,
                              size_t nodes, size_t first, size_t end, float* table, size_t stride) {
  constexpr size_t kColumns = 4;
  const FloatTag d;
  const size_t lanes = hn::Lanes(d);
  const size_t padded_nodes = shape.Padded(nodes);
  HWY_ALIGN float block[kColumns * hn::MaxLanes(d)];
  for (size_t n = 0; n < padded_nodes; n += shape.panel_nodes) {
    const size_t width = shape.Width(padded_nodes, n);
    const float* const panel = panels + n * rows;
    for (size_t v = 0; v < width && n + v < nodes; v += lanes) {
      const size_t here = HWY_MIN(lanes, nodes - n - v);
      float* const out = table + (n + v) * stride;
      size_t i = first;
      for (; i + kColumns <= end; i += kColumns) {
        const float* const row = panel + i * width + v;
        hn::StoreInterleaved4(hn::Load(d, row), hn::Load(d, row + width),
                              hn::Load(d, row + 2 * width), hn::Load(d, row + 3 * width), d, block);
        for (size_t j = 0; j < here; ++j) {
          std::memcpy(out + j * stride + i, block + j * kColumns, kColumns * sizeof(float));
        }
      }
      for (; i < end; ++i) {
        for (size_t j = 0; j < here; ++j) out[j * stride + i] = panel[i * width + v + j];
      }
    }
  }
}

HWY_INLINE void RefreshTransposed(const PanelShape& shape, const LayerPanels& layer,
                                  const Part& part) {
  if (layer.transposed == nullptr) return;
  TransposeRows(shape, layer.weights, layer.sources + 1, layer.nodes, part.Begin(layer.sources),
                part.End(layer.sources), layer.transposed, layer.padded_sources);
}

HWY_INLINE void GradientsOfPatterns(const NetworkPanels& network, size_t first, size_t count,
                                    const GroupStep& group, const Part& part) {
  for (size_t l = 0; l < network.layer_count; ++l) {
    const LayerPanels& layer = network.layers[l];
    if (layer.masks != nullptr) {
      GradientsOfLayer<true>(network.shape, layer, first, count, group, part);
    } else {
      GradientsOfLayer<false>(network.shape, layer, first, count, group, part);
    }
    if (group.ends) RefreshTransposed(network.shape, layer, part);
  }
}

// One step of training pattern by pattern: what the update needs of the pattern before, and the
// place of the next one in the batch.
struct Sweep {
  PreviousPattern previous;
  StepVectors step;
  size_t place = 0;
  bool descending = false;
};

// One panel: its weights take in the pattern before, as a group of its own, and are multiplied
// with the inputs of the next one while they are still in registers.
template <size_t kVectors, bool kMasked>
HWY_INLINE void SweepPanel(const LayerPanels& layer, size_t node, const float* HWY_RESTRICT factors,
                           const Sweep& sweep, float* nets) {
  const FloatTag d;
  const size_t lanes = hn::Lanes(d);
  const size_t width = kVectors * lanes;
  const size_t sources = layer.sources;
  const PanelPointers panel(layer, node * (sources + 1));
  const FloatVector zero = hn::Zero(d);
  const float* const previous_deltas = layer.deltas + sweep.previous.place * layer.padded_nodes;
  FloatVector deltas[kVectors];
  FloatVector x[kVectors];
  TARN_UNROLL for (size_t v = 0; v < kVectors; ++v) {
    deltas[v] = hn::Load(d, previous_deltas + node + v * lanes);
    const size_t at = sources * width + v * lanes;
    x[v] = hn::Neg(MoveWeights<kMasked>(panel, at, hn::Add(zero, deltas[v]), sweep.step));
  }
  const float* const HWY_RESTRICT inputs = layer.inputs[sweep.place];
  size_t at = 0;
  for (size_t i = 0; i < sources; ++i, at += width) {
    const FloatVector factor = hn::Set(d, factors[i]);
    const FloatVector input = hn::Set(d, inputs[i]);
    TARN_UNROLL for (size_t v = 0; v < kVectors; ++v) {
      // A sum begins with +0: a product of -0 does not stay one.
      const FloatVector gradient = hn::Add(zero, hn::Mul(factor, deltas[v]));
      const FloatVector weights = MoveWeights<kMasked>(panel, at + v * lanes, gradient, sweep.step);
      x[v] = hn::Sub(x[v], hn::Mul(weights, input));
    }
  }
  TARN_UNROLL for (size_t v = 0; v < kVectors; ++v) {
    hn::StoreU(x[v], d, nets + node + v * lanes);
  }
}

template <bool kMasked>
HWY_INLINE void SweepLayer(const PanelShape& shape, const LayerPanels& layer, const float* factors,
                           const Sweep& sweep, float* nets) {
  const size_t panels = (layer.padded_nodes + shape.panel_nodes - 1) / shape.panel_nodes;
  for (size_t k = 0; k < panels; ++k) {
    const size_t n = (sweep.descending ? panels - 1 - k : k) * shape.panel_nodes;
    ForTiles(shape.Width(layer.padded_nodes, n) / shape.lanes, 1,
             [&](auto, auto vectors, size_t)
                 HWY_ATTR { SweepPanel<vectors(), kMasked>(layer, n, factors, sweep, nets); });
  }
}

HWY_INLINE void SweepNetwork(const NetworkPanels& network, const Sweep& sweep) {
  for (size_t l = 0; l < network.layer_count; ++l) {
    const LayerPanels& layer = network.layers[l];
    const float* const factors =
        l == 0 ? sweep.previous.input : layer.factors[sweep.previous.place];
    if (layer.masks != nullptr) {
      SweepLayer<true>(network.shape, layer, factors, sweep, network.nets);
    } else {
      SweepLayer<false>(network.shape, layer, factors, sweep, network.nets);
    }
    // Before the long chain of the transfer function: the deltas soon read in whole vectors what
    // is written here in pieces, which has to be in the cache by then.
    RefreshTransposed(network.shape, layer, Part());
    TransferRows(layer, network.nets, sweep.place, 1, true);
  }
}

HWY_INLINE void SweepPatterns(const NetworkPanels& network, size_t count,
                              const PreviousPattern& previous, const WeightStep& step,
                              float fast_prop, bool descending) {
  Sweep sweep = {previous, VectorsOf(step), 0, descending};
  for (;;) {
    SweepNetwork(network, sweep);
    if (sweep.place + 1 == count) return;
    DeltasOfPatterns(network, fast_prop, sweep.place, 1);
    sweep.previous = {network.layers[0].inputs[sweep.place], sweep.place};
    sweep.descending = !sweep.descending;
    ++sweep.place;
  }
}

}  // namespace tarn::kernels::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
