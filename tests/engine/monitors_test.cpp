#include "engine/monitors.h"

#include <cmath>
#include <gtest/gtest.h>
#include <vector>

#include "engine/small_network.h"

namespace tarn {
namespace {

template <typename Sum>
MonitorSums<Sum> SumsOf(const std::vector<float>& targets, const std::vector<float>& outputs,
                        float tolerance = 0) {
  MonitorSums<Sum> sums;
  sums.Add(targets, outputs, tolerance);
  return sums;
}

TEST(MonitorSums, AddUpOverOutputsAndPatterns) {
  MonitorSums<double> sums;
  sums.Add(std::vector<float>{0.5F, 0.25F}, std::vector<float>{0.25F, 0.75F}, 0.3F);
  sums.Add(std::vector<float>{1.0F, 0.0F}, std::vector<float>{0.5F, 0.5F}, 0.3F);
  EXPECT_EQ(sums.squared_error, 0.0625F + 0.25F + 0.25F + 0.25F);
  EXPECT_EQ(sums.output_target, 0.125 + 0.1875 + 0.5);
  EXPECT_EQ(sums.output, 2.0);
  EXPECT_EQ(sums.target, 1.75);
  EXPECT_EQ(sums.output_squared, 0.0625 + 0.5625 + 0.25 + 0.25);
  EXPECT_EQ(sums.target_squared, 0.25 + 0.0625 + 1.0);
  EXPECT_EQ(sums.hits, 1);
}

TEST(MonitorSums, CountErrorsStrictlyBelowTheTolerance) {
  EXPECT_EQ(SumsOf<float>({0.5F}, {0.25F}, 0.25F).hits, 0);
  EXPECT_EQ(SumsOf<float>({0.25F}, {0.5F}, 0.25F).hits, 0);
  EXPECT_EQ(SumsOf<float>({0.5F}, {0.25F}, 0.2500001F).hits, 1);
  EXPECT_EQ(SumsOf<float>({0.25F}, {0.5F}, 0.2500001F).hits, 1);
}

TEST(MonitorSums, CountNothingWithoutATolerance) {
  EXPECT_EQ(SumsOf<double>({0.5F, 0.25F}, {0.5F, 0.25F}, 0.0F).hits, 0);
}

template <typename Sum>
void ExpectRowsAddUpAsOneByOne(float tolerance) {
  Network network = MakeNetwork({1, 1, 5}, {kSigmoid}, 9);
  FillWithRandomData(network, 3);
  const Matrix& targets = network.targets;
  Matrix outputs = targets;
  for (float& value : outputs.All()) value = value * value;
  MonitorSums<Sum> one_by_one;
  MonitorSums<Sum> rows;
  const std::vector<int32_t> list = {0, 2, 3, 8};
  for (int pass = 0; pass < 2; ++pass) {
    for (const int32_t row : list) {
      const auto r = static_cast<size_t>(row);
      one_by_one.Add(targets.Row(r), outputs.Row(r), tolerance);
    }
    rows.AddRows(targets, outputs, list, tolerance);
  }
  EXPECT_GT(rows.squared_error, 0.0F);
  EXPECT_EQ(rows.squared_error, one_by_one.squared_error);
  EXPECT_EQ(rows.output_target, one_by_one.output_target);
  EXPECT_EQ(rows.output, one_by_one.output);
  EXPECT_EQ(rows.target, one_by_one.target);
  EXPECT_EQ(rows.output_squared, one_by_one.output_squared);
  EXPECT_EQ(rows.target_squared, one_by_one.target_squared);
  EXPECT_EQ(rows.hits, one_by_one.hits);
  EXPECT_EQ(rows.hits > 0, tolerance > 0);
}

TEST(MonitorSums, AddUpRowsOfTablesAsOneByOne) {
  for (const float tolerance : {0.0F, 0.2F}) {
    ExpectRowsAddUpAsOneByOne<double>(tolerance);
    ExpectRowsAddUpAsOneByOne<float>(tolerance);
  }
}

TEST(MonitorSums, KeepInDoubleWhatSinglePrecisionLoses) {
  // 2^24 + 1 is no float; nor is the square of 0.1F.
  EXPECT_EQ(SumsOf<float>({0, 0}, {16777216.0F, 1.0F}).output, 16777216.0F);
  EXPECT_EQ(SumsOf<double>({0, 0}, {16777216.0F, 1.0F}).output, 16777217.0);
  EXPECT_EQ(SumsOf<float>({0.1F}, {0.1F}).output_squared, 0.1F * 0.1F);
  EXPECT_EQ(SumsOf<double>({0.1F}, {0.1F}).output_squared, double{0.1F} * double{0.1F});
  EXPECT_NE(double{SumsOf<float>({0.1F}, {0.1F}).output_target},
            SumsOf<double>({0.1F}, {0.1F}).output_target);
}

TEST(MonitorSums, HoldErrorsInSinglePrecisionInBoth) {
  const float error = 0.7F - 0.1F;
  EXPECT_EQ(SumsOf<double>({0.7F}, {0.1F}).squared_error, error * error);
  EXPECT_EQ(SumsOf<float>({0.7F}, {0.1F}).squared_error, error * error);
}

TEST(Correlation, IsThatOfTheFormula) {
  const std::vector<float> targets{0.25F, 0.5F, 0.75F, 0.5F};
  const std::vector<float> outputs{0.25F, 0.25F, 0.75F, 0.75F};
  // n Sum(ot) - Sum(o) Sum(t) = 4 x 1.125 - 4 = 0.5, a = 4 x 1.25 - 4 = 1, b = 4 x 1.125 - 4 = 0.5
  EXPECT_EQ(Correlation(SumsOf<double>(targets, outputs), 4),
            static_cast<float>(0.5 / (std::sqrt(0.5) * 1.0)));
  EXPECT_EQ(Correlation(SumsOf<double>(targets, targets), 4), 1.0F);
}

TEST(Correlation, IsNegativeForOutputsThatRunAgainstTheirTargets) {
  EXPECT_EQ(Correlation(SumsOf<double>({0.25F, 0.75F}, {0.75F, 0.25F}), 2), -1.0F);
}

TEST(Correlation, IsZeroForConstantOutputsOrTargets) {
  EXPECT_EQ(Correlation(SumsOf<double>({0.25F, 0.75F}, {0.5F, 0.5F}), 2), 0.0F);
  EXPECT_EQ(Correlation(SumsOf<double>({0.5F, 0.5F}, {0.25F, 0.75F}), 2), 0.0F);
  EXPECT_EQ(Correlation(SumsOf<double>({0.5F}, {0.25F}), 1), 0.0F);
  EXPECT_EQ(Correlation(MonitorSums<float>(), 0), 0.0F);
}

TEST(Correlation, IsZeroWhenASumIsNotANumber) {
  MonitorSums<double> sums = SumsOf<double>({0.25F, 0.75F}, {0.25F, 0.75F});
  sums.output_squared = std::nan("");
  EXPECT_EQ(Correlation(sums, 2), 0.0F);
}

TEST(Correlation, DiffersBetweenSingleAndDoubleSumsOfNearlyEqualOutputs) {
  std::vector<float> targets;
  std::vector<float> outputs;
  for (int i = 0; i < 200; ++i) {
    targets.push_back(i % 2 == 0 ? 0.5F : 0.5004F);
    outputs.push_back(i % 3 == 0 ? 0.6F : 0.6003F);
  }
  const float in_double = Correlation(SumsOf<double>(targets, outputs), 200);
  const float in_single = Correlation(SumsOf<float>(targets, outputs), 200);
  EXPECT_NE(in_double, in_single);
  EXPECT_NEAR(in_double, 0.0F, 0.02F);
}

Network WithTolerance(float tolerance, bool normalized) {
  Network network;
  network.Tolerance = tolerance;
  network.targ_norm = normalized ? 1 : 0;
  network.target_limits.Resize(2);
  network.target_limits.lower = {10.0F, 0.0F};
  network.target_limits.upper = {30.0F, 1.0F};
  return network;
}

TEST(EffectiveTolerance, IsTheToleranceOfTargetsAsTheyAre) {
  EXPECT_EQ(EffectiveTolerance(WithTolerance(2.5F, false)), 2.5F);
}

TEST(EffectiveTolerance, IsScaledByTheFirstOutputNodesRange) {
  EXPECT_EQ(EffectiveTolerance(WithTolerance(2.5F, true)), 0.7F / 20.0F * 2.5F);
}

TEST(EffectiveTolerance, IsZeroWhenTheMonitorIsOff) {
  EXPECT_EQ(EffectiveTolerance(WithTolerance(0.0F, true)), 0.0F);
  EXPECT_EQ(EffectiveTolerance(WithTolerance(-1.0F, true)), 0.0F);
  EXPECT_EQ(EffectiveTolerance(WithTolerance(-1.0F, false)), 0.0F);
}

TEST(PercentWithin, IsComputedInDouble) {
  EXPECT_EQ(PercentWithin(0, 3), 0.0F);
  EXPECT_EQ(PercentWithin(3, 3), 100.0F);
  EXPECT_EQ(PercentWithin(1, 3), static_cast<float>(1.0 / 3.0 * 100.0));
  EXPECT_EQ(PercentWithin(16777217, 33554434), 50.0F);
}

}  // namespace
}  // namespace tarn
