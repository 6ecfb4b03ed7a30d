#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <span>
#include <string_view>

// One input; the name and the types are libFuzzer's.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace tarn::fuzz {

// A property that has to hold for every input; ends the program when it does not.
inline void Require(bool holds, std::string_view what) {
  if (holds) return;
  std::fprintf(stderr, "does not hold: %.*s\n", static_cast<int>(what.size()), what.data());
  std::abort();
}

// What the inputs of a target are made of, beside numbers: words and lines that it knows.
std::span<const std::string_view> Words();

}  // namespace tarn::fuzz
