// Forward pass and deltas of a batch of patterns, layer by layer: products of two tables that
// keep each sum in one lane of one register. Included once for every target.

#if defined(TARN_ENGINE_KERNELS_PASSES_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef TARN_ENGINE_KERNELS_PASSES_INL_H_
#undef TARN_ENGINE_KERNELS_PASSES_INL_H_
#else
#define TARN_ENGINE_KERNELS_PASSES_INL_H_
#endif

#include <cstddef>
#include <hwy/highway.h>

#include "engine/kernels/network_panels.h"
#include "engine/kernels/tiles-inl.h"
#include "engine/kernels/transfer-inl.h"

HWY_BEFORE_NAMESPACE();
namespace tarn::kernels::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

// Negated net inputs of kPatterns patterns in a panel of kVectors: -bias - w_0 a_0 - w_1 a_1 ...
template <size_t kPatterns, size_t kVectors>
HWY_INLINE void NegatedNetsTile(const float* panel, size_t sources, ConstRows inputs, float* nets,
                                size_t stride) {
  const FloatTag d;
  const size_t lanes = hn::Lanes(d);
  const size_t width = kVectors * lanes;
  Tile<kPatterns, kVectors> x;
  const float* const bias = panel + sources * width;
  TARN_UNROLL for (size_t p = 0; p < kPatterns; ++p) {
    TARN_UNROLL for (size_t v = 0; v < kVectors; ++v) {
      x.at[p][v] = hn::Neg(hn::Load(d, bias + v * lanes));
    }
  }
  const float* input[kPatterns];
  TARN_UNROLL for (size_t p = 0; p < kPatterns; ++p) input[p] = inputs[p];
  const float* row = panel;
  for (size_t i = 0; i < sources; ++i, row += width) {
    FloatVector weights[kVectors];
    TARN_UNROLL for (size_t v = 0; v < kVectors; ++v) weights[v] = hn::Load(d, row + v * lanes);
    TARN_UNROLL for (size_t p = 0; p < kPatterns; ++p) {
      const FloatVector a = hn::Set(d, input[p][i]);
      TARN_UNROLL for (size_t v = 0; v < kVectors; ++v) {
        x.at[p][v] = hn::Sub(x.at[p][v], hn::Mul(weights[v], a));
      }
    }
  }
  // Ascending: what a narrow row spills into the next one is overwritten by it.
  TARN_UNROLL for (size_t p = 0; p < kPatterns; ++p) {
    TARN_UNROLL for (size_t v = 0; v < kVectors; ++v) {
      hn::StoreU(x.at[p][v], d, nets + p * stride + v * lanes);
    }
  }
}

HWY_INLINE void TransferRows(const LayerPanels& layer, const float* nets, size_t first,
                             size_t count, bool derivatives) {
  const size_t at = first * layer.stride;
  TransferVectors(layer.code, nets, count * layer.stride, layer.outputs + at,
                  derivatives ? layer.derivatives + at : nullptr);
}

HWY_INLINE void NegatedNets(const PanelShape& shape, const LayerPanels& layer, size_t first,
                            size_t count, float* nets) {
  for (size_t n = 0; n < layer.padded_nodes; n += shape.panel_nodes) {
    const float* const panel = layer.weights + n * (layer.sources + 1);
    const size_t width = shape.Width(layer.padded_nodes, n);
    ForTiles(width / shape.lanes, count, [&](auto patterns, auto vectors, size_t p) HWY_ATTR {
      NegatedNetsTile<patterns(), vectors()>(panel, layer.sources, layer.inputs + first + p,
                                             nets + p * layer.stride + n, layer.stride);
    });
  }
}

HWY_INLINE void ForwardPatterns(const NetworkPanels& network, size_t first, size_t count,
                                bool derivatives, float* nets) {
  for (size_t l = 0; l < network.layer_count; ++l) {
    const LayerPanels& layer = network.layers[l];
    NegatedNets(network.shape, layer, first, count, nets);
    TransferRows(layer, nets, first, count, derivatives);
  }
}

