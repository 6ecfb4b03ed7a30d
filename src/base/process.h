#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tarn {

// The number of this process as text: the mark of the files that it owns.
std::string ProcessName();
// Whether a process of that number is running.
bool IsLiveProcess(std::string_view name);

// The bytes of memory that this machine has; the bound of what one network may take.
uint64_t PhysicalMemory();

}  // namespace tarn
