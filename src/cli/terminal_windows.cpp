#include <io.h>
#include <windows.h>

#include "cli/terminal.h"

namespace tarn {
namespace {

UINT code_page_before = 0;  // none without a console

}  // namespace

TerminalTexts::TerminalTexts() {
  code_page_before = ::GetConsoleOutputCP();
  if (code_page_before != 0) ::SetConsoleOutputCP(CP_UTF8);
}

void TerminalTexts::Restore() {
  if (code_page_before != 0) ::SetConsoleOutputCP(code_page_before);
}

bool IsTerminal(std::FILE* stream) {
  return ::_isatty(::_fileno(stream)) != 0;
}

bool CanRedrawErrors() {
  const HANDLE terminal = ::GetStdHandle(STD_ERROR_HANDLE);
  DWORD mode = 0;
  return ::GetConsoleMode(terminal, &mode) &&
         ::SetConsoleMode(terminal, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
}

}  // namespace tarn
