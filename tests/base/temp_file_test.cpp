#include "base/temp_file.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "base/file_layer.h"
#include "base/paths.h"
#include "base/process.h"
#include "support/doomed_process.h"
#include "support/doomed_work.h"
#include "support/faulty_files.h"
#include "support/memory_files.h"
#include "support/slashes.h"
#include "support/temp_folder.h"
#include "support/temporary_folder_is.h"

namespace tarn {
namespace {

namespace fs = std::filesystem;

TEST(TempFile, IsFreshAndEmpty) {
  const TempFolder folder;
  TempFile first, second;
  EXPECT_EQ(first.path(), "");
  ASSERT_TRUE(first.Create(folder.path()));
  ASSERT_TRUE(second.Create(folder.path()));
  EXPECT_NE(first.path(), second.path());
  EXPECT_TRUE(Slashes(first.path()).starts_with(folder / "Tar")) << first.path();
  EXPECT_EQ(fs::file_size(NativePath(first.path())), 0U);
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

// Files in memory of a system that has a way of its own to make temporary ones.
class FilesWithTemporaries : public MemoryFiles {
 public:
  std::string MakeTemporary(const std::string& folder, const char* prefix, Lifetime) override {
    if (!IsDirectory(folder)) return {};
    std::string path = folder + "/" + std::string(prefix).substr(0, 3) + "1.tmp";
    Put(path, "");
    return path;
  }
};

TEST(TempFile, IsMadeInTheSystemsOwnWayWhereItHasOne) {
  FilesWithTemporaries files;
  FaultyFiles faulty(files);
  const ScopedFileLayer scope(faulty);
  {
    TempFile file;
    ASSERT_TRUE(file.Create("/tmp"));
    EXPECT_EQ(file.path(), "/tmp/Tar1.tmp");
    EXPECT_TRUE(files.Exists("/tmp/Tar1.tmp"));
    EXPECT_FALSE(file.Create("/missing"));
    EXPECT_EQ(file.path(), "");
  }
  EXPECT_TRUE(files.Paths().empty());
}

TEST(TempFile, HasANameOfItsOwnWhereTheSystemMakesNone) {
  FilesWithTemporaries files;
  FaultyFiles faulty(files);
  const ScopedFileLayer scope(faulty);
  faulty.FailAt(1);
  TempFile file;
  ASSERT_TRUE(file.Create("/tmp"));
  EXPECT_EQ(faulty.Failures(), 1);
  EXPECT_TRUE(Slashes(file.path()).starts_with("/tmp/Tarn" + ProcessName() + "-")) << file.path();
  EXPECT_EQ(files.Paths(), std::vector<std::string>{Slashes(file.path())});
}

TEST(TempFile, OfAKilledProcessIsGoneWhenTheNextOneBegins) {
  const TempFolder folder;
  DoomedProcess process(kKeepTemporary, folder.path());
  EXPECT_EQ(SystemFiles().NamesIn(folder.path()).size(), 1U);
  RemoveAbandonedFiles(folder.path());
  EXPECT_EQ(SystemFiles().NamesIn(folder.path()).size(), 1U) << "its process is alive";
  ASSERT_TRUE(process.Kill());
  RemoveAbandonedFiles(folder.path());
  EXPECT_EQ(SystemFiles().NamesIn(folder.path()), std::vector<std::string>());
}

TEST(ScratchFolder, IsAFolderOfItsOwnRemovedWithAllItHolds) {
  const TempFolder folder;
  const TemporaryFolderIs scope(folder.path());
  {
    const ScratchFolder first, second;
    EXPECT_NE(first.path(), second.path());
    EXPECT_TRUE(Slashes(first.path()).starts_with(folder / "Tarn")) << first.path();
    WriteFile(first.path() + "/~tarn.wts", "text");
    fs::create_directory(first.path() + "/inner");
  }
  EXPECT_TRUE(fs::is_empty(folder.path()));
}

TEST(ScratchFolder, IsMadeInTheFileLayer) {
  MemoryFiles memory;
  const ScopedFileLayer scope(memory);
  {
    const ScratchFolder scratch;
    EXPECT_TRUE(memory.IsDirectory(scratch.path()));
    EXPECT_FALSE(fs::exists(scratch.path()));
    memory.Put(scratch.path() + "/~tarn.wts", "text");
  }
  EXPECT_TRUE(memory.Paths().empty());
  EXPECT_TRUE(memory.NamesIn(TemporaryFolder()).empty());
}

TEST(ScratchFolder, IsTheTemporaryFolderItselfWhenNoneCanBeMade) {
  MemoryFiles memory;
  const std::string kept = JoinPath(TemporaryFolder(), "kept");
  memory.Put(kept, "text");
  FaultyFiles full(memory);
  full.FailAt(1, FaultyFiles::Fault::kDiskFull, FaultyFiles::Kinds::kAll);
  const ScopedFileLayer scope(full);
  {
    const ScratchFolder scratch;
    EXPECT_EQ(scratch.path(), TemporaryFolder());
  }
  EXPECT_TRUE(memory.Exists(kept));
}

TEST(AbandonedFiles, AreRemovedWithAllThatTheyHold) {
  const TempFolder folder;
  const std::string report = folder / ("Tarn" + EndedProcess() + "-a0b1z9");
  const std::string scratch = folder / ("Tarn" + EndedProcess() + "-zzzzzz");
  const std::string earlier = folder / ("Tarn" + ProcessName() + "-abcdef");
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
  const std::string live = OtherProcess();
  const std::vector<std::string> kept = {"Tarn" + live + "-abcdef",     "Tarn" + ended + "-abcde",
                                         "Tarn" + ended + "-abcdefg",   "Tarn" + ended + "-abcdE1",
                                         "Tarn" + ended + "-abc.ef",    "Tarn-abcdef",
                                         "Tarn" + ended + "x-abcdef",   "tarn" + ended + "-abcdef",
                                         "Tarnish" + ended + "-abcdef", "Tarn" + ended,
                                         "Tarn" + ended + "-abcdef.txt"};
  for (const std::string& name : kept) WriteFile(folder / name, "");
  RemoveAbandonedFiles(folder.path());
  for (const std::string& name : kept) EXPECT_TRUE(fs::exists(folder / name)) << name;
}

}  // namespace
}  // namespace tarn
