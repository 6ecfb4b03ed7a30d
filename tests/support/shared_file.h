#pragma once

#include <string>
#include <windows.h>

#include "base/paths.h"

namespace tarn {

inline constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// Windows only: a file that exists, as another program has it open.
class SharedFile {
 public:
  SharedFile(const std::string& path, DWORD access, DWORD share)
      : m_file(::CreateFileW(NativePath(path).c_str(), access, share, nullptr, OPEN_EXISTING,
                             FILE_ATTRIBUTE_NORMAL, nullptr)) {}
  ~SharedFile() {
    if (IsOpen()) ::CloseHandle(m_file);
  }
  SharedFile(const SharedFile&) = delete;
  SharedFile& operator=(const SharedFile&) = delete;

  bool IsOpen() const { return m_file != INVALID_HANDLE_VALUE; }
  // Of the first kilobyte.
  std::string Content() const {
    std::string content(1024, '\0');
    DWORD count = 0;
    ::SetFilePointer(m_file, 0, nullptr, FILE_BEGIN);
    ::ReadFile(m_file, content.data(), static_cast<DWORD>(content.size()), &count, nullptr);
    content.resize(count);
    return content;
  }

 private:
  HANDLE m_file;
};

}  // namespace tarn
