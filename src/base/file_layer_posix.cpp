#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <string_view>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "base/file_layer.h"

namespace tarn {
namespace {

constexpr int kMostLinks = 40;  // as many as the system itself follows

// For the system a name ends at a zero byte; what stands before it would be another file. No
// file has the empty name.
const char* Name(const std::string& path) {
  return path.find('\0') == std::string::npos ? path.c_str() : "";
}

int OpenFlags(FileLayer::Mode mode) {
  switch (mode) {
    case FileLayer::Mode::kRead:
      return O_RDONLY;
    case FileLayer::Mode::kCreate:
      return O_WRONLY | O_CREAT | O_TRUNC;
    case FileLayer::Mode::kCreateNew:
      return O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW;
    case FileLayer::Mode::kAppend:
      return O_WRONLY | O_CREAT | O_APPEND;
  }
  return O_RDONLY;
}

// After a rename the new name itself must reach the disk: the folder is flushed too.
void SyncFolderOf(const std::string& path) {
  const std::string folder = std::filesystem::path(path).parent_path().string();
  const int handle =
      ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (handle < 0) return;
  ::fsync(handle);
  ::close(handle);
}

// A name for what the process has open already, as a shell gives it: replacing the file behind
// it would take the file out of the shell's hand.
bool IsOwnHandle(std::string_view path) {
  return path == "/dev/stdout" || path == "/dev/stderr" || path.starts_with("/dev/fd/") ||
         path.starts_with("/proc/self/fd/");
}

// A file that this process has made, opened for its rights to be changed: nothing that somebody
// who may write to the folder has put in its place, neither a link nor another name of a file.
class MadeFile {
 public:
  MadeFile(const std::string& path, struct stat& info)
      : m_handle(::open(Name(path), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC)) {
    if (m_handle < 0) return;
    m_is_plain = ::fstat(m_handle, &info) == 0 && S_ISREG(info.st_mode) && info.st_nlink <= 1;
  }
  ~MadeFile() {
    if (m_handle >= 0) ::close(m_handle);
  }
  MadeFile(const MadeFile&) = delete;
  MadeFile& operator=(const MadeFile&) = delete;

  bool IsOpen() const { return m_is_plain; }
  int handle() const { return m_handle; }

 private:
  int m_handle;
  bool m_is_plain = false;
};

// Whether somebody else has put the link into a folder that all may write to. The system follows
// none of those either.
bool IsForeignLink(const std::filesystem::path& link) {
  struct stat info {};
  struct stat folder {};
  const std::filesystem::path parent = link.has_parent_path() ? link.parent_path() : ".";
  if (::lstat(link.c_str(), &info) != 0 || ::stat(parent.c_str(), &folder) != 0) return false;
  const bool shared = (folder.st_mode & S_IWOTH) != 0;
  return shared && info.st_uid != ::geteuid() && info.st_uid != folder.st_uid;
}

class PosixFiles : public FileLayer {
 public:
  Handle Open(const std::string& path, Mode mode) override {
    const mode_t rights = mode == Mode::kCreateNew ? 0600 : 0666;
    Handle file = kNoFile;
    do {
      file = ::open(Name(path), OpenFlags(mode) | O_CLOEXEC, rights);
    } while (file < 0 && errno == EINTR);
    struct stat info {};
    if (file >= 0 && ::fstat(file, &info) == 0 && S_ISDIR(info.st_mode)) {
      ::close(file);
      return kNoFile;
    }
    return file < 0 ? kNoFile : file;
  }

  int64_t Read(Handle file, void* data, size_t size) override {
    ssize_t count = 0;
    do {
      count = ::read(file, data, size);
    } while (count < 0 && errno == EINTR);
    return count;
  }

  int64_t Write(Handle file, const void* data, size_t size) override {
    ssize_t count = 0;
    do {
      count = ::write(file, data, size);
    } while (count < 0 && errno == EINTR);
    return count;
  }

  bool Seek(Handle file, int64_t position) override {
    return position >= 0 && ::lseek(file, position, SEEK_SET) == position;
  }

  int64_t Size(Handle file) override {
    struct stat info {};
    return ::fstat(file, &info) == 0 ? static_cast<int64_t>(info.st_size) : -1;
  }

  bool Truncate(Handle file, int64_t size) override { return ::ftruncate(file, size) == 0; }

