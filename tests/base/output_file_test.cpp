#include "base/output_file_test.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>

#include "base/process.h"
#include "support/comma_locale.h"
#include "support/doomed_process.h"
#include "support/faulty_files.h"
#include "support/memory_files.h"
#include "support/temp_folder.h"

namespace tarn {
namespace {

namespace fs = std::filesystem;

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
  EXPECT_EQ(ReadFile(path), OnDisk("new\n") + kLong);
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
  WriteFile(path, OnDisk("one\n"));
  EXPECT_TRUE(Append(path, "two\n"));
  EXPECT_EQ(ReadFile(path), OnDisk("one\ntwo\n"));
  OutputFile file;
  ASSERT_TRUE(file.OpenAppending(path));
  EXPECT_TRUE(file.Write(kLong));
  file.Discard();
  EXPECT_EQ(ReadFile(path), OnDisk("one\ntwo\n"));
  ASSERT_TRUE(file.OpenAppending(path));
  EXPECT_TRUE(file.Write(kLong));
  EXPECT_TRUE(file.Commit());
  EXPECT_EQ(ReadFile(path), OnDisk("one\ntwo\n") + kLong);
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
            OnDisk("1234567 7654321 1234.500000 text\n0.100   |  -42|1.000000e-07\n"));
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

TEST(OutputFile, RefusesANameThatIsTooLongAtOnce) {
  const TempFolder folder;
  OutputFile file;
  EXPECT_FALSE(file.OpenReplacing(folder / std::string(256, 'l')));
  EXPECT_TRUE(file.OpenReplacing(folder / std::string(255, 'l')));
}

TEST(OutputFile, CutsALongNameBetweenItsCharacters) {
  const TempFolder folder;
  const auto name = [](int letters) {
    std::string text = "a";
    for (int i = 0; i < letters; ++i) text += "\xE8\xB3\x87";
    return text;
  };
  const std::string path = folder / name(80);
  OutputFile file;
  ASSERT_TRUE(file.OpenReplacing(path));
  const Names names = NamesIn(folder.path());
  ASSERT_EQ(names.size(), 1U);
  EXPECT_TRUE(names[0].starts_with(name(60) + ".tarn-save-")) << names[0];
  file.Discard();
  const std::string left = path.substr(0, path.size() - 60) + ".tarn-save-" + EndedProcess();
  WriteFile(left + "-99-1", "half");
  EXPECT_TRUE(Save(path, "text"));
  EXPECT_EQ(NamesIn(folder.path()), Names{name(80)});
}

TEST(OutputFile, RemovesWhatDeadProcessesHaveLeft) {
  const TempFolder folder;
  const std::string path = folder / "a.net";
  WriteFile(path, "old");
  WriteFile(path + ".tarn-save-" + EndedProcess() + "-99-1", "half");
  WriteFile(path + ".tarn-save-" + EndedProcess() + "-12345-7", "half");
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
  const std::string dead = EndedProcess() + "-1-1";
  const Names kept = {"a.net",
                      "a.net.tarn-save-" + OtherProcess() + "-5-5",
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
