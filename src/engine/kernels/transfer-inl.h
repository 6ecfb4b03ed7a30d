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
#include "engine/kernels/tiles-inl.h"
#include "engine/network.h"

HWY_BEFORE_NAMESPACE();
namespace tarn::kernels::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

// Rounded to float, infinite where it is too large for one: the emulated vectors' own demotion
// stops at the largest float there.
template <typename FloatTagOfSameLanes>
HWY_INLINE hn::Vec<FloatTagOfSameLanes> ToFloat(FloatTagOfSameLanes d, DoubleVector x) {
#if HWY_TARGET == HWY_SCALAR || HWY_TARGET == HWY_EMU128
  const DoubleTag dd;
  HWY_ALIGN double wide[hn::MaxLanes(dd)];
  HWY_ALIGN float narrow[hn::MaxLanes(dd)];
  hn::Store(x, dd, wide);
  for (size_t i = 0; i < hn::Lanes(dd); ++i) narrow[i] = static_cast<float>(wide[i]);
  return hn::Load(d, narrow);
#else
  return hn::DemoteTo(d, x);
#endif
}

// A function of vectors of doubles over one of floats.
template <typename Function>
HWY_INLINE FloatVector InDouble(Function function, FloatVector x) {
  const DoubleTag dd;
#if HWY_TARGET == HWY_SCALAR
  return ToFloat(FloatTag(), function(hn::PromoteTo(dd, x)));
#else
  const hn::Half<FloatTag> half;
  const auto lower = ToFloat(half, function(hn::PromoteTo(dd, hn::LowerHalf(half, x))));
  const auto upper = ToFloat(half, function(hn::PromoteTo(dd, hn::UpperHalf(half, x))));
  return hn::Combine(FloatTag(), upper, lower);
#endif
}

// e^x, rounded to float once.
template <size_t kVectors>
HWY_INLINE void ExpOf(FloatVector (&x)[kVectors]) {
  const DoubleTag dd;
#if HWY_TARGET == HWY_SCALAR
  DoubleVector wide[kVectors];
  for (size_t k = 0; k < kVectors; ++k) wide[k] = hn::PromoteTo(dd, x[k]);
  ScaledExp<0>(wide);
  for (size_t k = 0; k < kVectors; ++k) x[k] = ToFloat(FloatTag(), wide[k]);
#else
  const hn::Half<FloatTag> half;
  DoubleVector wide[2 * kVectors];
  TARN_UNROLL for (size_t k = 0; k < kVectors; ++k) {
    wide[2 * k] = hn::PromoteTo(dd, hn::LowerHalf(half, x[k]));
    wide[2 * k + 1] = hn::PromoteTo(dd, hn::UpperHalf(half, x[k]));
  }
  ScaledExp<0>(wide);
  TARN_UNROLL for (size_t k = 0; k < kVectors; ++k) {
    x[k] = hn::Combine(FloatTag(), ToFloat(half, wide[2 * k + 1]), ToFloat(half, wide[2 * k]));
  }
#endif
}

// Each function is a type, so that the loop over the nodes is compiled for it alone: x becomes
// y, and the derivative is given.
struct SigmoidFunction {
  template <size_t kVectors>
  HWY_INLINE void operator()(FloatVector (&x)[kVectors],
                             FloatVector (&derivative)[kVectors]) const {
    const FloatVector one = hn::Set(FloatTag(), 1.0F);
    ExpOf(x);
    TARN_UNROLL for (size_t k = 0; k < kVectors; ++k) x[k] = hn::Div(one, hn::Add(x[k], one));
    TARN_UNROLL for (size_t k = 0; k < kVectors; ++k) {
      derivative[k] = hn::Mul(hn::Sub(one, x[k]), x[k]);
    }
  }
};

struct GaussianFunction {
  template <size_t kVectors>
  HWY_INLINE void operator()(FloatVector (&x)[kVectors],
                             FloatVector (&derivative)[kVectors]) const {
    const FloatTag d;
    TARN_UNROLL for (size_t k = 0; k < kVectors; ++k) {
      derivative[k] = hn::Mul(x[k], hn::Set(d, 2.0F));
      x[k] = hn::Neg(hn::Mul(x[k], x[k]));
    }
    ExpOf(x);
    TARN_UNROLL for (size_t k = 0; k < kVectors; ++k) {
      // x may be so large that x * 2 is infinite.
      derivative[k] = hn::IfThenZeroElse(hn::Eq(x[k], hn::Zero(d)), hn::Mul(derivative[k], x[k]));
    }
  }
};

