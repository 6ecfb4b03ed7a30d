// The transfer functions over spans. Included once for every target.

#if defined(TARN_ENGINE_KERNELS_TRANSFER_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef TARN_ENGINE_KERNELS_TRANSFER_INL_H_
#undef TARN_ENGINE_KERNELS_TRANSFER_INL_H_
#else
#define TARN_ENGINE_KERNELS_TRANSFER_INL_H_
#endif

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <hwy/highway.h>

#include "engine/kernels/exponential-inl.h"
#include "engine/network.h"

HWY_BEFORE_NAMESPACE();
namespace tarn::kernels::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

// As many floats as a vector holds doubles: what the functions are computed in.
using HalfTag = hn::Rebind<float, DoubleTag>;
using HalfVector = hn::Vec<HalfTag>;

struct NodeResults {
  HalfVector y;
  HalfVector derivative;
};

template <typename Function>
HWY_INLINE HalfVector InDouble(Function function, HalfVector x) {
  return hn::DemoteTo(HalfTag(), function(hn::PromoteTo(DoubleTag(), x)));
}

// Each function is a type, so that the loop over the nodes is compiled for it alone.
struct SigmoidFunction {
  HWY_INLINE NodeResults operator()(HalfVector x, bool derivative) const {
    const HalfVector one = hn::Set(HalfTag(), 1.0F);
    const HalfVector e = InDouble([](DoubleVector v) HWY_ATTR { return VectorExp(v); }, x);
    const HalfVector y = hn::Div(one, hn::Add(e, one));
    return {y, derivative ? hn::Mul(hn::Sub(one, y), y) : y};
  }
};

struct GaussianFunction {
  HWY_INLINE NodeResults operator()(HalfVector x, bool derivative) const {
    const HalfTag d;
    const HalfVector minus_square = hn::Neg(hn::Mul(x, x));
    const HalfVector y =
        InDouble([](DoubleVector v) HWY_ATTR { return VectorExp(v); }, minus_square);
    if (!derivative) return {y, y};
    // x may be so large that x * 2 is infinite.
    const HalfVector slope = hn::Mul(hn::Mul(x, hn::Set(d, 2.0F)), y);
    return {y, hn::IfThenZeroElse(hn::Eq(y, hn::Zero(d)), slope)};
  }
};

struct TanhFunction {
  HWY_INLINE NodeResults operator()(HalfVector x, bool derivative) const {
    const HalfVector one = hn::Set(HalfTag(), 1.0F);
    const HalfVector half = hn::Set(HalfTag(), 0.5F);
    const HalfVector t =
        InDouble([](DoubleVector v) HWY_ATTR { return VectorTanh(v); }, hn::Neg(x));
    const HalfVector y = hn::Mul(hn::Add(t, one), half);
    return {y, derivative ? hn::Mul(hn::Sub(one, hn::Mul(t, t)), half) : y};
  }
};

struct SechFunction {
  HWY_INLINE NodeResults operator()(HalfVector x, bool derivative) const {
    const HalfTag d;
    const HalfVector c = InDouble([](DoubleVector v) HWY_ATTR { return VectorCosh(v); }, x);
    const HalfVector y = hn::Div(hn::Set(d, 1.0F), c);
    if (!derivative) return {y, y};
    const HalfVector s =
        InDouble([](DoubleVector v) HWY_ATTR { return VectorSinh(v); }, hn::Neg(x));
    // s is infinite where y is 0.
    const HalfVector slope = hn::Mul(hn::Mul(hn::Neg(s), y), y);
    return {y, hn::IfThenZeroElse(hn::Eq(y, hn::Zero(d)), slope)};
  }
};

template <typename Function>
HWY_INLINE void ForEachNode(Function function, const float* negated_net, size_t count,
                            float* output, float* derivative_or_null) {
  const HalfTag d;
  const size_t lanes = hn::Lanes(d);
  const bool derivative = derivative_or_null != nullptr;
  size_t j = 0;
  for (; j + lanes <= count; j += lanes) {
    const NodeResults results = function(hn::LoadU(d, negated_net + j), derivative);
    hn::StoreU(results.y, d, output + j);
    if (derivative) hn::StoreU(results.derivative, d, derivative_or_null + j);
  }
  if (j == count) return;
  // The rest goes through whole vectors of its own: nothing past the spans is touched.
  const size_t bytes = (count - j) * sizeof(float);
  HWY_ALIGN float values[hn::MaxLanes(d)] = {};
  std::memcpy(values, negated_net + j, bytes);
  const NodeResults results = function(hn::Load(d, values), derivative);
  hn::Store(results.y, d, values);
  std::memcpy(output + j, values, bytes);
  if (!derivative) return;
  hn::Store(results.derivative, d, values);
  std::memcpy(derivative_or_null + j, values, bytes);
}

// A null derivative is not wanted.
HWY_INLINE void TransferNodes(int32_t code, const float* negated_net, size_t count, float* output,
                              float* derivative_or_null) {
  switch (code) {
    case kSigmoid:
      return ForEachNode(SigmoidFunction(), negated_net, count, output, derivative_or_null);
    case kGaussian:
      return ForEachNode(GaussianFunction(), negated_net, count, output, derivative_or_null);
    case kTanh:
      return ForEachNode(TanhFunction(), negated_net, count, output, derivative_or_null);
    case kSech:
      return ForEachNode(SechFunction(), negated_net, count, output, derivative_or_null);
    default:
      return;
  }
}

}  // namespace tarn::kernels::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
