#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tarn {

// How a report is laid out on paper: a header line and a blank one above the report's lines. All
// lengths in the units of the page.
class PrintPages {
 public:
  // `page_height` between the margins, `line_height` of the font, both above 0. A page has room
  // for one line of the report at least.
  PrintPages(int64_t lines, double page_height, double line_height);

  int32_t lines_per_page() const { return m_lines_per_page; }
  // 1 at least: an empty report has an empty page. At most what a page number can be.
  int32_t page_count() const { return m_page_count; }

  // Of page 1 to page_count(): its first line, from 0, and how many it has.
  int64_t FirstLine(int32_t page) const;
  int32_t LineCount(int32_t page) const;

  // The caption to the left and "Page 2 of 5" to the right, kReportWidth characters in all; a
  // caption that is too long is cut.
  std::string Header(std::string_view caption, int32_t page) const;

 private:
  int64_t m_lines;
  int32_t m_lines_per_page;
  int32_t m_page_count;
};

}  // namespace tarn
