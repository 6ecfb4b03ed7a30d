#include <windows.h>

#include "base/paths.h"
#include "base/wide_text.h"
#include "support/doomed_process.h"

namespace tarn {
namespace {

constexpr UINT kKilled = 99;

// doomed_program lies beside the program of the tests.
std::wstring CommandLine(std::string_view work) {
  std::wstring program(32768, L'\0');
  program.resize(::GetModuleFileNameW(nullptr, program.data(), static_cast<DWORD>(program.size())));
  program.resize(program.find_last_of(L'\\') + 1);
  return L'"' + program + L"doomed_program.exe\" " + Widen(work);
}

}  // namespace

// Starting a program takes a hundred times what a fork does.
const int kManyKills = 40;

struct DoomedProcess::Process {
  PROCESS_INFORMATION started{};
  HANDLE told = nullptr;  // what it tells
  bool begun = false;

  // The child has the writing end of the pipe as its output.
  bool Start(std::wstring command, const std::string& folder, HANDLE output) {
    STARTUPINFOW info{};
    info.cb = sizeof(info);
    info.dwFlags = STARTF_USESTDHANDLES;
    info.hStdOutput = output;
    ::SetHandleInformation(output, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
    return ::CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, CREATE_NO_WINDOW,
                            nullptr, NativePath(folder).c_str(), &info, &started);
  }

  // Waits for one letter more; false when the pipe has ended.
  bool Tells() {
    char letter = 0;
    DWORD count = 0;
    return ::ReadFile(told, &letter, 1, &count, nullptr) && count == 1;
  }
};

DoomedProcess::DoomedProcess(std::string_view work, const std::string& folder)
    : m_process(std::make_unique<Process>()) {
  HANDLE writing = nullptr;
  if (!::CreatePipe(&m_process->told, &writing, nullptr, 0)) return;
  const bool started = m_process->Start(CommandLine(work), folder, writing);
  ::CloseHandle(writing);
  m_process->begun = started && m_process->Tells();
}

// The handle is kept until now: its number cannot become another process's.
DoomedProcess::~DoomedProcess() {
  Kill();
  ::CloseHandle(m_process->told);
  ::CloseHandle(m_process->started.hThread);
  ::CloseHandle(m_process->started.hProcess);
}

std::string DoomedProcess::name() const {
  return std::to_string(m_process->started.dwProcessId);
}

bool DoomedProcess::Kill() {
  const HANDLE process = m_process->started.hProcess;
  const bool killed = ::TerminateProcess(process, kKilled);
  ::WaitForSingleObject(process, INFINITE);
  // wine ends a process before it closes what that had open: then the pipe ends too.
  while (m_process->begun && m_process->Tells()) {
  }
  DWORD code = 0;
  return killed && m_process->begun && ::GetExitCodeProcess(process, &code) && code == kKilled;
}

}  // namespace tarn
