// The exponential and hyperbolic functions in vectors of doubles, our own so that a result does
// not depend on the machine or its C library. For arguments that were floats and results that
// will be: rounded to float they are those of the exact values for every float argument, but for
// one of the hyperbolic sine and its negative. Included once for every target.
//
// The exponential rests on the reduction
//   x = n ln 2 + r,  n = x / ln 2 to the nearest integer,  |r| <= ln 2 / 2,
// with ln 2 in two parts, the high one short enough that n times it is exact, and on
//   e^r = 1 + (r + r^2 q(r)),  e^x = 2^n e^r,
// q a polynomial of degree 10, off by less than 2^-61.

#if defined(TARN_ENGINE_KERNELS_EXPONENTIAL_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef TARN_ENGINE_KERNELS_EXPONENTIAL_INL_H_
#undef TARN_ENGINE_KERNELS_EXPONENTIAL_INL_H_
#else
#define TARN_ENGINE_KERNELS_EXPONENTIAL_INL_H_
#endif

#include <array>
#include <cstddef>
#include <cstdint>
#include <hwy/highway.h>

#include "engine/kernels/exponential_constants.h"

HWY_BEFORE_NAMESPACE();
namespace tarn::kernels::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

using DoubleTag = hn::ScalableTag<double>;
using DoubleVector = hn::Vec<DoubleTag>;

// Past these every result is infinite or zero as a float, and the power of two below exists.
// Half the result exists past the upper one, too.
constexpr double kLargestOfFloats = 100.0;
constexpr double kSmallestOfFloats = -110.0;

// Pairs, not one chain. Products and sums are fused where the machine can: the float results
// are the same with and without, which the test over all float arguments proves.
HWY_INLINE DoubleVector Polynomial(const std::array<double, 7>& c, DoubleVector y) {
  const DoubleTag d;
  const DoubleVector y2 = hn::Mul(y, y);
  const DoubleVector y4 = hn::Mul(y2, y2);
  const auto pair = [&](size_t i) {
    return hn::MulAdd(hn::Set(d, c[i + 1]), y, hn::Set(d, c[i]));
  };
  const DoubleVector c03 = hn::MulAdd(pair(2), y2, pair(0));
  const DoubleVector c46 = hn::MulAdd(hn::Set(d, c[6]), y2, pair(4));
  return hn::MulAdd(c46, y4, c03);
}

HWY_INLINE DoubleVector Polynomial(const std::array<double, 11>& c, DoubleVector y) {
  const DoubleTag d;
  const DoubleVector y2 = hn::Mul(y, y);
  const DoubleVector y4 = hn::Mul(y2, y2);
  const DoubleVector y8 = hn::Mul(y4, y4);
  const auto pair = [&](size_t i) {
    return hn::MulAdd(hn::Set(d, c[i + 1]), y, hn::Set(d, c[i]));
  };
  const DoubleVector c03 = hn::MulAdd(pair(2), y2, pair(0));
  const DoubleVector c47 = hn::MulAdd(pair(6), y2, pair(4));
  const DoubleVector c810 = hn::MulAdd(hn::Set(d, c[10]), y2, pair(8));
  return hn::MulAdd(c810, y8, hn::MulAdd(c47, y4, c03));
}

// 2^shift e^x. A NaN passes: the limits come first, so that they give way to it.
template <int64_t kShift>
HWY_INLINE DoubleVector ScaledExp(DoubleVector argument) {
  const DoubleTag d;
  const hn::RebindToSigned<DoubleTag> di;
  const DoubleVector x = hn::Max(hn::Set(d, kSmallestOfFloats),
                                 hn::Min(hn::Set(d, kLargestOfFloats), argument));
  const DoubleVector rounder = hn::Set(d, kRounder);
  const DoubleVector rounded = hn::MulAdd(x, hn::Set(d, kOneOverLn2), rounder);
  const DoubleVector n = hn::Sub(rounded, rounder);
  const DoubleVector high = hn::NegMulAdd(n, hn::Set(d, kLn2High), x);
  const DoubleVector low = hn::Mul(n, hn::Set(d, kLn2Low));
  const DoubleVector r = hn::Sub(high, low);
  const DoubleVector small = hn::MulSub(hn::Mul(r, r), Polynomial(kQ, r), low);
  const DoubleVector power = hn::Add(hn::Set(d, 1.0), hn::Add(high, small));
  // The integer stands in the low bits of `rounded`; the shift drops all others.
  const auto biased = hn::Add(hn::BitCast(di, rounded), hn::Set(di, kShift + kExponentBias));
  return hn::Mul(power, hn::BitCast(d, hn::ShiftLeft<kMantissaBits>(biased)));
}

HWY_INLINE DoubleVector VectorExp(DoubleVector x) {
  return ScaledExp<0>(x);
}

// e^x / 2 and what is left of it on the other side, 1 / (4 (e^x / 2)).
HWY_INLINE DoubleVector VectorCosh(DoubleVector x) {
  const DoubleTag d;
  const DoubleVector half = ScaledExp<-1>(hn::Abs(x));
  return hn::Add(half, hn::Div(hn::Set(d, 0.25), half));
}

template <size_t N>
HWY_INLINE DoubleVector Series(const std::array<double, N>& coefficients, DoubleVector x) {
  const DoubleVector y = hn::Mul(x, x);
  return hn::MulAdd(x, hn::Mul(y, Polynomial(coefficients, y)), x);
}

HWY_INLINE DoubleVector VectorSinh(DoubleVector x) {
  const DoubleTag d;
  const DoubleVector magnitude = hn::Abs(x);
  const DoubleVector half = ScaledExp<-1>(magnitude);
  const DoubleVector large = hn::Sub(half, hn::Div(hn::Set(d, 0.25), half));
  const auto is_small = hn::Lt(magnitude, hn::Set(d, kSinhSeriesEnd));
  return hn::CopySign(hn::IfThenElse(is_small, Series(kS, magnitude), large), x);
}

HWY_INLINE DoubleVector VectorTanh(DoubleVector x) {
  const DoubleTag d;
  const DoubleVector magnitude = hn::Abs(x);
  const DoubleVector one = hn::Set(d, 1.0);
  const DoubleVector power = VectorExp(hn::Add(magnitude, magnitude));
  const DoubleVector large = hn::Sub(one, hn::Div(hn::Set(d, 2.0), hn::Add(power, one)));
  const auto is_small = hn::Lt(magnitude, hn::Set(d, kTanhSeriesEnd));
  return hn::CopySign(hn::IfThenElse(is_small, Series(kT, magnitude), large), x);
}

}  // namespace tarn::kernels::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
