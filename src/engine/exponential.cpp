#include "engine/exponential.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace tarn {
namespace {

constexpr double kOneOverLn2 = 0x1.71547652b82fep+0;
// The high part has 40 bits, so that its product with any n of a finite result is exact.
constexpr double kLn2High = 0x1.62e42fefa2000p-1;
constexpr double kLn2Low = 0x1.9ef35793c7673p-41;

// 1.5 * 2^52: a number added to it is rounded to an integer that stands in the low bits.
constexpr double kRounder = 0x1.8p52;

constexpr uint64_t kExponentBias = 1023;
constexpr int kMantissaBits = 52;

// Arguments of the exponential are held where the powers of two below still exist; past them
// the result is infinity or zero for good.
constexpr double kLargest = 711.0;
constexpr double kSmallest = -746.0;

// Coefficients by ascending powers, Chebyshev fits: (e^r - 1 - r) / r^2 on |r| <= ln 2 / 2,
constexpr std::array<double, 11> kQ = {
    0x1.0000000000000p-1,  0x1.5555555555557p-3,  0x1.5555555555556p-5,  0x1.11111111100cep-7,
    0x1.6c16c16c162ccp-10, 0x1.a01a01abef415p-13, 0x1.a01a01a6dcaffp-16, 0x1.71de021a90822p-19,
    0x1.27e4db57442fbp-22, 0x1.af4e196027428p-26, 0x1.1f731ea5352cap-29};
// (sinh x - x) / x^3 in y = x^2 up to 1,
constexpr double kSinhSeriesEnd = 1.0;
constexpr std::array<double, 7> kS = {
    0x1.5555555555555p-3,  0x1.11111111110fdp-7,  0x1.a01a01a01ee70p-13, 0x1.71de3a4e14f40p-19,
    0x1.ae6460fae3728p-26, 0x1.611cb330c1fe8p-33, 0x1.b41232cf9950fp-41};
// (tanh x - x) / x^3 in y = x^2 up to 0.55^2, just past tanh x = 1/2.
constexpr double kTanhSeriesEnd = 0.55;
constexpr std::array<double, 11> kT = {
    -0x1.5555555555555p-2,  0x1.1111111111032p-3,  -0x1.ba1ba1b9fec84p-5,  0x1.664f487713373p-6,
    -0x1.226e32f00cf0cp-7,  0x1.d6d339333f329p-9,  -0x1.7d97cfd138c28p-10, 0x1.34c5a8a996cd4p-11,
    -0x1.ec1091436eb2ap-13, 0x1.64fd88e9900a5p-14, -0x1.59a834187ce22p-16};

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

}  // namespace tarn
