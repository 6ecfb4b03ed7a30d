#include "browser/scroll_map.h"

#include <algorithm>
#include <cmath>

namespace tarn {
namespace {

// Toolkits add range and thumb: their sum is an int as well.
constexpr int64_t kLongest = int64_t{1} << 30U;

// `value` of 0 to `from` as one of 0 to `to`.
int64_t Scale(int64_t value, int64_t from, int64_t to) {
  if (from <= 0) return 0;
  const int64_t within = std::clamp<int64_t>(value, 0, from);
  if (within == from) return to;  // not rounded
  const double part = static_cast<double>(within) / static_cast<double>(from);
  return std::llround(part * static_cast<double>(to));
}

}  // namespace

ScrollMap::ScrollMap(int64_t line_count, int64_t rows)
    : m_last_line(std::max<int64_t>(line_count - rows, 0)),
      m_range(static_cast<int>(std::clamp<int64_t>(line_count, 1, kLongest))) {
  const auto part =
      static_cast<double>(m_range) / static_cast<double>(std::max(line_count, int64_t{1}));
  const int64_t thumb = std::llround(part * static_cast<double>(rows));
  m_thumb = static_cast<int>(std::clamp<int64_t>(thumb, 1, m_range));
}

int ScrollMap::PositionOf(int64_t line) const {
  return static_cast<int>(Scale(line, m_last_line, m_range - m_thumb));
}

int64_t ScrollMap::LineAt(int position) const {
  return Scale(position, m_range - m_thumb, m_last_line);
}

}  // namespace tarn
