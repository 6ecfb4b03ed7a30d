#pragma once

#include <string>

namespace tarn {

void EmptyTheClipboard();
// Neither of them opens it: the program may be about to.
bool ClipboardHoldsPicture();
bool ClipboardHoldsText();
// Empty when it holds none.
std::string ClipboardText();

}  // namespace tarn
