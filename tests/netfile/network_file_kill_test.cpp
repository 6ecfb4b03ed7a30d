// What a network file and a store hold when the program is killed while it writes them.

#include "netfile/autosave_store.h"
#include "netfile/connections_section.h"
#include "netfile/weights_section.h"
#include "netfile_test.h"
#include "support/doomed_process.h"
#include "support/doomed_work.h"
#include "support/line_ends.h"
#include "support/temp_folder.h"

namespace tarn {
namespace {

const int kKills = kManyKills * 3 / 5;
constexpr int32_t kLongestWaitMicroseconds = 8000;

bool Loads(const std::string& path) {
  Network network;
  network.file_name = path;
  return ReadHeader(network).ok() && AllocateArrays(network).ok() && ReadWeights(network, 1).ok() &&
         !network.random_weights && ReadConnections(network, "/no such folder").ok();
}

std::string StoredText(const Network& network) {
  return Stored(TextOf(network), SystemFiles().LineEnd());
}

TEST(NetworkFile, IsOneOfTwoNetworksWheneverTheProcessIsKilled) {
  const TempFolder folder;
  const std::string path = folder / "a.net";
  Network first = DoomedNetwork(1);
  first.file_name = path;
  const std::string first_text = StoredText(first);
  const std::string second_text = StoredText(DoomedNetwork(2));
  ASSERT_TRUE(WriteNetworkFile(path, first).ok());
  Random random(20240229);
  int leftovers = 0;
  int changes = 0;
  std::string before = first_text;
  for (int i = 0; i < kKills; ++i) {
    SCOPED_TRACE(i);
    const int32_t wait = random.Next() % kLongestWaitMicroseconds;
    ASSERT_TRUE(DoomedProcess(kSaveNetworks, folder.path()).KillAfter(wait));
    const std::string found = ReadFile(path);
    ASSERT_TRUE(found == first_text || found == second_text) << found.size() << " bytes";
    ASSERT_TRUE(Loads(path));
    if (found != before) ++changes;
    before = found;
    if (SystemFiles().NamesIn(folder.path()).size() == 1) continue;
    ++leftovers;
    // The next save clears away what the killed process has left.
    ASSERT_TRUE(WriteNetworkFile(path, first).ok());
    ASSERT_EQ(SystemFiles().NamesIn(folder.path()), Lines{"a.net"});
    before = first_text;
  }
  // Else no kill has struck during a save and nothing was shown.
  EXPECT_GT(leftovers, 0);
  EXPECT_GT(changes, 0);
}

TEST(NetworkFile, OfAStoreRestoresEveryEarlierSnapshotWhenTheProcessIsKilled) {
  const TempFolder folder;
  const std::string store = folder / "store";
  const std::string text = StoredText(DoomedNetwork(3));
  const std::string line_end(SystemFiles().LineEnd());
  Random random(20240301);
  int snapshots = 0;
  for (int i = 0; i < kKills; ++i) {
    SCOPED_TRACE(i);
    ASSERT_TRUE(CreateStore(store).ok());
    const int32_t wait = random.Next() % kLongestWaitMicroseconds;
    ASSERT_TRUE(DoomedProcess(kStoreSnapshots, folder.path()).KillAfter(wait));
    // However far it came: whole snapshots, and at the end the beginning of one more.
    const std::string found = ReadFile(store);
    std::string expected;
    int whole = 0;
    for (int iteration = 1001; expected.size() < found.size(); ++iteration) {
      expected.append("ITERATION " + std::to_string(iteration) + line_end).append(text);
      if (expected.size() <= found.size()) ++whole;
    }
    ASSERT_TRUE(expected.starts_with(found));
    // Restored in memory: the disk would be waited for each time.
    MemoryFiles memory;
    memory.EndLinesWith(line_end);
    const ScopedFileLayer layer(memory);
    memory.Put("/home/store", found);
    for (int n = 1; n <= whole; ++n) {
      const std::string iteration = std::to_string(1000 + n);
      ASSERT_EQ(RestoreSnapshot("/home/store", "/home/a.net", iteration).iteration, 1000 + n);
      ASSERT_TRUE(memory.Get("/home/a.net") == text);
      ASSERT_TRUE(Loads("/home/a.net"));
    }
    snapshots += whole;
  }
  EXPECT_GT(snapshots, 0);
}

}  // namespace
}  // namespace tarn
