#include "browser/print_pages.h"

#include <algorithm>
#include <cmath>
#include <fmt/printf.h>
#include <limits>

#include "browser/report_file.h"

namespace tarn {
namespace {

constexpr int32_t kHeaderLines = 2;
constexpr double kRounding = 1e-6;     // of a line: a page of 60 lines is no page of 59.9999999
constexpr int32_t kMostLines = 10000;  // of a page, however small the font

}  // namespace

PrintPages::PrintPages(int64_t lines, double page_height, double line_height) : m_lines(lines) {
  const double room = std::floor(page_height / line_height + kRounding) - kHeaderLines;
  m_lines_per_page = room >= 1 ? static_cast<int32_t>(std::min<double>(room, kMostLines)) : 1;
  const int64_t pages = (m_lines + m_lines_per_page - 1) / m_lines_per_page;
  m_page_count =
      static_cast<int32_t>(std::clamp<int64_t>(pages, 1, std::numeric_limits<int32_t>::max()));
}

int64_t PrintPages::FirstLine(int32_t page) const {
  return int64_t{page - 1} * m_lines_per_page;
}

int32_t PrintPages::LineCount(int32_t page) const {
  const int64_t left = m_lines - FirstLine(page);
  return static_cast<int32_t>(std::clamp<int64_t>(left, 0, m_lines_per_page));
}

std::string PrintPages::Header(std::string_view caption, int32_t page) const {
  const std::string number = fmt::sprintf("Page %d of %d", page, m_page_count);
  const size_t room = kReportWidth - number.size() - 1;
  return fmt::sprintf("%-*.*s %s", static_cast<int>(room), static_cast<int>(room), caption, number);
}

}  // namespace tarn
