#include "base/temp_file.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <optional>
#include <stdlib.h>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "base/file_layer.h"
#include "support/faulty_files.h"
#include "support/memory_files.h"
#include "support/temp_folder.h"

namespace tarn {
namespace {

namespace fs = std::filesystem;

mode_t RightsOf(const std::string& path) {
  struct stat info {};
  EXPECT_EQ(::stat(path.c_str(), &info), 0) << path;
  return info.st_mode & 0777;
}

// Sets TMPDIR for as long as it lives.
class TemporaryFolderIs {
 public:
  explicit TemporaryFolderIs(const std::string& path) {
    if (const char* before = ::getenv("TMPDIR"); before != nullptr) m_before = before;
    ::setenv("TMPDIR", path.c_str(), 1);
  }
  ~TemporaryFolderIs() {
    if (m_before) {
      ::setenv("TMPDIR", m_before->c_str(), 1);
    } else {
      ::unsetenv("TMPDIR");
    }
  }
  TemporaryFolderIs(const TemporaryFolderIs&) = delete;
  TemporaryFolderIs& operator=(const TemporaryFolderIs&) = delete;

 private:
  std::optional<std::string> m_before;
};

TEST(TempFile, IsFreshEmptyAndTheUsersAlone) {
  const TempFolder folder;
  TempFile first, second;
  EXPECT_EQ(first.path(), "");
  ASSERT_TRUE(first.Create(folder.path()));
  ASSERT_TRUE(second.Create(folder.path()));
  EXPECT_NE(first.path(), second.path());
  EXPECT_TRUE(first.path().starts_with(folder / "Tarn"));
  EXPECT_EQ(ReadFile(first.path()), "");
  EXPECT_EQ(RightsOf(first.path()), 0600U);
}

TEST(TempFile, IsRemovedWithTheObject) {
  const TempFolder folder;
  {
    TempFile file;
    ASSERT_TRUE(file.Create(folder.path()));
    EXPECT_FALSE(fs::is_empty(folder.path()));
  }
  EXPECT_TRUE(fs::is_empty(folder.path()));
}

TEST(TempFile, IsRemovedByItsSuccessorAndOnDemand) {
  const TempFolder folder;
  TempFile file;
  ASSERT_TRUE(file.Create(folder.path()));
  const std::string first = file.path();
  ASSERT_TRUE(file.Create(folder.path()));
  EXPECT_FALSE(fs::exists(first));
  EXPECT_TRUE(fs::exists(file.path()));
  file.Remove();
  EXPECT_EQ(file.path(), "");
  EXPECT_TRUE(fs::is_empty(folder.path()));
  file.Remove();
}

TEST(TempFile, FailsWhereNoFileCanBeMade) {
  const TempFolder folder;
  TempFile file;
  EXPECT_FALSE(file.Create(folder / "missing"));
  EXPECT_EQ(file.path(), "");
  MemoryFiles memory;
  FaultyFiles full(memory);
  full.FailAt(1, FaultyFiles::Fault::kDiskFull);
  const ScopedFileLayer scope(full);
  EXPECT_FALSE(file.Create("/tmp"));
  EXPECT_TRUE(memory.Paths().empty());
}

TEST(ScratchFolder, IsAFolderOfItsOwnRemovedWithAllItHolds) {
  const TempFolder folder;
  const TemporaryFolderIs scope(folder.path());
  {
    const ScratchFolder first, second;
    EXPECT_NE(first.path(), second.path());
    EXPECT_TRUE(first.path().starts_with(folder / "Tarn"));
    EXPECT_EQ(RightsOf(first.path()), 0700U);
    WriteFile(first.path() + "/~tarn.wts", "text");
    fs::create_directory(first.path() + "/inner");
  }
  EXPECT_TRUE(fs::is_empty(folder.path()));
}

TEST(ScratchFolder, IsMadeInTheFileLayer) {
  MemoryFiles memory;
  const ScopedFileLayer scope(memory);
  const TemporaryFolderIs temporary("/tmp");
  {
    const ScratchFolder scratch;
    EXPECT_TRUE(memory.IsDirectory(scratch.path()));
    EXPECT_FALSE(fs::exists(scratch.path()));
    memory.Put(scratch.path() + "/~tarn.wts", "text");
  }
  EXPECT_TRUE(memory.Paths().empty());
  EXPECT_TRUE(memory.NamesIn("/tmp").empty());
}

TEST(ScratchFolder, IsTheTemporaryFolderItselfWhenNoneCanBeMade) {
  MemoryFiles memory;
  memory.Put("/tmp/kept", "text");
  FaultyFiles full(memory);
  full.FailAt(1, FaultyFiles::Fault::kDiskFull, FaultyFiles::Kinds::kAll);
  const ScopedFileLayer scope(full);
  const TemporaryFolderIs temporary("/tmp");
  {
    const ScratchFolder scratch;
    EXPECT_EQ(scratch.path(), "/tmp");
  }
  EXPECT_TRUE(memory.Exists("/tmp/kept"));
}

// The number of a process that has ended.
std::string EndedProcess() {
  const pid_t child = ::fork();
  if (child == 0) ::_exit(0);
  EXPECT_EQ(::waitpid(child, nullptr, 0), child);
  return std::to_string(child);
}

TEST(AbandonedFiles, AreRemovedWithAllThatTheyHold) {
  const TempFolder folder;
  const std::string report = folder / ("Tarn" + EndedProcess() + "-a0b1z9");
  const std::string scratch = folder / ("Tarn" + EndedProcess() + "-zzzzzz");
  const std::string earlier = folder / ("Tarn" + std::to_string(::getpid()) + "-abcdef");
  WriteFile(report, "lines");
  WriteFile(earlier, "of a process with the same number");
  fs::create_directory(scratch);
  WriteFile(scratch + "/~tarn1.cnx", "connections");
  RemoveAbandonedFiles(folder.path());
  EXPECT_FALSE(fs::exists(report));
  EXPECT_FALSE(fs::exists(earlier));
  EXPECT_FALSE(fs::exists(scratch));
}

TEST(AbandonedFiles, AreNoFilesOfALiveProcessAndNoneOfTheUser) {
  const TempFolder folder;
  const std::string ended = EndedProcess();
  const std::string parent = std::to_string(::getppid());
  const std::vector<std::string> kept = {"Tarn" + parent + "-abcdef",   "Tarn" + ended + "-abcde",
                                         "Tarn" + ended + "-abcdefg",   "Tarn" + ended + "-abcdE1",
                                         "Tarn" + ended + "-abc.ef",    "Tarn-abcdef",
                                         "Tarn" + ended + "x-abcdef",   "tarn" + ended + "-abcdef",
                                         "Tarnish" + ended + "-abcdef", "Tarn" + ended,
                                         "Tarn" + ended + "-abcdef.txt"};
  for (const std::string& name : kept) WriteFile(folder / name, "");
  RemoveAbandonedFiles(folder.path());
  for (const std::string& name : kept) EXPECT_TRUE(fs::exists(folder / name)) << name;
}

TEST(AbandonedFiles, LeaveWhatALinkPointsTo) {
  const TempFolder folder;
  const std::string kept = folder / "kept";
  fs::create_directory(kept);
  WriteFile(kept + "/file", "");
  const std::string link = folder / ("Tarn" + EndedProcess() + "-abcdef");
  fs::create_directory_symlink(kept, link);
  RemoveAbandonedFiles(folder.path());
  EXPECT_FALSE(fs::is_symlink(link));
  EXPECT_TRUE(fs::exists(kept + "/file"));
}

}  // namespace
}  // namespace tarn
