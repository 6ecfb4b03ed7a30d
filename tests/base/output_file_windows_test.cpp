// Files that are read-only or open elsewhere, and devices.

#include <aclapi.h>
#include <chrono>
#include <gtest/gtest.h>
#include <memory>
#include <sddl.h>
#include <string>
#include <thread>
#include <windows.h>

#include "base/output_file_test.h"
#include "base/wide_text.h"
#include "support/shared_file.h"
#include "support/temp_folder.h"

namespace tarn {
namespace {

// Who may do what with a file, as text.
std::wstring RightsOf(const std::string& path) {
  PSECURITY_DESCRIPTOR descriptor = nullptr;
  wchar_t* text = nullptr;
  EXPECT_EQ(::GetNamedSecurityInfoW(Widen(path).c_str(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION,
                                    nullptr, nullptr, nullptr, nullptr, &descriptor),
            DWORD{ERROR_SUCCESS});
  EXPECT_TRUE(::ConvertSecurityDescriptorToStringSecurityDescriptorW(
      descriptor, SDDL_REVISION_1, DACL_SECURITY_INFORMATION, &text, nullptr));
  const std::wstring rights = text;
  ::LocalFree(text);
  ::LocalFree(descriptor);
  return rights;
}

void SetRights(const std::string& path, const wchar_t* text) {
  PSECURITY_DESCRIPTOR descriptor = nullptr;
  ASSERT_TRUE(::ConvertStringSecurityDescriptorToSecurityDescriptorW(text, SDDL_REVISION_1,
                                                                     &descriptor, nullptr));
  EXPECT_TRUE(::SetFileSecurityW(Widen(path).c_str(),
                                 DACL_SECURITY_INFORMATION | PROTECTED_DACL_SECURITY_INFORMATION,
                                 descriptor));
  ::LocalFree(descriptor);
}

TEST(OutputFile, KeepsTheRightsAndTheAttributesOfTheOldFile) {
  const TempFolder folder;
  const std::string path = folder / "a.net";
  WriteFile(path, "old");
  const std::wstring usual = RightsOf(path);
  SetRights(path, L"D:P(A;;FA;;;WD)");
  const std::wstring rights = RightsOf(path);
  ASSERT_NE(rights, usual);
  ASSERT_TRUE(::SetFileAttributesW(Widen(path).c_str(), FILE_ATTRIBUTE_HIDDEN));
  EXPECT_TRUE(Save(path, "new"));
  EXPECT_EQ(ReadFile(path), "new");
  EXPECT_EQ(RightsOf(path), rights);
  EXPECT_NE(::GetFileAttributesW(Widen(path).c_str()) & FILE_ATTRIBUTE_HIDDEN, 0U);
}

TEST(OutputFile, RefusesAFileThatMayNotBeWritten) {
  const TempFolder folder;
  const std::string path = folder / "a.net";
  WriteFile(path, "old");
  ASSERT_TRUE(::SetFileAttributesW(Widen(path).c_str(), FILE_ATTRIBUTE_READONLY));
  EXPECT_FALSE(Save(path, "new"));
  EXPECT_EQ(ReadFile(path), "old");
  EXPECT_EQ(NamesIn(folder.path()), Names{"a.net"});
  EXPECT_TRUE(::SetFileAttributesW(Widen(path).c_str(), FILE_ATTRIBUTE_NORMAL));
}

TEST(OutputFile, WritesADeviceInPlace) {
  const TempFolder folder;
  folder.Enter();
  for (const char* device : {"NUL", "nul", "\\\\.\\NUL"}) {
    EXPECT_TRUE(Save(device, kLong + "text\n")) << device;
    EXPECT_TRUE(Append(device, "text\n")) << device;
  }
  EXPECT_EQ(NamesIn(folder.path()), Names{});
}

// Windows can replace it from version 10 on.
TEST(OutputFile, AppendsToAFileThatAnotherReadsAndReplacesItWholeOrNotAtAll) {
  const TempFolder folder;
  const std::string path = folder / "a.net";
  WriteFile(path, "old");
  bool saved = false;
  {
    const SharedFile reader(path, GENERIC_READ, kShareAll);
    ASSERT_TRUE(reader.IsOpen());
    EXPECT_TRUE(Append(path, "er"));
    saved = Save(path, "new");
    EXPECT_EQ(reader.Content(), "older");
  }
  EXPECT_EQ(ReadFile(path), saved ? "new" : "older");
  EXPECT_EQ(NamesIn(folder.path()), Names{"a.net"});
}

TEST(OutputFile, WaitsForAFileThatAnotherKeepsForAMoment) {
  const TempFolder folder;
  const std::string path = folder / "a.net";
  WriteFile(path, "old");
  auto owner = std::make_unique<SharedFile>(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE);
  ASSERT_TRUE(owner->IsOpen());
  std::thread scanner([&] {
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    owner.reset();
  });
  EXPECT_TRUE(Save(path, "new"));
  scanner.join();
  EXPECT_EQ(ReadFile(path), "new");
}

TEST(OutputFile, LeavesANameAsItIsSpelledOnTheDisk) {
  const TempFolder folder;
  WriteFile(folder / "Iris.NET", "old");
  EXPECT_TRUE(Save(folder / "iris.net", "new"));
  EXPECT_EQ(NamesIn(folder.path()), Names{"Iris.NET"});
  EXPECT_EQ(ReadFile(folder / "Iris.NET"), "new");
}

TEST(OutputFile, KeepsAFileThatAnotherSharesWithNobody) {
  const TempFolder folder;
  const std::string path = folder / "a.net";
  WriteFile(path, "old");
  {
    const SharedFile owner(path, GENERIC_READ | GENERIC_WRITE, 0);
    ASSERT_TRUE(owner.IsOpen());
    EXPECT_FALSE(Save(path, "new"));
    EXPECT_FALSE(Append(path, "new"));
    EXPECT_EQ(owner.Content(), "old");
  }
  EXPECT_EQ(ReadFile(path), "old");
  EXPECT_EQ(NamesIn(folder.path()), Names{"a.net"});
}

TEST(OutputFile, IsWrittenUnderNamesOfEveryScript) {
  const TempFolder folder;
  const std::string name =
      Narrow(L"Gr\u00FC\u00DFe-\u0434\u0430\u043D\u043D\u044B\u0435-\u8CC7.net");
  EXPECT_TRUE(Save(folder / name, "new"));
  EXPECT_TRUE(Save(folder / name, "newer"));
  EXPECT_TRUE(Append(folder / name, "!"));
  EXPECT_EQ(ReadFile(folder / name), "newer!");
  EXPECT_EQ(NamesIn(folder.path()), Names{name});
}

}  // namespace
}  // namespace tarn
