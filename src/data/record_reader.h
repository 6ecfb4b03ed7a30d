#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "base/text_reader.h"

namespace tarn {

// What a line of a pattern data file is, told by its first character that is no white space.
enum class LineKind { kBlank, kComment, kRecord };
LineKind KindOfLine(std::string_view line);

// Reads the data records of a pattern data file one after the other. The first line that
// does not fit the buffer with its line end, or has none, ends the file for it.
class RecordReader {
 public:
  // Makes room for lines of up to `buffer_size` - 2 characters; false when the memory is not
  // there.
  bool Reserve(size_t buffer_size);
  bool Open(const std::string& path) { return m_file.Open(path); }
  void Rewind() { m_file.Rewind(); }
  // Whether an error has kept something of the file from being read.
  bool Failed() const { return m_file.Failed(); }

  // The next data record, without its line end; valid until the next call. False at the end.
  bool NextRecord(std::string_view& record);
  // The next comment line that stands before the next data record, from its "#" on. False
  // when there is no more; the record itself is then gone.
  bool NextComment(std::string_view& comment);

 private:
  bool NextLine(std::string_view& text);

  TextReader m_file;
  size_t m_limit = 0;
};

}  // namespace tarn
