#include "windows/clipboard.h"

#include <windows.h>

#include "base/wide_text.h"

namespace tarn {

void EmptyTheClipboard() {
  if (::OpenClipboard(nullptr) == 0) return;
  ::EmptyClipboard();
  ::CloseClipboard();
}

bool ClipboardHoldsPicture() {
  return ::IsClipboardFormatAvailable(CF_BITMAP) != 0 || ::IsClipboardFormatAvailable(CF_DIB) != 0;
}

bool ClipboardHoldsText() {
  return ::IsClipboardFormatAvailable(CF_UNICODETEXT) != 0;
}

std::string ClipboardText() {
  if (::OpenClipboard(nullptr) == 0) return {};
  std::string text;
  const HANDLE data = ::GetClipboardData(CF_UNICODETEXT);
  if (data != nullptr) {
    text = Narrow(static_cast<const wchar_t*>(::GlobalLock(data)));
    ::GlobalUnlock(data);
  }
  ::CloseClipboard();
  return text;
}

}  // namespace tarn
