#include "data/record_reader.h"

#include "base/text_numbers.h"

namespace tarn {
namespace {

size_t LeadingSpace(std::string_view line) {
  size_t i = 0;
  while (i < line.size() && IsSpace(line[i])) ++i;
  return i;
}

}  // namespace

LineKind KindOfLine(std::string_view line) {
  const size_t first = LeadingSpace(line);
  if (first == line.size()) return LineKind::kBlank;
  return line[first] == '#' ? LineKind::kComment : LineKind::kRecord;
}

bool RecordReader::Reserve(size_t buffer_size) {
  // Beside the line itself the buffer holds its line feed and a terminator.
  constexpr size_t kBesideLine = 2;
  m_limit = buffer_size > kBesideLine ? buffer_size - kBesideLine : 0;
  return m_file.Reserve(m_limit);
}

bool RecordReader::NextLine(std::string_view& text) {
  TextReader::Line line;
  if (!m_file.ReadLine(m_limit, line) || !line.ended) return false;
  text = line.text;
  return true;
}

bool RecordReader::NextRecord(std::string_view& record) {
  while (NextLine(record)) {
    if (KindOfLine(record) == LineKind::kRecord) return true;
  }
  return false;
}

bool RecordReader::NextComment(std::string_view& comment) {
  std::string_view line;
  while (NextLine(line)) {
    const LineKind kind = KindOfLine(line);
    if (kind == LineKind::kRecord) return false;
    if (kind == LineKind::kBlank) continue;
    comment = line.substr(LeadingSpace(line));
    return true;
  }
  return false;
}

}  // namespace tarn
