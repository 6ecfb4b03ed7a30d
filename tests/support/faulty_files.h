#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "base/file_layer.h"

namespace tarn {

// A layer over another one that makes operations fail on demand, to show what the program
// does when the disk fails at just that moment.
class FaultyFiles : public FileLayer {
 public:
  enum class Fault {
    kOnce,        // that operation fails and changes nothing; all others work
    kDiskFull,    // from it on nothing new is made and nothing written; the rest works
    kShortWrite,  // the first write from it on takes half of its bytes, then the disk is full
  };
  // Which operations count, and so can be the one that fails.
  enum class Kinds {
    kMutating,  // open for writing, write, sync, close, rename, truncate, remove
    kAll,       // also open for reading, read, seek, size, access rights, folders and lists of
                // names, the time of a file and whose it is
  };

  // Forwards to `under`, which is not owned. Nothing fails before FailAt.
  explicit FaultyFiles(FileLayer& under) : m_under(under) {}

  // Makes the `k`-th operation from now on (1 is the next one) the one that fails.
  void FailAt(int64_t k, Fault fault = Fault::kOnce, Kinds kinds = Kinds::kMutating);
  // Everything works again; the counts stay.
  void StopFailing() { m_k = 0; }
  // The operations that counted since FailAt, and how many of all kinds have failed.
  int64_t Operations() const { return m_count; }
  int64_t Failures() const { return static_cast<int64_t>(m_failed.size()); }
  // What has failed, in order: "open PATH", "read-open PATH", "remove PATH" and so on, where there
  // is a handle alone "write", "read" and so on.
  const std::vector<std::string>& Failed() const { return m_failed; }

  Handle Open(const std::string& path, Mode mode) override;
  int64_t Read(Handle file, void* data, size_t size) override;
  int64_t Write(Handle file, const void* data, size_t size) override;
  bool Seek(Handle file, int64_t position) override;
  int64_t Size(Handle file) override;
  bool Truncate(Handle file, int64_t size) override;
  bool Sync(Handle file) override;
  // A close that fails still ends the handle, as the system's does.
  bool Close(Handle file) override;

  bool Rename(const std::string& from, const std::string& to) override;
  bool Remove(const std::string& path) override;
  bool CopyMode(const std::string& from, const std::string& to) override;
  bool GiveDefaultMode(const std::string& path) override;
  bool EnterDirectory(const std::string& path) override;
  bool MakeFolder(const std::string& path) override;
  bool RemoveFolder(const std::string& path) override;
  std::string MakeTemporary(const std::string& folder, const char* prefix,
                            Lifetime lifetime) override;

  // A failure is the answer of a file or folder that is not there.
  bool IsOwnFile(const std::string& path) override;
  std::optional<int64_t> WriteTime(const std::string& path) override;
  std::vector<std::string> NamesIn(const std::string& folder) override;

  // Other questions about paths are answered and never fail.
  bool IsWriteProtected(const std::string& path) override;
  std::string ResolveLinks(const std::string& path) override;
  bool IsSpecial(const std::string& path) override;
  bool IsDirectory(const std::string& path) override;
  std::string CurrentDirectory() override;
  std::string_view LineEnd() const override;

 private:
  // How an operation stands to a disk that is full.
  enum class Need { kNothing, kSpace };

  // Counts one operation and tells whether it fails.
  bool Strikes(Kinds kind, Need need, std::string_view what, const std::string& path = {});
  bool Exists(const std::string& path);

  FileLayer& m_under;
  int64_t m_k = 0;  // 0: nothing fails
  Fault m_fault = Fault::kOnce;
  Kinds m_kinds = Kinds::kMutating;
  int64_t m_count = 0;
  std::vector<std::string> m_failed;
  bool m_half_taken = false;
};

// Runs `operation` for k = 1, 2, ... with its k-th counted operation failing, until it runs
// through without meeting the fault. Before each run `prepare` sets the scene, after each
// `check` looks at it with everything working again; it is told whether a fault has struck.
// Returns the number of runs in which one did.
int64_t ForEveryFault(FaultyFiles& files, FaultyFiles::Fault fault, FaultyFiles::Kinds kinds,
                      const std::function<void()>& prepare, const std::function<void()>& operation,
                      const std::function<void(bool struck)>& check);

// The same with every fault, whichever operations count; each strikes in `least` runs or more. The
// number of runs in which one has struck becomes a property of the test, and is printed with `name`
// where TARN_FAULT_COUNTS is set.
int64_t ForAllFaults(FaultyFiles& files, const std::string& name,
                     const std::function<void()>& prepare, const std::function<void()>& operation,
                     const std::function<void(bool struck)>& check, int64_t least = 0);

}  // namespace tarn
