#pragma once

#include <string>
#include <string_view>

namespace tarn {

// `text` with `to` in place of every `from`.
inline std::string EndLines(std::string_view text, std::string_view from, std::string_view to) {
  std::string ended;
  for (size_t at = text.find(from); at != std::string_view::npos; at = text.find(from)) {
    ended.append(text.substr(0, at)).append(to);
    text.remove_prefix(at + from.size());
  }
  return ended.append(text);
}

// A text whose lines end with "\n", as it is stored where they end otherwise.
inline std::string Stored(std::string_view text, std::string_view line_end) {
  return EndLines(text, "\n", line_end);
}

// The text, with "\n" at the end of its lines, of what is stored.
inline std::string Plain(std::string_view stored, std::string_view line_end) {
  return EndLines(stored, line_end, "\n");
}

}  // namespace tarn
