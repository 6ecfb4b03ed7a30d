#include "base/wide_text.h"

#include <gtest/gtest.h>

namespace tarn {
namespace {

constexpr const char* kNarrow =
    "Gr\xC3\xBC\xC3\x9F"
    "e-\xD0\xB4\xD0\xB0-\xE8\xB3\x87\xE6\x96\x99-\xF0\x9F\x98\x80.net";
constexpr const wchar_t* kWide = L"Gr\u00FC\u00DFe-\u0434\u0430-\u8CC7\u6599-\xD83D\xDE00.net";

TEST(WideText, IsTheSameTextOnTheWayThereAndBack) {
  EXPECT_EQ(Widen(kNarrow), kWide);
  EXPECT_EQ(Narrow(kWide), kNarrow);
  EXPECT_EQ(Widen(""), L"");
  EXPECT_EQ(Narrow(L""), "");
  EXPECT_EQ(Widen(std::string_view("a\0b", 3)), std::wstring(L"a\0b", 3));
  EXPECT_EQ(Narrow(std::wstring_view(L"a\0b", 3)), std::string("a\0b", 3));
}

TEST(WideText, HasTheReplacementCharacterForWhatIsNoText) {
  for (const char* text : {"a\xFFz", "a\xC3", "a\xC0\x80", "a\xED\xA0\x80", "a\xF5\x80\x80\x80"}) {
    EXPECT_TRUE(Widen(text).starts_with(L"a\uFFFD")) << text;
  }
  EXPECT_EQ(Narrow(L"a\xD83Dz"), "a\xEF\xBF\xBDz");
  EXPECT_EQ(Narrow(L"a\xDE00"), "a\xEF\xBF\xBD");
}

}  // namespace
}  // namespace tarn
