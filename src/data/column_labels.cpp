#include "data/column_labels.h"

#include <algorithm>

namespace tarn {
namespace {

// The bytes of the character at the front of the text, which is not empty.
size_t CharacterSize(std::string_view text) {
  const unsigned char lead = static_cast<unsigned char>(text[0]);
  size_t size = 1;
  if (lead >= 0xC2 && lead <= 0xDF) size = 2;
  if (lead >= 0xE0 && lead <= 0xEF) size = 3;
  if (lead >= 0xF0 && lead <= 0xF4) size = 4;
  if (size > text.size()) return 1;
  for (size_t i = 1; i < size; ++i) {
    if ((static_cast<unsigned char>(text[i]) & 0xC0) != 0x80) return 1;
  }
  return size;
}

}  // namespace

std::string_view FirstCharacters(std::string_view text, size_t count) {
  size_t end = 0;
  for (size_t i = 0; i < count && end < text.size(); ++i) end += CharacterSize(text.substr(end));
  return text.substr(0, end);
}

std::vector<std::string> ReadColumnLabels(RecordReader& file, int32_t first_column, int32_t nodes) {
  std::vector<std::string> labels;
  const size_t wanted = static_cast<size_t>(std::max(nodes, 0));
  int64_t number = 0;
  std::string_view line;
  while (file.NextComment(line)) {
    for (size_t open = line.find('"'); open != std::string_view::npos; open = line.find('"')) {
      const size_t close = line.find('"', open + 1);
      if (close == std::string_view::npos) return {};
      ++number;
      if (number >= first_column && labels.size() < wanted) {
        labels.emplace_back(
            FirstCharacters(line.substr(open + 1, close - open - 1), kLongestLabel));
      }
      line.remove_prefix(close + 1);
    }
  }
  if (labels.size() < wanted) labels.clear();
  return labels;
}

}  // namespace tarn
