#include "windows/program.h"

#include <commctrl.h>

#include "base/wide_text.h"

namespace tarn {
namespace {

// Memory of another process, for what a control of it writes.
class LentMemory {
 public:
  LentMemory(HANDLE process, size_t bytes)
      : m_process(process),
        m_address(::VirtualAllocEx(process, nullptr, bytes, MEM_COMMIT, PAGE_READWRITE)) {}
  ~LentMemory() { ::VirtualFreeEx(m_process, m_address, 0, MEM_RELEASE); }
  LentMemory(const LentMemory&) = delete;
  LentMemory& operator=(const LentMemory&) = delete;

  void* address() const { return m_address; }
  std::wstring Read(size_t length) const {
    std::wstring text(length, L'\0');
    const size_t bytes = length * sizeof(wchar_t);
    const bool read = ::ReadProcessMemory(m_process, m_address, text.data(), bytes, nullptr) != 0;
    return read ? text : std::wstring();
  }

 private:
  HANDLE m_process;
  void* m_address;
};

}  // namespace

Program::Program(const std::string& path, const std::string& folder) {
  std::wstring line = L"\"" + Widen(path) + L"\"";
  STARTUPINFOW start{};
  start.cb = sizeof start;
  const BOOL started = ::CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr,
                                        Widen(folder).c_str(), &start, &m_process);
  if (started == 0) throw Lost("cannot start " + path);
}

Program::~Program() {
  if (!HasEnded()) ::TerminateProcess(m_process.hProcess, 1);
  ::CloseHandle(m_process.hThread);
  ::CloseHandle(m_process.hProcess);
}

bool Program::HasEnded() const {
  return ::WaitForSingleObject(m_process.hProcess, 0) == WAIT_OBJECT_0;
}

DWORD Program::ExitStatus() const {
  DWORD status = 0;
  ::GetExitCodeProcess(m_process.hProcess, &status);
  return status;
}

std::string Program::StatusText(const Window& bar, int field) const {
  const auto number = static_cast<WPARAM>(field);
  const auto length = static_cast<size_t>(LOWORD(bar.Send(SB_GETTEXTLENGTHW, number)));
  const LentMemory memory(m_process.hProcess, (length + 1) * sizeof(wchar_t));
  bar.Send(SB_GETTEXTW, number, Pointer(memory.address()));
  return Narrow(memory.Read(length));
}

}  // namespace tarn
