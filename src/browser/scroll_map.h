#pragma once

#include <cstdint>

namespace tarn {

// A vertical scroll bar, whose positions are ints, over a report of any number of lines. A position
// is a line as long as there are ints enough; beyond that only the two ends are exact.
class ScrollMap {
 public:
  // `rows` lines are visible, 1 at least.
  ScrollMap(int64_t line_count, int64_t rows);

  // Of the scroll bar: its whole length and that of its thumb.
  int range() const { return m_range; }
  int thumb() const { return m_thumb; }

  // The position of the thumb when `line` is the first visible one, and the reverse.
  int PositionOf(int64_t line) const;
  int64_t LineAt(int position) const;

 private:
  int64_t m_last_line;  // that can be the first visible one
  int m_range;
  int m_thumb;
};

}  // namespace tarn
