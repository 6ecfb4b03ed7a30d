#include <algorithm>
#include <fcntl.h>
#include <io.h>
#include <map>
#include <mutex>
#include <windows.h>

#include "base/file_layer.h"
#include "base/replace_file_windows.h"
#include "base/wide_text.h"

namespace tarn {
namespace {

// Others may read, write, rename and delete a file that is open here, as they may elsewhere.
constexpr DWORD kShared = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// From here on the system takes a path only in its long form. A folder has to leave room for a
// short name in it.
constexpr size_t kLongPath = MAX_PATH - 12;
constexpr std::wstring_view kLongForm = L"\\\\?\\";
constexpr std::wstring_view kLongShareForm = L"\\\\?\\UNC\\";
constexpr std::wstring_view kDevices = L"\\\\.\\";

std::wstring WholePath(const std::wstring& path) {
  std::wstring whole(MAX_PATH, L'\0');
  DWORD length = ::GetFullPathNameW(path.c_str(), MAX_PATH, whole.data(), nullptr);
  if (length >= MAX_PATH) {
    whole.resize(length);
    length = ::GetFullPathNameW(path.c_str(), length, whole.data(), nullptr);
  }
  whole.resize(length);
  return whole;
}

// For the system a name ends at a zero character; what stands before it would be another file, and
// so would what the replacement characters of a path that is no text name. No file has the empty
// name.
std::wstring Name(const std::string& path) {
  std::wstring name = Widen(path);
  if (path.find('\0') != std::string::npos || Narrow(name) != path) return {};
  if (name.starts_with(kLongForm)) return name;
  name = WholePath(name);
  if (name.size() < kLongPath) return name;
  if (!name.starts_with(L"\\\\")) return std::wstring(kLongForm) + name;
  return std::wstring(kLongShareForm) + name.substr(2);
}

// None for a name that nothing has.
DWORD AttributesOf(const std::wstring& name) {
  const DWORD attributes = ::GetFileAttributesW(name.c_str());
  return attributes == INVALID_FILE_ATTRIBUTES ? 0 : attributes;
}

bool HasAttribute(const std::wstring& name, DWORD attribute) {
  return (AttributesOf(name) & attribute) != 0;
}

struct OpenWay {
  DWORD access;
  DWORD disposition;
  int flags;
};

OpenWay WayOf(FileLayer::Mode mode) {
  switch (mode) {
    case FileLayer::Mode::kRead:
      return {GENERIC_READ, OPEN_EXISTING, _O_RDONLY};
    case FileLayer::Mode::kCreate:
      return {GENERIC_WRITE, CREATE_ALWAYS, _O_WRONLY};
    case FileLayer::Mode::kCreateNew:
      return {GENERIC_READ | GENERIC_WRITE, CREATE_NEW, _O_RDWR};
    case FileLayer::Mode::kAppend:
      return {GENERIC_WRITE, OPEN_ALWAYS, _O_WRONLY | _O_APPEND};
  }
  return {GENERIC_READ, OPEN_EXISTING, _O_RDONLY};
}

HANDLE OpenShared(const std::wstring& name, DWORD access, DWORD disposition, DWORD flags) {
  return ::CreateFileW(name.c_str(), access, kShared, nullptr, disposition, flags, nullptr);
}

// One call takes 2 GB at most.
unsigned int Part(size_t size) {
  return static_cast<unsigned int>(std::min(size, size_t{1} << 30));
}

class WindowsFiles : public FileLayer {
 public:
  Handle Open(const std::string& path, Mode mode) override {
    const OpenWay way = WayOf(mode);
    const HANDLE file = OpenShared(Name(path), way.access, way.disposition, FILE_ATTRIBUTE_NORMAL);
    if (file == INVALID_HANDLE_VALUE) return kNoFile;
    const int handle = ::_open_osfhandle(reinterpret_cast<intptr_t>(file), way.flags | _O_BINARY);
    if (handle < 0) ::CloseHandle(file);
    return handle < 0 ? kNoFile : handle;
  }

