#include "base/text_numbers.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <optional>
#include <string>

#include "support/comma_locale.h"

namespace tarn {
namespace {

constexpr int32_t kIntMax = std::numeric_limits<int32_t>::max();
constexpr int32_t kIntMin = std::numeric_limits<int32_t>::min();
constexpr float kFloatMax = std::numeric_limits<float>::max();

// One scan that succeeds: the value and what is left of the text.
template <typename Value>
struct Scanned {
  Value value;
  std::string rest;
  bool operator==(const Scanned&) const = default;
  friend void PrintTo(const Scanned& s, std::ostream* out) {
    *out << s.value << " before \"" << s.rest << '"';
  }
};

template <typename Value, typename Scan>
std::optional<Scanned<Value>> Try(Scan scan, std::string_view text, Value untouched) {
  std::string_view rest = text;
  Value value = untouched;
  if (scan(rest, value)) return Scanned<Value>{value, std::string(rest)};
  EXPECT_EQ(value, untouched) << "a failed scan stored a value: " << text;
  EXPECT_EQ(rest.data(), text.data()) << "a failed scan moved on: " << text;
  EXPECT_EQ(rest.size(), text.size()) << "a failed scan moved on: " << text;
  return std::nullopt;
}

std::optional<Scanned<int32_t>> IntOf(std::string_view text) {
  return Try<int32_t>(ScanInt, text, 4711);
}
std::optional<Scanned<float>> FloatOf(std::string_view text) {
  return Try<float>(ScanFloat, text, 4711.0F);
}

std::optional<Scanned<int32_t>> Int(int32_t value, std::string rest = "") {
  return Scanned<int32_t>{value, std::move(rest)};
}
std::optional<Scanned<float>> Float(float value, std::string rest = "") {
  return Scanned<float>{value, std::move(rest)};
}

TEST(IsSpace, HoldsForTheSixBlanksAndNothingElse) {
  for (int c = -128; c < 128; ++c) {
    const bool blank = c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r';
    EXPECT_EQ(IsSpace(static_cast<char>(c)), blank) << c;
  }
}

TEST(ScanInt, TakesTheLongestPrefixThatIsANumber) {
  EXPECT_EQ(IntOf("12abc"), Int(12, "abc"));
  EXPECT_EQ(IntOf("12.5"), Int(12, ".5"));
  EXPECT_EQ(IntOf("12-5"), Int(12, "-5"));
  EXPECT_EQ(IntOf("1e5"), Int(1, "e5"));
  EXPECT_EQ(IntOf("007 8"), Int(7, " 8"));
}

TEST(ScanInt, TakesTheZeroOfAHexadecimalNumber) {
  EXPECT_EQ(IntOf("0x10"), Int(0, "x10"));
  EXPECT_EQ(IntOf("-0X1f"), Int(0, "X1f"));
}

TEST(ScanInt, SkipsWhiteSpaceOfEveryKindBeforeTheNumber) {
  EXPECT_EQ(IntOf(" \t\r\n\v\f42\n"), Int(42, "\n"));
}

TEST(ScanInt, TakesOneSignStraightBeforeTheDigits) {
  EXPECT_EQ(IntOf("+3"), Int(3));
  EXPECT_EQ(IntOf(" -3"), Int(-3));
  for (const char* text : {"+-5", "-+5", "++5", "--5", "+ 5", "- 5", "+", "-", "+x"}) {
    EXPECT_EQ(IntOf(text), std::nullopt) << text;
  }
}

TEST(ScanInt, FailsWithoutADigit) {
  for (const char* text : {"", " ", "\n", ".", ".5", "abc", "nan", "inf", ",1"}) {
    EXPECT_EQ(IntOf(text), std::nullopt) << text;
  }
}

TEST(ScanInt, ReachesBothLimitsAndFailsOneBeyond) {
  EXPECT_EQ(IntOf("2147483647"), Int(kIntMax));
  EXPECT_EQ(IntOf("+2147483647"), Int(kIntMax));
  EXPECT_EQ(IntOf("-2147483648"), Int(kIntMin));
  EXPECT_EQ(IntOf("2147483648"), std::nullopt);
  EXPECT_EQ(IntOf("-2147483649"), std::nullopt);
  EXPECT_EQ(IntOf("18446744073709551617"), std::nullopt);
}

TEST(ScanInt, TakesAnyNumberOfLeadingZeros) {
  EXPECT_EQ(IntOf(std::string(100000, '0') + "9 "), Int(9, " "));
  EXPECT_EQ(IntOf(std::string(100000, '9')), std::nullopt);
}

TEST(ScanInt, StopsAtAnEmbeddedNul) {
  EXPECT_EQ(IntOf(std::string_view("12\0"
                                   "34",
                                   5)),
            Int(12, std::string("\0"
                                "34",
                                3)));
  EXPECT_EQ(IntOf(std::string_view("\0"
                                   "34",
                                   3)),
            std::nullopt);
}

TEST(ScanFloat, TakesTheLongestPrefixThatIsANumber) {
  EXPECT_EQ(FloatOf("1.5abc"), Float(1.5F, "abc"));
  EXPECT_EQ(FloatOf("1e5x"), Float(1e5F, "x"));
  EXPECT_EQ(FloatOf("1.2.3"), Float(1.2F, ".3"));
  EXPECT_EQ(FloatOf("0.5,7"), Float(0.5F, ",7"));
  EXPECT_EQ(FloatOf("5-3"), Float(5, "-3"));
}

TEST(ScanFloat, LeavesAnExponentWithoutDigits) {
  EXPECT_EQ(FloatOf("1e"), Float(1, "e"));
  EXPECT_EQ(FloatOf("1e+"), Float(1, "e+"));
  EXPECT_EQ(FloatOf("1e-x"), Float(1, "e-x"));
  EXPECT_EQ(FloatOf("1e 5"), Float(1, "e 5"));
  EXPECT_EQ(FloatOf("2.E"), Float(2, "E"));
}

TEST(ScanFloat, NeedsDigitsOnOneSideOfThePointOnly) {
  EXPECT_EQ(FloatOf(".5"), Float(0.5F));
  EXPECT_EQ(FloatOf("5."), Float(5));
  EXPECT_EQ(FloatOf("-.25 "), Float(-0.25F, " "));
  EXPECT_EQ(FloatOf("+5.e1"), Float(50));
  for (const char* text : {".", "-.", "+.", ".e5", "..5", "e5"}) {
    EXPECT_EQ(FloatOf(text), std::nullopt) << text;
  }
}

TEST(ScanFloat, TakesExponentsOfBothCasesAndSigns) {
  EXPECT_EQ(FloatOf("1E3"), Float(1000));
  EXPECT_EQ(FloatOf("1e+3"), Float(1000));
  EXPECT_EQ(FloatOf("125e-3"), Float(0.125F));
  EXPECT_EQ(FloatOf("1e003"), Float(1000));
}

TEST(ScanFloat, TakesOneSignStraightBeforeTheNumber) {
  EXPECT_EQ(FloatOf("+3.5"), Float(3.5F));
  EXPECT_EQ(FloatOf("\t-3.5"), Float(-3.5F));
  for (const char* text : {"+-5", "-+5", "++5", "--5", "+ 5", "- 5", "+", "-", ""}) {
    EXPECT_EQ(FloatOf(text), std::nullopt) << text;
  }
}

TEST(ScanFloat, RefusesInfinityNanAndHexadecimal) {
  for (const char* text : {"nan", "NaN", "NAN(1)", "-nan", "inf", "Inf", "+INF", "infinity",
                           "-Infinity", "INFINITY", "0x10", "0X1p3", "-0x1", "+0x.8"}) {
    EXPECT_EQ(FloatOf(text), std::nullopt) << text;
  }
}

TEST(ScanFloat, ReachesTheLargestFloatsAndFailsBeyond) {
  EXPECT_EQ(FloatOf("3.4028235e38"), Float(kFloatMax));
  EXPECT_EQ(FloatOf("-3.4028235e38"), Float(-kFloatMax));
  for (const char* text : {"1e39", "-1e39", "3.5e38", "1e400", "-1e400", "1e99999999999999999999",
                           "0.0001e4000000000"}) {
    EXPECT_EQ(FloatOf(text), std::nullopt) << text;
  }
}

TEST(ScanFloat, TakesDenormals) {
  EXPECT_EQ(FloatOf("1e-45"), Float(std::numeric_limits<float>::denorm_min()));
  EXPECT_EQ(FloatOf("1e-40"), Float(1e-40F));
}

TEST(ScanFloat, TakesANumberTooSmallForAFloatAsZeroOfItsSign) {
  for (const char* text :
       {"1e-60", "1e-400", "0.0001e-400", "1e-99999999999999999999", "123456e-99", "1e-46"}) {
    EXPECT_EQ(FloatOf(text), Float(0)) << text;
  }
  float value = 1;
  std::string_view text = "-1e-60 2";
  ASSERT_TRUE(ScanFloat(text, value));
  EXPECT_EQ(value, 0.0F);
  EXPECT_TRUE(std::signbit(value));
  EXPECT_EQ(text, " 2");
}

TEST(ScanFloat, KeepsTheSignOfZero) {
  float value = 1;
  std::string_view text = "-0.0";
  ASSERT_TRUE(ScanFloat(text, value));
  EXPECT_TRUE(std::signbit(value));
}

TEST(ScanFloat, TakesZeroWithAnyExponent) {
  EXPECT_EQ(FloatOf("0e400"), Float(0));
  EXPECT_EQ(FloatOf("0.000e-400"), Float(0));
}

TEST(ScanFloat, TellsTooLargeFromTooSmallByTheNumberAloneNotByWhatFollows) {
  const std::string large = "1" + std::string(40, '0');
  EXPECT_EQ(FloatOf(large + "e -400"), std::nullopt);
  EXPECT_EQ(FloatOf(large + "e"), std::nullopt);
  const std::string small = "0." + std::string(60, '0') + "1";
  EXPECT_EQ(FloatOf(small + "e 400"), Float(0, "e 400"));
}

TEST(ScanFloat, TakesVeryLongDigitStrings) {
  const std::string zeros(100000, '0');
  EXPECT_EQ(FloatOf(zeros + "1.5"), Float(1.5F));
  EXPECT_EQ(FloatOf("1." + zeros + "1"), Float(1));
  EXPECT_EQ(FloatOf("0." + zeros + "1"), Float(0));
  EXPECT_EQ(FloatOf("0." + zeros + "1e100001"), Float(1));
  EXPECT_EQ(FloatOf("1" + zeros), std::nullopt);
  EXPECT_EQ(FloatOf("1" + zeros + "e-100000"), Float(1));
}

TEST(ScanFloat, RoundsToTheNearestFloatOnce) {
  // Half way between 1 and the next float, and a hair above it: rounding to double first
  // would lose the hair.
  EXPECT_EQ(FloatOf("1.000000059604644775390625"), Float(1));
  EXPECT_EQ(FloatOf("1.00000005960464477539062500000000001"), Float(std::nextafter(1.0F, 2.0F)));
}

TEST(ScanFloat, StopsAtAnEmbeddedNul) {
  EXPECT_EQ(FloatOf(std::string_view("1.5\0"
                                     "6",
                                     5)),
            Float(1.5F, std::string("\0"
                                    "6",
                                    2)));
}

TEST(ScanFloat, KeepsThePointUnderADecimalCommaLocale) {
  const CommaLocale comma;
  EXPECT_EQ(FloatOf("1.5"), Float(1.5F));
  EXPECT_EQ(FloatOf("1,5"), Float(1, ",5"));
  EXPECT_EQ(FloatOf("1.000.000"), Float(1, ".000"));
  EXPECT_EQ(IntOf("1.000"), Int(1, ".000"));
  EXPECT_EQ(ToFloat("0.25"), 0.25F);
}

TEST(ScanInts, CountsTheValuesUpToTheFirstThatFails) {
  int32_t a = 0, b = 0, c = 77;
  EXPECT_EQ(ScanInts("1 2 3", a, b), 2);
  EXPECT_EQ(ScanInts(" 4 -5 x", a, b, c), 2);
  EXPECT_EQ(a, 4);
  EXPECT_EQ(b, -5);
  EXPECT_EQ(c, 77);
  EXPECT_EQ(ScanInts("x 1 2", a, b, c), 0);
  EXPECT_EQ(ScanInts("", a), 0);
}

TEST(ScanFloats, CountsTheValuesUpToTheFirstThatFails) {
  float a = 0, b = 0, c = 77;
  EXPECT_EQ(ScanFloats("0.0  0.01  0.001", a, b, c), 3);
  EXPECT_EQ(c, 0.001F);
  EXPECT_EQ(ScanFloats("1.5 inf 2", a, b, c), 1);
  EXPECT_EQ(a, 1.5F);
  EXPECT_EQ(b, 0.01F);
}

TEST(ToInt, TakesTheLeadingNumberAndZeroWhenThereIsNone) {
  EXPECT_EQ(ToInt(" 12 apples"), 12);
  EXPECT_EQ(ToInt("-7"), -7);
  EXPECT_EQ(ToInt("+7"), 7);
  EXPECT_EQ(ToInt("3.9"), 3);
  for (const char* text : {"", " ", "apples", "+-5", "-", "+", ".5", "nan"}) {
    EXPECT_EQ(ToInt(text), 0) << text;
  }
}

TEST(ToInt, StaysWithinTheRange) {
  EXPECT_EQ(ToInt("2147483648"), kIntMax);
  EXPECT_EQ(ToInt(" +99999999999999999999x"), kIntMax);
  EXPECT_EQ(ToInt("-2147483649"), kIntMin);
  EXPECT_EQ(ToInt("-99999999999999999999"), kIntMin);
}

TEST(ToFloat, TakesTheLeadingNumberAndZeroWhenThereIsNone) {
  EXPECT_EQ(ToFloat(" 0.5 of it"), 0.5F);
  EXPECT_EQ(ToFloat("-2e2"), -200.0F);
  EXPECT_EQ(ToFloat("1e-60"), 0.0F);
  for (const char* text : {"", " ", "half", "+-5", "-", ".", "nan", "inf", "-infinity", "0x10"}) {
    EXPECT_EQ(ToFloat(text), 0.0F) << text;
  }
}

TEST(ToFloat, StaysWithinTheRange) {
  EXPECT_EQ(ToFloat("1e39"), kFloatMax);
  EXPECT_EQ(ToFloat("+1e400"), kFloatMax);
  EXPECT_EQ(ToFloat("-1e39"), -kFloatMax);
}

}  // namespace
}  // namespace tarn
