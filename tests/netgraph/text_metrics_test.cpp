#include "netgraph/text_metrics.h"

#include <gtest/gtest.h>
#include <string>

namespace tarn {
namespace {

constexpr double kRounding = 1e-12;

double Width(std::string_view text) {
  return PictureTextWidth(text, 1);
}

TEST(PictureTextWidth, AddsTheWidthsOfTheCharacters) {
  EXPECT_NEAR(Width("0.25"), 0.637 + 0.318 + 0.637 + 0.637, kRounding);
  EXPECT_NEAR(Width("Wi"), 0.989 + 0.278, kRounding);
  EXPECT_NEAR(Width("Hidden Node 3"),
              0.752 + 0.278 + 2 * 0.635 + 0.616 + 0.634 + 0.318 + 0.749 + 0.612 + 0.635 + 0.616 +
                  0.318 + 0.637,
              kRounding);
}

TEST(PictureTextWidth, KnowsTheFirstAndTheLastCharacterOfItsTable) {
  EXPECT_NEAR(Width(" "), 0.318, kRounding);
  EXPECT_NEAR(Width("!"), 0.401, kRounding);
  EXPECT_NEAR(Width("}"), 0.637, kRounding);
  EXPECT_NEAR(Width("~"), 0.838, kRounding);
}

TEST(PictureTextWidth, GivesAllDigitsTheSameWidth) {
  for (char digit = '0'; digit <= '9'; ++digit) {
    EXPECT_NEAR(Width(std::string(1, digit)), 0.637, kRounding) << digit;
  }
}

TEST(PictureTextWidth, KnowsEveryPrintableCharacter) {
  for (char character = ' '; character <= '~'; ++character) {
    const double width = Width(std::string(1, character));
    EXPECT_GE(width, 0.275) << character;
    EXPECT_LT(width, character == '@' ? 1.01 : 0.99) << character;
  }
}

TEST(PictureTextWidth, OfNoTextIsNone) {
  EXPECT_EQ(PictureTextWidth("", 12), 0);
}

TEST(PictureTextWidth, CountsCharactersBeyondAsciiAsWideAsTheFontIsHigh) {
  EXPECT_NEAR(Width("ß"), 1, kRounding);
  EXPECT_NEAR(Width("気象"), 2, kRounding);
  EXPECT_NEAR(Width("😀"), 1, kRounding);
  EXPECT_NEAR(Width("a°"), 0.613 + 1, kRounding);
}

TEST(PictureTextWidth, CountsControlCharactersAsWideAsTheFontIsHigh) {
  EXPECT_NEAR(Width("\t"), 1, kRounding);
  EXPECT_NEAR(Width("\x1f\x7f"), 2, kRounding);
  EXPECT_NEAR(Width(std::string_view("\0", 1)), 1, kRounding);
}

TEST(PictureTextWidth, CountsWhatIsNoTextByteByByte) {
  EXPECT_NEAR(Width("\xff\xfe"), 2, kRounding);
  EXPECT_NEAR(Width("\xe6\xb0"), 2, kRounding);                  // cut off
  EXPECT_NEAR(Width("\xf4\x90\x80\x80"), 4, kRounding);          // beyond the last
  EXPECT_NEAR(Width("\xc3 "), 1 + 0.318, kRounding);             // goes on with a blank
  EXPECT_NEAR(Width("\x80\xc3\x9f\x80"), 1 + 1 + 1, kRounding);  // around a character
}

TEST(PictureTextWidth, GrowsWithTheSize) {
  const std::string text = "Graph of 3 Ausgänge";
  const double width = Width(text);
  EXPECT_GT(width, 0);
  for (const double size : {0.5, 7.0, 12.0, 13.37, 1000.0}) {
    EXPECT_NEAR(PictureTextWidth(text, size), size * width, 1e-9) << size;
  }
  EXPECT_EQ(PictureTextWidth(text, 0), 0);
}

TEST(PictureTextWidth, IsThatOfThePartsTogether) {
  EXPECT_NEAR(Width("Learning Rate"), Width("Learning") + Width(" ") + Width("Rate"), kRounding);
}

TEST(PictureTextWidth, NamesTheFontFirstWhoseWidthsItHas) {
  EXPECT_EQ(kPictureFonts, "DejaVu Sans, Verdana, Arial, sans-serif");
}

}  // namespace
}  // namespace tarn
