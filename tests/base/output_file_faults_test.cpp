#include <array>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "base/output_file_test.h"
#include "base/text_reader.h"
#include "support/faulty_files.h"
#include "support/memory_files.h"
#include "support/temp_folder.h"

namespace tarn {
namespace {

using Kinds = FaultyFiles::Kinds;
using Fault = FaultyFiles::Fault;

// What a failing disk is tried with: a layer of memory and one of the disk.
struct Trial {
  Fault fault;
  Kinds kinds;
};

class OutputFileFaults : public testing::TestWithParam<Trial> {
 protected:
  // Saves in `folder` of `under` with every operation failing in turn. Nothing may be lost,
  // nothing may be left, and what is reported must be so.
  void TryAll(FileLayer& under, const std::string& folder, bool exists, bool append) {
    FaultyFiles faulty(under);
    const ScopedFileLayer scope(faulty);
    const std::string path = folder + "/a.net";
    const std::string old = exists ? "old text\n" : "";
    const std::string wanted = (append ? old : "") + kLong + "end\n";
    bool saved = false;
    const int64_t faults = ForEveryFault(
        faulty, GetParam().fault, GetParam().kinds,
        [&] {
          under.Remove(path);
          ASSERT_TRUE(!exists || Save(path, old));
        },
        [&] {
          OutputFile file;
          saved = (append ? file.OpenAppending(path) : file.OpenReplacing(path)) &&
                  file.Write(kLong) && file.Write("end\n") && file.Commit();
        },
        [&](bool struck) {
          EXPECT_TRUE(struck || saved);
          const Names names = under.NamesIn(folder);
          EXPECT_EQ(names, saved || exists ? Names{"a.net"} : Names{});
          TextReader reader;
          ASSERT_EQ(reader.Open(path), saved || exists);
          std::string text;
          for (int c = reader.Get(); c >= 0; c = reader.Get()) text += static_cast<char>(c);
          EXPECT_TRUE(text == (saved ? wanted : old)) << text.size() << " bytes, saved " << saved;
        });
    EXPECT_GE(faults, 2);
  }

  void TryAllWays(FileLayer& under, const std::string& folder) {
    for (const bool exists : {false, true}) {
      for (const bool append : {false, true}) {
        SCOPED_TRACE(std::string(exists ? "existing" : "new") + (append ? " append" : " replace"));
        TryAll(under, folder, exists, append);
      }
    }
  }
};

TEST_P(OutputFileFaults, LeaveTheOldFileWholeAndNothingElseInMemory) {
  MemoryFiles memory("/data");
  TryAllWays(memory, "/data");
  EXPECT_EQ(memory.OpenHandles(), 0);
}

TEST_P(OutputFileFaults, LeaveTheOldFileWholeAndNothingElseOnTheDisk) {
  const TempFolder folder;
  TryAllWays(SystemFiles(), folder.path());
}

std::string TrialName(const testing::TestParamInfo<Trial>& trial) {
  constexpr std::array kNames = {"OneMutating", "OneOfAny", "DiskFull", "ShortWrite"};
  return kNames[trial.index];
}

INSTANTIATE_TEST_SUITE_P(OfEveryKind, OutputFileFaults,
                         testing::Values(Trial{Fault::kOnce, Kinds::kMutating},
                                         Trial{Fault::kOnce, Kinds::kAll},
                                         Trial{Fault::kDiskFull, Kinds::kMutating},
                                         Trial{Fault::kShortWrite, Kinds::kMutating}),
                         TrialName);

}  // namespace
}  // namespace tarn
