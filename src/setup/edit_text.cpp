#include "setup/edit_text.h"

namespace tarn {
namespace {

constexpr size_t kLongestLine = 254;
// Line feed, carriage return, Ctrl-Z (the end of a text file) and the end of a C string.
constexpr std::string_view kLineEnds("\n\r\x1A\0", 4);

bool ContinuesCharacter(char c) {
  return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

}  // namespace

std::string_view EditText(std::string_view text, size_t characters) {
  size_t begun = 0;
  for (size_t i = 0; i < text.size(); ++i) {
    if (!ContinuesCharacter(text[i]) && ++begun > characters) return text.substr(0, i);
  }
  return text;
}

std::string_view LineText(std::string_view text) {
  const std::string_view line = text.substr(0, text.find_first_of(kLineEnds));
  if (line.size() <= kLongestLine) return line;
  size_t end = kLongestLine;
  while (end > 0 && ContinuesCharacter(line[end])) --end;
  return line.substr(0, end);
}

}  // namespace tarn
