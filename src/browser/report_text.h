#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "base/file_layer.h"
#include "base/status.h"

namespace tarn {

// The lines of a report file, each read from the file when it is asked for: a report of any
// length takes no more memory than one of its lines.
class TVirtText {
 public:
  TVirtText() = default;
  ~TVirtText() { Close(); }
  TVirtText(const TVirtText&) = delete;
  TVirtText& operator=(const TVirtText&) = delete;

  bool Open(const std::string& path);
  void Close();

  // Whole records of the file.
  int64_t line_count() const { return m_line_count; }
  // Line `index`, from 0, kReportWidth bytes with the blanks that fill it; empty when there is no
  // such line or it cannot be read.
  std::string Line(int64_t index) { return Lines(index, 1); }

  // Lines from `index` on, kReportWidth bytes each: `count` of them or as many as there are. Empty
  // when they cannot be read.
  std::string Lines(int64_t index, int64_t count);

  // The first line to be seen in a window of `rows` lines, moved so that the window is full where
  // the report is long enough.
  int64_t first_visible() const { return m_first_visible; }
  void ScrollTo(int64_t line, int64_t rows);
  // The last line that can be the first one of such a window: the range of its scroll bar.
  int64_t ScrollRange(int64_t rows) const;

 private:
  FileLayer::Handle m_file = FileLayer::kNoFile;
  int64_t m_line_count = 0;
  int64_t m_first_visible = 0;
};

// A line as text: without the blanks at its end.
std::string_view WithoutTrailingBlanks(std::string_view line);

// A line as a window shows it: valid UTF-8 without control characters and trailing blanks. What is
// none, in a name of a file for one, is a replacement character or a blank.
std::string DisplayText(std::string_view line);

using LineSink = std::function<bool(std::string_view)>;

// Calls `sink` with `count` lines from `first` on, their trailing blanks removed and their line
// ends added, until it returns false. kReportUnreadable when a line cannot be read.
Status WriteReportText(TVirtText& report, int64_t first, int64_t count, const LineSink& sink);
// The same with every line.
Status WriteReportText(TVirtText& report, const LineSink& sink);

// Saves the report as a text file. False when it cannot be written; the file is as it was then.
bool SaveReportText(TVirtText& report, const std::string& path);

}  // namespace tarn
