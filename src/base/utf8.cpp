#include "base/utf8.h"

#include <array>
#include <cstdint>

namespace tarn {
namespace {

// A first byte of a character of so many bytes, and the smallest character that needs them.
struct Lead {
  uint8_t mask;
  uint8_t value;
  char32_t smallest;
};
constexpr std::array<Lead, 4> kLeads = {
    {{0x80, 0x00, 0}, {0xE0, 0xC0, 0x80}, {0xF0, 0xE0, 0x800}, {0xF8, 0xF0, 0x10000}}};

bool IsCharacter(char32_t c) {
  const bool surrogate = c >= 0xD800 && c <= 0xDFFF;
  return c <= 0x10FFFF && !surrogate;
}

// The character of `length` bytes at the front, or none.
bool Decode(std::string_view text, size_t length, char32_t& character) {
  const Lead& lead = kLeads[length - 1];
  const auto first = static_cast<uint8_t>(text.front());
  if ((first & lead.mask) != lead.value || text.size() < length) return false;
  character = first & static_cast<uint8_t>(~lead.mask);
  for (const char byte : text.substr(1, length - 1)) {
    const auto bits = static_cast<uint8_t>(byte);
    if ((bits & 0xC0U) != 0x80U) return false;
    character = (character << 6U) | (bits & 0x3FU);
  }
  return character >= lead.smallest && IsCharacter(character);
}

}  // namespace

char32_t TakeCharacter(std::string_view& text) {
  char32_t character = 0;
  for (size_t length = 1; length <= kLeads.size(); ++length) {
    if (!Decode(text, length, character)) continue;
    text.remove_prefix(length);
    return character;
  }
  text.remove_prefix(1);
  return kReplacementCharacter;
}

size_t CharacterLength(std::string_view text) {
  std::string_view rest = text;
  TakeCharacter(rest);
  return text.size() - rest.size();
}

std::string WithoutControls(std::string_view text) {
  std::string plain;
  while (!text.empty()) {
    const std::string_view bytes = text.substr(0, CharacterLength(text));
    const bool whole = TakeCharacter(text) != kReplacementCharacter;
    const auto last = static_cast<uint8_t>(bytes.back());
    // Those from 0x80 on are two bytes each as text, and one in terminals of other encodings.
    const bool upper = last >= 0x80 && last < 0xA0 && (bytes.front() == '\xC2' || !whole);
    const bool lower = last < 0x20 && last != '\n' && last != '\t';
    plain += lower || upper || last == 0x7F ? "?" : bytes;
  }
  return plain;
}

}  // namespace tarn
