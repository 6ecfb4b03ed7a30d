#include "bounded_run.h"

#include <ctime>
#include <fmt/printf.h>

#include "base/file_layer.h"
#include "memory_use.h"

namespace tarn::fuzz {
namespace {

// Of the processor, whatever the target. A run takes a ten-thousandth of it, so that a slow machine
// or a sanitizer does not come near.
constexpr Bound kMilliseconds = {500, 1};

int64_t ProcessorMilliseconds() {
  return static_cast<int64_t>(std::clock()) * 1000 / CLOCKS_PER_SEC;
}

void RequireHolds(const Bound& bound, int64_t value, size_t n, const char* what) {
  const int64_t most = bound.fixed + bound.per_byte * static_cast<int64_t>(n);
  if (value > most) Require(false, fmt::sprintf("%d is at most %d: %s", value, most, what));
}

void RunBounded(std::string_view input) {
  static FuzzFiles files;
  files.Clear();
  const ScopedFileLayer layer(files);
  const MemoryUse memory;
  const int64_t start = ProcessorMilliseconds();
  Run(files, input);
  RequireHolds(kMilliseconds, ProcessorMilliseconds() - start, input.size(), "milliseconds");
  RequireHolds(kBounds.memory, memory.Peak(), input.size(), "bytes of memory");
  RequireHolds(kBounds.read, files.bytes_read(), input.size(), "bytes read");
  RequireHolds(kBounds.written, files.bytes_written(), input.size(), "bytes written");
  Require(files.OpenHandles() == 0, "every file is closed");
}

}  // namespace
}  // namespace tarn::fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  tarn::fuzz::RunBounded({reinterpret_cast<const char*>(data), size});
  return 0;
}
