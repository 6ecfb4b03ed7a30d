#include <atomic>
#include <mutex>
#include <vector>
#include <windows.h>

#include "base/file_layer.h"
#include "base/wide_text.h"
#include "cli/console.h"
#include "cli/interrupt.h"
#include "cli/terminal.h"

namespace tarn {
namespace {

std::atomic<bool> noting = false;
std::atomic<int> interrupts = 0;

// The system calls the handler on a thread of its own: it waits while interrupts are held back.
std::mutex holding;
std::mutex changing_paths;
std::vector<std::string> paths;

BOOL WINAPI TakeInterrupt(DWORD event) {
  if (noting && interrupts.exchange(1) == 0) {
    // After the others the process ends when the handler is done: the program is given the seconds
    // that the system leaves it.
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) ::Sleep(INFINITE);
    return TRUE;
  }
  const std::scoped_lock lock(holding, changing_paths);
  for (const std::string& path : paths) {
    if (!SystemFiles().Remove(path)) ::RemoveDirectoryW(Widen(path).c_str());
  }
  TerminalTexts::Restore();
  ::TerminateProcess(::GetCurrentProcess(), kInterrupted);
  return TRUE;
}

}  // namespace

void HandleInterrupts() {
  ::SetConsoleCtrlHandler(TakeInterrupt, TRUE);
}

HoldInterrupts::HoldInterrupts() {
  holding.lock();
}

HoldInterrupts::~HoldInterrupts() {
  holding.unlock();
}

void RemoveWhenInterrupted(const std::string& path) {
  const std::lock_guard lock(changing_paths);
  if (!path.empty()) paths.push_back(path);
}

void CatchInterrupts() {
  noting = true;
}

bool Interrupted() {
  return interrupts > 0;
}

}  // namespace tarn
