#pragma once

#include <string>
#include <windows.h>

#include "windows/window.h"

namespace tarn {

// A program that was started, in a folder of its own; it is ended with this at the latest.
class Program {
 public:
  // Throws Lost when it cannot be started.
  Program(const std::string& path, const std::string& folder);
  ~Program();
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  DWORD id() const { return m_process.dwProcessId; }
  bool HasEnded() const;
  // Of one that has ended.
  DWORD ExitStatus() const;
  // A field of a status bar: its text lies in the memory of the program.
  std::string StatusText(const Window& bar, int field) const;

 private:
  PROCESS_INFORMATION m_process{};
};

}  // namespace tarn
