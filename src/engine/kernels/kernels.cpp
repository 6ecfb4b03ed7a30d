#include "engine/kernels/kernels.h"

// Tiles are arrays of vectors: not for instruction sets whose vectors have no size known here.
#define HWY_DISABLED_TARGETS (HWY_SVE | HWY_SVE2 | HWY_SVE_256 | HWY_SVE2_128 | HWY_RVV)

#undef HWY_TARGET_INCLUDE
// NOLINTNEXTLINE(*-macro-usage): Highway includes this file by it, once for each target.
#define HWY_TARGET_INCLUDE "engine/kernels/kernels.cpp"
#include <hwy/foreach_target.h>
// The includes above come first.
#include <hwy/highway.h>

#include "engine/kernels/passes-inl.h"
#include "engine/kernels/transfer-inl.h"
#include "engine/kernels/updates-inl.h"

HWY_BEFORE_NAMESPACE();
namespace tarn::kernels::HWY_NAMESPACE {

PanelShape ShapeHere() {
  return Shape();
}

void TransferHere(int32_t code, const float* negated_net, size_t count, float* output,
                  float* derivative) {
  TransferNodes(code, negated_net, count, output, derivative);
}

void ForwardHere(const NetworkPanels& network, size_t first, size_t count, bool derivatives,
                 float* nets) {
  ForwardPatterns(network, first, count, derivatives, nets);
}

void DeltasHere(const NetworkPanels& network, float fast_prop, size_t first, size_t count) {
  DeltasOfPatterns(network, fast_prop, first, count);
}

void GradientsHere(const NetworkPanels& network, size_t first, size_t count, const GroupStep& group,
                   const Part& part) {
  GradientsOfPatterns(network, first, count, group, part);
}

void UpdateAndForwardHere(const NetworkPanels& network, size_t count,
                          const PreviousPattern& previous, const WeightStep& step, float fast_prop,
                          bool descending) {
  SweepPatterns(network, count, previous, step, fast_prop, descending);
}

void ToTableHere(const PanelShape& shape, const float* panels, size_t sources, size_t nodes,
                 float* table, size_t stride) {
  TransposeRows(shape, panels, sources + 1, nodes, 0, sources + 1, table, stride);
}

}  // namespace tarn::kernels::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace tarn::kernels {

HWY_EXPORT(ShapeHere);
HWY_EXPORT(TransferHere);
HWY_EXPORT(ForwardHere);
HWY_EXPORT(DeltasHere);
HWY_EXPORT(GradientsHere);
HWY_EXPORT(UpdateAndForwardHere);
HWY_EXPORT(ToTableHere);

int64_t CompiledTargets() {
  return HWY_TARGETS;
}

PanelShape CurrentShape() {
  return HWY_DYNAMIC_DISPATCH(ShapeHere)();
}

void Transfer(int32_t code, std::span<const float> negated_net, std::span<float> output,
              std::span<float> derivative) {
  HWY_DYNAMIC_DISPATCH(TransferHere)
  (code, negated_net.data(), negated_net.size(), output.data(),
   derivative.empty() ? nullptr : derivative.data());
}

void Forward(const NetworkPanels& network, size_t first, size_t count, bool derivatives,
             float* nets) {
  HWY_DYNAMIC_DISPATCH(ForwardHere)(network, first, count, derivatives, nets);
}

void Deltas(const NetworkPanels& network, float fast_prop, size_t first, size_t count) {
  HWY_DYNAMIC_DISPATCH(DeltasHere)(network, fast_prop, first, count);
}

void Gradients(const NetworkPanels& network, size_t first, size_t count, const GroupStep& group,
               const Part& part) {
  HWY_DYNAMIC_DISPATCH(GradientsHere)(network, first, count, group, part);
}

void UpdateAndForward(const NetworkPanels& network, size_t count, const PreviousPattern& previous,
                      const WeightStep& step, float fast_prop, bool descending) {
  HWY_DYNAMIC_DISPATCH(UpdateAndForwardHere)
  (network, count, previous, step, fast_prop, descending);
}

void ToTable(const PanelShape& shape, const float* panels, size_t sources, size_t nodes,
             float* table, size_t stride) {
  HWY_DYNAMIC_DISPATCH(ToTableHere)(shape, panels, sources, nodes, table, stride);
}

}  // namespace tarn::kernels
#endif  // HWY_ONCE