struct TanhFunction {
  template <size_t kVectors>
  HWY_INLINE void operator()(FloatVector (&x)[kVectors],
                             FloatVector (&derivative)[kVectors]) const {
    const FloatVector one = hn::Set(FloatTag(), 1.0F);
    const FloatVector half = hn::Set(FloatTag(), 0.5F);
    for (size_t k = 0; k < kVectors; ++k) {
      const FloatVector t =
          InDouble([](DoubleVector v) HWY_ATTR { return VectorTanh(v); }, hn::Neg(x[k]));
      x[k] = hn::Mul(hn::Add(t, one), half);
      derivative[k] = hn::Mul(hn::Sub(one, hn::Mul(t, t)), half);
    }
  }
};

struct SechFunction {
  template <size_t kVectors>
  HWY_INLINE void operator()(FloatVector (&x)[kVectors],
                             FloatVector (&derivative)[kVectors]) const {
    const FloatTag d;
    for (size_t k = 0; k < kVectors; ++k) {
      const FloatVector c = InDouble([](DoubleVector v) HWY_ATTR { return VectorCosh(v); }, x[k]);
      const FloatVector s =
          InDouble([](DoubleVector v) HWY_ATTR { return VectorSinh(v); }, hn::Neg(x[k]));
      const FloatVector y = hn::Div(hn::Set(d, 1.0F), c);
      // s is infinite where y is 0.
      derivative[k] =
          hn::IfThenZeroElse(hn::Eq(y, hn::Zero(d)), hn::Mul(hn::Mul(hn::Neg(s), y), y));
      x[k] = y;
    }
  }
};

template <size_t kVectors, typename Function>
HWY_INLINE void TransferAt(Function function, const float* HWY_RESTRICT negated_net,
                           float* HWY_RESTRICT output, float* HWY_RESTRICT derivative_or_null) {
  const FloatTag d;
  const size_t lanes = hn::Lanes(d);
  FloatVector x[kVectors];
  FloatVector derivative[kVectors];
  TARN_UNROLL for (size_t k = 0; k < kVectors; ++k) x[k] = hn::LoadU(d, negated_net + k * lanes);
  function(x, derivative);
  TARN_UNROLL for (size_t k = 0; k < kVectors; ++k) hn::StoreU(x[k], d, output + k * lanes);
  if (derivative_or_null == nullptr) return;
  TARN_UNROLL for (size_t k = 0; k < kVectors; ++k) {
    hn::StoreU(derivative[k], d, derivative_or_null + k * lanes);
  }
}

// Whole vectors only: up to a vector's width less one past `count` is read and written.
template <typename Function>
HWY_INLINE void ForEachVector(Function function, const float* negated_net, size_t count,
                              float* output, float* derivative_or_null) {
  const size_t lanes = hn::Lanes(FloatTag());
  const auto derivative_at = [&](size_t j) {
    return derivative_or_null == nullptr ? nullptr : derivative_or_null + j;
  };
  size_t j = 0;
  for (; j + lanes < count; j += 2 * lanes) {
    TransferAt<2>(function, negated_net + j, output + j, derivative_at(j));
  }
  if (j < count) TransferAt<1>(function, negated_net + j, output + j, derivative_at(j));
}

// A null derivative is not wanted.
HWY_INLINE void TransferVectors(int32_t code, const float* negated_net, size_t count, float* output,
                                float* derivative_or_null) {
  switch (code) {
    case kSigmoid:
      return ForEachVector(SigmoidFunction(), negated_net, count, output, derivative_or_null);
    case kGaussian:
      return ForEachVector(GaussianFunction(), negated_net, count, output, derivative_or_null);
    case kTanh:
      return ForEachVector(TanhFunction(), negated_net, count, output, derivative_or_null);
    case kSech:
      return ForEachVector(SechFunction(), negated_net, count, output, derivative_or_null);
    default:
      return;
  }
}

// The same for spans of their own, with nothing past them touched.
HWY_INLINE void TransferNodes(int32_t code, const float* negated_net, size_t count, float* output,
                              float* derivative_or_null) {
  const FloatTag d;
  const size_t whole = count / hn::Lanes(d) * hn::Lanes(d);
  TransferVectors(code, negated_net, whole, output, derivative_or_null);
  if (whole == count || code < kSigmoid || code > kSech) return;
  const size_t bytes = (count - whole) * sizeof(float);
  HWY_ALIGN float x[hn::MaxLanes(d)] = {};
  HWY_ALIGN float y[hn::MaxLanes(d)];
  HWY_ALIGN float derivative[hn::MaxLanes(d)];
  std::memcpy(x, negated_net + whole, bytes);
  TransferVectors(code, x, hn::Lanes(d), y, derivative);
  std::memcpy(output + whole, y, bytes);
  if (derivative_or_null == nullptr) return;
  std::memcpy(derivative_or_null + whole, derivative, bytes);
}

}  // namespace tarn::kernels::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
