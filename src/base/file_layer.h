#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarn {

// The operating system's files as the rest of the program sees them. Everything that reads
// or writes goes through the current layer, so that a test can make any single operation
// fail, or keep all files in memory. Paths are UTF-8; one with a zero byte names nothing.
// Handles are owned by the caller.
class FileLayer {
 public:
  using Handle = int;
  static constexpr Handle kNoFile = -1;

  enum class Mode {
    kRead,
    kCreate,     // truncates an existing file
    kCreateNew,  // fails when the file exists; for the user only where files have modes
    kAppend,     // creates a missing file
  };

  // Whether a temporary file goes with the process that made it, where the system sees to that.
  enum class Lifetime { kProcess, kLasting };

  virtual ~FileLayer() = default;

  // kNoFile when the file cannot be opened; a directory cannot.
  virtual Handle Open(const std::string& path, Mode mode) = 0;
  // The number of bytes read, 0 at the end of the file, below 0 on an error.
  virtual int64_t Read(Handle file, void* data, size_t size) = 0;
  // The number of bytes written, which may be less than `size`; below 0 on an error.
  virtual int64_t Write(Handle file, const void* data, size_t size) = 0;
  virtual bool Seek(Handle file, int64_t position) = 0;
  // The size in bytes, below 0 on an error.
  virtual int64_t Size(Handle file) = 0;
  virtual bool Truncate(Handle file, int64_t size) = 0;
  // Brings what was written to the disk.
  virtual bool Sync(Handle file) = 0;
  virtual bool Close(Handle file) = 0;

  // Replaces `to` in one step; afterwards the name holds the whole new file.
  virtual bool Rename(const std::string& from, const std::string& to) = 0;
  virtual bool Remove(const std::string& path) = 0;
  // Gives `to` the access rights of `from`, and its owner as far as the user may.
  virtual bool CopyMode(const std::string& from, const std::string& to) = 0;
  // Gives `path` the access rights of a file that the user creates.
  virtual bool GiveDefaultMode(const std::string& path) = 0;
  // An existing file that the user may not write.
  virtual bool IsWriteProtected(const std::string& path) = 0;
  // The file that a path names in the end, through symbolic links, whether or not it exists
  // yet; empty when it names nothing, as links that run in a circle do.
  virtual std::string ResolveLinks(const std::string& path) = 0;

  // A device, a pipe or a socket: something that takes bytes but cannot be replaced.
  virtual bool IsSpecial(const std::string& path) = 0;
  virtual bool IsDirectory(const std::string& path) = 0;
  // A plain file, not a link to one, that belongs to this user.
  virtual bool IsOwnFile(const std::string& path) = 0;
  // When the file was last written, in nanoseconds from a moment of the system's choice; nothing
  // when there is no such file.
  virtual std::optional<int64_t> WriteTime(const std::string& path) = 0;
  virtual bool EnterDirectory(const std::string& path) = 0;
  // Empty when it cannot be told.
  virtual std::string CurrentDirectory() = 0;
  // The names in a folder, in no order; none when it cannot be listed.
  virtual std::vector<std::string> NamesIn(const std::string& folder) = 0;
  // Makes a folder, that the user alone can enter where folders have modes; false when the name is
  // taken.
  virtual bool MakeFolder(const std::string& path) = 0;
  // Removes a folder with all that it holds.
  virtual bool RemoveFolder(const std::string& path) = 0;

  // Makes a fresh, empty file in `folder` in the system's own way, with at least the first three
  // letters of `prefix` before what tells it apart; its path, empty where the system has no such
  // way or the folder takes no file. It is to be removed with Remove.
  virtual std::string MakeTemporary(const std::string& /*folder*/, const char* /*prefix*/,
                                    Lifetime /*lifetime*/) {
    return {};
  }
  // What ends a line in the system's text files.
  virtual std::string_view LineEnd() const { return "\n"; }
};

// The layer in use: the operating system's unless a test has put another in its place.
FileLayer& Files();

// Puts a layer in place of the current one for as long as it lives. The layer is not owned.
class ScopedFileLayer {
 public:
  explicit ScopedFileLayer(FileLayer& layer);
  ~ScopedFileLayer();
  ScopedFileLayer(const ScopedFileLayer&) = delete;
  ScopedFileLayer& operator=(const ScopedFileLayer&) = delete;

 private:
  FileLayer* m_previous;
};

// The operating system's own layer.
FileLayer& SystemFiles();

}  // namespace tarn
