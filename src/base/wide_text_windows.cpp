#include <windows.h>

#include "base/wide_text.h"

namespace tarn {

std::wstring Widen(std::string_view text) {
  const int size = static_cast<int>(text.size());
  const int count = ::MultiByteToWideChar(CP_UTF8, 0, text.data(), size, nullptr, 0);
  std::wstring wide(static_cast<size_t>(count), L'\0');
  ::MultiByteToWideChar(CP_UTF8, 0, text.data(), size, wide.data(), count);
  return wide;
}

std::string Narrow(std::wstring_view text) {
  const int size = static_cast<int>(text.size());
  const int count =
      ::WideCharToMultiByte(CP_UTF8, 0, text.data(), size, nullptr, 0, nullptr, nullptr);
  std::string narrow(static_cast<size_t>(count), '\0');
  ::WideCharToMultiByte(CP_UTF8, 0, text.data(), size, narrow.data(), count, nullptr, nullptr);
  return narrow;
}

}  // namespace tarn
