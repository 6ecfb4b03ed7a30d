#include <windows.h>

#include "base/native_paths.h"
#include "base/paths.h"
#include "base/wide_text.h"

namespace tarn {

std::string_view PathSeparators() {
  return "\\/";
}

bool NamesDrive(std::string_view path) {
  return path.size() == 2 && path.back() == ':';
}

bool NamesServer(std::string_view path) {
  const auto separates = [](char c) { return c == '\\' || c == '/'; };
  return path.size() > 2 && separates(path[0]) && separates(path[1]);
}

std::string FromItsDrive(const std::string& path) {
  const std::wstring wide = Widen(path);
  std::wstring whole(::GetFullPathNameW(wide.c_str(), 0, nullptr, nullptr), L'\0');
  whole.resize(
      ::GetFullPathNameW(wide.c_str(), static_cast<DWORD>(whole.size()), whole.data(), nullptr));
  return whole.empty() ? path : Narrow(whole);
}

std::string NamedTemporaryFolder() {
  wchar_t folder[MAX_PATH + 1] = L"";
  const DWORD length = ::GetTempPathW(MAX_PATH + 1, folder);
  return length <= MAX_PATH ? Narrow({folder, length}) : std::string();
}

// By the rules of the file system, whatever the language of the user: the name stays a name of the
// same file.
std::string OpenedPath(const std::string& path) {
  const std::wstring wide = Widen(path);
  const int size = static_cast<int>(wide.size());
  std::wstring lower(wide.size(), L'\0');
  const int count = ::LCMapStringEx(LOCALE_NAME_INVARIANT, LCMAP_LOWERCASE, wide.data(), size,
                                    lower.data(), size, nullptr, nullptr, 0);
  return count == size ? Narrow(lower) : path;
}

std::filesystem::path NativePath(const std::string& path) {
  return Widen(path);
}

std::string PathText(const std::filesystem::path& path) {
  return Narrow(path.native());
}

}  // namespace tarn
