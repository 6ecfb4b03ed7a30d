#include <algorithm>
#include <cerrno>
#include <charconv>
#include <limits>
#include <signal.h>
#include <unistd.h>

#include "base/process.h"

namespace tarn {

std::string ProcessName() {
  return std::to_string(::getpid());
}

bool IsLiveProcess(std::string_view name) {
  pid_t process = 0;
  auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), process);
  if (error != std::errc() || end != name.data() + name.size() || process <= 0) return false;
  return ::kill(process, 0) == 0 || errno == EPERM;
}

uint64_t PhysicalMemory() {
  const long pages = ::sysconf(_SC_PHYS_PAGES);
  const long page_size = ::sysconf(_SC_PAGESIZE);
  if (pages <= 0 || page_size <= 0) return uint64_t{1} << 32;
  // A 32-bit program cannot reach all of it.
  const uint64_t reachable = std::numeric_limits<size_t>::max() / 2;
  return std::min(static_cast<uint64_t>(pages) * static_cast<uint64_t>(page_size), reachable);
}

}  // namespace tarn
