// Every operation on a disk that is really full. There are none of these tests without such a disk:
// TARN_FULL_DISK names its empty folder.

#include <cstdio>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>

#include "app/faults_trial.h"
#include "base/file_layer.h"
#include "support/faulty_disk.h"
#include "support/temporary_folder_is.h"

namespace tarn {
namespace {

constexpr int32_t kPatterns = 300;
constexpr int kMostPages = 60;

class FullDisk : public testing::TestWithParam<FaultOperation> {
 protected:
  FullDisk() : m_disk(FullDiskFolder()) {
    EXPECT_TRUE(Files().MakeFolder(m_disk + "/nets") && Files().MakeFolder(m_disk + "/temporary"));
  }
  ~FullDisk() override {
    std::filesystem::current_path("/");
    EXPECT_TRUE(Files().RemoveFolder(m_disk + "/nets"));
    EXPECT_TRUE(Files().RemoveFolder(m_disk + "/temporary"));
    EXPECT_EQ(Files().NamesIn(m_disk).size(), 0U);
  }

  // With ever more room, until there is enough of it.
  void TryAll() {
    FaultTrial trial(GetParam(), m_disk + "/nets", kPatterns);
    int failures = 0;
    bool done = false;
    for (int pages = 0; pages < kMostPages && !done; ++pages) {
      SCOPED_TRACE(std::to_string(pages) + " pages free");
      trial.Open();
      {
        const Filler filler(m_disk + "/filler", pages);
        trial.Run();
        done = trial.IsDone();
      }
      failures += done ? 0 : 1;
      trial.Check(true, false);
      const size_t files = trial.End();
      EXPECT_EQ(Files().NamesIn(m_disk + "/nets").size(), files);
      EXPECT_EQ(Files().NamesIn(m_disk + "/temporary").size(), 0U);
    }
    EXPECT_TRUE(done);
    std::printf("%4d full disks: %s\n", failures, GetParam().name.c_str());
  }

  std::string m_disk;
};

TEST_P(FullDisk, IsToldAndLeavesEverythingAsItWas) {
  TryAll();
}

TEST_P(FullDisk, IsToldWhenItHoldsTheTemporaryFilesToo) {
  const TemporaryFolderIs named(m_disk + "/temporary");
  TryAll();
}

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(FullDisk);
INSTANTIATE_TEST_SUITE_P(Of, FullDisk, testing::ValuesIn(WhereThereIsAFullDisk(FaultOperations())),
                         [](const auto& of) { return NameOf(of.param); });

}  // namespace
}  // namespace tarn
