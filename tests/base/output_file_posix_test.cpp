// Access rights, symbolic links, devices and pipes.

#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "base/output_file_test.h"
#include "support/temp_folder.h"

namespace tarn {
namespace {

namespace fs = std::filesystem;

mode_t ModeOf(const std::string& path) {
  struct stat info {};
  EXPECT_EQ(::stat(path.c_str(), &info), 0) << path;
  return info.st_mode & 07777;
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

TEST(OutputFile, FollowsNoLinkThatSomebodyElseHasPutIntoASharedFolder) {
  const TempFolder folder;
  ASSERT_EQ(::chmod(folder.path().c_str(), 01777), 0);
  WriteFile(folder / "victim", "old");
  fs::create_symlink("victim", folder / "planted");
  EXPECT_TRUE(Save(folder / "planted", "own"));
  // Only root can make the links of others.
  const uid_t other = ::geteuid() == 0 ? 65534 : ::geteuid();
  ASSERT_EQ(::lchown((folder / "planted").c_str(), other, static_cast<gid_t>(-1)), 0);
  const bool own = other == ::geteuid();
  EXPECT_EQ(Save(folder / "planted", "new"), own);
  EXPECT_EQ(Append(folder / "planted", ""), own);
  EXPECT_EQ(ReadFile(folder / "victim"), own ? "new" : "own");
  EXPECT_EQ(NamesIn(folder.path()), (Names{"planted", "victim"}));
}

TEST(OutputFile, WritesIntoNoPipeThatSomebodyElsesLinkLeadsTo) {
  const TempFolder folder;
  ASSERT_EQ(::chmod(folder.path().c_str(), 01777), 0);
  ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
  fs::create_symlink("pipe", folder / "planted");
  const uid_t other = ::geteuid() == 0 ? 65534 : ::geteuid();
  ASSERT_EQ(::lchown((folder / "planted").c_str(), other, static_cast<gid_t>(-1)), 0);
  const bool own = other == ::geteuid();
  // With a reader the pipe takes bytes at once.
  const int reader = ::open((folder / "pipe").c_str(), O_RDONLY | O_NONBLOCK);
  ASSERT_GE(reader, 0);
  EXPECT_EQ(Save(folder / "planted", "new"), own);
  EXPECT_EQ(Append(folder / "planted", "new"), own);
  char bytes[8] = "";
  EXPECT_EQ(::read(reader, bytes, sizeof(bytes)), own ? 6 : 0);
  ::close(reader);
  EXPECT_TRUE(Save(folder / "pipe.txt", "the folder takes files"));
}

TEST(OutputFile, ReplacesALinkThatTheUserHasNotNamed) {
  const TempFolder folder;
  WriteFile(folder / "victim", "old");
  ASSERT_EQ(::chmod((folder / "victim").c_str(), 0600), 0);
  fs::create_symlink("victim", folder / "planted");
  ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
  const mode_t before = ::umask(022);
  for (const std::string name : {"planted", "pipe"}) {
    OutputFile file;
    ASSERT_TRUE(file.OpenReplacing(folder / name, OutputFile::Content::kText,
                                   OutputFile::Links::kReplaced));
    EXPECT_TRUE(file.Write("new"));
    EXPECT_TRUE(file.Commit());
    EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(folder / name))) << name;
    EXPECT_EQ(ReadFile(folder / name), "new");
  }
  ::umask(before);
  EXPECT_EQ(ModeOf(folder / "planted"), 0644U);
  EXPECT_EQ(ReadFile(folder / "victim"), "old");
  EXPECT_EQ(ModeOf(folder / "victim"), 0600U);
}

TEST(OutputFile, CanBeMadeForTheUserAlone) {
  const TempFolder folder;
  OutputFile file;
  ASSERT_TRUE(file.OpenPrivate(folder / "a"));
  EXPECT_TRUE(file.Write("text"));
  EXPECT_TRUE(file.Commit());
  EXPECT_EQ(ModeOf(folder / "a"), 0600U);
  EXPECT_FALSE(file.OpenPrivate(folder / "a"));
  fs::create_symlink("b", folder / "link");
  EXPECT_FALSE(file.OpenPrivate(folder / "link"));
  EXPECT_EQ(NamesIn(folder.path()), (Names{"a", "link"}));
}

TEST(OutputFile, TakesOverNoRightsThatMakeAProgram) {
  const TempFolder folder;
  WriteFile(folder / "a", "old");
  ASSERT_EQ(::chmod((folder / "a").c_str(), 06755), 0);
  EXPECT_TRUE(Save(folder / "a", "new"));
  EXPECT_EQ(ModeOf(folder / "a"), 0755U);
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

}  // namespace
}  // namespace tarn
