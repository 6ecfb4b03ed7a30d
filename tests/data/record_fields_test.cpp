#include "data/record_fields.h"

#include <array>
#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "support/comma_locale.h"

namespace tarn {
namespace {

using testing::ElementsAre;

// The `count` values from field `column` on; fewer than `count` never come back.
std::vector<float> ReadFrom(std::string_view record, int64_t column, size_t count) {
  RecordFields fields(record);
  std::vector<float> values(count);
  if (!fields.Skip(column - 1) || !fields.Read(values)) return {};
  return values;
}

TEST(RecordFields, AreSeparatedByRunsOfWhiteSpace) {
  EXPECT_THAT(ReadFrom("1 2\t3  \t 4\v5\f6\r7", 1, 7), ElementsAre(1, 2, 3, 4, 5, 6, 7));
}

TEST(RecordFields, AreSeparatedByCommasAsByBlanks) {
  EXPECT_THAT(ReadFrom("1,2,3", 1, 3), ElementsAre(1, 2, 3));
  EXPECT_THAT(ReadFrom("1, 2 ,3", 1, 3), ElementsAre(1, 2, 3));
  // Several commas are one run of blanks and no empty field.
  EXPECT_THAT(ReadFrom("1,,2", 1, 2), ElementsAre(1, 2));
}

TEST(RecordFields, BeginBehindLeadingWhiteSpaceAndCommas) {
  EXPECT_THAT(ReadFrom("  1 2", 1, 2), ElementsAre(1, 2));
  EXPECT_THAT(ReadFrom("  1 2 3", 2, 2), ElementsAre(2, 3));
  EXPECT_THAT(ReadFrom(",1,2", 2, 1), ElementsAre(2));
}

TEST(RecordFields, HoldSignedNumbersWithFractionAndExponent) {
  EXPECT_THAT(ReadFrom("-1.5 +2 .25 3. 1e3 -2.5E-2", 1, 6),
              ElementsAre(-1.5F, 2, 0.25F, 3, 1000, -0.025F));
}

TEST(RecordFields, AreNumbersAsFarAsTheyBeginWithOne) {
  EXPECT_THAT(ReadFrom("12abc 3;4 5", 1, 3), ElementsAre(12, 3, 5));
}

TEST(RecordFields, OutsideTheWantedColumnsMayHoldAnything) {
  EXPECT_THAT(ReadFrom("label \"x # 1 2 nonsense", 4, 2), ElementsAre(1, 2));
}

TEST(RecordFields, FailWhenOneIsMissing) {
  EXPECT_TRUE(ReadFrom("1 2", 1, 3).empty());
  EXPECT_TRUE(ReadFrom("1 2  ", 1, 3).empty());
  EXPECT_TRUE(ReadFrom("1 2", 3, 1).empty());
  EXPECT_TRUE(ReadFrom(",,,", 1, 1).empty());
  EXPECT_TRUE(ReadFrom("", 1, 1).empty());
}

TEST(RecordFields, FailWhenOneIsNotNumeric) {
  for (const char* field : {"x", "-", "+", "+-1", "nan", "inf", "0x10", "1e39", "#1", "\"1\""}) {
    EXPECT_TRUE(ReadFrom(std::string("1 ") + field + " 3", 1, 3).empty()) << field;
  }
}

TEST(RecordFields, TakeANulByteAsAnOrdinaryCharacter) {
  using std::string_view_literals::operator""sv;
  EXPECT_TRUE(ReadFrom("1 \0 3"sv, 1, 3).empty());
  EXPECT_THAT(ReadFrom("1 2\0 3"sv, 1, 3), ElementsAre(1, 2, 3));
  EXPECT_THAT(ReadFrom("1 \0\0 3"sv, 3, 1), ElementsAre(3));
}

TEST(RecordFields, StopAtTheEndForAnAbsurdColumn) {
  EXPECT_TRUE(ReadFrom("1 2 3", std::numeric_limits<int32_t>::max(), 1).empty());
  EXPECT_TRUE(ReadFrom("1 2 3", std::numeric_limits<int64_t>::max(), 1).empty());
}

TEST(RecordFields, GoOnFromTheLastFieldRead) {
  RecordFields fields("1 2 a b 5 6");
  std::array<float, 2> inputs{};
  std::array<float, 2> targets{};
  ASSERT_TRUE(fields.Read(inputs));
  ASSERT_TRUE(fields.Skip(3));
  ASSERT_TRUE(fields.Read(targets));
  EXPECT_THAT(inputs, ElementsAre(1, 2));
  EXPECT_THAT(targets, ElementsAre(5, 6));
}

TEST(RecordFields, KeepTheValuesBeforeTheFault) {
  RecordFields fields("1 2 x");
  std::array<float, 3> values{};
  EXPECT_FALSE(fields.Read(values));
  EXPECT_THAT(values, ElementsAre(1, 2, 0));
}

TEST(RecordFields, HavePointsUnderADecimalCommaLocale) {
  const CommaLocale locale;
  EXPECT_THAT(ReadFrom("1.5,2.25 -3.5e1", 1, 3), ElementsAre(1.5F, 2.25F, -35));
  EXPECT_THAT(ReadFrom("1,5", 1, 2), ElementsAre(1, 5));
}

}  // namespace
}  // namespace tarn
