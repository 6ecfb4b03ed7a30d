#include "setup/edit_text.h"

#include <gtest/gtest.h>
#include <string>

namespace tarn {
namespace {

std::string Repeat(std::string_view piece, size_t count) {
  std::string text;
  for (size_t i = 0; i < count; ++i) text += piece;
  return text;
}

TEST(EditText, KeepsTextUpToTheLimitAndCutsLongerText) {
  EXPECT_EQ(EditText("", 3), "");
  EXPECT_EQ(EditText("abc", 3), "abc");
  EXPECT_EQ(EditText("abcd", 3), "abc");
}

TEST(EditText, CountsCodePointsAndNeverCutsOne) {
  EXPECT_EQ(EditText("äöü", 3), "äöü");
  EXPECT_EQ(EditText("äöüß", 3), "äöü");
  EXPECT_EQ(EditText("a€", 1), "a");
}

TEST(EditText, TakesBytesThatAreNoUtf8WithWhatStandsBeforeThem) {
  EXPECT_EQ(EditText("a\x80\x80"
                     "b",
                     1),
            "a\x80\x80");
}

TEST(LineText, EndsAtTheFirstByteThatEndsALine) {
  EXPECT_EQ(LineText("two words"), "two words");
  EXPECT_EQ(LineText("one\ntwo"), "one");
  EXPECT_EQ(LineText("one\r\ntwo"), "one");
  EXPECT_EQ(LineText("one\x1Atwo"), "one");
  EXPECT_EQ(LineText(std::string_view("one\0two", 7)), "one");
  EXPECT_EQ(LineText("\none"), "");
}

TEST(LineText, HoldsAtMost254BytesOfWholeCodePoints) {
  EXPECT_EQ(LineText(std::string(254, 'x')).size(), 254U);
  EXPECT_EQ(LineText(std::string(255, 'x')).size(), 254U);
  EXPECT_EQ(LineText(Repeat("€", 84)).size(), 252U);
  EXPECT_EQ(LineText(Repeat("€", 85)).size(), 252U);
}

}  // namespace
}  // namespace tarn
