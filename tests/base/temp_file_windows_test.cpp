#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "base/file_layer.h"
#include "base/temp_file.h"
#include "support/doomed_process.h"
#include "support/doomed_work.h"
#include "support/temp_folder.h"

namespace tarn {
namespace {

namespace fs = std::filesystem;

using testing::ElementsAre;
using testing::IsEmpty;
using testing::MatchesRegex;

TEST(TempFile, HasANameThatTheSystemMakesOfThreeLetters) {
  const TempFolder folder;
  TempFile file;
  ASSERT_TRUE(file.Create(folder.path()));
  EXPECT_THAT(SystemFiles().NamesIn(folder.path()), ElementsAre(MatchesRegex("Tar\\w+\\.tmp")));
}

TEST(TempFile, CanBeWrittenReadAndReplacedWhileItIsKept) {
  const TempFolder folder;
  TempFile file;
  ASSERT_TRUE(file.Create(folder.path()));
  for (const FileLayer::Mode mode : {FileLayer::Mode::kCreate, FileLayer::Mode::kAppend}) {
    const FileLayer::Handle writer = SystemFiles().Open(file.path(), mode);
    ASSERT_NE(writer, FileLayer::kNoFile);
    EXPECT_EQ(SystemFiles().Write(writer, "text", 4), 4);
    const FileLayer::Handle reader = SystemFiles().Open(file.path(), FileLayer::Mode::kRead);
    EXPECT_EQ(SystemFiles().Size(reader), fs::file_size(NativePath(file.path())));
    EXPECT_TRUE(SystemFiles().Close(reader));
    EXPECT_TRUE(SystemFiles().Close(writer));
  }
  EXPECT_EQ(fs::file_size(NativePath(file.path())), 8U);
  file.Remove();
  EXPECT_THAT(SystemFiles().NamesIn(folder.path()), IsEmpty());
}

// Nothing has to clear it away.
TEST(TempFile, GoesWithAProcessThatIsKilled) {
  const TempFolder folder;
  DoomedProcess process(kKeepTemporary, folder.path());
  EXPECT_THAT(SystemFiles().NamesIn(folder.path()), ElementsAre(MatchesRegex("Tar\\w+\\.tmp")));
  ASSERT_TRUE(process.Kill());
  EXPECT_THAT(SystemFiles().NamesIn(folder.path()), IsEmpty());
}

TEST(TempFile, IsMadeInFoldersOfEveryName) {
  const TempFolder folder;
  std::string deep = folder.path();
  for (int i = 0; i < 8; ++i) {
    deep += "/" + std::string(40, static_cast<char>('a' + i));
    ASSERT_TRUE(SystemFiles().MakeFolder(deep));
  }
  const std::string german = folder /
                             "Gr\xC3\xBC\xC3\x9F"
                             "e";
  const std::string mixed = folder / "\xD0\xB4\xD0\xB0-\xE8\xB3\x87";
  ASSERT_TRUE(SystemFiles().MakeFolder(german));
  ASSERT_TRUE(SystemFiles().MakeFolder(mixed));
  for (const std::string& named : {deep, german, mixed}) {
    TempFile file;
    ASSERT_TRUE(file.Create(named)) << named;
    const FileLayer::Handle handle = SystemFiles().Open(file.path(), FileLayer::Mode::kAppend);
    EXPECT_NE(handle, FileLayer::kNoFile) << file.path();
    SystemFiles().Close(handle);
    EXPECT_EQ(SystemFiles().NamesIn(named).size(), 1U) << named;
    file.Remove();
    EXPECT_THAT(SystemFiles().NamesIn(named), IsEmpty()) << named;
  }
}

TEST(TempFile, IsMadeInNoFolderWithAZeroByteInItsName) {
  const TempFolder folder;
  TempFile file;
  EXPECT_FALSE(file.Create(folder.path() + std::string("\0b", 2)));
  EXPECT_THAT(SystemFiles().NamesIn(folder.path()), IsEmpty());
}

}  // namespace
}  // namespace tarn
