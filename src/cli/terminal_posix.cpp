#include <unistd.h>

#include "cli/terminal.h"

namespace tarn {

std::vector<std::string> CommandLineWords(int argc, char** argv) {
  return argc > 0 ? std::vector<std::string>(argv + 1, argv + argc) : std::vector<std::string>();
}

TerminalTexts::TerminalTexts() = default;
void TerminalTexts::Restore() {}

bool CanRedrawErrors() {
  return ::isatty(STDERR_FILENO) == 1;
}

}  // namespace tarn
