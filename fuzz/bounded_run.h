#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "fuzz_files.h"
#include "fuzz_target.h"

namespace tarn::fuzz {

// What a run over an input of n bytes may take: so many bytes whatever the input, and so many for
// each byte of it.
struct Bound {
  int64_t fixed = 0;
  int64_t per_byte = 0;
};

struct Bounds {
  Bound memory;   // in use at once
  Bound read;     // from files
  Bound written;  // to files
};

// What each target has: what its runs may take, and a run over one input with files in memory.
extern const Bounds kBounds;
void Run(FuzzFiles& files, std::string_view input);

// One in `count` inputs, always the same ones: for checks that cost much.
inline bool IsSample(std::string_view input, size_t count) {
  size_t sum = input.size();
  for (const char c : input) sum = 31 * sum + static_cast<unsigned char>(c);
  return sum % count == 0;
}

}  // namespace tarn::fuzz
