#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace tarn {

// Characters of the longest line that a pattern data file may have, its line end not counted.
inline constexpr size_t kLongestDataLine = 999'999;

// kNotRead: the file cannot be opened, or not be read to its end.
enum class MeasureResult { kDone, kNotRead, kLineTooLong };

// What the counting pass learns about one pattern data file. Lengths are in characters,
// line ends not counted.
struct FileMeasure {
  int64_t records = 0;
  size_t longest_line = 0;  // up to the last record: comments and blank lines included
  size_t longest_record = 0;
  bool unended_record = false;  // a data record without a line end stands behind the others
};

// Reads the file once, in bounded memory whatever its lines are. `measure` is complete with
// kDone.
MeasureResult MeasureRecords(const std::string& path, FileMeasure& measure);

}  // namespace tarn