// The factors that the deltas of the layer above are multiplied with in its gradients:
// FAST-Prop delta + output.
HWY_INLINE void OwnFactors(const LayerPanels& layer, size_t p, float fast_prop) {
  const FloatTag d;
  const size_t lanes = hn::Lanes(d);
  const FloatVector coefficient = hn::Set(d, fast_prop);
  const float* const deltas = layer.deltas + p * layer.padded_nodes;
  for (size_t n = 0; n < layer.padded_nodes; n += lanes) {
    const FloatVector own = hn::Mul(coefficient, hn::Load(d, deltas + n));
    const FloatVector output = hn::LoadU(d, layer.outputs + p * layer.stride + n);
    hn::Store(hn::Add(own, output), d, layer.own_factors + p * layer.padded_nodes + n);
  }
}

HWY_INLINE void OutputDeltas(const LayerPanels& layer, size_t p, const float* targets) {
  const FloatTag d;
  const size_t lanes = hn::Lanes(d);
  for (size_t n = 0; n < layer.padded_nodes; n += lanes) {
    const size_t at = p * layer.stride + n;
    const FloatVector error = hn::Sub(hn::LoadU(d, targets + n), hn::LoadU(d, layer.outputs + at));
    const FloatVector derivative = hn::LoadU(d, layer.derivatives + at);
    hn::Store(hn::Mul(error, derivative), d, layer.deltas + p * layer.padded_nodes + n);
  }
}

// Deltas of kPatterns patterns for kVectors vectors of nodes, from the `depth` deltas above:
// (0 + delta_0 w_0 + delta_1 w_1 + ...) derivative.
template <size_t kPatterns, size_t kVectors>
HWY_INLINE void HiddenDeltasTile(const LayerPanels& layer, const LayerPanels& above, size_t p0,
                                 size_t node) {
  const FloatTag d;
  const size_t lanes = hn::Lanes(d);
  Tile<kPatterns, kVectors> sum;
  TARN_UNROLL for (size_t p = 0; p < kPatterns; ++p) {
    TARN_UNROLL for (size_t v = 0; v < kVectors; ++v) sum.at[p][v] = hn::Zero(d);
  }
  const float* const deltas = above.deltas + p0 * above.padded_nodes;
  const float* row = above.transposed + node;
  for (size_t j = 0; j < above.nodes; ++j, row += above.padded_sources) {
    FloatVector weights[kVectors];
    TARN_UNROLL for (size_t v = 0; v < kVectors; ++v) weights[v] = hn::Load(d, row + v * lanes);
    TARN_UNROLL for (size_t p = 0; p < kPatterns; ++p) {
      const FloatVector delta = hn::Set(d, deltas[p * above.padded_nodes + j]);
      TARN_UNROLL for (size_t v = 0; v < kVectors; ++v) {
        sum.at[p][v] = hn::Add(sum.at[p][v], hn::Mul(delta, weights[v]));
      }
    }
  }
  TARN_UNROLL for (size_t p = 0; p < kPatterns; ++p) {
    TARN_UNROLL for (size_t v = 0; v < kVectors; ++v) {
      const float* const derivative =
          layer.derivatives + (p0 + p) * layer.stride + node + v * lanes;
      hn::Store(hn::Mul(sum.at[p][v], hn::LoadU(d, derivative)), d,
                layer.deltas + (p0 + p) * layer.padded_nodes + node + v * lanes);
    }
  }
}

HWY_INLINE void DeltasOfPatterns(const NetworkPanels& network, float fast_prop, size_t first,
                                 size_t count) {
  const LayerPanels& top = network.layers[network.layer_count - 1];
  for (size_t p = first; p < first + count; ++p) OutputDeltas(top, p, network.targets[p]);
  const size_t lanes = network.shape.lanes;
  for (size_t l = network.layer_count - 1; l-- > 0;) {
    const LayerPanels& layer = network.layers[l];
    const LayerPanels& above = network.layers[l + 1];
    for (size_t n = 0; n < layer.padded_nodes; n += network.shape.panel_nodes) {
      const size_t width = network.shape.Width(layer.padded_nodes, n);
      ForTiles(width / lanes, count, [&](auto patterns, auto vectors, size_t p) HWY_ATTR {
        HiddenDeltasTile<patterns(), vectors()>(layer, above, first + p, n);
      });
    }
    for (size_t p = first; p < first + count; ++p) OwnFactors(layer, p, fast_prop);
  }
}

}  // namespace tarn::kernels::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
