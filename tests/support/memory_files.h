#pragma once

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "base/file_layer.h"

namespace tarn {

// Files that exist in memory only. Behaves as a disk does: a handle keeps its file whatever
// becomes of the name, and a file can be made only in a folder that exists. There are no
// links, no devices and no access rights. "/" and "/tmp" exist from the start, and so does the
// temporary folder that Windows names. Paths are told with "/" everywhere.
class MemoryFiles : public FileLayer {
 public:
  // `folder` is made and is the current directory.
  explicit MemoryFiles(const std::string& folder = "/home");

  // Makes a file hold `bytes`, with the folders on the way to it.
  void Put(const std::string& path, std::string_view bytes);
  // What a file holds; nothing when there is none.
  std::optional<std::string> Get(const std::string& path) const;
  bool Exists(const std::string& path) const { return m_files.count(Absolute(path)) > 0; }
  // The full paths of all files, sorted.
  std::vector<std::string> Paths() const;
  // Handles that were opened and not closed.
  int OpenHandles() const;
  void AddFolder(const std::string& path);
  // Text files are to have this line end from now on.
  void EndLinesWith(std::string_view line_end) { m_line_end = line_end; }

  Handle Open(const std::string& path, Mode mode) override;
  int64_t Read(Handle file, void* data, size_t size) override;
  int64_t Write(Handle file, const void* data, size_t size) override;
  bool Seek(Handle file, int64_t position) override;
  int64_t Size(Handle file) override;
  bool Truncate(Handle file, int64_t size) override;
  bool Sync(Handle file) override { return Find(file) != nullptr; }
  bool Close(Handle file) override;

  bool Rename(const std::string& from, const std::string& to) override;
  bool Remove(const std::string& path) override;
  bool CopyMode(const std::string& from, const std::string& to) override;
  bool GiveDefaultMode(const std::string& path) override { return Exists(path); }
  bool IsWriteProtected(const std::string&) override { return false; }
  std::string ResolveLinks(const std::string& path) override { return Absolute(path); }

  bool IsSpecial(const std::string&) override { return false; }
  bool IsDirectory(const std::string& path) override;
  bool IsOwnFile(const std::string& path) override { return Exists(path); }
  // Every write is later than the one before.
  std::optional<int64_t> WriteTime(const std::string& path) override;
  bool EnterDirectory(const std::string& path) override;
  std::string CurrentDirectory() override { return m_current; }
  std::vector<std::string> NamesIn(const std::string& folder) override;
  bool MakeFolder(const std::string& path) override;
  bool RemoveFolder(const std::string& path) override;
  std::string_view LineEnd() const override { return m_line_end; }

 private:
  struct Content {
    std::string bytes;
    int64_t written = 0;  // the count of writes to all files, then
  };
  using Bytes = std::shared_ptr<Content>;

  // By the rules of the system: Windows does not tell cases apart.
  struct Before {
    bool operator()(const std::string& a, const std::string& b) const;
  };

  struct OpenFile {
    Bytes bytes;  // empty when the handle is free
    size_t position = 0;
    bool readable = false;
    bool writable = false;
    bool appends = false;
  };

  // The full path without "." and "..", and without a separator at its end; empty when the
  // path names nothing.
  std::string Absolute(const std::string& path) const;
  OpenFile* Find(Handle file);
  Handle Keep(OpenFile opened);
  Bytes Create(const std::string& full_path);
  void Touch(Content& content) { content.written = ++m_writes; }

  std::map<std::string, Bytes, Before> m_files;
  std::set<std::string, Before> m_folders;
  std::string m_current = "/";
  std::string m_line_end = "\n";
  std::vector<OpenFile> m_open;
  int64_t m_writes = 0;
};

}  // namespace tarn
