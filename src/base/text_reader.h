#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/file_layer.h"

namespace tarn {

// A text file read forward: by lines, by characters, or by numbers out of the stream. A line
// ends with LF or CR LF; a Ctrl-Z byte ends the file. Bytes are otherwise taken as they are.
// A read error ends the text where it strikes, and Failed tells of it.
class TextReader {
 public:
  TextReader() = default;
  ~TextReader() { Close(); }
  TextReader(const TextReader&) = delete;
  TextReader& operator=(const TextReader&) = delete;

  bool Open(const std::string& path);
  void Close();
  bool IsOpen() const { return m_file != FileLayer::kNoFile; }
  // Whether an error has kept something of the file from being read since it was opened, or from
  // being opened although it is there.
  bool Failed() const { return m_failed; }
  // Makes room for lines of up to `length` characters at once; false when the memory is not
  // there.
  bool Reserve(size_t length);
  // Starts over at the first character.
  void Rewind();

  struct Line {
    // Without its line end; valid until the next call of the reader.
    std::string_view text;
    // False when the text stopped at the limit or at the end of the file.
    bool ended = false;
  };

  // Reads at most `limit` characters of the current line, and its line end when it follows
  // them; what is left of a longer line is read by the next call. False at the end of the
  // file.
  bool ReadLine(size_t limit, Line& line);

  // The next character without or with moving on; -1 at the end of the file. CR LF is one
  // '\n'.
  int Peek();
  int Get();

  // Scan one value from the stream, line ends being white space. On failure the white space
  // is gone and the rest is left.
  bool ScanInt(int32_t& value);
  bool ScanFloat(float& value);
  // One word of non-blank characters, of which at most `limit` are kept.
  bool ScanWord(size_t limit, std::string& word);

 private:
  // Makes at least `count` bytes of the file available, fewer only at its end.
  std::string_view Ahead(size_t count);
  bool Fill();
  void SkipSpace();
  template <typename Value>
  bool ScanNumber(bool (*scan)(std::string_view&, Value&), Value& value);

  FileLayer::Handle m_file = FileLayer::kNoFile;
  std::vector<char> m_buffer;
  size_t m_begin = 0;  // the next unread byte of the buffer
  size_t m_end = 0;    // one past the last byte read into it
  size_t m_block = 0;  // bytes that are asked for with the next read
  bool m_at_end = true;
  bool m_failed = false;
};

}  // namespace tarn
