#include "netfile/find_section.h"

namespace tarn {

std::string FindSection(TextReader& file, std::string_view prefix) {
  if (!file.IsOpen()) return {};
  file.Rewind();
  TextReader::Line line;
  while (file.ReadLine(kSectionLineLimit, line)) {
    if (line.text.starts_with(prefix)) return std::string(line.text.substr(prefix.size()));
  }
  return {};
}

}  // namespace tarn
