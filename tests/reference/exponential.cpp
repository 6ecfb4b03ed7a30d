#include "reference/exponential.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "engine/kernels/exponential_constants.h"

namespace tarn::reference {
namespace {

// Arguments of the exponential are held where the powers of two below still exist; past them
// the result is infinity or zero for good.
constexpr double kLargest = 711.0;
constexpr double kSmallest = -746.0;

// (e^r - 1 - r) / r^2 on |r| <= ln 2 / 2, a Chebyshev fit by ascending powers.
constexpr std::array<double, 11> kQ = {
    0x1.0000000000000p-1,  0x1.5555555555557p-3,  0x1.5555555555556p-5,  0x1.11111111100cep-7,
    0x1.6c16c16c162ccp-10, 0x1.a01a01abef415p-13, 0x1.a01a01a6dcaffp-16, 0x1.71de021a90822p-19,
    0x1.27e4db57442fbp-22, 0x1.af4e196027428p-26, 0x1.1f731ea5352cap-29};
constexpr uint64_t kExponentBias = 1023;

// The polynomials go in pairs, not in one chain: each step of a chain waits for the one before.
double Polynomial(const std::array<double, 7>& c, double y) {
  const double y2 = y * y;
  const double y4 = y2 * y2;
  const double c03 = (c[0] + c[1] * y) + (c[2] + c[3] * y) * y2;
  const double c46 = (c[4] + c[5] * y) + c[6] * y2;
  return c03 + c46 * y4;
}

double Polynomial(const std::array<double, 11>& c, double y) {
  const double y2 = y * y;
  const double y4 = y2 * y2;
  const double y8 = y4 * y4;
  const double c03 = (c[0] + c[1] * y) + (c[2] + c[3] * y) * y2;
  const double c47 = (c[4] + c[5] * y) + (c[6] + c[7] * y) * y2;
  const double c810 = (c[8] + c[9] * y) + c[10] * y2;
  return (c03 + c47 * y4) + c810 * y8;
}

double PowerOfTwo(uint64_t biased_exponent) {
  return std::bit_cast<double>(biased_exponent << kMantissaBits);
}

// A NaN compares false and stays.
double AtMost(double x, double limit) {
  return x > limit ? limit : x;
}
double AtLeast(double x, double limit) {
  return x < limit ? limit : x;
}

// 2^shift e^x, shift 0 or -1: the half of e^x exists where e^x itself overflows.
double ScaledExp(double argument, int64_t shift) {
  const double x = AtLeast(AtMost(argument, kLargest), kSmallest);
  const double rounded = x * kOneOverLn2 + kRounder;
  const double n = rounded - kRounder;
  const double high = x - n * kLn2High;
  const double low = n * kLn2Low;
  const double r = high - low;
  // The low part joins the small term: high and low each carry bits that r has lost.
  const double power = 1.0 + (high + (r * r * Polynomial(kQ, r) - low));

  // 2^n as the product of two powers, both of which exist even where 2^n does not. The first
  // product is exact, so that a subnormal result is rounded once.
  const uint64_t integer = std::bit_cast<uint64_t>(rounded) - std::bit_cast<uint64_t>(kRounder);
  const uint64_t twice_biased = integer + static_cast<uint64_t>(shift) + 2 * kExponentBias;
  const uint64_t first = twice_biased >> 1;
  return power * PowerOfTwo(first) * PowerOfTwo(twice_biased - first);
}

double HalfExp(double x) {
  return ScaledExp(x, -1);
}

double SinhOfLarge(double x) {
  const double half = HalfExp(x);
  return half - 0.25 / half;
}

double TanhOfLarge(double x) {
  return 1.0 - 2.0 / (Exp(2.0 * x) + 1.0);
}

// x + x^3 times the polynomial in x^2: the last step adds a small term to x itself.
template <size_t N>
double Series(const std::array<double, N>& coefficients, double x) {
  const double y = x * x;
  return x + x * (y * Polynomial(coefficients, y));
}

}  // namespace

double Exp(double x) {
  return ScaledExp(x, 0);
}

double Sinh(double x) {
  const double magnitude = std::fabs(x);
  return std::copysign(magnitude < kSinhSeriesEnd ? Series(kS, magnitude) : SinhOfLarge(magnitude),
                       x);
}

double Cosh(double x) {
  const double half = HalfExp(std::fabs(x));
  return half + 0.25 / half;
}

double Tanh(double x) {
  const double magnitude = std::fabs(x);
  return std::copysign(magnitude < kTanhSeriesEnd ? Series(kT, magnitude) : TanhOfLarge(magnitude),
                       x);
}

}  // namespace tarn::reference
