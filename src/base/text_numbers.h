#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// Numbers in text: decimal, with a point, whatever the locale. A number is scanned as the
// formats "%d" and "%f" scan it: white space first, then the longest prefix that is a number
// ("12abc" is 12, "+3" is 3). "nan", "inf" and hexadecimal ("0x1p3") are no numbers, and a
// value that does not fit the type does not scan; a fraction too small for a float is 0.

namespace tarn {

// White space in every text file: blank, tab, line feed, vertical tab, form feed, carriage
// return.
constexpr bool IsSpace(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

// Scans one number at the front of `text`. On success stores it and moves `text` behind it;
// on failure changes neither.
bool ScanInt(std::string_view& text, int32_t& value);
bool ScanFloat(std::string_view& text, float& value);

// Scans "%d %d ..." or "%f %f ...": how many of the values scanned, from the first on.
template <typename... Values>
int ScanInts(std::string_view text, Values&... values) {
  int count = 0;
  (void)((ScanInt(text, values) && ++count > 0) && ...);
  return count;
}
template <typename... Values>
int ScanFloats(std::string_view text, Values&... values) {
  int count = 0;
  (void)((ScanFloat(text, values) && ++count > 0) && ...);
  return count;
}

// The plain conversion of an entry field: the leading number of the text, 0 when there is
// none. A value beyond the type's range becomes the nearest value within it.
int32_t ToInt(std::string_view text);
float ToFloat(std::string_view text);

}  // namespace tarn
