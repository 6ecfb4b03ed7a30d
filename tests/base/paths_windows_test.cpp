// Paths with drives and backslashes.

#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "base/paths.h"
#include "support/memory_files.h"
#include "support/slashes.h"
#include "support/temp_folder.h"
#include "support/temporary_folder_is.h"

namespace tarn {
namespace {

constexpr const char* kUmlauts = "\xC3\x84\xC3\x96";       // A and O
constexpr const char* kLowerUmlauts = "\xC3\xA4\xC3\xB6";  // a and o

// Files in memory that lie on the drive D:.
class FilesOnADrive : public MemoryFiles {
 public:
  std::string CurrentDirectory() override { return "D:\\nets"; }
  bool EnterDirectory(const std::string& path) override {
    m_entered.push_back(path);
    return false;
  }
  const std::vector<std::string>& entered() const { return m_entered; }

 private:
  std::vector<std::string> m_entered;
};

TEST(JoinPath, PutsABackslashWhereThereIsNoSeparator) {
  EXPECT_EQ(JoinPath("C:\\nets", "a.net"), "C:\\nets\\a.net");
  EXPECT_EQ(JoinPath("C:\\nets\\", "a.net"), "C:\\nets\\a.net");
  EXPECT_EQ(JoinPath("C:/nets/", "a.net"), "C:/nets/a.net");
  EXPECT_EQ(JoinPath("C:\\", "a.net"), "C:\\a.net");
}

TEST(FullPath, HasTheDriveOfTheCurrentDirectory) {
  FilesOnADrive files;
  const ScopedFileLayer scope(files);
  EXPECT_EQ(FullPath("a.net"), "D:\\nets\\a.net");
  EXPECT_EQ(FullPath("inner/a.net"), "D:\\nets\\inner\\a.net");
  EXPECT_EQ(FullPath("..\\a.net"), "D:\\a.net");
  EXPECT_EQ(FullPath("\\a.net"), "D:\\a.net");
  EXPECT_EQ(FullPath("/other/a.net"), "D:\\other\\a.net");
  EXPECT_EQ(FullPath("D:a.net"), "D:\\nets\\a.net");
  // Of another drive the system knows the folder: its root at first.
  EXPECT_EQ(FullPath("Q:a.net"), "Q:\\a.net");
}

TEST(FullPath, IsThePathItselfWhenItHasADriveOrAServer) {
  FilesOnADrive files;
  const ScopedFileLayer scope(files);
  for (const std::string path : {"C:\\a.net", "C:/nets/a.net", "\\\\server\\share\\a.net",
                                 "\\\\?\\C:\\a.net", "C:\\nets\\..\\a.net"}) {
    EXPECT_EQ(FullPath(path), path);
  }
}

TEST(FullPath, KeepsNamesInEveryScript) {
  FilesOnADrive files;
  const ScopedFileLayer scope(files);
  EXPECT_EQ(FullPath(kUmlauts), std::string("D:\\nets\\") + kUmlauts);
}

TEST(EnterFolderOf, CutsAtTheLastSeparatorOfEitherKind) {
  const std::vector<std::pair<std::string, std::string>> entered = {{"C:\\nets\\a.net", "C:\\nets"},
                                                                    {"C:/nets/a.net", "C:/nets"},
                                                                    {"C:\\nets/a.net", "C:\\nets"},
                                                                    {"C:/nets\\a.net", "C:/nets"},
                                                                    {"C:\\a.net", "C:\\"},
                                                                    {"C:/a.net", "C:/"},
                                                                    {"\\a.net", "\\"},
                                                                    {"nets\\a.net", "nets"}};
  for (const auto& [path, folder] : entered) {
    FilesOnADrive files;
    const ScopedFileLayer scope(files);
    EnterFolderOf(path);
    EXPECT_EQ(files.entered(), (std::vector<std::string>{path, folder}));
  }
}

TEST(EnterFolderOf, EntersTheRootOfADriveForAFileInIt) {
  const TempFolder back;
  const std::string drive = back.path().substr(0, 2);
  EnterFolderOf(drive + "\\no such file.net");
  EXPECT_EQ(SystemFiles().CurrentDirectory(), drive + "\\");
  back.Enter();
}

TEST(OpenedPath, IsLowercaseInEveryScript) {
  EXPECT_EQ(OpenedPath("C:\\Nets\\A.NET"), "c:\\nets\\a.net");
  EXPECT_EQ(OpenedPath(std::string("D:\\") + kUmlauts + ".Net"),
            std::string("d:\\") + kLowerUmlauts + ".net");
  EXPECT_EQ(OpenedPath("\xD0\x94\xD0\xB0"), "\xD0\xB4\xD0\xB0");
  EXPECT_EQ(OpenedPath("\xE8\xB3\x87"), "\xE8\xB3\x87");
  EXPECT_EQ(OpenedPath(""), "");
}

TEST(OpenedPath, NamesTheSameFile) {
  const TempFolder folder;
  for (const char* name :
       {"A.NET", kUmlauts,
        "STRA\xC3\x9F"
        "E",
        "\xC4\xB0I.NET", "\xCE\xA3\xCE\x8A\xCE\xA3.NET", "\xD0\x94\xD0\x90.NET"}) {
    WriteFile(folder / name, name);
    EXPECT_EQ(ReadFile(OpenedPath(folder / name)), name);
    EXPECT_EQ(SystemFiles().NamesIn(folder.path()), std::vector<std::string>{name});
    EXPECT_TRUE(SystemFiles().Remove(OpenedPath(folder / name)));
  }
}

TEST(TemporaryFolder, IsTheOneThatTheSystemNames) {
  const TempFolder folder;
  ASSERT_TRUE(SystemFiles().MakeFolder(folder / kUmlauts));
  for (const std::string& named : {folder.path(), folder / kUmlauts}) {
    const TemporaryFolderIs scope(named);
    EXPECT_EQ(Slashes(JoinPath(TemporaryFolder(), "a")), named + "/a");
  }
}

TEST(TemporaryFolder, IsTheCurrentDirectoryWhenThereIsNone) {
  const TempFolder folder;
  folder.Enter();
  const TemporaryFolderIs scope(folder / "missing");
  EXPECT_EQ(Slashes(TemporaryFolder()), folder.path());
}

}  // namespace
}  // namespace tarn
