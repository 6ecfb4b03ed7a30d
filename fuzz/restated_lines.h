#pragma once

#include <cstddef>
#include <string_view>

// The rules of text files restated over a whole file in memory.

namespace tarn::fuzz {

// A Ctrl-Z ends the file.
inline std::string_view TextOf(std::string_view file) {
  return file.substr(0, file.find('\x1A'));
}

struct RestatedLine {
  std::string_view text;
  bool ended = false;
};

// Takes the next piece of at most `limit` characters off `rest`, which is not empty. LF or CR LF
// ends a line.
inline RestatedLine TakeLine(std::string_view& rest, size_t limit) {
  constexpr size_t kLineEnd = 2;
  const size_t end = rest.substr(0, limit + kLineEnd).find('\n');
  if (end != std::string_view::npos) {
    const size_t length = end > 0 && rest[end - 1] == '\r' ? end - 1 : end;
    if (length <= limit) {
      const std::string_view text = rest.substr(0, length);
      rest.remove_prefix(end + 1);
      return {text, true};
    }
  }
  const std::string_view text = rest.substr(0, limit);
  rest.remove_prefix(text.size());
  return {text, false};
}

}  // namespace tarn::fuzz
