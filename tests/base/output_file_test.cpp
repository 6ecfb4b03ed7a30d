#include "base/output_file.h"

#include <algorithm>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "base/process.h"
#include "support/comma_locale.h"
#include "support/faulty_files.h"
#include "support/memory_files.h"
#include "support/temp_folder.h"

namespace tarn {
namespace {

namespace fs = std::filesystem;

// More than the writer keeps before it hands bytes on.
const std::string kLong(200000, 'n');

bool Save(const std::string& path, std::string_view text) {
  OutputFile file;
  return file.OpenReplacing(path) && file.Write(text) && file.Commit();
}

bool Append(const std::string& path, std::string_view text) {
  OutputFile file;
  return file.OpenAppending(path) && file.Write(text) && file.Commit();
}

std::vector<std::string> NamesIn(const std::string& folder) {
  std::vector<std::string> names = SystemFiles().NamesIn(folder);
  std::sort(names.begin(), names.end());
  return names;
}

using Names = std::vector<std::string>;

mode_t ModeOf(const std::string& path) {
  struct stat info {};
  EXPECT_EQ(::stat(path.c_str(), &info), 0) << path;
  return info.st_mode & 07777;
}

// A number that was a process's and is nobody's now.
std::string DeadProcess() {
  const pid_t child = ::fork();
  if (child == 0) ::_exit(0);
  int status = 0;
  ::waitpid(child, &status, 0);
  return std::to_string(child);
}

// Runs a step as a user without special rights and tells what it returned.
bool AsOrdinaryUser(const std::function<bool()>& step) {
  if (::geteuid() != 0) return step();
  const pid_t child = ::fork();
  if (child == 0) {
    const bool changed = ::setgid(65534) == 0 && ::setuid(65534) == 0;
    ::_exit(changed ? (step() ? 1 : 0) : 2);
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) < 2) << status;
  return WEXITSTATUS(status) == 1;
}

TEST(OutputFile, ReplacesAFileOnCommitOnly) {
  const TempFolder folder;
  const std::string path = folder / "a.net";
  WriteFile(path, "old\n");
  OutputFile file;
  ASSERT_TRUE(file.OpenReplacing(path));
  EXPECT_TRUE(file.Write("new\n"));
  EXPECT_TRUE(file.Write(kLong));
  EXPECT_EQ(ReadFile(path), "old\n");
  EXPECT_TRUE(file.Commit());
  EXPECT_EQ(ReadFile(path), "new\n" + kLong);
  EXPECT_EQ(NamesIn(folder.path()), Names{"a.net"});
}

TEST(OutputFile, MakesAMissingFile) {
  const TempFolder folder;
  EXPECT_TRUE(Save(folder / "a.net", "text"));
  EXPECT_EQ(ReadFile(folder / "a.net"), "text");
  EXPECT_TRUE(Append(folder / "b.txt", "text"));
  EXPECT_EQ(ReadFile(folder / "b.txt"), "text");
  EXPECT_EQ(NamesIn(folder.path()), (Names{"a.net", "b.txt"}));
}

TEST(OutputFile, WritesAnEmptyFile) {
  const TempFolder folder;
  WriteFile(folder / "a", "old");
  OutputFile file;
  ASSERT_TRUE(file.OpenReplacing(folder / "a"));
  EXPECT_TRUE(file.Commit());
  EXPECT_EQ(ReadFile(folder / "a"), "");
}

TEST(OutputFile, KeepsTheOldFileWhenItIsDiscardedOrForgotten) {
  const TempFolder folder;
  const std::string path = folder / "a.net";
  WriteFile(path, "old\n");
  {
    OutputFile file;
    ASSERT_TRUE(file.OpenReplacing(path));
    EXPECT_TRUE(file.Write(kLong));
    file.Discard();
    EXPECT_FALSE(file.Write("more"));
    EXPECT_FALSE(file.Commit());
  }
  {
    OutputFile file;
    ASSERT_TRUE(file.OpenReplacing(path));
    EXPECT_TRUE(file.Write(kLong));
  }
  EXPECT_EQ(ReadFile(path), "old\n");
  EXPECT_EQ(NamesIn(folder.path()), Names{"a.net"});
}

TEST(OutputFile, LeavesNoFileWhenANewOneIsDiscarded) {
  const TempFolder folder;
  OutputFile file;
  ASSERT_TRUE(file.OpenReplacing(folder / "a.net"));
  EXPECT_TRUE(file.Write(kLong));
  file.Discard();
  ASSERT_TRUE(file.OpenAppending(folder / "b.txt"));
  EXPECT_TRUE(file.Write(kLong));
  file.Discard();
  EXPECT_EQ(NamesIn(folder.path()), Names{});
}

TEST(OutputFile, AppendsAndCutsBackToTheOldLength) {
  const TempFolder folder;
  const std::string path = folder / "store";
  WriteFile(path, "one\n");
  EXPECT_TRUE(Append(path, "two\n"));
  EXPECT_EQ(ReadFile(path), "one\ntwo\n");
  OutputFile file;
  ASSERT_TRUE(file.OpenAppending(path));
  EXPECT_TRUE(file.Write(kLong));
  file.Discard();
  EXPECT_EQ(ReadFile(path), "one\ntwo\n");
  ASSERT_TRUE(file.OpenAppending(path));
  EXPECT_TRUE(file.Write(kLong));
  EXPECT_TRUE(file.Commit());
  EXPECT_EQ(ReadFile(path), "one\ntwo\n" + kLong);
}

TEST(OutputFile, DiscardsWhatIsOpenWhenAnotherFileIsOpened) {
  const TempFolder folder;
  OutputFile file;
  ASSERT_TRUE(file.OpenReplacing(folder / "a"));
  EXPECT_TRUE(file.Write("never committed"));
  ASSERT_TRUE(file.OpenReplacing(folder / "b"));
  EXPECT_TRUE(file.Write("text"));
  EXPECT_TRUE(file.Commit());
  EXPECT_EQ(NamesIn(folder.path()), Names{"b"});
  EXPECT_EQ(ReadFile(folder / "b"), "text");
}

TEST(OutputFile, DoesNothingBeforeItIsOpened) {
  OutputFile file;
  EXPECT_FALSE(file.Write("text"));
  EXPECT_FALSE(file.Commit());
  file.Discard();
}

TEST(OutputFile, PrintsAsPrintfDoesUnderAnyLocale) {
  const TempFolder folder;
  const CommaLocale comma;
  OutputFile file;
  ASSERT_TRUE(file.OpenReplacing(folder / "a"));
  EXPECT_TRUE(file.Printf("%d %ld %f %s\n", 1234567, 7654321L, 1234.5, "text"));
  EXPECT_TRUE(file.Printf("%-8.3f|%5d|%e\n", 0.1F, -42, 1e-7));
  EXPECT_TRUE(file.Commit());
  EXPECT_EQ(ReadFile(folder / "a"),
            "1234567 7654321 1234.500000 text\n0.100   |  -42|1.000000e-07\n");
}

TEST(OutputFile, KeepsTheAccessRightsOfTheOldFile) {
  const TempFolder folder;
  const std::string path = folder / "a.net";
  WriteFile(path, "old");
  for (const mode_t mode : {0600U, 0644U, 0664U, 0755U}) {
    ASSERT_EQ(::chmod(path.c_str(), mode), 0);
    ASSERT_TRUE(Save(path, "new"));
    EXPECT_EQ(ModeOf(path), mode);
  }
}

TEST(OutputFile, KeepsTheOwnerOfTheOldFileAsFarAsTheUserMay) {
  const TempFolder folder;
  const std::string path = folder / "a.net";
  WriteFile(path, "old");
  const uid_t owner = ::geteuid() == 0 ? 65534 : ::geteuid();
  ASSERT_EQ(::chown(path.c_str(), owner, static_cast<gid_t>(-1)), 0);
  ASSERT_TRUE(Save(path, "new"));
  struct stat info {};
  ASSERT_EQ(::stat(path.c_str(), &info), 0);
  EXPECT_EQ(info.st_uid, owner);
}

TEST(OutputFile, GivesANewFileTheRightsThatTheUserGivesFiles) {
  const TempFolder folder;
  const mode_t before = ::umask(027);
  EXPECT_TRUE(Save(folder / "a", "text"));
  EXPECT_TRUE(Append(folder / "b", "text"));
  EXPECT_EQ(::umask(before), 027U);
  EXPECT_EQ(ModeOf(folder / "a"), 0640U);
  EXPECT_EQ(ModeOf(folder / "b"), 0640U);
}

TEST(OutputFile, LetsNobodyElseReadAnUnfinishedFile) {
  const TempFolder folder;
  WriteFile(folder / "a", "old");
  ASSERT_EQ(::chmod((folder / "a").c_str(), 0644), 0);
  OutputFile file;
  ASSERT_TRUE(file.OpenReplacing(folder / "a"));
  const Names names = NamesIn(folder.path());
  ASSERT_EQ(names.size(), 2U);
  EXPECT_EQ(ModeOf(folder / names[1]), 0600U);
}

TEST(OutputFile, RefusesAFileThatMayNotBeWritten) {
  const TempFolder folder;
  ASSERT_EQ(::chmod(folder.path().c_str(), 0777), 0);
  const std::string path = folder / "a.net";
  WriteFile(path, "old");
  ASSERT_EQ(::chmod(path.c_str(), 0444), 0);
  EXPECT_FALSE(AsOrdinaryUser([&] { return Save(path, "new"); }));
  EXPECT_FALSE(AsOrdinaryUser([&] { return Append(path, "new"); }));
  EXPECT_EQ(ReadFile(path), "old");
  EXPECT_TRUE(AsOrdinaryUser([&] { return Save(folder / "b.net", "new"); }));
  EXPECT_EQ(NamesIn(folder.path()), (Names{"a.net", "b.net"}));
}

TEST(OutputFile, FollowsASymbolicLinkAndKeepsIt) {
  const TempFolder folder;
  fs::create_directory(folder / "real");
  WriteFile(folder / "real/a.net", "old");
  fs::create_symlink("real/a.net", folder / "first");
  fs::create_symlink(folder / "first", folder / "second");
  EXPECT_TRUE(Save(folder / "second", "new"));
  EXPECT_EQ(ReadFile(folder / "real/a.net"), "new");
  EXPECT_TRUE(fs::is_symlink(folder / "first"));
  EXPECT_TRUE(fs::is_symlink(folder / "second"));
  EXPECT_EQ(NamesIn(folder / "real"), Names{"a.net"});
}

TEST(OutputFile, MakesTheFileThatALinkNamesWhenItIsMissing) {
  const TempFolder folder;
  fs::create_directory(folder / "real");
  fs::create_symlink("real/a.net", folder / "saved");
  fs::create_symlink("real/b.txt", folder / "appended");
  EXPECT_TRUE(Save(folder / "saved", "new"));
  EXPECT_TRUE(Append(folder / "appended", "new"));
  EXPECT_TRUE(fs::is_symlink(folder / "saved"));
  EXPECT_TRUE(fs::is_symlink(folder / "appended"));
  EXPECT_EQ(ReadFile(folder / "real/a.net"), "new");
  EXPECT_EQ(ReadFile(folder / "real/b.txt"), "new");
}

TEST(OutputFile, RefusesLinksThatRunInACircle) {
  const TempFolder folder;
  fs::create_symlink("b", folder / "a");
  fs::create_symlink("a", folder / "b");
  EXPECT_FALSE(Save(folder / "a", "new"));
  EXPECT_FALSE(Append(folder / "a", "new"));
  EXPECT_TRUE(fs::is_symlink(folder / "a"));
  EXPECT_EQ(NamesIn(folder.path()), (Names{"a", "b"}));
}

TEST(OutputFile, RefusesFoldersAndPlacesThatDoNotExist) {
  const TempFolder folder;
  folder.Enter();
  OutputFile file;
  for (const std::string& path :
       {folder.path(), folder.path() + "/", folder / "missing/a.net", std::string(),
        std::string("."), std::string(".."), folder / "missing/"}) {
    EXPECT_FALSE(file.OpenReplacing(path)) << path;
    EXPECT_FALSE(file.OpenAppending(path)) << path;
    EXPECT_FALSE(file.Commit()) << path;
  }
  EXPECT_EQ(NamesIn(folder.path()), Names{});
}

TEST(OutputFile, KeepsItsFileWhenTheCurrentDirectoryChanges) {
  const TempFolder folder;
  fs::create_directory(folder / "other");
  folder.Enter();
  OutputFile saved;
  ASSERT_TRUE(saved.OpenReplacing("new.net"));
  EXPECT_TRUE(saved.Write("text"));
  OutputFile appended;
  ASSERT_TRUE(appended.OpenAppending("new.txt"));
  fs::current_path("other");
  EXPECT_TRUE(saved.Commit());
  appended.Discard();
  EXPECT_EQ(ReadFile(folder / "new.net"), "text");
  EXPECT_EQ(NamesIn(folder.path()), (Names{"new.net", "other"}));
  EXPECT_EQ(NamesIn(folder / "other"), Names{});
}

TEST(OutputFile, SavesAFileWithTheLongestNameThereIs) {
  const TempFolder folder;
  const std::string name(255, 'l');
  EXPECT_TRUE(Save(folder / name, "one"));
  EXPECT_TRUE(Save(folder / name, "two"));
  EXPECT_EQ(ReadFile(folder / name), "two");
  EXPECT_EQ(NamesIn(folder.path()), Names{name});
}

TEST(OutputFile, WritesADeviceInPlace) {
  EXPECT_TRUE(Save("/dev/null", "text"));
  EXPECT_TRUE(Append("/dev/null", "text"));
  EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

TEST(OutputFile, ReportsADeviceThatIsFull) {
  EXPECT_FALSE(Save("/dev/full", "text"));
  EXPECT_FALSE(Append("/dev/full", "text"));
  EXPECT_TRUE(fs::is_character_file("/dev/full"));
}

TEST(OutputFile, LeavesTheFileBehindAnOpenHandleInPlace) {
  const TempFolder folder;
  const std::string path = folder / "redirected";
  WriteFile(path, "before ");
  const int handle = ::open(path.c_str(), O_WRONLY | O_APPEND);
  ASSERT_GE(handle, 0);
  EXPECT_TRUE(Save("/dev/fd/" + std::to_string(handle), "text "));
  EXPECT_EQ(::write(handle, "after", 5), 5);
  ::close(handle);
  EXPECT_EQ(ReadFile(path), "before text after");
}

TEST(OutputFile, WritesAPipeInPlace) {
  const TempFolder folder;
  const std::string pipe = folder / "pipe";
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  fs::create_symlink("pipe", folder / "link");
  const int reader = ::open(pipe.c_str(), O_RDONLY | O_NONBLOCK);
  ASSERT_GE(reader, 0);
  EXPECT_TRUE(Save(pipe, "one "));
  EXPECT_TRUE(Save(folder / "link", "two "));
  EXPECT_TRUE(Append(pipe, "three"));
  char text[64] = {};
  const ssize_t count = ::read(reader, text, sizeof(text));
  ::close(reader);
  ASSERT_GT(count, 0);
  EXPECT_EQ(std::string(text, static_cast<size_t>(count)), "one two three");
  EXPECT_TRUE(fs::is_fifo(pipe));
  EXPECT_EQ(NamesIn(folder.path()), (Names{"link", "pipe"}));
}

TEST(OutputFile, WritesAnOpenDescriptorByItsName) {
  int ends[2] = {};
  ASSERT_EQ(::pipe(ends), 0);
  EXPECT_TRUE(Save("/dev/fd/" + std::to_string(ends[1]), "text"));
  char text[8] = {};
  EXPECT_EQ(::read(ends[0], text, sizeof(text)), 4);
  EXPECT_STREQ(text, "text");
  ::close(ends[0]);
  ::close(ends[1]);
}

TEST(OutputFile, RemovesWhatDeadProcessesHaveLeft) {
  const TempFolder folder;
  const std::string path = folder / "a.net";
  WriteFile(path, "old");
  WriteFile(path + ".tarn-save-" + DeadProcess() + "-99-1", "half");
  WriteFile(path + ".tarn-save-" + DeadProcess() + "-12345-7", "half");
  EXPECT_TRUE(Save(path, "new"));
  EXPECT_EQ(NamesIn(folder.path()), Names{"a.net"});
}

TEST(OutputFile, RemovesWhatAnEarlierProcessOfItsOwnNumberHasLeft) {
  const TempFolder folder;
  const std::string path = folder / "a.net";
  WriteFile(path + ".tarn-save-" + ProcessName() + "-99999999999-1", "half");
  EXPECT_TRUE(Save(path, "new"));
  EXPECT_EQ(NamesIn(folder.path()), Names{"a.net"});
}

TEST(OutputFile, KeepsTheTemporariesOfLiveProcessesAndOfOtherFiles) {
  const TempFolder folder;
  const std::string path = folder / "a.net";
  const std::string dead = DeadProcess() + "-1-1";
  const Names kept = {"a.net",
                      "a.net.tarn-save-1-5-5",
                      "a.net.tarn-save-notes",
                      "a.net.tarn-save-" + ProcessName(),
                      "aa.net.tarn-save-" + dead,
                      "b.net.tarn-save-" + dead};
  for (const std::string& name : kept) WriteFile(folder / name, "kept");
  EXPECT_TRUE(Save(path, "new"));
  Names sorted = kept;
  std::sort(sorted.begin(), sorted.end());
  EXPECT_EQ(NamesIn(folder.path()), sorted);
}

TEST(OutputFile, LetsTwoWritersOfOneFileEachCommitAWholeOne) {
  const TempFolder folder;
  const std::string path = folder / "a.net";
  OutputFile first, second;
  ASSERT_TRUE(first.OpenReplacing(path));
  ASSERT_TRUE(second.OpenReplacing(path));
  EXPECT_TRUE(first.Write("first"));
  EXPECT_TRUE(second.Write("second"));
  EXPECT_TRUE(first.Commit());
  EXPECT_EQ(ReadFile(path), "first");
  EXPECT_TRUE(second.Commit());
  EXPECT_EQ(ReadFile(path), "second");
  EXPECT_EQ(NamesIn(folder.path()), Names{"a.net"});
}

TEST(OutputFile, KeepsItsFileTogetherUnderShortWrites) {
  MemoryFiles memory;
  memory.Put("a", "old");
  // Takes a few bytes at a time, as a pipe may.
  class Slow : public FaultyFiles {
   public:
    using FaultyFiles::FaultyFiles;
    int64_t Write(Handle file, const void* data, size_t size) override {
      return FaultyFiles::Write(file, data, std::min<size_t>(size, 777));
    }
  } slow(memory);
  const ScopedFileLayer scope(slow);
  EXPECT_TRUE(Save("a", kLong + "end"));
  EXPECT_EQ(memory.Get("a"), kLong + "end");
  EXPECT_TRUE(Append("a", kLong));
  EXPECT_EQ(memory.Get("a"), kLong + "end" + kLong);
}

TEST(OutputFile, FailsForGoodAfterAFailedWrite) {
  MemoryFiles memory;
  FaultyFiles faulty(memory);
  const ScopedFileLayer scope(faulty);
  OutputFile file;
  ASSERT_TRUE(file.OpenReplacing("a"));
  faulty.FailAt(1);
  EXPECT_FALSE(file.Write(kLong));
  EXPECT_FALSE(file.Write("x"));
  EXPECT_FALSE(file.Printf("%d", 1));
  EXPECT_FALSE(file.Commit());
  EXPECT_FALSE(memory.Exists("a"));
}

}  // namespace
}  // namespace tarn
