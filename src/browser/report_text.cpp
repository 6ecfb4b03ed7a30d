#include "browser/report_text.h"

#include <algorithm>

#include "base/output_file.h"
#include "browser/report_file.h"

namespace tarn {

bool TVirtText::Open(const std::string& path) {
  Close();
  m_file = Files().Open(path, FileLayer::Mode::kRead);
  if (m_file == FileLayer::kNoFile) return false;
  const int64_t size = Files().Size(m_file);
  m_line_count = std::max<int64_t>(size, 0) / static_cast<int64_t>(kReportWidth);
  return true;
}

void TVirtText::Close() {
  if (m_file != FileLayer::kNoFile) Files().Close(m_file);
  m_file = FileLayer::kNoFile;
  m_line_count = m_first_visible = 0;
}

std::string TVirtText::Line(int64_t index) {
  if (index < 0 || index >= m_line_count) return {};
  if (!Files().Seek(m_file, index * static_cast<int64_t>(kReportWidth))) return {};
  std::string line(kReportWidth, ' ');
  for (size_t held = 0; held < line.size();) {
    const int64_t count = Files().Read(m_file, line.data() + held, line.size() - held);
    if (count <= 0) return {};
    held += static_cast<size_t>(count);
  }
  return line;
}

int64_t TVirtText::ScrollRange(int64_t rows) const {
  return std::max<int64_t>(m_line_count - rows, 0);
}

void TVirtText::ScrollTo(int64_t line, int64_t rows) {
  m_first_visible = std::clamp<int64_t>(line, 0, ScrollRange(rows));
}

std::string_view WithoutTrailingBlanks(std::string_view line) {
  return line.substr(0, line.find_last_not_of(' ') + 1);
}

bool WriteReportText(TVirtText& report, const std::function<bool(std::string_view)>& sink) {
  std::string text;
  for (int64_t i = 0; i < report.line_count(); ++i) {
    const std::string line = report.Line(i);
    if (line.empty()) return false;
    text = WithoutTrailingBlanks(line);
    text += '\n';
    if (!sink(text)) return false;
  }
  return true;
}

bool SaveReportText(TVirtText& report, const std::string& path) {
  OutputFile file;
  return file.OpenReplacing(path) &&
         WriteReportText(report, [&file](std::string_view line) { return file.Write(line); }) &&
         file.Commit();
}

}  // namespace tarn
