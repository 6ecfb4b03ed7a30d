#include "base/replace_file_windows.h"

#include <aclapi.h>
#include <cstddef>
#include <cstring>
#include <windows.h>

namespace tarn {
namespace {

constexpr int kTries = 50;
constexpr DWORD kPauseMs = 20;

// FILE_RENAME_INFO and FileRenameInfoEx of the system, which the headers of older compilers lack.
struct RenameInfo {
  DWORD flags;
  HANDLE root;
  DWORD name_size;  // bytes
  wchar_t name[1];
};
constexpr auto kRenameInfo = static_cast<FILE_INFO_BY_HANDLE_CLASS>(22);
constexpr DWORD kReplaceIfExists = 1;
constexpr DWORD kPosixSemantics = 2;

// In one step, whoever has `to` open. Windows before 10 and disks of other systems cannot do it.
bool RenameInOneStep(const std::wstring& from, const std::wstring& to) {
  const HANDLE file =
      ::CreateFileW(from.c_str(), DELETE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                    nullptr, OPEN_EXISTING, FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
  if (file == INVALID_HANDLE_VALUE) return false;
  const size_t name_size = to.size() * sizeof(wchar_t);
  const RenameInfo info{
      kReplaceIfExists | kPosixSemantics, nullptr, static_cast<DWORD>(name_size), {}};
  std::string buffer(sizeof(info) + name_size, '\0');
  std::memcpy(buffer.data(), &info, sizeof(info));
  std::memcpy(buffer.data() + offsetof(RenameInfo, name), to.data(), name_size);
  const bool renamed = ::SetFileInformationByHandle(file, kRenameInfo, buffer.data(),
                                                    static_cast<DWORD>(buffer.size()));
  ::CloseHandle(file);
  return renamed;
}

// The path with its last name spelled as it is on the disk: by a name in lowercase, the file would
// come to be called so.
std::wstring AsOnDisk(const std::wstring& path) {
  WIN32_FIND_DATAW entry{};
  const HANDLE search = ::FindFirstFileW(path.c_str(), &entry);
  if (search == INVALID_HANDLE_VALUE) return path;
  ::FindClose(search);
  return path.substr(0, path.find_last_of(L"\\/") + 1) + entry.cFileName;
}

bool MayPass(DWORD error) {
  return error == ERROR_SHARING_VIOLATION || error == ERROR_ACCESS_DENIED ||
         error == ERROR_LOCK_VIOLATION || error == ERROR_USER_MAPPED_FILE;
}

}  // namespace

// Not by ReplaceFile, which takes two steps: between them no file has the name.
bool ReplaceWholeFile(const std::wstring& from, const std::wstring& to) {
  const std::wstring target = AsOnDisk(to);
  for (int i = 0; i < kTries; ++i) {
    if (i > 0) ::Sleep(kPauseMs);
    if (RenameInOneStep(from, target)) return true;
    if (::MoveFileExW(from.c_str(), target.c_str(),
                      MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
      return true;
    }
    if (!MayPass(::GetLastError())) return false;
  }
  return false;
}

void CopyRights(std::wstring from, std::wstring to) {
  PACL rights = nullptr;
  PSECURITY_DESCRIPTOR descriptor = nullptr;
  if (::GetNamedSecurityInfoW(from.data(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr,
                              nullptr, &rights, nullptr, &descriptor) != ERROR_SUCCESS) {
    return;
  }
  SECURITY_DESCRIPTOR_CONTROL control = 0;
  DWORD revision = 0;
  ::GetSecurityDescriptorControl(descriptor, &control, &revision);
  const SECURITY_INFORMATION inheritance = (control & SE_DACL_PROTECTED) != 0
                                               ? PROTECTED_DACL_SECURITY_INFORMATION
                                               : UNPROTECTED_DACL_SECURITY_INFORMATION;
  ::SetNamedSecurityInfoW(to.data(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION | inheritance,
                          nullptr, nullptr, rights, nullptr);
  ::LocalFree(descriptor);
}

}  // namespace tarn
