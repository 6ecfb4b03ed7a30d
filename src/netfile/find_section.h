#pragma once

#include <string>
#include <string_view>

#include "base/text_reader.h"

namespace tarn {

// Lines of a network file are looked through in pieces of at most this many characters.
inline constexpr size_t kSectionLineLimit = 510;

// Rewinds the file and reads lines until one begins with `prefix`, such as "WEIGHTS:".
// Returns the rest of that line, the mode word; the reader stands at the line after it. An
// empty text when no line matches or the file is not open.
std::string FindSection(TextReader& file, std::string_view prefix);

}  // namespace tarn
