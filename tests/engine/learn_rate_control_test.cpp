#include "engine/learn_rate_control.h"

#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <vector>

#include "engine/small_network.h"

namespace tarn {
namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

Network ControlledNetwork() {
  Network network;
  network.LRC = 1;
  network.iteration = 5;
  network.Eta = 0.5F;
  network.EtaMin = 0.0F;
  network.EtaMax = 1.0F;
  return network;
}

// Eta after one iteration whose error changed from `previous` to `current`, from 0.5.
float EtaAfter(float previous, float current) {
  Network network = ControlledNetwork();
  LearnRateControl control;
  control.current_error = previous;
  AdaptLearnRate(network, control, current);
  return network.Eta;
}

// With a current error of 1, to within the 2^-23 that the previous error is rounded by.
float EtaForImprovement(float improvement) {
  const float current = 1.0F;
  return EtaAfter(current + improvement, current);
}

TEST(LearnRateControl, EveryRowOfTheTableGivesItsFactor) {
  EXPECT_EQ(EtaForImprovement(-0.5F), 0.5F * 0.8F);
  EXPECT_EQ(EtaForImprovement(-0.0006F), 0.5F * 0.8F);
  EXPECT_EQ(EtaForImprovement(-0.0004F), 0.5F * 0.995F);
  EXPECT_EQ(EtaForImprovement(-0.000001F), 0.5F * 0.995F);
  EXPECT_EQ(EtaForImprovement(0.0F), 0.5F * 1.02F);
  EXPECT_EQ(EtaForImprovement(0.000005F), 0.5F * 1.02F);
  EXPECT_EQ(EtaForImprovement(0.000015F), 0.5F * 1.008F);
  EXPECT_EQ(EtaForImprovement(0.000035F), 0.5F * 1.002F);
  EXPECT_EQ(EtaForImprovement(0.0005F), 0.5F * 1.001F);
  EXPECT_EQ(EtaForImprovement(0.0015F), 0.5F);
  EXPECT_EQ(EtaForImprovement(0.0025F), 0.5F * 0.98F);
  EXPECT_EQ(EtaForImprovement(1.0e6F), 0.5F * 0.98F);
}

// The improvements just under and at or above each limit that (previous - current) / current
// can take: previous errors one float apart around current (1 + limit).
struct Boundary {
  double limit;
  float factor_below;
  float factor_above;
};

TEST(LearnRateControl, RowsMeetExactlyAtTheirDoubleLimits) {
  const std::vector<Boundary> boundaries = {{-0.0005, 0.8F, 0.995F},   {0.0, 0.995F, 1.02F},
                                            {0.00001, 1.02F, 1.008F},  {0.00002, 1.008F, 1.002F},
                                            {0.00005, 1.002F, 1.001F}, {0.001, 1.001F, 1.0F},
                                            {0.0022, 1.0F, 0.98F}};
  for (const Boundary& boundary : boundaries) {
    float previous = static_cast<float>(1.0 + boundary.limit) - 1e-6F;
    int below = 0;
    int above = 0;
    for (int k = 0; k < 32; ++k) {
      const float improvement = (previous - 1.0F) / 1.0F;
      const bool is_below = static_cast<double>(improvement) < boundary.limit;
      (is_below ? below : above) += 1;
      const float factor = is_below ? boundary.factor_below : boundary.factor_above;
      ASSERT_EQ(Bits(EtaAfter(previous, 1.0F)), Bits(0.5F * factor)) << improvement;
      previous = std::nextafter(previous, 2.0F);
    }
    EXPECT_GT(below, 0) << boundary.limit;
    EXPECT_GT(above, 0) << boundary.limit;
  }
}

// Errors in whole numbers whose quotient is the limit itself, so that the improvement is the
// float next to it: the double limit decides on which side that lies.
TEST(LearnRateControl, AFloatNextToALimitIsComparedWithTheDouble) {
  struct Case {
    float difference;
    float improvement;
    float factor;
  };
  constexpr float kCurrent = 10000000.0F;
  const std::vector<Case> cases = {{-5000.0F, -0.0005F, 0.8F},  // the float is below -0.0005
                                   {0.0F, 0.0F, 1.02F},
                                   {100.0F, 0.00001F, 1.02F},   // below 0.00001
                                   {200.0F, 0.00002F, 1.008F},  // below 0.00002
                                   {500.0F, 0.00005F, 1.002F},  // below 0.00005
                                   {10000.0F, 0.001F, 1.0F},    // above 0.001
                                   {22000.0F, 0.0022F, 1.0F}};  // below 0.0022
  for (const Case& c : cases) {
    const float previous = kCurrent + c.difference;
    ASSERT_EQ(Bits((previous - kCurrent) / kCurrent), Bits(c.improvement));
    EXPECT_EQ(Bits(EtaAfter(previous, kCurrent)), Bits(0.5F * c.factor)) << c.improvement;
  }
}

TEST(LearnRateControl, TheImprovementIsASingleQuotientOfASingleDifference) {
  const float previous = 0.123456F;
  const float current = 0.123455F;
  const float difference = previous - current;
  const float improvement = difference / current;
  ASSERT_LT(improvement, 0.00001F);
  ASSERT_GT(improvement, 0.0F);
  EXPECT_EQ(EtaAfter(previous, current), 0.5F * 1.02F);
}

TEST(LearnRateControl, EtaIsHeldBetweenItsLimits) {
  Network network = ControlledNetwork();
  network.EtaMax = 0.505F;
  LearnRateControl control{0.0F, 1.0F, false};
  AdaptLearnRate(network, control, 1.0F);
  EXPECT_EQ(network.Eta, 0.505F);

  network.EtaMin = 0.5F;
  AdaptLearnRate(network, control, 2.0F);
  EXPECT_EQ(network.Eta, 0.5F);
}

TEST(LearnRateControl, AMinimumAboveTheMaximumWins) {
  Network network = ControlledNetwork();
  network.EtaMin = 0.7F;
  network.EtaMax = 0.2F;
  LearnRateControl control{0.0F, 1.0F, false};
  AdaptLearnRate(network, control, 1.0F);
  EXPECT_EQ(network.Eta, 0.7F);
}

TEST(LearnRateControl, TheLimitsHoldEvenWhereTheFactorIsOne) {
  Network network = ControlledNetwork();
  network.EtaMax = 0.25F;
  LearnRateControl control{0.0F, 1.0015F, false};
  AdaptLearnRate(network, control, 1.0F);
  EXPECT_EQ(network.Eta, 0.25F);
}

TEST(LearnRateControl, AnErrorOfZeroLeavesEta) {
  Network network = ControlledNetwork();
  network.LRC = 5;
  network.EtaMax = 0.1F;
  LearnRateControl control{0.0F, 1.0F, false};
  EXPECT_FALSE(AdaptLearnRate(network, control, 0.0F));
  EXPECT_EQ(network.Eta, 0.5F);
  EXPECT_FALSE(control.started);
  EXPECT_EQ(control.previous_error, 1.0F);
  EXPECT_EQ(control.current_error, 0.0F);
}

TEST(LearnRateControl, TracksTheErrorFromTheFirstIterationButActsFromItsStart) {
  Network network = ControlledNetwork();
  network.LRC = 3;
  network.iteration = 0;
  LearnRateControl control;
  const std::vector<float> errors = {1.0F, 0.9F, 0.8999F, 0.8F};
  const std::vector<float> etas = {0.5F, 0.5F, 0.5F * 1.001F, 0.5F * 1.001F * 0.98F};
  for (size_t k = 0; k < errors.size(); ++k) {
    ++network.iteration;
    EXPECT_EQ(AdaptLearnRate(network, control, errors[k]), network.iteration == 3);
    EXPECT_EQ(network.Eta, etas[k]);
    EXPECT_EQ(control.started, network.iteration >= 3);
    EXPECT_EQ(control.previous_error, k == 0 ? 0.0F : errors[k - 1]);
    EXPECT_EQ(control.current_error, errors[k]);
  }
}

TEST(LearnRateControl, OnTheFirstIterationTheImprovementIsMinusOne) {
  for (int32_t start : {1, 0, -4}) {
    Network network = ControlledNetwork();
    network.LRC = start;
    network.iteration = 1;
    LearnRateControl control;
    EXPECT_EQ(AdaptLearnRate(network, control, 0.25F), start == 1);
    EXPECT_EQ(control.started, start == 1);
    EXPECT_EQ(network.Eta, 0.5F * 0.8F);
  }
}

TEST(LearnRateControl, AStartBeyondTheLastIterationNeverChangesEta) {
  Network network = ControlledNetwork();
  network.MaxIterations = 50;
  network.LRC = 51;
  LearnRateControl control;
  for (network.iteration = 1; network.iteration <= network.MaxIterations; ++network.iteration) {
    EXPECT_FALSE(AdaptLearnRate(network, control, 1.0F / static_cast<float>(network.iteration)));
  }
  EXPECT_EQ(network.Eta, 0.5F);
  EXPECT_FALSE(control.started);
}

TEST(LearnRateControl, AnErrorThatIsNotANumberLeavesEta) {
  EXPECT_EQ(EtaAfter(1.0F, kNan), 0.5F);
  EXPECT_EQ(EtaAfter(kNan, kNan), 0.5F);
  EXPECT_EQ(EtaAfter(0.0F, -kNan), 0.5F);
}

TEST(LearnRateControl, AnImprovementThatIsNotANumberIsInNoRow) {
  EXPECT_EQ(EtaAfter(1.0F, kInfinity), 0.5F);
  EXPECT_EQ(EtaAfter(kInfinity, kInfinity), 0.5F);
  EXPECT_EQ(EtaAfter(kNan, 1.0F), 0.5F);
  EXPECT_EQ(EtaAfter(kInfinity, 1.0F), 0.5F * 0.98F);
}

}  // namespace
}  // namespace tarn
