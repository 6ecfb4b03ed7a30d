#include "base/text_numbers.h"

#include <charconv>
#include <limits>
#include <system_error>

namespace tarn {
namespace {

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

// Where a number may start: behind the white space and one sign. The sign of a "+" is cut
// off, that of a "-" is left for the conversion.
std::string_view NumberStart(std::string_view text) {
  size_t i = 0;
  while (i < text.size() && IsSpace(text[i])) ++i;
  if (i < text.size() && text[i] == '+') {
    ++i;
    if (i < text.size() && text[i] == '-') return {};
  }
  return text.substr(i);
}

// "nan" and "inf" start with a letter; "0x..." is hexadecimal.
bool StartsDecimal(std::string_view number) {
  size_t i = !number.empty() && number[0] == '-' ? 1 : 0;
  if (i == number.size()) return false;
  if (number[i] == '.') return i + 1 < number.size() && IsDigit(number[i + 1]);
  if (!IsDigit(number[i])) return false;
  return !(number[i] == '0' && i + 1 < number.size() && (number[i + 1] | 0x20) == 'x');
}

// Of a number that is out of a float's range: is it too small rather than too large? Told by
// the decimal place of its first digit other than 0.
bool IsTiny(std::string_view number) {
  int64_t place = 0;  // of the digit at hand, 0 for the units
  bool behind_point = false;
  bool significant = false;
  size_t i = number[0] == '-' ? 1 : 0;
  for (; i < number.size() && (IsDigit(number[i]) || (number[i] == '.' && !behind_point)); ++i) {
    if (number[i] == '.') {
      behind_point = true;
      continue;
    }
    if (behind_point && !significant) --place;
    if (!behind_point && significant) ++place;
    significant = significant || number[i] != '0';
  }
  if (i < number.size() && (number[i] | 0x20) == 'e') place += ToInt(number.substr(i + 1));
  return place < 0;
}

}  // namespace

bool ScanInt(std::string_view& text, int32_t& value) {
  const std::string_view number = NumberStart(text);
  int32_t scanned = 0;
  auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), scanned);
  if (error != std::errc()) return false;
  value = scanned;
  text = std::string_view(end, static_cast<size_t>(text.data() + text.size() - end));
  return true;
}

bool ScanFloat(std::string_view& text, float& value) {
  const std::string_view number = NumberStart(text);
  if (!StartsDecimal(number)) return false;
  float scanned = 0;
  auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), scanned);
  if (error == std::errc::result_out_of_range) {
    if (!IsTiny(number.substr(0, static_cast<size_t>(end - number.data())))) return false;
    scanned = number[0] == '-' ? -0.0F : 0.0F;
  } else if (error != std::errc()) {
    return false;
  }
  value = scanned;
  text = std::string_view(end, static_cast<size_t>(text.data() + text.size() - end));
  return true;
}

int32_t ToInt(std::string_view text) {
  int32_t value = 0;
  if (ScanInt(text, value)) return value;
  const std::string_view number = NumberStart(text);
  const size_t first = !number.empty() && number[0] == '-' ? 1 : 0;
  if (first >= number.size() || !IsDigit(number[first])) return 0;
  return first == 1 ? std::numeric_limits<int32_t>::min() : std::numeric_limits<int32_t>::max();
}

float ToFloat(std::string_view text) {
  float value = 0;
  if (ScanFloat(text, value)) return value;
  const std::string_view number = NumberStart(text);
  if (!StartsDecimal(number)) return 0;
  constexpr float kLargest = std::numeric_limits<float>::max();
  return number[0] == '-' ? -kLargest : kLargest;
}

}  // namespace tarn
