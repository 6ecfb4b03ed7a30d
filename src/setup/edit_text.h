#pragma once

#include <cstddef>
#include <string_view>

namespace tarn {

// Characters that an edit of a dialog holds.
inline constexpr size_t kEditLimit = 39;
inline constexpr size_t kDesignEditLimit = 79;  // in the network design

// What a dialog reads of an edit: the first `characters` of its text. A character is a code
// point, and never cut.
std::string_view EditText(std::string_view text, size_t characters);

// The part of a text that one line of a network file can hold: before the first line break or
// other byte that ends a line or a text, of at most 254 bytes, no code point cut.
std::string_view LineText(std::string_view text);

}  // namespace tarn
