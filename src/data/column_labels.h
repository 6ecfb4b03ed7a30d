#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "data/record_reader.h"

namespace tarn {

// Characters that are kept of a column label.
inline constexpr size_t kLongestLabel = 25;

// The first `count` characters of UTF-8 text. A byte that is part of no well-formed character
// counts as one.
std::string_view FirstCharacters(std::string_view text, size_t count);

// The labels of `nodes` columns from `first_column` (from 1) on: the texts in double quotes
// in the comment lines before the first record, numbered through. Empty when there are fewer
// or when a quote is not closed on its line. Reads on from where `file` stands.
std::vector<std::string> ReadColumnLabels(RecordReader& file, int32_t first_column, int32_t nodes);

}  // namespace tarn
