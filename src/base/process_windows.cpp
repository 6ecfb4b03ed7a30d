#include <algorithm>
#include <charconv>
#include <windows.h>

#include "base/process.h"

namespace tarn {

std::string ProcessName() {
  return std::to_string(::GetCurrentProcessId());
}

bool IsLiveProcess(std::string_view name) {
  DWORD process = 0;
  auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), process);
  if (error != std::errc() || end != name.data() + name.size() || process == 0) return false;
  const HANDLE handle = ::OpenProcess(SYNCHRONIZE, FALSE, process);
  if (handle == nullptr) return ::GetLastError() == ERROR_ACCESS_DENIED;
  // One that has ended stays known while anybody holds a handle of it.
  const bool live = ::WaitForSingleObject(handle, 0) == WAIT_TIMEOUT;
  ::CloseHandle(handle);
  return live;
}

uint64_t PhysicalMemory() {
  MEMORYSTATUSEX memory{};
  memory.dwLength = sizeof(memory);
  if (!::GlobalMemoryStatusEx(&memory)) return uint64_t{1} << 32;
  // A 32-bit program cannot reach all of it.
  return std::min<uint64_t>(memory.ullTotalPhys, memory.ullTotalVirtual);
}

}  // namespace tarn
