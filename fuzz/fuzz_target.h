#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

// One input; the name and the types are libFuzzer's.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace tarn::fuzz {

// A property that has to hold for every input; ends the program when it does not.
inline void Require(bool holds, const std::string& what) {
  if (holds) return;
  std::fprintf(stderr, "does not hold: %s\n", what.c_str());
  std::abort();
}

}  // namespace tarn::fuzz
