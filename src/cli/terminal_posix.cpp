#include <fcntl.h>
#include <unistd.h>

#include "cli/terminal.h"

namespace tarn {

// The first file to be opened would get the number of a stream that the caller has closed, and what
// is printed would go into it. Nothing can be written to what takes the number here.
TerminalTexts::TerminalTexts() {
  int stream = STDIN_FILENO;
  while (stream >= 0 && stream <= STDERR_FILENO) stream = ::open("/dev/null", O_RDONLY);
  if (stream > STDERR_FILENO) ::close(stream);
}
void TerminalTexts::Restore() {}

bool IsTerminal(std::FILE* stream) {
  return ::isatty(::fileno(stream)) == 1;
}

bool CanRedrawErrors() {
  return IsTerminal(stderr);
}

}  // namespace tarn
