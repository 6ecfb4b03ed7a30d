#include "base/utf8.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace tarn {
namespace {

std::u32string Characters(std::string_view text) {
  std::u32string characters;
  while (!text.empty()) characters.push_back(TakeCharacter(text));
  return characters;
}

TEST(Utf8, TakesCharactersOfOneToFourBytes) {
  EXPECT_EQ(Characters("aß気😀"), U"aß気😀");
  EXPECT_EQ(CharacterLength("a"), 1U);
  EXPECT_EQ(CharacterLength("ßa"), 2U);
  EXPECT_EQ(CharacterLength("気a"), 3U);
  EXPECT_EQ(CharacterLength("😀a"), 4U);
}

TEST(Utf8, TakesWhatIsNoTextByteByByte) {
  EXPECT_EQ(Characters("\xff"
                       "a"),
            U"\uFFFDa");
  EXPECT_EQ(Characters("\xc3"), U"\uFFFD");  // cut off
  EXPECT_EQ(Characters("\xc3"
                       "a"),
            U"\uFFFDa");                                                   // goes on with a letter
  EXPECT_EQ(Characters("\xc0\xaf"), U"\uFFFD\uFFFD");                      // longer than it needs
  EXPECT_EQ(Characters("\xed\xa0\x80"), U"\uFFFD\uFFFD\uFFFD");            // half a pair
  EXPECT_EQ(Characters("\xf4\x90\x80\x80"), U"\uFFFD\uFFFD\uFFFD\uFFFD");  // beyond the last
}

TEST(WithoutControls, LeavesTextTabsAndLineFeedsAsTheyAre) {
  for (const std::string text :
       {"", "plain, 100 %\n", "a\tb\n\n", "aß気😀", "\u00A0\uFFFD", "\xE4\xFF"}) {
    EXPECT_EQ(WithoutControls(text), text);
  }
}

TEST(WithoutControls, TakesOutWhatSteersATerminal) {
  EXPECT_EQ(WithoutControls("\x1b[2Jiris\r\x07\x08\x7f"), "?[2Jiris????");
  EXPECT_EQ(WithoutControls(std::string("a\0b", 3)), "a?b");
  EXPECT_EQ(WithoutControls("\u009b2J"), "?2J");
  EXPECT_EQ(WithoutControls("\x9b"
                            "2J"),
            "?2J");
}

}  // namespace
}  // namespace tarn
