#pragma once

#include <optional>
#include <stdlib.h>
#include <string>

#ifdef _WIN32
#include "base/wide_text.h"
#endif

namespace tarn {

// Names the folder for temporary files to the program for as long as it lives.
class TemporaryFolderIs {
 public:
  explicit TemporaryFolderIs(const std::string& path) : m_before(Get()) { Set(path); }
  ~TemporaryFolderIs() { Set(m_before); }
  TemporaryFolderIs(const TemporaryFolderIs&) = delete;
  TemporaryFolderIs& operator=(const TemporaryFolderIs&) = delete;

 private:
#ifdef _WIN32
  static std::optional<std::string> Get() {
    const wchar_t* const value = ::_wgetenv(L"TMP");
    return value == nullptr ? std::nullopt : std::optional(Narrow(value));
  }
  static void Set(const std::optional<std::string>& value) {
    ::_wputenv_s(L"TMP", Widen(value.value_or("")).c_str());
  }
#else
  static std::optional<std::string> Get() {
    const char* const value = ::getenv("TMPDIR");
    return value == nullptr ? std::nullopt : std::optional<std::string>(value);
  }
  static void Set(const std::optional<std::string>& value) {
    if (value) {
      ::setenv("TMPDIR", value->c_str(), 1);
    } else {
      ::unsetenv("TMPDIR");
    }
  }
#endif

  std::optional<std::string> m_before;
};

}  // namespace tarn
