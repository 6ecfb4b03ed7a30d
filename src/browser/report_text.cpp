#include "browser/report_text.h"

#include <algorithm>

#include "base/output_file.h"
#include "base/utf8.h"
#include "browser/messages.h"
#include "browser/report_file.h"

namespace tarn {

bool TVirtText::Open(const std::string& path) {
  Close();
  m_file = Files().Open(path, FileLayer::Mode::kRead);
  if (m_file == FileLayer::kNoFile) return false;
  const int64_t size = Files().Size(m_file);
  if (size < 0) {
    Close();
    return false;
  }
  m_line_count = size / static_cast<int64_t>(kReportWidth);
  return true;
}

void TVirtText::Close() {
  if (m_file != FileLayer::kNoFile) Files().Close(m_file);
  m_file = FileLayer::kNoFile;
  m_line_count = m_first_visible = 0;
}

std::string TVirtText::Lines(int64_t index, int64_t count) {
  if (index < 0 || index >= m_line_count) return {};
  if (!Files().Seek(m_file, index * static_cast<int64_t>(kReportWidth))) return {};
  const auto lines = static_cast<size_t>(std::clamp<int64_t>(count, 0, m_line_count - index));
  std::string records(lines * kReportWidth, ' ');
  for (size_t held = 0; held < records.size();) {
    const int64_t read = Files().Read(m_file, records.data() + held, records.size() - held);
    if (read <= 0) return {};
    held += static_cast<size_t>(read);
  }
  return records;
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

std::string DisplayText(std::string_view line) {
  constexpr std::string_view kReplacement = "\xEF\xBF\xBD";
  std::string text;
  for (std::string_view rest = WithoutTrailingBlanks(line); !rest.empty();) {
    std::string_view bytes = rest;
    const char32_t character = TakeCharacter(rest);
    bytes.remove_suffix(rest.size());
    if (character == kReplacementCharacter) bytes = kReplacement;
    if (character < U' ') bytes = " ";
    text += bytes;
  }
  return text;
}

Status WriteReportText(TVirtText& report, int64_t first, int64_t count, const LineSink& sink) {
  constexpr int64_t kLinesAtOnce = 819;  // some 64 KB
  std::string text;
  for (int64_t i = 0; i < count; i += kLinesAtOnce) {
    const std::string records = report.Lines(first + i, std::min(kLinesAtOnce, count - i));
    if (records.empty()) return Status::Failure(kReportUnreadable);
    for (std::string_view rest = records; !rest.empty(); rest.remove_prefix(kReportWidth)) {
      text = WithoutTrailingBlanks(rest.substr(0, kReportWidth));
      text += '\n';
      if (!sink(text)) return {};
    }
  }
  return {};
}

Status WriteReportText(TVirtText& report, const LineSink& sink) {
  return WriteReportText(report, 0, report.line_count(), sink);
}

bool SaveReportText(TVirtText& report, const std::string& path) {
  OutputFile file;
  return file.OpenReplacing(path) &&
         WriteReportText(report, [&file](std::string_view line) { return file.Write(line); })
             .ok() &&
         file.Commit();
}

}  // namespace tarn
