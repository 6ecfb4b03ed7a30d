#include <gtest/gtest.h>
#include <string>

#include "base/output_file_test.h"
#include "base/random.h"
#include "support/doomed_process.h"
#include "support/doomed_work.h"
#include "support/temp_folder.h"

namespace tarn {
namespace {

constexpr int32_t kLongestWaitMicroseconds = 8000;

TEST(OutputFile, LeavesOneWholeContentWheneverTheProcessIsKilled) {
  const TempFolder folder;
  const std::string path = folder / "a.net";
  const std::string first = DoomedText(1);
  const std::string second = DoomedText(2);
  WriteFile(path, first);
  Random random(20240229);
  int leftovers = 0;
  for (int i = 0; i < kManyKills; ++i) {
    SCOPED_TRACE(i);
    const int32_t wait = random.Next() % kLongestWaitMicroseconds;
    ASSERT_TRUE(DoomedProcess(kSaveTexts, folder.path()).KillAfter(wait));
    const std::string found = ReadFile(path);
    ASSERT_TRUE(found == first || found == second) << found.size() << " bytes";
    // The killed process can have left the one file that it was writing.
    const Names names = NamesIn(folder.path());
    ASSERT_LE(names.size(), 2U);
    if (names.size() == 1) continue;
    ++leftovers;
    ASSERT_TRUE(Save(path, i % 2 == 0 ? first : second));
    ASSERT_EQ(NamesIn(folder.path()), Names{"a.net"});
  }
  // Else no kill has struck during a save and nothing was shown.
  EXPECT_GT(leftovers, kManyKills / 10);
}

}  // namespace
}  // namespace tarn
