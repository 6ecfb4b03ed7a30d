#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/file_layer.h"

namespace tarn::fuzz {

// The files of one run, in memory: a few, in the folders "/fuzz", which is the current one, and
// "/tmp". Made once and emptied for each run, so that a run costs little, and counts what is read
// and written. A path is taken as it stands.
class FuzzFiles : public FileLayer {
 public:
  FuzzFiles();

  // No files, and nothing counted.
  void Clear();
  void Put(std::string_view path, std::string_view bytes);
  bool Exists(const std::string& path) const { return Find(path) != nullptr; }
  // Empty when there is no such file; valid until the file is written.
  std::string_view Get(const std::string& path) const;
  size_t Count() const;
  int OpenHandles() const;
  int64_t bytes_read() const { return m_read; }
  int64_t bytes_written() const { return m_written; }

  Handle Open(const std::string& path, Mode mode) override;
  int64_t Read(Handle file, void* data, size_t size) override;
  int64_t Write(Handle file, const void* data, size_t size) override;
  bool Seek(Handle file, int64_t position) override;
  int64_t Size(Handle file) override;
  bool Truncate(Handle file, int64_t size) override;
  bool Sync(Handle file) override { return file >= 0; }
  bool Close(Handle file) override;

  bool Rename(const std::string& from, const std::string& to) override;
  bool Remove(const std::string& path) override;
  bool CopyMode(const std::string& from, const std::string& to) override;
  bool GiveDefaultMode(const std::string& path) override { return Exists(path); }
  bool IsWriteProtected(const std::string&) override { return false; }
  std::string ResolveLinks(const std::string& path) override { return path; }

  bool IsSpecial(const std::string&) override { return false; }
  bool IsDirectory(const std::string& path) override;
  bool IsOwnFile(const std::string& path) override { return Exists(path); }
  std::optional<int64_t> WriteTime(const std::string& path) override;
  bool EnterDirectory(const std::string& path) override { return IsDirectory(path); }
  std::string CurrentDirectory() override { return "/fuzz"; }
  std::vector<std::string> NamesIn(const std::string& folder) override;
  bool MakeFolder(const std::string&) override { return false; }
  bool RemoveFolder(const std::string&) override { return false; }
  std::string MakeTemporary(const std::string& folder, const char* prefix,
                            Lifetime lifetime) override;

 private:
  struct File {
    std::string path;  // empty: there is no file
    std::string bytes;
  };
  struct OpenFile {
    File* file = nullptr;
    size_t position = 0;
    bool readable = false;
    bool writable = false;
    bool appends = false;
  };

  const File* Find(std::string_view path) const;
  File* Find(std::string_view path);
  File& Make(std::string_view path);
  OpenFile* Opened(Handle file);

  std::array<File, 16> m_files;
  std::array<OpenFile, 8> m_open;
  int64_t m_read = 0;
  int64_t m_written = 0;
};

}  // namespace tarn::fuzz
