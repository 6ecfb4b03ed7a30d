// What the file layer of POSIX systems has besides: pipes, devices, symbolic links, access rights.

#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

#include "base/file_layer.h"
#include "support/temp_folder.h"

namespace tarn {
namespace {

using Handle = FileLayer::Handle;
using Mode = FileLayer::Mode;
constexpr Handle kNoFile = FileLayer::kNoFile;

TEST(SystemFiles, KnowWhatCannotBeReplaced) {
  EXPECT_TRUE(SystemFiles().IsSpecial("/dev/null"));
  const TempFolder folder;
  ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
  std::filesystem::create_symlink("pipe", folder / "link");
  EXPECT_TRUE(SystemFiles().IsSpecial(folder / "pipe"));
  EXPECT_TRUE(SystemFiles().IsSpecial(folder / "link"));
}

TEST(SystemFiles, KnowThePlainFilesOfTheUser) {
  const TempFolder folder;
  WriteFile(folder / "file", "mine");
  std::filesystem::create_symlink("file", folder / "link");
  ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
  EXPECT_TRUE(SystemFiles().IsOwnFile(folder / "file"));
  for (const char* name : {"link", "pipe", "missing", "."}) {
    EXPECT_FALSE(SystemFiles().IsOwnFile(folder / name)) << name;
  }
  // The other user is root, unless that is who runs the tests.
  std::string foreign = "/etc/passwd";
  if (::geteuid() == 0) {
    foreign = folder / "file";
    ASSERT_EQ(::chown(foreign.c_str(), 12345, 12345), 0);
  }
  EXPECT_FALSE(SystemFiles().IsOwnFile(foreign));
}

TEST(SystemFiles, SyncAPipeWithoutComplaint) {
  const TempFolder folder;
  const FileLayer::Handle null = SystemFiles().Open("/dev/null", Mode::kCreate);
  ASSERT_NE(null, kNoFile);
  EXPECT_TRUE(SystemFiles().Sync(null));
  EXPECT_TRUE(SystemFiles().Close(null));
}

TEST(SystemFiles, KeepAnOpenFileThatAnotherIsRenamedOver) {
  const TempFolder folder;
  WriteFile(folder / "a", "new");
  WriteFile(folder / "b", "old");
  const Handle old = SystemFiles().Open(folder / "b", Mode::kRead);
  ASSERT_NE(old, kNoFile);
  EXPECT_TRUE(SystemFiles().Rename(folder / "a", folder / "b"));
  std::string content(3, ' ');
  EXPECT_EQ(SystemFiles().Read(old, content.data(), content.size()), 3);
  EXPECT_EQ(content, "old");
  EXPECT_TRUE(SystemFiles().Close(old));
  EXPECT_EQ(ReadFile(folder / "b"), "new");
}

TEST(SystemFiles, ResolveLinksOfFoldersAndFiles) {
  const TempFolder folder;
  folder.Enter();
  std::filesystem::create_directory("real");
  std::filesystem::create_directory_symlink("real", folder / "linked");
  std::filesystem::create_symlink("../real/b", folder / "real/a");
  EXPECT_EQ(SystemFiles().ResolveLinks("linked/c"), folder / "real/c");
  EXPECT_EQ(SystemFiles().ResolveLinks("linked/a"), folder / "real/b");
  EXPECT_EQ(SystemFiles().ResolveLinks("missing/a"), "missing/a");
  std::filesystem::create_symlink("circle", "circle");
  EXPECT_EQ(SystemFiles().ResolveLinks("circle"), "");
}

TEST(SystemFiles, LetNobodyElseIntoFilesAndFoldersMadeForTheUserAlone) {
  const TempFolder folder;
  ASSERT_TRUE(SystemFiles().MakeFolder(folder / "made"));
  const Handle file = SystemFiles().Open(folder / "new", Mode::kCreateNew);
  EXPECT_TRUE(SystemFiles().Close(file));
  struct stat info {};
  ASSERT_EQ(::stat((folder / "made").c_str(), &info), 0);
  EXPECT_EQ(info.st_mode & 0777U, 0700U);
  ASSERT_EQ(::stat((folder / "new").c_str(), &info), 0);
  EXPECT_EQ(info.st_mode & 0777U, 0600U);
}

// As somebody who may write to the folder could put them in the place of a file just written.
TEST(SystemFiles, GiveRightsToNothingThatStandsInTheFilesPlace) {
  const TempFolder folder;
  WriteFile(folder / "old", "");
  WriteFile(folder / "victim", "");
  ASSERT_EQ(::chmod((folder / "old").c_str(), 0666), 0);
  ASSERT_EQ(::chmod((folder / "victim").c_str(), 0600), 0);
  std::filesystem::create_symlink("victim", folder / "link");
  std::filesystem::create_hard_link(folder / "victim", folder / "name");
  ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
  for (const std::string made : {"link", "name", "pipe", "missing"}) {
    EXPECT_FALSE(SystemFiles().CopyMode(folder / "old", folder / made)) << made;
    EXPECT_FALSE(SystemFiles().GiveDefaultMode(folder / made)) << made;
  }
  struct stat info {};
  for (const std::string kept : {"victim", "pipe"}) {
    ASSERT_EQ(::stat((folder / kept).c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777U, 0600U) << kept;
  }
}

TEST(SystemFiles, CreateNoNewFileThroughALink) {
  const TempFolder folder;
  std::filesystem::create_symlink("target", folder / "link");
  EXPECT_EQ(SystemFiles().Open(folder / "link", Mode::kCreateNew), kNoFile);
  EXPECT_FALSE(std::filesystem::exists(folder / "target"));
}

}  // namespace
}  // namespace tarn
