#pragma once

#include <array>
#include <cstdint>

// The numbers behind the exponential and hyperbolic functions, shared by the scalar functions
// and the vector kernels.

namespace tarn {

inline constexpr double kOneOverLn2 = 0x1.71547652b82fep+0;
// The high part has 40 bits, so that its product with any n of a finite result is exact.
inline constexpr double kLn2High = 0x1.62e42fefa2000p-1;
inline constexpr double kLn2Low = 0x1.9ef35793c7673p-41;

// 1.5 * 2^52: a number added to it is rounded to an integer that stands in the low bits.
inline constexpr double kRounder = 0x1.8p52;

inline constexpr int kMantissaBits = 52;

// Coefficients by ascending powers, Chebyshev fits:
// (sinh x - x) / x^3 in y = x^2 up to 1,
inline constexpr double kSinhSeriesEnd = 1.0;
inline constexpr std::array<double, 7> kS = {
    0x1.5555555555555p-3,  0x1.11111111110fdp-7,  0x1.a01a01a01ee70p-13, 0x1.71de3a4e14f40p-19,
    0x1.ae6460fae3728p-26, 0x1.611cb330c1fe8p-33, 0x1.b41232cf9950fp-41};
// (tanh x - x) / x^3 in y = x^2 up to 0.55^2, just past tanh x = 1/2.
inline constexpr double kTanhSeriesEnd = 0.55;
inline constexpr std::array<double, 11> kT = {
    -0x1.5555555555555p-2,  0x1.1111111111032p-3,  -0x1.ba1ba1b9fec84p-5,  0x1.664f487713373p-6,
    -0x1.226e32f00cf0cp-7,  0x1.d6d339333f329p-9,  -0x1.7d97cfd138c28p-10, 0x1.34c5a8a996cd4p-11,
    -0x1.ec1091436eb2ap-13, 0x1.64fd88e9900a5p-14, -0x1.59a834187ce22p-16};

}  // namespace tarn
