#include "reference/transfer.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <vector>

#include "engine/small_network.h"
#include "reference/exponential.h"

namespace tarn::reference {
namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kLargest = std::numeric_limits<float>::max();

struct Result {
  float y;
  float derivative;
};

// By the net input, as the formulas are usually read.
Result Apply(int32_t code, float net) {
  const std::array<float, 1> x = {-net};
  std::array<float, 1> y = {-7.0F};
  std::array<float, 1> derivative = {-7.0F};
  ApplyTransfer(code, x, y, derivative);
  return {y[0], derivative[0]};
}

// Every 4099th float of either sign, infinities in addition.
template <typename Function>
void SweepNets(Function function) {
  for (uint64_t bits = 0; bits <= 0xFFFFFFFFU; bits += 4099) {
    const float net = std::bit_cast<float>(static_cast<uint32_t>(bits));
    if (!std::isnan(net)) function(net);
  }
  for (float net : {kInfinity, -kInfinity, kLargest, -kLargest}) function(net);
}

TEST(Transfer, AZeroNetGivesTheMiddleOrTheTop) {
  for (float zero : {0.0F, -0.0F}) {
    EXPECT_EQ(Apply(kSigmoid, zero).y, 0.5F);
    EXPECT_EQ(Apply(kGaussian, zero).y, 1.0F);
    EXPECT_EQ(Apply(kTanh, zero).y, 0.5F);
    EXPECT_EQ(Apply(kSech, zero).y, 1.0F);
    EXPECT_EQ(Apply(kSigmoid, zero).derivative, 0.25F);
    EXPECT_EQ(Apply(kGaussian, zero).derivative, 0.0F);
    EXPECT_EQ(Apply(kTanh, zero).derivative, 0.5F);
    EXPECT_EQ(Apply(kSech, zero).derivative, 0.0F);
  }
}

TEST(Transfer, SigmoidIsRoundedToSingleAtEveryStep) {
  for (float x : {-3.25F, -0.7F, 0.1F, 0.9F, 5.5F}) {
    const float e = static_cast<float>(Exp(static_cast<double>(x)));
    const float sum = e + 1.0F;
    const float y = 1.0F / sum;
    const float rest = 1.0F - y;
    const float derivative = rest * y;
    EXPECT_EQ(Bits(Apply(kSigmoid, -x).y), Bits(y)) << x;
    EXPECT_EQ(Bits(Apply(kSigmoid, -x).derivative), Bits(derivative)) << x;
  }
}

TEST(Transfer, GaussianSquaresInSingleBeforeTheExponential) {
  for (float x : {-3.25F, -0.7F, 0.1F, 0.9F, 5.5F}) {
    const float square = x * x;
    const float y = static_cast<float>(Exp(-static_cast<double>(square)));
    const float twice = x * 2.0F;
    const float derivative = twice * y;
    EXPECT_EQ(Bits(Apply(kGaussian, -x).y), Bits(y)) << x;
    EXPECT_EQ(Bits(Apply(kGaussian, -x).derivative), Bits(derivative)) << x;
  }
}

TEST(Transfer, TanhDerivativeIsTakenBeforeTheShift) {
  for (float net : {-3.25F, -0.7F, 0.1F, 0.9F, 5.5F}) {
    const float t = static_cast<float>(Tanh(static_cast<double>(net)));
    const float shifted = t + 1.0F;
    const float y = shifted * 0.5F;
    const float square = t * t;
    const float rest = 1.0F - square;
    const float derivative = rest * 0.5F;
    EXPECT_EQ(Bits(Apply(kTanh, net).y), Bits(y)) << net;
    EXPECT_EQ(Bits(Apply(kTanh, net).derivative), Bits(derivative)) << net;
  }
}

TEST(Transfer, SechMultipliesByItsOutputTwice) {
  for (float net : {-3.25F, -0.7F, 0.1F, 0.9F, 5.5F}) {
    const float c = static_cast<float>(Cosh(static_cast<double>(net)));
    const float s = static_cast<float>(Sinh(static_cast<double>(net)));
    const float y = 1.0F / c;
    const float once = -s * y;
    const float derivative = once * y;
    EXPECT_EQ(Bits(Apply(kSech, net).y), Bits(y)) << net;
    EXPECT_EQ(Bits(Apply(kSech, net).derivative), Bits(derivative)) << net;
  }
}

TEST(Transfer, DerivativesAreThoseOfTheScaledFunctions) {
  for (int32_t code : {kSigmoid, kGaussian, kTanh, kSech}) {
    for (float net = -4.0F; net <= 4.0F; net += 0.25F) {
      const double h = 1.0 / 64;
      const double slope = (static_cast<double>(Apply(code, net + 0.015625F).y) -
                            static_cast<double>(Apply(code, net - 0.015625F).y)) /
                           (2 * h);
      EXPECT_NEAR(Apply(code, net).derivative, slope, 3e-4) << code << " at " << net;
    }
  }
  EXPECT_NEAR(Apply(kTanh, 0.5F).derivative, 0.5 / (std::cosh(0.5) * std::cosh(0.5)), 1e-7);
}

TEST(Transfer, LargeNetsSaturate) {
  for (float net : {200.0F, 1e10F, kLargest, kInfinity}) {
    EXPECT_EQ(Apply(kSigmoid, net).y, 1.0F);
    EXPECT_EQ(Bits(Apply(kSigmoid, -net).y), Bits(0.0F));
    EXPECT_EQ(Apply(kTanh, net).y, 1.0F);
    EXPECT_EQ(Bits(Apply(kTanh, -net).y), Bits(0.0F));
    for (int32_t code : {kSigmoid, kGaussian, kTanh, kSech}) {
      EXPECT_EQ(Apply(code, net).derivative, 0.0F) << code;
      EXPECT_EQ(Apply(code, -net).derivative, 0.0F) << code;
    }
    for (float sign : {1.0F, -1.0F}) {
      EXPECT_EQ(Bits(Apply(kGaussian, sign * net).y), Bits(0.0F));
      EXPECT_EQ(Bits(Apply(kSech, sign * net).y), Bits(0.0F));
    }
  }
}

TEST(Transfer, NeverGivesNanOrLeavesZeroToOne) {
  for (int32_t code : {kSigmoid, kGaussian, kTanh, kSech}) {
    SweepNets([code](float net) {
      const Result result = Apply(code, net);
      ASSERT_TRUE(result.y >= 0.0F && result.y <= 1.0F) << code << " at " << net;
      ASSERT_LE(std::fabs(result.derivative), 0.8578F) << code << " at " << net;
    });
  }
}

TEST(Transfer, GaussianAndSechDerivativesVanishWithTheOutput) {
  for (int32_t code : {kGaussian, kSech}) {
    SweepNets([code](float net) {
      const Result result = Apply(code, net);
      if (result.y != 0.0F) return;
      ASSERT_EQ(Bits(result.derivative), Bits(0.0F)) << net;
    });
  }
}

TEST(Transfer, KeepsSubnormalOutputs) {
  EXPECT_GT(Apply(kGaussian, 10.0F).y, 0.0F);
  EXPECT_LT(Apply(kGaussian, 10.0F).y, std::numeric_limits<float>::min());
  EXPECT_GT(Apply(kSech, 89.0F).y, 0.0F);
  EXPECT_LT(Apply(kSech, 89.0F).y, std::numeric_limits<float>::min());
}

TEST(Transfer, ANanStaysANan) {
  const float nan = std::numeric_limits<float>::quiet_NaN();
  for (int32_t code : {kSigmoid, kGaussian, kTanh, kSech}) {
    EXPECT_TRUE(std::isnan(Apply(code, nan).y)) << code;
    EXPECT_TRUE(std::isnan(Apply(code, nan).derivative)) << code;
  }
}

TEST(Transfer, AnUnknownCodeLeavesEverythingAsItIs) {
  for (int32_t code :
       {-1, 4, std::numeric_limits<int32_t>::min(), std::numeric_limits<int32_t>::max()}) {
    EXPECT_EQ(Apply(code, 1.0F).y, -7.0F);
    EXPECT_EQ(Apply(code, 1.0F).derivative, -7.0F);
  }
}

TEST(Transfer, TheOutputIsTheSameWithAndWithoutDerivatives) {
  std::vector<float> x;
  for (int k = -100; k <= 100; ++k) x.push_back(static_cast<float>(k) * 0.37F);
  for (int32_t code : {kSigmoid, kGaussian, kTanh, kSech}) {
    std::vector<float> with(x.size()), without(x.size()), derivatives(x.size());
    ApplyTransfer(code, x, with, derivatives);
    ApplyTransfer(code, x, without, {});
    for (size_t j = 0; j < x.size(); ++j) ASSERT_EQ(Bits(with[j]), Bits(without[j])) << x[j];
  }
}

TEST(Transfer, AnEmptyLayerIsNothingToDo) {
  std::vector<float> none;
  ApplyTransfer(kSech, none, none, none);
  EXPECT_TRUE(none.empty());
}

}  // namespace
}  // namespace tarn::reference