  // A pipe or a terminal cannot be brought to a disk; that is no failure.
  bool Sync(Handle file) override {
    return ::fsync(file) == 0 || errno == EINVAL || errno == ENOTSUP || errno == EROFS;
  }

  bool Close(Handle file) override { return ::close(file) == 0; }

  bool Rename(const std::string& from, const std::string& to) override {
    if (::rename(Name(from), Name(to)) != 0) return false;
    SyncFolderOf(to);
    return true;
  }

  bool Remove(const std::string& path) override { return ::unlink(Name(path)) == 0; }

  bool CopyMode(const std::string& from, const std::string& to) override {
    struct stat info {};
    struct stat mine {};
    if (::lstat(Name(from), &info) != 0 || S_ISLNK(info.st_mode)) return false;
    const MadeFile file(to, mine);
    if (!file.IsOpen()) return false;
    mode_t rights = info.st_mode & 0777;
    const bool same_owner = info.st_uid == mine.st_uid && info.st_gid == mine.st_gid;
    if (!same_owner && ::fchown(file.handle(), info.st_uid, info.st_gid) != 0) {
      // What was meant for one group is not given to another.
      const auto same_user = static_cast<uid_t>(-1);
      if (::fchown(file.handle(), same_user, info.st_gid) != 0) rights &= ~mode_t{070};
    }
    return ::fchmod(file.handle(), rights) == 0;
  }

  bool GiveDefaultMode(const std::string& path) override {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    struct stat info {};
    const MadeFile file(path, info);
    return file.IsOpen() && ::fchmod(file.handle(), 0666 & ~mask) == 0;
  }

  bool IsWriteProtected(const std::string& path) override {
    return ::faccessat(AT_FDCWD, Name(path), W_OK, AT_EACCESS) != 0 &&
           (errno == EACCES || errno == EPERM || errno == EROFS);
  }

  std::string ResolveLinks(const std::string& path) override {
    std::error_code error;
    std::filesystem::path file = Name(path);
    if (file.empty()) return {};
    for (int i = 0; std::filesystem::is_symlink(file, error); ++i) {
      if (i == kMostLinks || IsForeignLink(file)) return {};
      const std::filesystem::path target = std::filesystem::read_symlink(file, error);
      if (error) return path;
      file = file.parent_path() / target;
    }
    const std::filesystem::path folder = std::filesystem::canonical(
        file.has_parent_path() ? file.parent_path() : std::filesystem::path("."), error);
    return error ? file.string() : (folder / file.filename()).string();
  }

  bool IsSpecial(const std::string& path) override {
    if (IsOwnHandle(path)) return true;
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(Name(path), error);
    return std::filesystem::exists(status) && !std::filesystem::is_regular_file(status) &&
           !std::filesystem::is_directory(status);
  }

  bool IsDirectory(const std::string& path) override {
    std::error_code error;
    return std::filesystem::is_directory(Name(path), error);
  }

  bool IsOwnFile(const std::string& path) override {
    struct stat info {};
    return ::lstat(Name(path), &info) == 0 && S_ISREG(info.st_mode) && info.st_uid == ::geteuid();
  }

  std::optional<int64_t> WriteTime(const std::string& path) override {
    constexpr int64_t kNanoseconds = 1000000000;
    struct stat info {};
    if (::stat(Name(path), &info) != 0) return std::nullopt;
    return info.st_mtim.tv_sec * kNanoseconds + info.st_mtim.tv_nsec;
  }

  bool EnterDirectory(const std::string& path) override { return ::chdir(Name(path)) == 0; }

  std::string CurrentDirectory() override {
    std::error_code error;
    std::filesystem::path current = std::filesystem::current_path(error);
    return error ? std::string() : current.string();
  }

  std::vector<std::string> NamesIn(const std::string& folder) override {
    std::vector<std::string> names;
    std::error_code error;
    for (std::filesystem::directory_iterator it(Name(folder), error), end; !error && it != end;
         it.increment(error)) {
      names.push_back(it->path().filename().string());
    }
    if (error) names.clear();
    return names;
  }

  bool MakeFolder(const std::string& path) override { return ::mkdir(Name(path), 0700) == 0; }

  bool RemoveFolder(const std::string& path) override {
    std::error_code error;
    return std::filesystem::remove_all(Name(path), error) > 0 && !error;
  }
};

}  // namespace

FileLayer& SystemFiles() {
  static PosixFiles files;
  return files;
}

}  // namespace tarn
