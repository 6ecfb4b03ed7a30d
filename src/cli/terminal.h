#pragma once

#include <cstdio>

namespace tarn {

// Makes a terminal show UTF-8 for as long as it lives, where it has to be asked to. No file that is
// opened behind it gets the number of a standard stream.
class TerminalTexts {
 public:
  TerminalTexts();
  ~TerminalTexts() { Restore(); }
  TerminalTexts(const TerminalTexts&) = delete;
  TerminalTexts& operator=(const TerminalTexts&) = delete;

  // Before its end, where the program ends otherwise.
  static void Restore();
};

bool IsTerminal(std::FILE* stream);
// Whether stderr is a terminal on which a line can be drawn over again.
bool CanRedrawErrors();

}  // namespace tarn
