#include "memory_use.h"

#include <cstdlib>
#include <new>

#if defined(__SANITIZE_ADDRESS__)
#define TARN_COUNTS_MEMORY 0
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define TARN_COUNTS_MEMORY 0
#endif
#endif
#ifndef TARN_COUNTS_MEMORY
#define TARN_COUNTS_MEMORY 1
#endif

namespace tarn::fuzz {
namespace {

thread_local int64_t g_in_use = 0;
thread_local int64_t g_peak = 0;

}  // namespace

MemoryUse::MemoryUse() : m_before(g_in_use) {
  g_peak = g_in_use;
}

int64_t MemoryUse::Peak() const {
  return g_peak - m_before;
}

#if TARN_COUNTS_MEMORY
namespace {

// The size of a block stands before it, in as much room as keeps it aligned.
constexpr size_t kBefore = alignof(std::max_align_t);
static_assert(kBefore >= sizeof(size_t));

void* Take(size_t size) {
  // NOLINTNEXTLINE(*-no-malloc,*-owning-memory): operator new is built on it.
  auto* const block = size > SIZE_MAX - kBefore ? nullptr : std::malloc(kBefore + size);
  if (block == nullptr) throw std::bad_alloc();
  *static_cast<size_t*>(block) = size;
  g_in_use += static_cast<int64_t>(size);
  if (g_in_use > g_peak) g_peak = g_in_use;
  return static_cast<char*>(block) + kBefore;
}

void Give(void* memory) {
  if (memory == nullptr) return;
  void* const block = static_cast<char*>(memory) - kBefore;
  g_in_use -= static_cast<int64_t>(*static_cast<size_t*>(block));
  // NOLINTNEXTLINE(*-no-malloc,*-owning-memory): operator delete is built on it.
  std::free(block);
}

}  // namespace
#endif

}  // namespace tarn::fuzz

#if TARN_COUNTS_MEMORY
void* operator new(size_t size) {
  return tarn::fuzz::Take(size);
}
void* operator new[](size_t size) {
  return tarn::fuzz::Take(size);
}
void operator delete(void* memory) noexcept {
  tarn::fuzz::Give(memory);
}
void operator delete[](void* memory) noexcept {
  tarn::fuzz::Give(memory);
}
void operator delete(void* memory, size_t /*size*/) noexcept {
  tarn::fuzz::Give(memory);
}
void operator delete[](void* memory, size_t /*size*/) noexcept {
  tarn::fuzz::Give(memory);
}
#endif