  int64_t Read(Handle file, void* data, size_t size) override {
    return ::_read(file, data, Part(size));
  }

  int64_t Write(Handle file, const void* data, size_t size) override {
    return ::_write(file, data, Part(size));
  }

  bool Seek(Handle file, int64_t position) override {
    return position >= 0 && ::_lseeki64(file, position, SEEK_SET) == position;
  }

  int64_t Size(Handle file) override { return ::_filelengthi64(file); }
  bool Truncate(Handle file, int64_t size) override { return ::_chsize_s(file, size) == 0; }

  // A pipe or a console cannot be brought to a disk; that is no failure.
  bool Sync(Handle file) override {
    const auto handle = reinterpret_cast<HANDLE>(::_get_osfhandle(file));
    if (handle == INVALID_HANDLE_VALUE) return false;
    return ::GetFileType(handle) != FILE_TYPE_DISK || ::FlushFileBuffers(handle);
  }

  bool Close(Handle file) override { return ::_close(file) == 0; }

  bool Rename(const std::string& from, const std::string& to) override {
    const std::wstring source = Name(from);
    const std::wstring target = Name(to);
    if (source.empty() || target.empty() || !Exists(from)) return false;
    if (HasAttribute(target, FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY)) return false;
    return ReplaceWholeFile(source, target);
  }

  bool Remove(const std::string& path) override {
    const std::wstring name = Name(path);
    const bool removed = ::DeleteFileW(name.c_str());
    return LetGo(name) || removed;
  }

  bool CopyMode(const std::string& from, const std::string& to) override {
    if (!Exists(from) || !Exists(to)) return false;
    constexpr DWORD kKept = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;
    const DWORD kept = AttributesOf(Name(from)) & kKept;
    CopyRights(Name(from), Name(to));
    if (kept != 0) ::SetFileAttributesW(Name(to).c_str(), AttributesOf(Name(to)) | kept);
    return true;
  }

  // A new file has the rights that its folder gives.
  bool GiveDefaultMode(const std::string& path) override { return Exists(path); }

  bool IsWriteProtected(const std::string& path) override {
    if (HasAttribute(Name(path), FILE_ATTRIBUTE_READONLY)) return true;
    const HANDLE file = OpenShared(Name(path), GENERIC_WRITE, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL);
    if (file == INVALID_HANDLE_VALUE) {
      const DWORD error = ::GetLastError();
      return error == ERROR_ACCESS_DENIED || error == ERROR_WRITE_PROTECT;
    }
    ::CloseHandle(file);
    return false;
  }

  std::string ResolveLinks(const std::string& path) override {
    const std::wstring name = Name(path);
    if (name.empty()) return {};
    if (!HasAttribute(name, FILE_ATTRIBUTE_REPARSE_POINT)) return Narrow(WholePath(name));
    const HANDLE file = OpenShared(name, 0, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS);
    if (file == INVALID_HANDLE_VALUE) {
      // A link to what is not there cannot be followed; it would be replaced itself.
      const DWORD error = ::GetLastError();
      const bool leads_nowhere = error == ERROR_CANT_RESOLVE_FILENAME ||
                                 error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
      return leads_nowhere ? std::string() : Narrow(WholePath(name));
    }
    std::wstring target(32768, L'\0');
    target.resize(::GetFinalPathNameByHandleW(
        file, target.data(), static_cast<DWORD>(target.size()), FILE_NAME_NORMALIZED));
    ::CloseHandle(file);
    return target.empty() ? Narrow(WholePath(name)) : Narrow(target);
  }

  // "NUL", "CON" and their like are devices in every folder.
  bool IsSpecial(const std::string& path) override {
    return WholePath(Name(path)).starts_with(kDevices);
  }

  bool IsDirectory(const std::string& path) override {
    return HasAttribute(Name(path), FILE_ATTRIBUTE_DIRECTORY);
  }

