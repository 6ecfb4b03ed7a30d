#include "reference/exponential.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>

#include "engine/small_network.h"

namespace tarn::reference {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kSmallestSubnormal = std::numeric_limits<double>::denorm_min();

// The distance from the exact value in units in the last place of the double next to it.
double UnitsOff(double got, long double exact) {
  const double nearest = static_cast<double>(exact);
  if (std::isinf(nearest) || std::isnan(nearest)) return got == nearest ? 0.0 : kInfinity;
  int exponent = 0;
  std::frexp(nearest, &exponent);
  const double unit = std::ldexp(1.0, std::max(exponent - 53, -1074));
  return static_cast<double>(std::fabs(static_cast<long double>(got) - exact) / unit);
}

// Every 65521st float of either sign.
template <typename Function>
void ForSampledFloats(Function function) {
  constexpr uint32_t kStep = 65521;
  for (uint64_t bits = 0; bits <= 0xFFFFFFFFU; bits += kStep) {
    const float x = std::bit_cast<float>(static_cast<uint32_t>(bits));
    if (std::isfinite(x)) function(static_cast<double>(x));
  }
}

TEST(Exponential, AgreesWithLongDoubleOnSampledFloats) {
  ForSampledFloats([](double x) { ASSERT_LE(UnitsOff(Exp(x), std::exp(1.0L * x)), 0.93) << x; });
}

TEST(Exponential, HyperbolicFunctionsAgreeWithLongDoubleOnSampledFloats) {
  ForSampledFloats([](double x) {
    ASSERT_LE(UnitsOff(Sinh(x), std::sinh(1.0L * x)), 1.62) << x;
    ASSERT_LE(UnitsOff(Cosh(x), std::cosh(1.0L * x)), 1.5) << x;
    ASSERT_LE(UnitsOff(Tanh(x), std::tanh(1.0L * x)), 1.5) << x;
  });
}

// The bits of the doubles themselves: the same on every machine and in every build.
TEST(Exponential, GivesTheSameBitsEverywhere) {
  uint64_t hash = 0xCBF29CE484222325U;
  const auto add = [&hash](double value) { hash = (hash ^ Bits(value)) * 0x100000001B3U; };
  ForSampledFloats([&add](double x) {
    add(Exp(x));
    add(Sinh(x));
    add(Cosh(x));
    add(Tanh(x));
  });
  EXPECT_EQ(hash, 17539763199369321298U);
}

TEST(Exponential, IsExactAtZero) {
  for (double zero : {0.0, -0.0}) {
    EXPECT_EQ(Exp(zero), 1.0);
    EXPECT_EQ(Cosh(zero), 1.0);
    EXPECT_EQ(Bits(Sinh(zero)), Bits(zero));
    EXPECT_EQ(Bits(Tanh(zero)), Bits(zero));
  }
}

TEST(Exponential, SaturatesAtInfinity) {
  EXPECT_EQ(Exp(kInfinity), kInfinity);
  EXPECT_EQ(Bits(Exp(-kInfinity)), Bits(0.0));
  EXPECT_EQ(Sinh(kInfinity), kInfinity);
  EXPECT_EQ(Sinh(-kInfinity), -kInfinity);
  EXPECT_EQ(Cosh(kInfinity), kInfinity);
  EXPECT_EQ(Cosh(-kInfinity), kInfinity);
  EXPECT_EQ(Tanh(kInfinity), 1.0);
  EXPECT_EQ(Tanh(-kInfinity), -1.0);
}

TEST(Exponential, GivesNanForNanOfEitherSign) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  for (double x : {nan, -nan}) {
    EXPECT_TRUE(std::isnan(Exp(x)));
    EXPECT_TRUE(std::isnan(Sinh(x)));
    EXPECT_TRUE(std::isnan(Cosh(x)));
    EXPECT_TRUE(std::isnan(Tanh(x)));
  }
}

TEST(Exponential, OverflowsWhereTheResultDoes) {
  EXPECT_LE(UnitsOff(Exp(709.78), std::exp(709.78L)), 1e-13 * 0x1p53);
  EXPECT_LT(Exp(709.78), kInfinity);
  EXPECT_EQ(Exp(709.79), kInfinity);
  EXPECT_EQ(Exp(1e300), kInfinity);
  for (double sign : {1.0, -1.0}) {
    EXPECT_LT(Cosh(sign * 710.47), kInfinity);
    EXPECT_LT(std::fabs(Sinh(sign * 710.47)), kInfinity);
    EXPECT_GT(Cosh(sign * 710.47), 1.78e308);
    EXPECT_EQ(Cosh(sign * 710.48), kInfinity);
    EXPECT_EQ(Sinh(sign * 710.48), sign * kInfinity);
  }
}

TEST(Exponential, RoundsSubnormalResultsOnce) {
  for (int k = 70800; k <= 74600; ++k) {
    const double x = -k / 100.0;
    ASSERT_LE(UnitsOff(Exp(x), std::exp(1.0L * x)), 0.93) << x;
  }
  EXPECT_EQ(Exp(-745.13), kSmallestSubnormal);
  EXPECT_EQ(Bits(Exp(-745.14)), Bits(0.0));
  EXPECT_EQ(Bits(Exp(-1e300)), Bits(0.0));
}

TEST(Exponential, KeepsTheSmallestArgumentsOfSinhAndTanh) {
  for (double x : {kSmallestSubnormal, 1e-310, 1e-45, 1e-20}) {
    EXPECT_EQ(Sinh(x), x);
    EXPECT_EQ(Tanh(x), x);
    EXPECT_EQ(Sinh(-x), -x);
    EXPECT_EQ(Tanh(-x), -x);
    EXPECT_EQ(Cosh(x), 1.0);
    EXPECT_EQ(Exp(x), 1.0);
  }
}

TEST(Exponential, SinhAndTanhAreOddAndCoshIsEven) {
  ForSampledFloats([](double x) {
    ASSERT_EQ(Bits(Sinh(-x)), Bits(-Sinh(x))) << x;
    ASSERT_EQ(Bits(Tanh(-x)), Bits(-Tanh(x))) << x;
    ASSERT_EQ(Bits(Cosh(-x)), Bits(Cosh(x))) << x;
  });
}

TEST(Exponential, JoinsTheTwoFormsOfSinhAndTanhWithoutAStep) {
  for (double end : {1.0, 0.55}) {
    double x = end - 1e-6;
    for (int k = 0; k < 2000; ++k) {
      const double next = x + 1e-9;
      ASSERT_LT(Sinh(x), Sinh(next)) << x;
      ASSERT_LT(Tanh(x), Tanh(next)) << x;
      x = next;
    }
  }
}

TEST(Exponential, TanhStaysWithinOne) {
  ForSampledFloats([](double x) { ASSERT_LE(std::fabs(Tanh(x)), 1.0) << x; });
  EXPECT_LT(Tanh(18.0), 1.0);
  EXPECT_EQ(Tanh(19.07), 1.0);
  EXPECT_EQ(Tanh(-19.07), -1.0);
}

}  // namespace
}  // namespace tarn::reference
