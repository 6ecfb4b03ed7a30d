// The exponential and hyperbolic functions in vectors of doubles, our own so that a result does
// not depend on the machine or its C library. For arguments that were floats and results that
// will be: rounded to float they are those of the exact values for every float argument, but for
// one of the hyperbolic sine and its negative. Included once for every target.
//
// The exponential rests on the reduction
//   x = n / 8 ln 2 + r,  n = 8 x / ln 2 to the nearest integer,  |r| <= ln 2 / 16,
// with ln 2 in two parts, the high one short enough that n times it is exact, and on
//   e^x = 2^(n/8) + 2^(n/8) (r + r^2 p(r)),
// p a polynomial of degree 5 and the eighths of 2^(n/8) from a table. The hyperbolic functions
// are, with H = e^|x| / 2 and the sign of x where it matters,
//   sinh x = H - 1 / (4 H), below 1: x + x^3 S(x^2)
//   cosh x = H + 1 / (4 H)
//   tanh x = 1 - 2 / (e^(2|x|) + 1), below 0.55: x + x^3 T(x^2)

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
#include "engine/kernels/tiles-inl.h"

HWY_BEFORE_NAMESPACE();
namespace tarn::kernels::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

using DoubleTag = hn::ScalableTag<double>;
using DoubleVector = hn::Vec<DoubleTag>;

// Past these every result is infinite or zero as a float, and the power of two below exists.
// Half the result exists past the upper one, too.
constexpr double kLargestOfFloats = 100.0;
constexpr double kSmallestOfFloats = -110.0;

// The bits of 2^(j/8), less j eighths in the exponent: where n = 8 k + j eighths are added to it,
// 2^(n/8) stands.
constexpr int kTableBits = 3;
alignas(64) constexpr std::array<int64_t, 1 << kTableBits> kEighthPowers = {
    0x3ff0000000000000, 0x3fef72b83c7d517b, 0x3fef06fe0a31b715, 0x3feebfdad5362a27,
    0x3feea09e667f3bcd, 0x3feeace5422aa0db, 0x3feee89f995ad3ad, 0x3fef5818dcfba487};

// (e^r - 1 - r) / r^2 on |r| <= ln 2 / 16, a Chebyshev fit off by less than 2^-56 of e^r.
constexpr std::array<double, 6> kP = {0x1.000000000002ep-1,  0x1.555555555556ap-3,
                                      0x1.5555554e93acap-5,  0x1.1111110e10556p-7,
                                      0x1.6c1b7131a0993p-10, 0x1.a01e2c15a33f3p-13};

// Pairs, not one chain. Products and sums are fused where the machine can: the float results
// are the same with and without, which the test over all float arguments proves.
HWY_INLINE DoubleVector Polynomial(const std::array<double, 7>& c, DoubleVector y) {
  const DoubleTag d;
  const DoubleVector y2 = hn::Mul(y, y);
  const DoubleVector y4 = hn::Mul(y2, y2);
  const auto pair = [&](size_t i) { return hn::MulAdd(hn::Set(d, c[i + 1]), y, hn::Set(d, c[i])); };
  const DoubleVector c03 = hn::MulAdd(pair(2), y2, pair(0));
  const DoubleVector c46 = hn::MulAdd(hn::Set(d, c[6]), y2, pair(4));
  return hn::MulAdd(c46, y4, c03);
}

HWY_INLINE DoubleVector Polynomial(const std::array<double, 11>& c, DoubleVector y) {
  const DoubleTag d;
  const DoubleVector y2 = hn::Mul(y, y);
  const DoubleVector y4 = hn::Mul(y2, y2);
  const DoubleVector y8 = hn::Mul(y4, y4);
  const auto pair = [&](size_t i) { return hn::MulAdd(hn::Set(d, c[i + 1]), y, hn::Set(d, c[i])); };
  const DoubleVector c03 = hn::MulAdd(pair(2), y2, pair(0));
  const DoubleVector c47 = hn::MulAdd(pair(6), y2, pair(4));
  const DoubleVector c810 = hn::MulAdd(hn::Set(d, c[10]), y2, pair(8));
  return hn::MulAdd(c810, y8, hn::MulAdd(c47, y4, c03));
}

