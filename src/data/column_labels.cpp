#include "data/column_labels.h"

#include <algorithm>

#include "base/utf8.h"

namespace tarn {
std::string_view FirstCharacters(std::string_view text, size_t count) {
  size_t end = 0;
  for (size_t i = 0; i < count && end < text.size(); ++i) end += CharacterLength(text.substr(end));
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
