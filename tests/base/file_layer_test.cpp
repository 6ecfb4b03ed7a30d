#include "base/file_layer.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "support/faulty_files.h"
#include "support/memory_files.h"
#include "support/slashes.h"
#include "support/temp_folder.h"

namespace tarn {
namespace {

using Handle = FileLayer::Handle;
using Mode = FileLayer::Mode;
using Names = std::vector<std::string>;
constexpr Handle kNoFile = FileLayer::kNoFile;

// What every layer does, tried with the system's and with the one in memory, in a folder of
// its own that is the current directory.
class AnyFileLayer : public testing::TestWithParam<bool> {
 protected:
  void SetUp() override {
    m_disk.Enter();
    if (!GetParam()) m_memory = std::make_unique<MemoryFiles>(m_disk.path());
  }

  FileLayer& Layer() {
    if (m_memory != nullptr) return *m_memory;
    return SystemFiles();
  }

  void Put(const std::string& path, const std::string& text) {
    const Handle file = Layer().Open(path, Mode::kCreate);
    ASSERT_NE(file, kNoFile) << path;
    EXPECT_EQ(Layer().Write(file, text.data(), text.size()), static_cast<int64_t>(text.size()));
    EXPECT_TRUE(Layer().Close(file));
  }

  std::string ReadAll(Handle file) {
    std::string text(1000, '\0');
    const int64_t count = Layer().Read(file, text.data(), text.size());
    EXPECT_GE(count, 0);
    text.resize(static_cast<size_t>(std::max<int64_t>(count, 0)));
    return text;
  }

  std::string Get(const std::string& path) {
    const Handle file = Layer().Open(path, Mode::kRead);
    if (file == kNoFile) return "no file";
    const std::string text = ReadAll(file);
    EXPECT_TRUE(Layer().Close(file));
    return text;
  }

  bool Opens(const std::string& path, Mode mode) {
    const Handle file = Layer().Open(path, mode);
    return file != kNoFile && Layer().Close(file);
  }

