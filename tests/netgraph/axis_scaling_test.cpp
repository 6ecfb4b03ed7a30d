#include "netgraph/axis_scaling.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <fmt/printf.h>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace tarn {
namespace {

using Limits = std::numeric_limits<float>;
using Texts = std::vector<std::string>;

std::vector<AxisTick> TicksOf(const AxisScale& scale) {
  return AxisTicks(scale, LabelAxis(scale));
}

Texts TextsOf(float first, float second, double pixels) {
  Texts texts;
  for (const AxisTick& tick : TicksOf(ScaleAxis(first, second, pixels))) {
    if (tick.labelled) texts.push_back(tick.text);
  }
  return texts;
}

std::string FormatOf(float first, float second, double pixels) {
  return LabelAxis(ScaleAxis(first, second, pixels)).format;
}

void ExpectEnds(const AxisScale& scale, double first, double second) {
  EXPECT_EQ(scale.first, first);
  EXPECT_EQ(scale.second, second);
}

void ExpectSame(const AxisScale& a, const AxisScale& b) {
  ExpectEnds(a, b.first, b.second);
  EXPECT_EQ(a.step, b.step);
  EXPECT_EQ(a.minor, b.minor);
  EXPECT_EQ(a.minor_pixels, b.minor_pixels);
}

TEST(ScaleAxis, DividesTheUnitRangeIntoFifths) {
  const AxisScale scale = ScaleAxis(0.0f, 1.0f, 600);
  ExpectEnds(scale, 0.0, 1.0);
  EXPECT_NEAR(scale.step, 0.2, 1e-10);
  EXPECT_NEAR(scale.minor, 0.05, 1e-7);
  EXPECT_EQ(scale.minor_count, 4);
  EXPECT_EQ(scale.kind, 5);
  EXPECT_NEAR(scale.minor_pixels, 30, 1e-4);
  EXPECT_FALSE(scale.IsDegenerate());
}

TEST(ScaleAxis, KeepsTheOrderOfTheEnds) {
  const AxisScale up = ScaleAxis(-3.0f, 8.0f, 500);
  AxisScale down = ScaleAxis(8.0f, -3.0f, 500);
  EXPECT_LT(up.first, up.second);
  EXPECT_GT(down.first, down.second);
  std::swap(down.first, down.second);
  ExpectSame(up, down);
}

TEST(ScaleAxis, MovesTheEndsOutToTheGrid) {
  ExpectEnds(ScaleAxis(0.13f, 0.87f, 600), 0.0, 1.0);
  ExpectEnds(ScaleAxis(3.0f, 97.0f, 600), 0.0, 100.0);
  ExpectEnds(ScaleAxis(-3.0f, 97.0f, 600), -20.0, 100.0);
}

TEST(ScaleAxis, DividesNegativeRanges) {
  const AxisScale scale = ScaleAxis(-5.0f, -3.0f, 600);
  ExpectEnds(scale, -5.0, -3.0);
  EXPECT_NEAR(scale.step, 0.5, 1e-10);
  EXPECT_EQ(scale.minor_count, 5);
  EXPECT_EQ(scale.kind, 10);
  ExpectEnds(ScaleAxis(-0.87f, -0.13f, 600), -1.0, 0.0);
}

TEST(ScaleAxis, TakesDataEndsWithinAHundredthOfATickOfTheGrid) {
  ExpectEnds(ScaleAxis(0.0f, 1.0001f, 600), 0.0, 1.0001f);
  EXPECT_NEAR(ScaleAxis(0.0f, 1.001f, 600).second, 1.2, 1e-6);
  ExpectEnds(ScaleAxis(-0.0001f, 1.0f, 600), -0.0001f, 1.0);
  EXPECT_NEAR(ScaleAxis(-0.001f, 1.0f, 600).first, -0.2, 1e-6);
}

TEST(ScaleAxis, CountsLengthsFrom400To800) {
  ExpectSame(ScaleAxis(0.0f, 1.5f, 399), ScaleAxis(0.0f, 1.5f, 400));
  ExpectSame(ScaleAxis(0.0f, 1.5f, 1), ScaleAxis(0.0f, 1.5f, 400));
  ExpectSame(ScaleAxis(0.0f, 1.5f, -5), ScaleAxis(0.0f, 1.5f, 400));
  ExpectSame(ScaleAxis(0.0f, 1.5f, std::nan("")), ScaleAxis(0.0f, 1.5f, 400));
  ExpectSame(ScaleAxis(0.0f, 1.5f, 801), ScaleAxis(0.0f, 1.5f, 800));
  ExpectSame(ScaleAxis(0.0f, 1.5f, HUGE_VAL), ScaleAxis(0.0f, 1.5f, 800));
  EXPECT_NEAR(ScaleAxis(0.0f, 1.5f, 400).step, 0.5, 1e-10);
  EXPECT_NEAR(ScaleAxis(0.0f, 1.5f, 800).step, 0.2, 1e-10);
}

TEST(ScaleAxis, DividesEveryPowerOfTenIntoFifths) {
  for (int power = -30; power <= 30; ++power) {
    const float range = static_cast<float>(std::pow(10.0, power));
    for (const double pixels : {400.0, 500.0, 600.0, 700.0, 800.0}) {
      const AxisScale scale = ScaleAxis(0.0f, range, pixels);
      ExpectEnds(scale, 0.0, range);
      EXPECT_NEAR(scale.step / range, 0.2, 1e-6) << range << ' ' << pixels;
    }
  }
}

// Ten pixels are a power of ten: 10 for a range of 50 on 500 pixels.
TEST(ScaleAxis, DividesRangesThatStartTheSearchAtAPowerOfTen) {
  for (const float range : {5e-5f, 0.5f, 5.0f, 50.0f, 5e6f}) {
    const AxisScale scale = ScaleAxis(0.0f, range, 500);
    ExpectEnds(scale, 0.0, range);
    EXPECT_NEAR(scale.step / range, 0.2, 1e-6) << range;
    EXPECT_EQ(scale.kind, 2) << range;
  }
}

TEST(ScaleAxis, KeepsTheEndsOfWhatIsNoRange) {
  const AxisScale equal = ScaleAxis(3.5f, 3.5f, 600);
  EXPECT_TRUE(equal.IsDegenerate());
  ExpectEnds(equal, 3.5, 3.5);
  EXPECT_EQ(equal.kind, 0);
  const AxisScale infinite = ScaleAxis(0.0f, Limits::infinity(), 600);
  EXPECT_TRUE(infinite.IsDegenerate());
  ExpectEnds(infinite, 0.0, HUGE_VAL);
  const AxisScale nan = ScaleAxis(Limits::quiet_NaN(), 2.0f, 600);
  EXPECT_TRUE(nan.IsDegenerate());
  EXPECT_TRUE(std::isnan(nan.first));
  EXPECT_EQ(nan.second, 2.0);
}

TEST(LabelAxis, WritesStepsBelowOneWithTheirDecimals) {
  EXPECT_EQ(FormatOf(0.0f, 1.0f, 600), "%4.1f");
  EXPECT_EQ(FormatOf(100.0f, 101.0f, 600), "%6.1f");
  EXPECT_EQ(FormatOf(100.0f, 100.2f, 600), "%7.2f");
}

TEST(LabelAxis, WritesStepsFromOneOnWithoutDecimals) {
  EXPECT_EQ(FormatOf(0.0f, 100.0f, 600), "%5.0f");
  EXPECT_EQ(FormatOf(0.0f, 5.0f, 600), "%3.0f");
}

TEST(LabelAxis, WritesValuesBelowOneWithTheDecimalsOfTheStep) {
  EXPECT_EQ(FormatOf(0.0f, 0.1f, 600), "%5.2f");
  EXPECT_EQ(FormatOf(0.0f, 0.01f, 600), "%6.3f");
  EXPECT_EQ(FormatOf(0.0f, 1e-5f, 600), "%9.6f");
}

TEST(LabelAxis, HasSevenDigitsInFixedFormAtMost) {
  EXPECT_EQ(FormatOf(100000.0f, 101000.0f, 600), "%8.0f");
  EXPECT_EQ(FormatOf(100000.0f, 100001.0f, 600), "%9.1f");
  EXPECT_EQ(FormatOf(100000.0f, 100000.2f, 600), "%9.1f");
}

TEST(LabelAxis, WritesValuesAbove999999InExponentForm) {
  EXPECT_EQ(FormatOf(0.0f, 2e6f, 600), "%-9.2e");
  EXPECT_EQ(FormatOf(-2e6f, 0.0f, 600), "%-9.2e");
  EXPECT_EQ(LabelAxis({999999, 0, 100000, 500000, 5, 10, 30}).format, "%8.0f");
  EXPECT_EQ(LabelAxis({1000000, 0, 100000, 500000, 5, 10, 30}).format, "%-9.2e");
}

TEST(LabelAxis, WritesSmallValuesInExponentForm) {
  EXPECT_EQ(FormatOf(0.0f, 1e-6f, 600), "%-9.2e");
  EXPECT_EQ(FormatOf(0.0f, 1e-30f, 600), "%-9.2e");
}

TEST(LabelAxis, HasSixDigitsInExponentFormAtMost) {
  EXPECT_EQ(FormatOf(1000000.0f, 1000008.0f, 600), "%-13.6e");
  EXPECT_EQ(FormatOf(1000000.0f, 1000001.0f, 600), "%-13.6e");
}

TEST(LabelAxis, HasRoomForATickBeyondTheSecondEnd) {
  EXPECT_EQ(LabelAxis({9, 0, 1, 5, 5, 10, 30}).format, "%3.0f");
  EXPECT_EQ(LabelAxis({0, 9, 1, 5, 5, 10, 30}).format, "%4.0f");
  EXPECT_EQ(LabelAxis({9, -9, 1, 5, 5, 10, 30}).format, "%4.0f");
}

TEST(LabelAxis, DropsTheDecimalsOfANumberThatPrintsLongerThanItIs) {
  EXPECT_EQ(LabelAxis({999.99999999999, 0, 20, 100, 5, 2, 30}).format, "%5.0f");
}

TEST(LabelAxis, LabelsEveryStepThatHasRoom) {
  EXPECT_EQ(LabelAxis(ScaleAxis(0.0f, 1.0f, 600)).minor_interval, 4);
  EXPECT_EQ(LabelAxis(ScaleAxis(0.0f, 2e6f, 600)).minor_interval, 5);
  EXPECT_EQ(LabelAxis(ScaleAxis(1000000.0f, 1000008.0f, 600)).minor_interval, 4);
}

TEST(LabelAxis, LabelsFewerStepsWhereTheLabelsAreLong) {
  EXPECT_EQ(LabelAxis(ScaleAxis(1000000.0f, 1000008.0f, 400)).minor_interval, 8);
  const AxisLabels narrow = LabelAxis({0, 1, 0.05, 0.2, 4, 5, 1});
  EXPECT_EQ(narrow.minor_interval, 20);
  EXPECT_EQ(narrow.format, "%3.0f");
}

TEST(LabelAxis, LabelsTheFewestStepsWhereNothingHasRoom) {
  EXPECT_EQ(LabelAxis({0, 1e9, 2e7, 1e8, 5, 2, 0.5}).minor_interval, 40);
  EXPECT_EQ(LabelAxis({0, 1e9, 5e7, 2e8, 4, 5, 0.5}).minor_interval, 40);
  EXPECT_EQ(LabelAxis({0, 1e9, 1e8, 5e8, 5, 10, 0.5}).minor_interval, 50);
}

TEST(LabelAxis, HasAFormatForADegenerateAxis) {
  const AxisLabels labels = LabelAxis(ScaleAxis(3.5f, 3.5f, 600));
  EXPECT_EQ(labels.format, "%.6g");
  EXPECT_EQ(labels.minor_interval, 0);
}

TEST(AxisTicks, LabelsTheUnitRange) {
  EXPECT_EQ(TextsOf(0.0f, 1.0f, 600), (Texts{"0.0", "0.2", "0.4", "0.6", "0.8", "1.0"}));
  EXPECT_EQ(TextsOf(1.0f, 0.0f, 600), (Texts{"0.0", "0.2", "0.4", "0.6", "0.8", "1.0"}));
}

TEST(AxisTicks, CountsTheTicksBetweenTheLabels) {
  const auto ticks = TicksOf(ScaleAxis(0.0f, 1.0f, 600));
  ASSERT_EQ(ticks.size(), 21u);
  for (size_t i = 0; i < ticks.size(); ++i) {
    EXPECT_NEAR(ticks[i].value, 0.05 * static_cast<double>(i), 1e-10);
    EXPECT_EQ(ticks[i].labelled, i % 4 == 0);
    EXPECT_EQ(ticks[i].text.empty(), i % 4 != 0);
  }
  EXPECT_EQ(ticks.back().value, 1.0);
}

TEST(AxisTicks, ShowsZeroWithoutASignOrARoundingError) {
  EXPECT_EQ(TextsOf(-1.0f, 1.0f, 500), (Texts{"-1.0", "-0.5", "0.0", "0.5", "1.0"}));
  EXPECT_EQ(TextsOf(-1e-20f, 1e-20f, 500),
            (Texts{"-1.00e-20", "-5.00e-21", "0.00e+00", "5.00e-21", "1.00e-20"}));
  EXPECT_EQ(TicksOf(ScaleAxis(-1.0f, 1.0f, 500))[10].value, 0.0);
}

TEST(AxisTicks, StartsAtADataEndThatIsNotOnTheGrid) {
  const auto ticks = TicksOf(ScaleAxis(-0.0001f, 1.0f, 600));
  EXPECT_EQ(ticks.front().value, -0.0001f);
  EXPECT_EQ(ticks.front().text, "0.0");
  EXPECT_NEAR(ticks[4].value, 0.1999, 1e-6);
  EXPECT_EQ(ticks[4].text, "0.2");
}

TEST(AxisTicks, LabelsLargeAndSmallValues) {
  EXPECT_EQ(TextsOf(0.0f, 1e30f, 600),
            (Texts{"0.00e+00", "2.00e+29", "4.00e+29", "6.00e+29", "8.00e+29", "1.00e+30"}));
  EXPECT_EQ(TextsOf(1e-30f, 0.0f, 600),
            (Texts{"0.00e+00", "2.00e-31", "4.00e-31", "6.00e-31", "8.00e-31", "1.00e-30"}));
  EXPECT_EQ(TextsOf(-2e6f, 0.0f, 600),
            (Texts{"-2.00e+06", "-1.50e+06", "-1.00e+06", "-5.00e+05", "0.00e+00"}));
}

TEST(AxisTicks, HasOneTickWhereTheEndsAreEqual) {
  const auto ticks = TicksOf(ScaleAxis(0.25f, 0.25f, 600));
  ASSERT_EQ(ticks.size(), 1u);
  EXPECT_EQ(ticks[0].value, 0.25);
  EXPECT_TRUE(ticks[0].labelled);
  EXPECT_EQ(ticks[0].text, "0.25");
  EXPECT_EQ(TextsOf(-0.0f, 0.0f, 600), Texts{"0"});
  EXPECT_EQ(TextsOf(1.5e7f, 1.5e7f, 600), Texts{"1.5e+07"});
}

TEST(AxisTicks, HasNoTickWhereAnEndIsNotFinite) {
  EXPECT_TRUE(TextsOf(0.0f, Limits::infinity(), 600).empty());
  EXPECT_TRUE(TextsOf(Limits::infinity(), Limits::infinity(), 600).empty());
  EXPECT_TRUE(TextsOf(Limits::quiet_NaN(), Limits::quiet_NaN(), 600).empty());
}

TEST(AxisTicks, LabelsNothingWithoutALabelInterval) {
  const auto ticks = AxisTicks(ScaleAxis(0.0f, 1.0f, 600), {"%g", 0});
  ASSERT_EQ(ticks.size(), 21u);
  EXPECT_TRUE(std::none_of(ticks.begin(), ticks.end(), [](const auto& t) { return t.labelled; }));
}

struct Axis {
  double lo;  // of the data
  double hi;
  AxisScale scale;
  double lower;  // of the scale
  double upper;
};

// The ends lie outside the data by less than a step, but for the rounding to a float, within a
// hundredth of a tick, and the 6e-7 that a negative low end is nudged by.
std::string WrongEnd(const Axis& axis) {
  const double reach = axis.scale.step + 0.01 * axis.scale.minor;
  const double nudge = axis.lo < 0 ? -6e-7 * axis.lo : 0;
  if (!std::isfinite(axis.lower) || !std::isfinite(axis.upper)) return "ends not finite";
  if (axis.lower > axis.lo || axis.upper < axis.hi) return "ends inside the data";
  if (axis.lo - axis.lower > reach + nudge) return "low end too far out";
  return axis.upper - axis.hi > reach ? "high end too far out" : "";
}

std::string WrongSpacing(const Axis& axis) {
  const AxisScale& scale = axis.scale;
  const double nudge = scale.minor * scale.minor_count / scale.step;
  if (!(scale.minor_pixels >= 20 && scale.minor_pixels < 80)) return "tick not of 20 to 80 pixels";
  return nudge >= 1 && nudge < 1 + 6.1e-7 ? "" : "step of another tick";
}

std::string WrongTicks(const Axis& axis, const std::vector<AxisTick>& ticks) {
  if (ticks.size() < 9 || ticks.size() > 41) return "too many or too few ticks";
  if (!ticks.front().labelled) return "first tick without a label";
  for (size_t i = 0; i < ticks.size(); ++i) {
    if (ticks[i].value < axis.lower || ticks[i].value > axis.upper) return "tick off the axis";
    if (i > 0 && ticks[i].value <= ticks[i - 1].value) return "ticks out of order";
  }
  return "";
}

bool MayRepeatLabels(const Axis& axis) {
  const double largest = std::max(std::abs(axis.lower), std::abs(axis.upper));
  if (axis.scale.step < 5.0001e-7 * largest) return true;
  const bool five = std::abs(axis.scale.step / 5e-7 - 1) < 1e-6;
  return five && largest > 0.00099 && largest < 1.0;
}

std::string WrongLabels(const Axis& axis, const std::vector<AxisTick>& ticks) {
  const std::string* last = nullptr;
  for (const AxisTick& tick : ticks) {
    if (tick.labelled == tick.text.empty()) return "text without a label";
    if (!tick.labelled) continue;
    if (tick.text.find(' ') != std::string::npos) return "blank in a label";
    const bool zero = tick.text.find_first_of("123456789") == std::string::npos;
    if (zero && tick.text.front() == '-') return "negative zero";
    if (last != nullptr && *last == tick.text && !MayRepeatLabels(axis)) return "label repeated";
    last = &tick.text;
  }
  return "";
}

// What is wrong with the axis for the data; nothing of a sound one.
std::string Fault(float first, float second, double pixels) {
  const AxisScale scale = ScaleAxis(first, second, pixels);
  const Axis axis = {std::min(first, second), std::max(first, second), scale,
                     std::min(scale.first, scale.second), std::max(scale.first, scale.second)};
  if (scale.IsDegenerate()) return "degenerate";
  if ((first < second) != (scale.first < scale.second)) return "ends exchanged";
  const auto ticks = TicksOf(scale);
  const std::string fault =
      WrongEnd(axis) + WrongSpacing(axis) + WrongTicks(axis, ticks) + WrongLabels(axis, ticks);
  return fault.empty() ? "" : fmt::format("{} to {} on {}: {}", first, second, pixels, fault);
}

std::vector<float> Magnitudes() {
  std::vector<float> values = {0.0f};
  const float starts[] = {Limits::denorm_min(),
                          3e-42f,
                          Limits::min(),
                          1e-30f,
                          1e-12f,
                          1e-6f,
                          1e-5f,
                          0.001f,
                          0.01f,
                          0.1f,
                          0.3f,
                          1.0f,
                          7.77f,
                          999.0f,
                          1e5f,
                          999999.0f,
                          1e6f,
                          16777216.0f,
                          1e12f,
                          1e30f,
                          3e38f,
                          Limits::max()};
  for (const float start : starts) {
    for (const float value : {start, std::nextafter(start, 0.0f)}) {
      values.push_back(value);
      values.push_back(-value);
    }
  }
  return values;
}

TEST(AxisSweep, IsSoundBetweenAllMagnitudes) {
  const std::vector<float> values = Magnitudes();
  for (const float first : values) {
    for (const float second : values) {
      if (first == second) continue;
      for (const double pixels : {1.0, 400.0, 537.0, 799.0, 8000.0}) {
        ASSERT_EQ(Fault(first, second, pixels), "");
      }
    }
  }
}

TEST(AxisSweep, IsSoundAtEveryLength) {
  for (int pixels = 1; pixels <= 8000; ++pixels) {
    ASSERT_EQ(Fault(-0.7f, 2.9f, pixels), "");
    ASSERT_EQ(Fault(2e7f, 1.1e7f, pixels), "");
  }
}

class RandomFloats {
 public:
  float Next() {
    for (;;) {
      const float value = std::bit_cast<float>(Bits());
      if (std::isfinite(value)) return value;
    }
  }
  // Differs in the low bits only, 25 at most: from a neighbour to a multiple.
  float Near(float value) {
    const uint32_t distance = 1 + Bits() % (1u << (Bits() % 25));
    const float near = std::bit_cast<float>(std::bit_cast<uint32_t>(value) ^ distance);
    return std::isfinite(near) ? near : std::nextafter(value, 0.0f);
  }
  double Pixels() { return 1 + Bits() % 8000; }

