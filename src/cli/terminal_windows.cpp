#include <io.h>
#include <windows.h>

#include "base/wide_text.h"
#include "cli/terminal.h"

namespace tarn {
namespace {

UINT code_page_before = 0;  // none without a console

}  // namespace

std::vector<std::string> CommandLineWords(int, char**) {
  // The words of main have the system's code page, which is not UTF-8 before Windows 10.
  std::vector<std::string> words;
  int count = 0;
  LPWSTR* wide = ::CommandLineToArgvW(::GetCommandLineW(), &count);
  for (int i = 1; wide != nullptr && i < count; ++i) words.push_back(Narrow(wide[i]));
  ::LocalFree(wide);
  return words;
}

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