  TempFolder m_disk;
  std::unique_ptr<MemoryFiles> m_memory;
};

TEST_P(AnyFileLayer, CreatesTruncatesAndReadsFiles) {
  EXPECT_FALSE(Opens("a", Mode::kRead));
  Put("a", "a longer text");
  EXPECT_EQ(Get("a"), "a longer text");
  Put("a", "short");
  EXPECT_EQ(Get("a"), "short");
  EXPECT_EQ(Get(m_disk / "a"), "short");
}

TEST_P(AnyFileLayer, CreatesANewFileOnlyWhereThereIsNone) {
  Put("a", "text");
  EXPECT_FALSE(Opens("a", Mode::kCreateNew));
  EXPECT_EQ(Get("a"), "text");
  const Handle file = Layer().Open("b", Mode::kCreateNew);
  ASSERT_NE(file, kNoFile);
  EXPECT_EQ(Layer().Write(file, "0123", 4), 4);
  EXPECT_TRUE(Layer().Seek(file, 1));
  EXPECT_EQ(ReadAll(file), "123");
  EXPECT_TRUE(Layer().Close(file));
}

TEST_P(AnyFileLayer, AppendsAtTheEndWhateverWasTruncated) {
  for (const char* text : {"one ", "two "}) {
    const Handle file = Layer().Open("a", Mode::kAppend);
    ASSERT_NE(file, kNoFile);
    EXPECT_EQ(Layer().Write(file, text, 4), 4);
    EXPECT_TRUE(Layer().Close(file));
  }
  EXPECT_EQ(Get("a"), "one two ");
  const Handle file = Layer().Open("a", Mode::kAppend);
  EXPECT_EQ(Layer().Size(file), 8);
  EXPECT_TRUE(Layer().Truncate(file, 3));
  EXPECT_EQ(Layer().Size(file), 3);
  EXPECT_EQ(Layer().Write(file, "!", 1), 1);
  EXPECT_TRUE(Layer().Sync(file));
  EXPECT_TRUE(Layer().Close(file));
  EXPECT_EQ(Get("a"), "one!");
}

TEST_P(AnyFileLayer, FillsUpWithZerosWhenItMakesAFileLonger) {
  Put("a", "x");
  const Handle file = Layer().Open("a", Mode::kAppend);
  EXPECT_TRUE(Layer().Truncate(file, 3));
  EXPECT_TRUE(Layer().Close(file));
  EXPECT_EQ(Get("a"), std::string("x\0\0", 3));
}

TEST_P(AnyFileLayer, ReadsFromWhereItWasSetToAndNothingBehindTheEnd) {
  Put("a", "0123456789");
  const Handle file = Layer().Open("a", Mode::kRead);
  EXPECT_TRUE(Layer().Seek(file, 7));
  EXPECT_EQ(ReadAll(file), "789");
  EXPECT_EQ(ReadAll(file), "");
  EXPECT_TRUE(Layer().Seek(file, 50));
  EXPECT_EQ(ReadAll(file), "");
  EXPECT_FALSE(Layer().Seek(file, -1));
  EXPECT_LT(Layer().Write(file, "x", 1), 0);
  EXPECT_TRUE(Layer().Close(file));
}

TEST_P(AnyFileLayer, OpensNoDirectoryAndNothingInAMissingOne) {
  ASSERT_TRUE(Layer().MakeFolder("folder"));
  for (const Mode mode : {Mode::kRead, Mode::kCreate, Mode::kCreateNew, Mode::kAppend}) {
    EXPECT_FALSE(Opens("folder", mode));
    EXPECT_FALSE(Opens(".", mode));
    EXPECT_FALSE(Opens("", mode));
    EXPECT_FALSE(Opens("missing/a", mode));
    EXPECT_FALSE(Opens("missing/", mode));
  }
}

TEST_P(AnyFileLayer, KnowsNothingByAPathWithAZeroByte) {
  Put("a", "text");
  ASSERT_TRUE(Layer().MakeFolder("folder"));
  const std::string file("a\0b", 3), folder("folder\0b", 8);
  for (const Mode mode : {Mode::kRead, Mode::kCreate, Mode::kCreateNew, Mode::kAppend}) {
    EXPECT_FALSE(Opens(file, mode));
    EXPECT_FALSE(Opens(std::string("new\0b", 5), mode));
  }
  EXPECT_FALSE(Layer().Rename(file, "b"));
  EXPECT_FALSE(Layer().Rename("a", std::string("b\0c", 3)));
  EXPECT_FALSE(Layer().Remove(file));
  EXPECT_FALSE(Layer().IsDirectory(folder));
  EXPECT_FALSE(Layer().EnterDirectory(folder));
  EXPECT_FALSE(Layer().MakeFolder(std::string("made\0b", 6)));
  EXPECT_FALSE(Layer().RemoveFolder(folder));
  EXPECT_EQ(Layer().NamesIn(folder), Names{});
  EXPECT_EQ(Layer().ResolveLinks(file), "");
  EXPECT_FALSE(Layer().IsSpecial(std::string("/dev/null\0b", 11)));
  EXPECT_EQ(Get("a"), "text");
  EXPECT_TRUE(Layer().IsDirectory("folder"));
  EXPECT_EQ(Get("new") + Get("b"), "no fileno file");
}

TEST_P(AnyFileLayer, FailsOnHandlesThatAreNotOpen) {
  char byte = 0;
  EXPECT_LT(Layer().Read(kNoFile, &byte, 1), 0);
  EXPECT_LT(Layer().Write(kNoFile, &byte, 1), 0);
  EXPECT_LT(Layer().Size(kNoFile), 0);
  EXPECT_FALSE(Layer().Seek(kNoFile, 0));
  EXPECT_FALSE(Layer().Truncate(kNoFile, 0));
  EXPECT_FALSE(Layer().Sync(kNoFile));
  EXPECT_FALSE(Layer().Close(kNoFile));
}

TEST_P(AnyFileLayer, RenamesOverAnExistingFile) {
  Put("a", "new");
  Put("b", "old");
  EXPECT_TRUE(Layer().Rename("a", "b"));
  EXPECT_EQ(Get("b"), "new");
  EXPECT_EQ(Get("a"), "no file");
  EXPECT_FALSE(Layer().Rename("a", "b"));
  EXPECT_FALSE(Layer().Rename("b", "missing/b"));
  ASSERT_TRUE(Layer().MakeFolder("folder"));
  EXPECT_FALSE(Layer().Rename("b", "folder"));
  EXPECT_EQ(Get("b"), "new");
}

TEST_P(AnyFileLayer, RemovesFiles) {
  Put("a", "text");
  EXPECT_TRUE(Layer().Remove("a"));
  EXPECT_FALSE(Layer().Remove("a"));
  EXPECT_EQ(Get("a"), "no file");
}

TEST_P(AnyFileLayer, KnowsItsDirectories) {
  Put("a", "text");
  ASSERT_TRUE(Layer().MakeFolder("folder"));
  EXPECT_FALSE(Layer().MakeFolder("folder"));
  EXPECT_FALSE(Layer().MakeFolder("a"));
  EXPECT_TRUE(Layer().IsDirectory("folder"));
  EXPECT_TRUE(Layer().IsDirectory("folder/"));
  EXPECT_TRUE(Layer().IsDirectory("/"));
  EXPECT_FALSE(Layer().IsDirectory("a"));
  EXPECT_FALSE(Layer().IsDirectory("missing"));
  EXPECT_FALSE(Layer().IsDirectory(""));
  EXPECT_FALSE(Layer().IsSpecial("folder"));
  EXPECT_FALSE(Layer().IsSpecial("a"));
  EXPECT_FALSE(Layer().IsSpecial("missing"));
}

TEST_P(AnyFileLayer, ResolvesRelativePathsInTheDirectoryEntered) {
  ASSERT_TRUE(Layer().MakeFolder("folder"));
  EXPECT_FALSE(Layer().EnterDirectory("missing"));
  EXPECT_FALSE(Layer().EnterDirectory(""));
  EXPECT_EQ(Slashes(Layer().CurrentDirectory()), m_disk.path());
  EXPECT_TRUE(Layer().EnterDirectory("folder"));
  EXPECT_EQ(Slashes(Layer().CurrentDirectory()), m_disk / "folder");
  Put("a", "inner");
  Put("../a", "outer");
  EXPECT_EQ(Get(m_disk / "folder/a"), "inner");
  EXPECT_EQ(Get(m_disk / "a"), "outer");
  EXPECT_EQ(Slashes(Layer().ResolveLinks("./a")), m_disk / "folder/a");
  EXPECT_EQ(Slashes(Layer().ResolveLinks("../missing")), m_disk / "missing");
}

TEST_P(AnyFileLayer, ListsAndRemovesFolders) {
  ASSERT_TRUE(Layer().MakeFolder("folder"));
  ASSERT_TRUE(Layer().MakeFolder("folder/inner"));
  Put("folder/a", "text");
  Put("folder/inner/b", "text");
  Put("folder2", "text");
  Names names = Layer().NamesIn("folder");
  std::sort(names.begin(), names.end());
  EXPECT_EQ(names, (Names{"a", "inner"}));
  EXPECT_EQ(Layer().NamesIn("missing"), Names{});
  EXPECT_TRUE(Layer().RemoveFolder("folder"));
  EXPECT_FALSE(Layer().RemoveFolder("folder"));
  EXPECT_FALSE(Layer().IsDirectory("folder"));
  EXPECT_EQ(Layer().NamesIn("."), Names{"folder2"});
}

INSTANTIATE_TEST_SUITE_P(Of, AnyFileLayer, testing::Bool(),
                         [](const auto& of) { return of.param ? "System" : "Memory"; });

TEST(FileLayer, IsTheSystemsUntilAnotherTakesItsPlace) {
  MemoryFiles outer, inner;
  EXPECT_EQ(&Files(), &SystemFiles());
  {
    const ScopedFileLayer first(outer);
    EXPECT_EQ(&Files(), &outer);
    {
      const ScopedFileLayer second(inner);
      EXPECT_EQ(&Files(), &inner);
    }
    EXPECT_EQ(&Files(), &outer);
  }
  EXPECT_EQ(&Files(), &SystemFiles());
}

TEST(FaultyFiles, FailTheOperationAskedForAndNoOther) {
  MemoryFiles memory;
  FaultyFiles files(memory);
  const auto write = [&] {
    const Handle file = files.Open("a", Mode::kCreate);
    const bool written = files.Write(file, "text", 4) == 4;
    const bool closed = files.Close(file);
    return std::string(file == kNoFile ? "-" : "o") + (written ? "w" : "-") + (closed ? "c" : "-");
  };
  const char* expected[] = {"owc", "---", "o-c", "ow-", "owc"};
  for (int64_t k = 0; k < 5; ++k) {
    files.FailAt(k);
    EXPECT_EQ(write(), expected[k]) << k;
    EXPECT_EQ(files.Operations(), 3);
    EXPECT_EQ(files.Failures(), k >= 1 && k <= 3 ? 1 : 0);
  }
  EXPECT_EQ(memory.OpenHandles(), 0);
}

TEST(FaultyFiles, TakeHalfOfTheBytesBeforeTheDiskIsFull) {
  MemoryFiles memory;
  FaultyFiles files(memory);
  files.FailAt(1, FaultyFiles::Fault::kShortWrite);
  const Handle file = files.Open("a", Mode::kCreate);
  ASSERT_NE(file, kNoFile);
  EXPECT_EQ(files.Write(file, "12345678", 8), 4);
  EXPECT_LT(files.Write(file, "5678", 4), 0);
  EXPECT_FALSE(files.Sync(file));
  EXPECT_TRUE(files.Truncate(file, 2));
  EXPECT_TRUE(files.Close(file));
  EXPECT_EQ(files.Open("b", Mode::kCreateNew), kNoFile);
  EXPECT_EQ(memory.Get("a"), "12");
  EXPECT_TRUE(files.Remove("a"));
}

TEST(FaultyFiles, StayFullOnceTheDiskIsFull) {
  MemoryFiles memory;
  memory.Put("old", "text");
  FaultyFiles files(memory);
  files.FailAt(2, FaultyFiles::Fault::kDiskFull);
  const Handle file = files.Open("a", Mode::kCreate);
  ASSERT_NE(file, kNoFile);
  EXPECT_LT(files.Write(file, "x", 1), 0);
  EXPECT_LT(files.Write(file, "x", 1), 0);
  EXPECT_TRUE(files.Close(file));
  EXPECT_TRUE(files.Remove("a"));
  const Handle old = files.Open("old", Mode::kRead);
  char byte = 0;
  EXPECT_EQ(files.Read(old, &byte, 1), 1);
  EXPECT_TRUE(files.Close(old));
}

TEST(ForEveryFault, RunsUntilNothingFailsAnyMore) {
  MemoryFiles memory;
  FaultyFiles files(memory);
  int prepared = 0, run = 0, struck_runs = 0;
  const int64_t faults = ForEveryFault(
      files, FaultyFiles::Fault::kOnce, FaultyFiles::Kinds::kMutating, [&] { ++prepared; },
      [&] {
        ++run;
        memory.Put("a", "");
        if (files.Rename("a", "b")) files.Remove("b");
      },
      [&](bool struck) { struck_runs += struck ? 1 : 0; });
  EXPECT_EQ(faults, 2);
  EXPECT_EQ(struck_runs, 2);
  EXPECT_EQ(prepared, 3);
  EXPECT_EQ(run, 3);
}

}  // namespace
}  // namespace tarn
