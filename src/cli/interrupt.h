#pragma once

#include <string>

namespace tarn {

// Takes over Ctrl-C, a request to end and a closed terminal: each ends the program at once
// with exit status 130. A pipe that nobody reads any more is only a write that fails.
void HandleInterrupts();

// A file, or a folder that is empty by then, that goes when an interrupt ends the program.
void RemoveWhenInterrupted(const std::string& path);

// From now on the first interrupt is only noted; the second ends the program.
void CatchInterrupts();
bool Interrupted();

}  // namespace tarn
