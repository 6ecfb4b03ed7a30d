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
template <class D>
HWY_INLINE hn::Vec<D> ToFloat(D d, DoubleVector x) {
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

// What doubles a vector of floats makes.
template <class D>
constexpr size_t kDoubleVectors = hn::MaxLanes(D()) / hn::MaxLanes(DoubleTag());

// Replaces floats by a function of them in double precision, for all of kVectors vectors at once.
template <class D, size_t kVectors, typename Function>
HWY_INLINE void InDouble(D d, hn::Vec<D> (&x)[kVectors], const Function& function) {
  const DoubleTag dd;
  DoubleVector wide[kVectors * kDoubleVectors<D>];
  if constexpr (kDoubleVectors<D> == 1) {
    TARN_UNROLL for (size_t k = 0; k < kVectors; ++k) wide[k] = hn::PromoteTo(dd, x[k]);
    function(wide);
    TARN_UNROLL for (size_t k = 0; k < kVectors; ++k) x[k] = ToFloat(d, wide[k]);
  } else {
#if HWY_TARGET != HWY_SCALAR
    const hn::Half<D> half;
    TARN_UNROLL for (size_t k = 0; k < kVectors; ++k) {
      wide[2 * k] = hn::PromoteTo(dd, hn::LowerHalf(half, x[k]));
      wide[2 * k + 1] = hn::PromoteTo(dd, hn::UpperHalf(half, x[k]));
    }
    function(wide);
    TARN_UNROLL for (size_t k = 0; k < kVectors; ++k) {
      x[k] = hn::Combine(d, ToFloat(half, wide[2 * k + 1]), ToFloat(half, wide[2 * k]));
    }
#endif
  }
}

// Types, too, to be sure of their inlining.
struct ExpOfWide {
  template <size_t kVectors>
  HWY_INLINE void operator()(DoubleVector (&x)[kVectors]) const {
    ScaledExp<0>(x);
  }
};

struct TanhOfWide {
  template <size_t kVectors>
  HWY_INLINE void operator()(DoubleVector (&x)[kVectors]) const {
    TARN_UNROLL for (size_t k = 0; k < kVectors; ++k) x[k] = VectorTanh(x[k]);
  }
};

struct CoshOfWide {
  template <size_t kVectors>
  HWY_INLINE void operator()(DoubleVector (&x)[kVectors]) const {
    TARN_UNROLL for (size_t k = 0; k < kVectors; ++k) x[k] = VectorCosh(x[k]);
  }
};

struct SinhOfWide {
  template <size_t kVectors>
  HWY_INLINE void operator()(DoubleVector (&x)[kVectors]) const {
    TARN_UNROLL for (size_t k = 0; k < kVectors; ++k) x[k] = VectorSinh(x[k]);
  }
};

// Each function is a type, so that the loop over the nodes is compiled for it alone: x becomes
// y, and the derivative is given.
struct SigmoidFunction {
  template <class D, size_t kVectors>
  HWY_INLINE void operator()(D d, hn::Vec<D> (&x)[kVectors],
                             hn::Vec<D> (&derivative)[kVectors]) const {
    const auto one = hn::Set(d, 1.0F);
    InDouble(d, x, ExpOfWide());
    TARN_UNROLL for (size_t k = 0; k < kVectors; ++k) x[k] = hn::Div(one, hn::Add(x[k], one));
    TARN_UNROLL for (size_t k = 0; k < kVectors; ++k) {
      derivative[k] = hn::Mul(hn::Sub(one, x[k]), x[k]);
    }
  }
};

struct GaussianFunction {
  template <class D, size_t kVectors>
  HWY_INLINE void operator()(D d, hn::Vec<D> (&x)[kVectors],
                             hn::Vec<D> (&derivative)[kVectors]) const {
    TARN_UNROLL for (size_t k = 0; k < kVectors; ++k) {
      derivative[k] = hn::Mul(x[k], hn::Set(d, 2.0F));
      x[k] = hn::Neg(hn::Mul(x[k], x[k]));
    }
    InDouble(d, x, ExpOfWide());
    TARN_UNROLL for (size_t k = 0; k < kVectors; ++k) {
      // x may be so large that x * 2 is infinite.
      derivative[k] = hn::IfThenZeroElse(hn::Eq(x[k], hn::Zero(d)), hn::Mul(derivative[k], x[k]));
    }
  }
};

struct TanhFunction {
  template <class D, size_t kVectors>
  HWY_INLINE void operator()(D d, hn::Vec<D> (&x)[kVectors],
                             hn::Vec<D> (&derivative)[kVectors]) const {
    const auto one = hn::Set(d, 1.0F);
    const auto half = hn::Set(d, 0.5F);
    TARN_UNROLL for (size_t k = 0; k < kVectors; ++k) x[k] = hn::Neg(x[k]);
    InDouble(d, x, TanhOfWide());
    TARN_UNROLL for (size_t k = 0; k < kVectors; ++k) {
      derivative[k] = hn::Mul(hn::Sub(one, hn::Mul(x[k], x[k])), half);
      x[k] = hn::Mul(hn::Add(x[k], one), half);
    }
  }
};

struct SechFunction {
  template <class D, size_t kVectors>
  HWY_INLINE void operator()(D d, hn::Vec<D> (&x)[kVectors],
                             hn::Vec<D> (&derivative)[kVectors]) const {
    hn::Vec<D> s[kVectors];
    TARN_UNROLL for (size_t k = 0; k < kVectors; ++k) s[k] = hn::Neg(x[k]);
    InDouble(d, s, SinhOfWide());
    InDouble(d, x, CoshOfWide());
    TARN_UNROLL for (size_t k = 0; k < kVectors; ++k) {
      const auto y = hn::Div(hn::Set(d, 1.0F), x[k]);
      // s is infinite where y is 0.
      derivative[k] =
          hn::IfThenZeroElse(hn::Eq(y, hn::Zero(d)), hn::Mul(hn::Mul(hn::Neg(s[k]), y), y));
      x[k] = y;
    }
  }
};

HWY_INLINE void StoreWhole(FloatVector v, float* out) {
  hn::StoreU(v, FloatTag(), out);
}

#if HWY_TARGET != HWY_SCALAR
// The other half is stored, too: readers take whole vectors, and one that is only in part in a
// store still on its way has to wait for it.
HWY_INLINE void StoreWhole(hn::Vec<hn::Half<FloatTag>> v, float* out) {
  hn::StoreU(hn::ZeroExtendVector(FloatTag(), v), FloatTag(), out);
}
#endif

template <size_t kVectors, class D, typename Function>
HWY_INLINE void TransferAt(D d, Function function, const float* HWY_RESTRICT negated_net,
                           float* HWY_RESTRICT output, float* HWY_RESTRICT derivative_or_null) {
  const size_t lanes = hn::Lanes(d);
  hn::Vec<D> x[kVectors];
  hn::Vec<D> derivative[kVectors];
  TARN_UNROLL for (size_t k = 0; k < kVectors; ++k) x[k] = hn::LoadU(d, negated_net + k * lanes);
  function(d, x, derivative);
  TARN_UNROLL for (size_t k = 0; k < kVectors; ++k) StoreWhole(x[k], output + k * lanes);
  if (derivative_or_null == nullptr) return;
  TARN_UNROLL for (size_t k = 0; k < kVectors; ++k) {
    StoreWhole(derivative[k], derivative_or_null + k * lanes);
  }
}

// Whole vectors only, the last one of half the width where that will do: up to a vector's width
// less one past `count` is read and written.
template <typename Function>
HWY_INLINE void ForEachVector(Function function, const float* negated_net, size_t count,
                              float* output, float* derivative_or_null) {
  const FloatTag d;
  const size_t lanes = hn::Lanes(d);
  const auto derivative_at = [&](size_t j) {
    return derivative_or_null == nullptr ? nullptr : derivative_or_null + j;
  };
  size_t j = 0;
  for (; j + lanes < count; j += 2 * lanes) {
    TransferAt<2>(d, function, negated_net + j, output + j, derivative_at(j));
  }
  if (j >= count) return;
#if HWY_TARGET != HWY_SCALAR
  if (count - j <= lanes / 2) {
    const hn::Half<FloatTag> half;
    return TransferAt<1>(half, function, negated_net + j, output + j, derivative_at(j));
  }
#endif
  TransferAt<1>(d, function, negated_net + j, output + j, derivative_at(j));
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
