#include "base/paths.h"

#include <gtest/gtest.h>
#include <string>

#include "support/memory_files.h"
#include "support/slashes.h"

namespace tarn {
namespace {

TEST(JoinPath, PutsOneSeparatorBetweenFolderAndName) {
  EXPECT_EQ(Slashes(JoinPath("/tmp", "a.net")), "/tmp/a.net");
  EXPECT_EQ(Slashes(JoinPath("/tmp/", "a.net")), "/tmp/a.net");
  EXPECT_EQ(Slashes(JoinPath("/", "a.net")), "/a.net");
  EXPECT_EQ(Slashes(JoinPath("", "a.net")), "a.net");
}

class PathsTest : public testing::Test {
 protected:
  PathsTest() { m_files.AddFolder("/home/nets"); }

  MemoryFiles m_files{"/home"};
  ScopedFileLayer m_scope{m_files};
};

TEST_F(PathsTest, AFullPathStartsAtTheCurrentDirectory) {
  EXPECT_EQ(Slashes(FullPath("a.net")), "/home/a.net");
  EXPECT_EQ(Slashes(FullPath("./nets/../a.net")), "/home/a.net");
  EXPECT_EQ(Slashes(FullPath("../a.net")), "/a.net");
  EXPECT_EQ(Slashes(FullPath("/a.net")), "/a.net");
  EXPECT_EQ(Slashes(FullPath("")), "");
}

TEST_F(PathsTest, AFullPathIsThePathItselfWithoutACurrentDirectory) {
  class Lost : public MemoryFiles {
   public:
    std::string CurrentDirectory() override { return {}; }
  } lost;
  const ScopedFileLayer scope(lost);
  EXPECT_EQ(Slashes(FullPath("a.net")), "a.net");
}

TEST_F(PathsTest, EntersTheFolderOfAFile) {
  m_files.Put("nets/a.net", "");
  EnterFolderOf("nets/a.net");
  EXPECT_EQ(m_files.CurrentDirectory(), "/home/nets");
  EnterFolderOf("/home/missing.net");
  EXPECT_EQ(m_files.CurrentDirectory(), "/home");
  EnterFolderOf("/a.net");
  EXPECT_EQ(m_files.CurrentDirectory(), "/");
}

TEST_F(PathsTest, EntersThePathItselfWhenItIsAFolder) {
  EnterFolderOf("nets");
  EXPECT_EQ(m_files.CurrentDirectory(), "/home/nets");
  EnterFolderOf("/home/");
  EXPECT_EQ(m_files.CurrentDirectory(), "/home");
}

TEST_F(PathsTest, StaysWhereItIsWithoutAFolderToEnter) {
  for (const char* path : {"a.net", "", "missing/a.net", "back\\slash.net"}) {
    EnterFolderOf(path);
    EXPECT_EQ(m_files.CurrentDirectory(), "/home") << path;
  }
}

TEST(EnterFolderOf, StaysOutsideOfAFolderThatCannotBeEntered) {
  // A layer with a folder that the user may not enter.
  class Locked : public MemoryFiles {
   public:
    bool EnterDirectory(const std::string& path) override {
      return path != "/home/locked" && MemoryFiles::EnterDirectory(path);
    }
  } locked;
  locked.AddFolder("/home/locked");
  EXPECT_TRUE(locked.EnterDirectory("/tmp"));
  const ScopedFileLayer scope(locked);
  EnterFolderOf("/home/locked");
  EXPECT_EQ(locked.CurrentDirectory(), "/tmp");
}

TEST(IsUntitled, HoldsForTheScratchNameAnywhereInThePathAndInAnyCase) {
  EXPECT_TRUE(IsUntitled("untitled.ne_"));
  EXPECT_TRUE(IsUntitled(kUntitledName));
  EXPECT_TRUE(IsUntitled("/tmp/UnTitled.Ne_"));
  EXPECT_TRUE(IsUntitled("/tmp/UNTITLED.NE_/a.net"));
  EXPECT_TRUE(IsUntitled("my-untitled.ne_2"));
  EXPECT_FALSE(IsUntitled("untitled.net"));
  EXPECT_FALSE(IsUntitled(""));
}

}  // namespace
}  // namespace tarn
