#include <gtest/gtest.h>
#include <stdlib.h>
#include <string>

#include "base/paths.h"
#include "support/memory_files.h"
#include "support/temporary_folder_is.h"

namespace tarn {
namespace {

TEST(OpenedPath, KeepsCasesWhereTheSystemTellsThemApart) {
  EXPECT_EQ(OpenedPath("/Nets/A.Net"), "/Nets/A.Net");
}

class TemporaryFolderTest : public testing::Test {
 protected:
  TemporaryFolderTest() { m_files.AddFolder("/home/nets"); }

  MemoryFiles m_files{"/home"};
  ScopedFileLayer m_scope{m_files};
  // The environment comes back with it.
  TemporaryFolderIs m_named{"/missing"};
};

TEST_F(TemporaryFolderTest, IsTheOneThatTheUserNames) {
  ::setenv("TMPDIR", "/home/nets", 1);
  EXPECT_EQ(TemporaryFolder(), "/home/nets");
  ::setenv("TMPDIR", "nets", 1);
  EXPECT_EQ(TemporaryFolder(), "/home/nets");
}

TEST_F(TemporaryFolderTest, IsTheSystemsWhenNoneIsNamed) {
  ::unsetenv("TMPDIR");
  EXPECT_EQ(TemporaryFolder(), "/tmp");
  for (const char* named : {"", "/missing"}) {
    ::setenv("TMPDIR", named, 1);
    EXPECT_EQ(TemporaryFolder(), "/tmp") << named;
  }
}

TEST_F(TemporaryFolderTest, IsTheCurrentDirectoryWhenThereIsNone) {
  ::unsetenv("TMPDIR");
  ASSERT_TRUE(m_files.RemoveFolder("/tmp"));
  EXPECT_EQ(TemporaryFolder(), "/home");
}

}  // namespace
}  // namespace tarn