 private:
  uint32_t Bits() { return static_cast<uint32_t>(m_bits()); }

  std::mt19937 m_bits{20240};
};

TEST(AxisSweep, IsSoundBetweenAnyFloats) {
  RandomFloats random;
  for (int i = 0; i < 100000; ++i) {
    const float first = random.Next();
    const float second = random.Next();
    if (first == second) continue;
    ASSERT_EQ(Fault(first, second, random.Pixels()), "");
  }
}

TEST(AxisSweep, IsSoundBetweenNearFloats) {
  RandomFloats random;
  for (int i = 0; i < 100000; ++i) {
    const float first = random.Next();
    const float second = random.Near(first);
    if (first == second) continue;
    ASSERT_EQ(Fault(first, second, random.Pixels()), "");
  }
}

// The same rules once more, step after step in one piece, to hold the other against.
struct PlainAxis {
  double lo = 0;
  double hi = 0;
  double minor = 0;
  double step = 0;
  int count = 0;
  int units = 0;
  double pixels = 0;
};

PlainAxis PlainScale(double a, double b, double length) {
  length = std::clamp(length, 400.0, 800.0);
  const double lo = std::min(a, b);
  const double hi = std::max(a, b);
  const double target = (hi - lo) / length * 20 * 0.5;
  double e = std::trunc(std::log10(target));
  if (std::log10(target) < 0) e -= 1;
  double base = std::pow(10.0, e) * 1.00000000001;
  int k = static_cast<int>(target / base) + 1;
  bool grown = false;
  while (true) {
    PlainAxis axis;
    axis.units = k < 2 ? 2 : k < 5 ? 5 : 10;
    axis.count = k >= 2 && k < 5 ? 4 : 5;
    axis.minor = axis.units * base;
    axis.step = axis.minor * axis.count;
    axis.minor *= axis.minor < 1 ? 1.0000006 : 1.0000003;
    axis.lo = std::trunc(lo / axis.step * 1.0000006) * axis.step;
    while (axis.lo > lo) {
      if (axis.lo - 0.01 * axis.minor <= lo) {
        axis.lo = lo;
      } else {
        axis.lo -= axis.step;
      }
    }
    axis.hi = std::trunc((hi - axis.lo) / axis.step * 1.000003) * axis.step + axis.lo;
    while (axis.hi < hi) {
      if (axis.hi + 0.01 * axis.minor >= hi) {
        axis.hi = hi;
      } else {
        axis.hi += axis.step;
      }
    }
    axis.pixels = axis.minor / ((axis.hi - axis.lo) / length);
    if (axis.pixels < 20) {
      grown = true;
      if (++k > 5) {
        k = 1;
        base *= 10;
      }
    } else if (axis.pixels >= 40 && !grown) {
      --k;
    } else {
      return axis;
    }
  }
}

std::string PlainFormat(const PlainAxis& axis, bool reversed) {
  const double first = std::fabs(reversed ? axis.hi : axis.lo);
  const double second = std::fabs(reversed ? axis.lo : axis.hi);
  const double largest = first > second ? first : second + axis.minor;
  const auto whole_log = [](double value) { return static_cast<int>(std::log10(value)); };
  const std::vector<int> factors = axis.units == 2   ? std::vector<int>{1, 2, 4, 5, 8}
                                   : axis.units == 5 ? std::vector<int>{1, 2, 4, 5, 10}
                                                     : std::vector<int>{1, 2, 4, 8, 10};
  int d = 0;
  for (const int factor : factors) {
    const int interval = factor * axis.count;
    const double v = interval * axis.minor + axis.minor;
    const int n = std::max(whole_log(largest) + 1 - whole_log(v), 1);
    d = -std::min(n, 6);
    if (largest <= 999999 && largest >= std::pow(10.0, n - 7)) {
      if (largest < 1) {
        d = 2 - whole_log(v);
      } else {
        d = v < 1 ? n + 1 : whole_log(largest) + 1;
      }
      d = std::min(d, 7);
    }
    const int width = d < 1 ? 64 - 8 * d : 8 * d + 8;
    if (std::trunc(axis.pixels) * interval >= width) break;
  }
  if (d < 1) {
    d = 2 - d;
    std::string text = fmt::sprintf("%-20.10e", largest);
    text.erase(text.find_last_not_of(' ') + 1);
    const auto exponent = static_cast<int>(text.size() - text.find('e'));
    return fmt::sprintf("%%-%d.%de", exponent + d + 1, d - 2);
  }
  d += 2;
  const auto before = static_cast<int>(fmt::sprintf("%-20.10f", largest).find('.')) + 1;
  return before < d ? fmt::sprintf("%%%d.%df", d, d - before - 1) : fmt::sprintf("%%%d.0f", before);
}

// What differs from the plain rules; nothing when all is as they say.
std::string DifferenceFromPlain(float first, float second, double pixels) {
  const AxisScale scale = ScaleAxis(first, second, pixels);
  const PlainAxis plain = PlainScale(first, second, pixels);
  if (scale.minor != plain.minor || scale.step != plain.step) return "steps";
  if (scale.minor_count != plain.count || scale.kind != plain.units) return "kind";
  if (scale.minor_pixels != plain.pixels) return "pixels";
  const bool reversed = first > second;
  const double lo = reversed ? scale.second : scale.first;
  const double hi = reversed ? scale.first : scale.second;
  if (std::fabs(lo - plain.lo) > 0.01 * plain.minor) return "lower end";
  if (std::fabs(hi - plain.hi) > 0.01 * plain.minor) return "upper end";
  const std::string format = LabelAxis(scale).format;
  return format == PlainFormat(plain, reversed) ? "" : "format " + format;
}

TEST(ScaleAxis, FollowsThePlainRulesOverRandomRanges) {
  std::mt19937 random(17);
  std::uniform_real_distribution<double> exponent(-12, 12);
  std::uniform_real_distribution<double> share(-1, 1);
  for (int i = 0; i < 20000; ++i) {
    const auto first = static_cast<float>(share(random) * std::pow(10, exponent(random)));
    const auto second = static_cast<float>(share(random) * std::pow(10, exponent(random)));
    const double pixels = 300 + 600 * std::fabs(share(random));
    if (first == second) continue;
    ASSERT_EQ(DifferenceFromPlain(first, second, pixels), "")
        << fmt::sprintf("%.9g %.9g %g", first, second, pixels);
  }
}

TEST(ScaleAxis, FollowsThePlainRulesAtPowersOfTen) {
  for (int power = -15; power <= 15; ++power) {
    const auto unit = static_cast<float>(std::pow(10.0, power));
    for (const float share : {0.1f, 0.2f, 0.5f, 0.97f, 1.0f, 1.03f}) {
      for (const double pixels : {399.0, 400.0, 600.0, 800.0, 801.0}) {
        const float end = unit * share;
        const std::string where = fmt::sprintf("%.9g %g", end, pixels);
        EXPECT_EQ(DifferenceFromPlain(0, end, pixels), "") << where;
        EXPECT_EQ(DifferenceFromPlain(end, 0, pixels), "") << where;
        EXPECT_EQ(DifferenceFromPlain(-end, 0, pixels), "") << where;
        EXPECT_EQ(DifferenceFromPlain(-end, end, pixels), "") << where;
      }
    }
  }
}

}  // namespace
}  // namespace tarn