// Between the limits. A NaN passes: the limits come first, so that they give way to it; the
// scalar and emulated operations would drop it in either place.
HWY_INLINE DoubleVector Clamped(DoubleVector x) {
  const DoubleTag d;
  const DoubleVector largest = hn::Set(d, kLargestOfFloats);
  const DoubleVector smallest = hn::Set(d, kSmallestOfFloats);
#if HWY_TARGET == HWY_SCALAR || HWY_TARGET == HWY_EMU128
  x = hn::IfThenElse(hn::Gt(x, largest), largest, x);
  return hn::IfThenElse(hn::Lt(x, smallest), smallest, x);
#else
  return hn::Max(smallest, hn::Min(largest, x));
#endif
}

// The powers whose index stands in the low bits of `eighths`.
HWY_INLINE hn::Vec<hn::RebindToSigned<DoubleTag>> LookUpPowers(
    hn::Vec<hn::RebindToSigned<DoubleTag>> eighths) {
  const hn::RebindToSigned<DoubleTag> di;
  const auto index = hn::And(eighths, hn::Set(di, (int64_t{1} << kTableBits) - 1));
#if HWY_TARGET <= HWY_AVX3 && HWY_ARCH_X86
  return hn::TableLookupLanes(hn::Load(di, kEighthPowers.data()), hn::IndicesFromVec(di, index));
#else
  return hn::GatherIndex(di, kEighthPowers.data(), index);
#endif
}

// 2^kShift e^x of kVectors vectors, each step for all of them before the next: one after the
// other, the chains of steps do not fit into what a processor looks ahead.
template <int64_t kShift, size_t kVectors>
HWY_INLINE void ScaledExp(DoubleVector (&x)[kVectors]) {
  const DoubleTag d;
  const hn::RebindToSigned<DoubleTag> di;
  constexpr double kEighths = 1 << kTableBits;
  const DoubleVector rounder = hn::Set(d, kRounder);
  DoubleVector rounded[kVectors], n[kVectors], r[kVectors], y[kVectors];
  DoubleVector low[kVectors], middle[kVectors], high[kVectors];
  TARN_UNROLL for (size_t k = 0; k < kVectors; ++k) {
    x[k] = Clamped(x[k]);
  }
  TARN_UNROLL for (size_t k = 0; k < kVectors; ++k) {
    rounded[k] = hn::MulAdd(x[k], hn::Set(d, kEighths * kOneOverLn2), rounder);
  }
  TARN_UNROLL for (size_t k = 0; k < kVectors; ++k) n[k] = hn::Sub(rounded[k], rounder);
  TARN_UNROLL for (size_t k = 0; k < kVectors; ++k) {
    r[k] = hn::NegMulAdd(n[k], hn::Set(d, kLn2High / kEighths), x[k]);
  }
  TARN_UNROLL for (size_t k = 0; k < kVectors; ++k) {
    r[k] = hn::NegMulAdd(n[k], hn::Set(d, kLn2Low / kEighths), r[k]);
  }
  TARN_UNROLL for (size_t k = 0; k < kVectors; ++k) y[k] = hn::Mul(r[k], r[k]);
  TARN_UNROLL for (size_t k = 0; k < kVectors; ++k) {
    low[k] = hn::MulAdd(hn::Set(d, kP[1]), r[k], hn::Set(d, kP[0]));
    middle[k] = hn::MulAdd(hn::Set(d, kP[3]), r[k], hn::Set(d, kP[2]));
    high[k] = hn::MulAdd(hn::Set(d, kP[5]), r[k], hn::Set(d, kP[4]));
  }
  TARN_UNROLL for (size_t k = 0; k < kVectors; ++k) {
    middle[k] = hn::MulAdd(high[k], y[k], middle[k]);
  }
  TARN_UNROLL for (size_t k = 0; k < kVectors; ++k) low[k] = hn::MulAdd(middle[k], y[k], low[k]);
  TARN_UNROLL for (size_t k = 0; k < kVectors; ++k) low[k] = hn::MulAdd(low[k], y[k], r[k]);
  TARN_UNROLL for (size_t k = 0; k < kVectors; ++k) {
    const auto eighths = hn::BitCast(di, rounded[k]);
    auto bits = hn::Add(LookUpPowers(eighths), hn::ShiftLeft<kMantissaBits - kTableBits>(eighths));
    if constexpr (kShift != 0) bits = hn::Add(bits, hn::Set(di, kShift * (1LL << kMantissaBits)));
    const DoubleVector power = hn::BitCast(d, bits);
    x[k] = hn::MulAdd(power, low[k], power);
  }
}

template <int64_t kShift>
HWY_INLINE DoubleVector ScaledExp(DoubleVector x) {
  DoubleVector one[1] = {x};
  ScaledExp<kShift>(one);
  return one[0];
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
