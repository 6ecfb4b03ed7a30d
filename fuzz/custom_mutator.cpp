#include <algorithm>
#include <cstring>
#include <string>

#include "fuzz_target.h"
#include "mutate_text.h"

// libFuzzer's hooks: about half of the changes know of lines and numbers.

extern "C" size_t LLVMFuzzerMutate(uint8_t* data, size_t size, size_t max_size);
extern "C" size_t LLVMFuzzerCustomMutator(uint8_t* data, size_t size, size_t max_size,
                                          unsigned int seed);

size_t LLVMFuzzerCustomMutator(uint8_t* data, size_t size, size_t max_size, unsigned int seed) {
  if (seed % 2 == 0) return LLVMFuzzerMutate(data, size, max_size);
  static std::string text;
  text.assign(reinterpret_cast<const char*>(data), size);
  tarn::fuzz::MutateText(text, tarn::fuzz::Words(), seed / 2);
  const size_t length = std::min(text.size(), max_size);
  std::memcpy(data, text.data(), length);
  return length;
}
