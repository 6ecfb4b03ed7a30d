#pragma once

#include <cstddef>
#include <cstdint>

namespace tarn::fuzz {

// What operator new gave out to this thread since the object was made and what of it was in use
// at once at most, in bytes. Nothing is counted under AddressSanitizer, which has an operator new
// of its own.
class MemoryUse {
 public:
  MemoryUse();
  int64_t Peak() const;

 private:
  int64_t m_before;
};

}  // namespace tarn::fuzz
