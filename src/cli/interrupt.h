#pragma once

#include <string>

namespace tarn {

// Takes over Ctrl-C, a request to end and a closed terminal: each ends the program at once
// with exit status 130. A pipe that nobody reads any more is only a write that fails.
void HandleInterrupts();

// Holds interrupts back while it lives, so that none falls between making a file and telling its
// name. One at a time.
class HoldInterrupts {
 public:
  HoldInterrupts();
  ~HoldInterrupts();
  HoldInterrupts(const HoldInterrupts&) = delete;
  HoldInterrupts& operator=(const HoldInterrupts&) = delete;
};

// A file, or a folder that is empty by then, that goes when an interrupt ends the program.
void RemoveWhenInterrupted(const std::string& path);

// From now on the first interrupt is only noted; the second ends the program.
void CatchInterrupts();
bool Interrupted();

}  // namespace tarn
