// What the file layer of Windows has besides: sharing, attributes, devices, names in UTF-16 and
// names that are long.

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <windows.h>

#include "base/file_layer.h"
#include "base/wide_text.h"
#include "support/shared_file.h"
#include "support/slashes.h"
#include "support/temp_folder.h"

namespace tarn {
namespace {

using Handle = FileLayer::Handle;
using Mode = FileLayer::Mode;
using testing::ElementsAre;
using testing::IsEmpty;
constexpr Handle kNoFile = FileLayer::kNoFile;

FileLayer& Layer() {
  return SystemFiles();
}

bool Opens(const std::string& path, Mode mode) {
  const Handle file = Layer().Open(path, mode);
  return file != kNoFile && Layer().Close(file);
}

bool Put(const std::string& path, const std::string& text) {
  const Handle file = Layer().Open(path, Mode::kCreate);
  const bool written =
      Layer().Write(file, text.data(), text.size()) == static_cast<int64_t>(text.size());
  return Layer().Close(file) && written;
}

std::string Get(const std::string& path) {
  const Handle file = Layer().Open(path, Mode::kRead);
  std::string text(100, '\0');
  const int64_t count = Layer().Read(file, text.data(), text.size());
  text.resize(count < 0 ? 0 : static_cast<size_t>(count));
  Layer().Close(file);
  return text;
}

const std::string kManyScripts =
    Narrow(L"Gr\u00FC\u00DFe-\u0434\u0430\u043D\u043D\u044B\u0435-\u8CC7\u6599-\xD83D\xDE00.net");

TEST(WindowsFiles, LetOthersReadWriteRenameAndDeleteWhatIsOpen) {
  const TempFolder folder;
  for (const Mode mode : {Mode::kRead, Mode::kCreate, Mode::kAppend, Mode::kCreateNew}) {
    if (mode != Mode::kCreateNew) WriteFile(folder / "a", "text");
    const Handle file = Layer().Open(folder / "a", mode);
    ASSERT_NE(file, kNoFile);
    EXPECT_TRUE(
        SharedFile(folder / "a", GENERIC_READ | GENERIC_WRITE | DELETE, kShareAll).IsOpen());
    EXPECT_TRUE(::MoveFileW(Widen(folder / "a").c_str(), Widen(folder / "b").c_str()));
    EXPECT_TRUE(::DeleteFileW(Widen(folder / "b").c_str()));
    EXPECT_GE(Layer().Size(file), 0);
    EXPECT_TRUE(Layer().Close(file));
    EXPECT_THAT(Layer().NamesIn(folder.path()), IsEmpty());
  }
}

TEST(WindowsFiles, OpenWhatOthersShareAndNothingElse) {
  const TempFolder folder;
  const std::string path = folder / "a";
  WriteFile(path, "text");
  {
    const SharedFile sharing(path, GENERIC_READ | GENERIC_WRITE, kShareAll);
    for (const Mode mode : {Mode::kRead, Mode::kAppend}) EXPECT_TRUE(Opens(path, mode));
  }
  const SharedFile owner(path, GENERIC_READ, FILE_SHARE_READ);
  EXPECT_TRUE(Opens(path, Mode::kRead));
  EXPECT_FALSE(Opens(path, Mode::kAppend));
  EXPECT_FALSE(Opens(path, Mode::kCreate));
  EXPECT_FALSE(Layer().IsWriteProtected(path)) << "it is in use, that is all";
  EXPECT_FALSE(Layer().Remove(path));
  EXPECT_EQ(owner.Content(), "text");
}

// From version 10 on Windows can do it; before, both stay.
TEST(WindowsFiles, AreRenamedInOneStepOrNotAtAllOverAFileThatOthersRead) {
  const TempFolder folder;
  WriteFile(folder / "new", "new");
  WriteFile(folder / "old", "old");
  bool renamed = false;
  {
    const SharedFile reader(folder / "old", GENERIC_READ, kShareAll);
    renamed = Layer().Rename(folder / "new", folder / "old");
    EXPECT_EQ(reader.Content(), "old");
  }
  EXPECT_EQ(Get(folder / "old"), renamed ? "new" : "old");
  EXPECT_EQ(Layer().NamesIn(folder.path()).size(), renamed ? 1U : 2U);
}

TEST(WindowsFiles, AreNotRenamedOverAFileThatOthersKeepOrThatIsReadOnly) {
  const TempFolder folder;
  WriteFile(folder / "new", "new");
  WriteFile(folder / "old", "old");
  {
    const SharedFile keeper(folder / "old", GENERIC_READ, FILE_SHARE_READ);
    EXPECT_FALSE(Layer().Rename(folder / "new", folder / "old"));
  }
  const std::wstring old = Widen(folder / "old");
  ASSERT_TRUE(::SetFileAttributesW(old.c_str(), FILE_ATTRIBUTE_READONLY));
  EXPECT_FALSE(Layer().Rename(folder / "new", folder / "old"));
  EXPECT_TRUE(::SetFileAttributesW(old.c_str(), FILE_ATTRIBUTE_NORMAL));
  EXPECT_EQ(Get(folder / "new"), "new");
  EXPECT_EQ(Get(folder / "old"), "old");
}

TEST(WindowsFiles, AreProtectedByTheirReadOnlyAttribute) {
  const TempFolder folder;
  const std::string path = folder / "a";
  WriteFile(path, "text");
  EXPECT_FALSE(Layer().IsWriteProtected(path));
  EXPECT_FALSE(Layer().IsWriteProtected(folder / "missing"));
  ASSERT_TRUE(::SetFileAttributesW(Widen(path).c_str(), FILE_ATTRIBUTE_READONLY));
  EXPECT_TRUE(Layer().IsWriteProtected(path));
  EXPECT_EQ(Get(path), "text");
  EXPECT_TRUE(::SetFileAttributesW(Widen(path).c_str(), FILE_ATTRIBUTE_NORMAL));
}

TEST(WindowsFiles, KnowWhatIsADevice) {
  const TempFolder folder;
  folder.Enter();
  for (const char* name : {"NUL", "nul", "CON", "AUX", "COM1", "LPT1", "\\\\.\\NUL"}) {
    EXPECT_TRUE(Layer().IsSpecial(name)) << name;
  }
  for (const char* name : {"NULL", "CONFIG", "a.net", "C:\\", "", "\\\\?\\C:\\a.net"}) {
    EXPECT_FALSE(Layer().IsSpecial(name)) << name;
  }
  const Handle null = Layer().Open("NUL", Mode::kAppend);
  ASSERT_NE(null, kNoFile);
  EXPECT_EQ(Layer().Write(null, "text", 4), 4);
  EXPECT_TRUE(Layer().Sync(null));
  EXPECT_TRUE(Layer().Close(null));
  EXPECT_THAT(Layer().NamesIn("."), IsEmpty());
}

TEST(WindowsFiles, HaveNamesOfEveryScript) {
  const TempFolder folder;
  const std::string path = folder / kManyScripts;
  ASSERT_TRUE(Put(path, "text"));
  EXPECT_EQ(Get(path), "text");
  EXPECT_EQ(ReadFile(path), "text");
  EXPECT_THAT(Layer().NamesIn(folder.path()), ElementsAre(kManyScripts));
  EXPECT_EQ(Slashes(Layer().ResolveLinks(path)), path);
  EXPECT_TRUE(Layer().Rename(path, folder / "a"));
  EXPECT_TRUE(Layer().MakeFolder(path));
  EXPECT_TRUE(Layer().IsDirectory(path));
  EXPECT_TRUE(Layer().EnterDirectory(path));
  EXPECT_EQ(Slashes(Layer().CurrentDirectory()), path);
  EXPECT_TRUE(Layer().EnterDirectory(".."));
  EXPECT_TRUE(Layer().RemoveFolder(path));
  EXPECT_TRUE(Layer().Remove(folder / "a"));
}

TEST(WindowsFiles, KnowNothingByANameThatIsNoText) {
  const TempFolder folder;
  WriteFile(folder / "\xEF\xBF\xBD", "of the replacement character");
  for (const char* bytes : {"\xFF", "\xFE", "\xC3"}) {
    const std::string path = folder / bytes;
    for (const Mode mode : {Mode::kRead, Mode::kCreate, Mode::kCreateNew, Mode::kAppend}) {
      EXPECT_FALSE(Opens(path, mode));
    }
    EXPECT_FALSE(Layer().MakeFolder(path));
    EXPECT_FALSE(Layer().Rename(folder / "\xEF\xBF\xBD", path));
    EXPECT_FALSE(Layer().Remove(path));
  }
  EXPECT_THAT(Layer().NamesIn(folder.path()), ElementsAre("\xEF\xBF\xBD"));
}

TEST(WindowsFiles, HavePathsThatAreLongerThanTheOldLimit) {
  const TempFolder folder;
  std::string deep = folder.path();
  for (int i = 0; i < 12; ++i) {
    deep += "/" + std::string(40, static_cast<char>('a' + i));
    ASSERT_TRUE(Layer().MakeFolder(deep)) << deep.size();
    ASSERT_TRUE(Layer().IsDirectory(deep)) << deep.size();
  }
  ASSERT_GT(deep.size(), 500U);
  EXPECT_TRUE(Put(deep + "/a", "text"));
  EXPECT_EQ(Get(deep + "/./x/../a"), "text");
  EXPECT_TRUE(Put(deep + "\\b", "old"));
  EXPECT_TRUE(Layer().Rename(deep + "/a", deep + "/b"));
  EXPECT_EQ(Get(deep + "/b"), "text");
  EXPECT_THAT(Layer().NamesIn(deep), ElementsAre("b"));
  EXPECT_FALSE(Layer().IsWriteProtected(deep + "/b"));
  EXPECT_FALSE(Layer().IsSpecial(deep + "/b"));
  EXPECT_TRUE(Layer().Remove(deep + "/b"));
  EXPECT_TRUE(Layer().RemoveFolder(folder / std::string(40, 'a')));
  EXPECT_THAT(Layer().NamesIn(folder.path()), IsEmpty());
}

TEST(WindowsFiles, HaveShortPathsInADeepFolder) {
  const TempFolder folder;
  const std::string deep = folder / std::string(200 - folder.path().size(), 'd');
  ASSERT_TRUE(Layer().MakeFolder(deep));
  ASSERT_TRUE(Layer().EnterDirectory(deep));
  const std::string name(100, 'n');
  ASSERT_TRUE(Put(name, "text"));
  EXPECT_EQ(Get(name), "text");
  EXPECT_EQ(Get(deep + "/" + name), "text");
  EXPECT_TRUE(Layer().Remove(name));
}

TEST(WindowsFiles, ListTheRootOfADrive) {
  const TempFolder folder;
  folder.Enter();
  const std::string root = folder.path().substr(0, 3);
  const std::string first = folder.path().substr(3, folder.path().find('/', 3) - 3);
  for (const std::string& path : {root, std::string("\\")}) {
    EXPECT_THAT(Layer().NamesIn(path), testing::Contains(first)) << path;
  }
}

TEST(WindowsFiles, EndTheLinesOfTextsWithTwoCharacters) {
  EXPECT_EQ(Layer().LineEnd(), "\r\n");
}

}  // namespace
}  // namespace tarn
