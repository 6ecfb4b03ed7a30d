#include <gtest/gtest.h>
#include <string>

#include "app/interrupted_runs.h"
#include "base/random.h"
#include "netfile/header.h"
#include "netfile/weights_section.h"
#include "support/doomed_file.h"
#include "support/doomed_process.h"
#include "support/doomed_work.h"
#include "support/temp_folder.h"

// What the next start of the program finds of a training run that was killed.

namespace tarn {
namespace {

constexpr int32_t kLongestWaitMicroseconds = 20000;

int64_t SizeOf(const std::string& path) {
  return static_cast<int64_t>(ReadFile(path).size());
}

bool Loads(const std::string& path) {
  Network network;
  network.file_name = path;
  return ReadHeader(network).ok() && AllocateArrays(network).ok() && ReadWeights(network, 1).ok() &&
         !network.random_weights;
}

void Forget(const InterruptedRun& run) {
  SystemFiles().Remove(run.store);
  SystemFiles().Remove(run.note);
}

TEST(InterruptedRun, GivesItsNewestSnapshotBackWhenTheProcessIsKilled) {
  const TempFolder folder;
  Random random(20261122);
  int offered = 0;
  int torn = 0;
  const int kills = ManyKills() / 5;
  for (int i = 0; i < kills; ++i) {
    SCOPED_TRACE(i);
    const int32_t wait = random.Next() % kLongestWaitMicroseconds;
    ASSERT_TRUE(DoomedProcess(kTrainWithStore, folder.path()).KillAfter(wait));
    const std::vector<InterruptedRun> runs = ClearTemporaryFolder(folder.path());
    ASSERT_LE(runs.size(), 1U);
    for (const InterruptedRun& run : runs) {
      std::optional<StoredSnapshot> newest;
      ASSERT_TRUE(FindNewestSnapshot(run.store, newest).ok());
      SCOPED_TRACE(ReadFile(run.store).size());
      if (!newest) {
        Forget(run);
        continue;
      }
      ASSERT_TRUE(WriteSnapshot(run.store, *newest, folder / "a.net").ok());
      ASSERT_TRUE(Loads(folder / "a.net"));
      ASSERT_EQ(newest->iteration, newest->number) << "no iteration is left out";
      // The last snapshot at most is lost.
      const int64_t whole = SizeOf(folder / "a.net");
      const int64_t rest = SizeOf(run.store) - newest->number * whole;
      ASSERT_LT(rest, whole + newest->number * 32) << "with a line before each";
      if (rest > newest->number * 32) ++torn;
      ++offered;
      SystemFiles().Remove(folder / "a.net");
      Forget(run);
    }
    ASSERT_TRUE(SystemFiles().NamesIn(folder.path()).empty());
  }
  EXPECT_GT(offered, 0);
  TellKills("interrupted runs", std::to_string(kills) + " kills, " + std::to_string(offered) +
                                    " offered, " + std::to_string(torn) +
                                    " of them with a snapshot that was under way");
}

}  // namespace
}  // namespace tarn
