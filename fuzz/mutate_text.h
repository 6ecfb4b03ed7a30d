#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace tarn::fuzz {

// Changes a text of lines, words and numbers into a like one: lines change places, come twice or
// go, numbers become others, words and runs of lines are put in. The same seed gives the same
// change.
void MutateText(std::string& text, std::span<const std::string_view> words, uint32_t seed);

}  // namespace tarn::fuzz