  // The folders of temporary files belong to one user each.
  bool IsOwnFile(const std::string& path) override {
    return Exists(path) &&
           !HasAttribute(Name(path), FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT);
  }

  std::optional<int64_t> WriteTime(const std::string& path) override {
    constexpr int64_t kNanoseconds = 100;
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!::GetFileAttributesExW(Name(path).c_str(), GetFileExInfoStandard, &data)) {
      return std::nullopt;
    }
    const FILETIME time = data.ftLastWriteTime;
    const uint64_t ticks = (uint64_t{time.dwHighDateTime} << 32) | time.dwLowDateTime;
    return static_cast<int64_t>(ticks) * kNanoseconds;
  }

  bool EnterDirectory(const std::string& path) override {
    return ::SetCurrentDirectoryW(Name(path).c_str());
  }

  std::string CurrentDirectory() override { return Narrow(WholePath(L".")); }

  std::vector<std::string> NamesIn(const std::string& folder) override {
    std::vector<std::string> names;
    const std::wstring name = Name(folder);
    if (name.empty()) return names;
    WIN32_FIND_DATAW entry{};
    // The root of a drive ends with its separator.
    const std::wstring all = name.ends_with(L'\\') ? L"*" : L"\\*";
    const HANDLE search = ::FindFirstFileW((name + all).c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE) return names;
    do {
      const std::wstring_view found = entry.cFileName;
      if (found != L"." && found != L"..") names.push_back(Narrow(found));
    } while (::FindNextFileW(search, &entry));
    if (::GetLastError() != ERROR_NO_MORE_FILES) names.clear();
    ::FindClose(search);
    return names;
  }

  bool MakeFolder(const std::string& path) override {
    return ::CreateDirectoryW(Name(path).c_str(), nullptr);
  }

  bool RemoveFolder(const std::string& path) override {
    const std::wstring name = Name(path);
    // A link to a folder goes itself, not what it leads to.
    if (!HasAttribute(name, FILE_ATTRIBUTE_REPARSE_POINT)) {
      for (const std::string& inside : NamesIn(path)) {
        const std::string inner = path + "\\" + inside;
        if (IsDirectory(inner)) {
          RemoveFolder(inner);
        } else {
          Remove(inner);
        }
      }
    }
    return ::RemoveDirectoryW(name.c_str());
  }

  std::string MakeTemporary(const std::string& folder, const char* prefix,
                            Lifetime lifetime) override {
    char path[MAX_PATH] = "";
    if (Name(folder).empty()) return {};
    if (::GetTempFileNameA(folder.c_str(), prefix, 0, path) == 0) return {};
    if (lifetime == Lifetime::kLasting) return path;
    const std::wstring name = Name(path);
    // The system removes it with this handle, whatever becomes of the process.
    const HANDLE guard = OpenShared(name, DELETE, OPEN_EXISTING, FILE_FLAG_DELETE_ON_CLOSE);
    if (guard != INVALID_HANDLE_VALUE) {
      const std::lock_guard lock(m_mutex);
      m_guards[name] = guard;
    }
    return path;
  }

  std::string_view LineEnd() const override { return "\r\n"; }

 private:
  bool Exists(const std::string& path) {
    return ::GetFileAttributesW(Name(path).c_str()) != INVALID_FILE_ATTRIBUTES;
  }

  // Whether there was a guard of the temporary file `name`.
  bool LetGo(const std::wstring& name) {
    const std::lock_guard lock(m_mutex);
    const auto found = m_guards.find(name);
    if (found == m_guards.end()) return false;
    ::CloseHandle(found->second);
    m_guards.erase(found);
    return true;
  }

  std::mutex m_mutex;
  std::map<std::wstring, HANDLE> m_guards;
};

}  // namespace

FileLayer& SystemFiles() {
  static WindowsFiles files;
  return files;
}

}  // namespace tarn
