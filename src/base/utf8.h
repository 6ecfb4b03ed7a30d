#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tarn {

inline constexpr char32_t kReplacementCharacter = 0xFFFD;

// Takes the first character off `text`, which is not empty. A byte that begins no valid UTF-8
// character is taken alone, as the replacement character.
char32_t TakeCharacter(std::string_view& text);

// Bytes of the first character, 1 to 4; `text` is not empty.
size_t CharacterLength(std::string_view text);

// The text with a "?" for every character that would steer a terminal: all control characters but
// tabs and line feeds, and single bytes that some terminals take for such.
std::string WithoutControls(std::string_view text);

}  // namespace tarn
