// What a network file and a store hold when the program is killed while it writes them.

#include <signal.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include "netfile/autosave_store.h"
#include "netfile/connections_section.h"
#include "netfile/weights_section.h"
#include "netfile_test.h"
#include "support/temp_folder.h"

namespace tarn {
namespace {

constexpr int kKills = 120;
constexpr int32_t kLongestWaitMicroseconds = 8000;

Network NetworkOf(int32_t hidden, uint32_t seed) {
  Network network;
  network.nLayers = 3;
  network.layers[0].nUnits = 20;
  network.layers[1].nUnits = hidden;
  network.layers[2].nUnits = 5;
  network.LRC = 1000000;
  EXPECT_TRUE(AllocateArrays(network).ok());
  InitializeRandomWeights(network, seed);
  return network;
}

// Runs `work` again and again in a process of its own, kills it after a while and tells
// whether it ran until then.
bool KillDuring(const std::function<bool()>& work, int32_t microseconds) {
  int ends[2] = {};
  if (::pipe(ends) != 0) return false;
  const pid_t child = ::fork();
  if (child < 0) return false;
  if (child == 0) {
    if (::write(ends[1], "r", 1) != 1) ::_exit(1);
    while (work()) {
    }
    ::_exit(1);
  }
  ::close(ends[1]);
  char ready = 0;
  const bool started = ::read(ends[0], &ready, 1) == 1;
  ::close(ends[0]);
  const timespec wait = {0, microseconds * 1000L};
  ::nanosleep(&wait, nullptr);
  ::kill(child, SIGKILL);
  int status = 0;
  ::waitpid(child, &status, 0);
  return started && WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
}

bool Loads(const std::string& path) {
  Network network;
  network.file_name = path;
  return ReadHeader(network).ok() && AllocateArrays(network).ok() && ReadWeights(network, 1).ok() &&
         !network.random_weights && ReadConnections(network, "/no such folder").ok();
}

TEST(NetworkFile, IsOneOfTwoNetworksWheneverTheProcessIsKilled) {
  const TempFolder folder;
  const std::string path = folder / "a.net";
  Network first = NetworkOf(40, 1);
  Network second = NetworkOf(90, 2);
  first.file_name = second.file_name = path;
  const std::string first_text = TextOf(first);
  const std::string second_text = TextOf(second);
  ASSERT_TRUE(WriteNetworkFile(path, first).ok());
  Random random(20240229);
  int leftovers = 0;
  int changes = 0;
  std::string before = first_text;
  for (int i = 0; i < kKills; ++i) {
    SCOPED_TRACE(i);
    ASSERT_TRUE(KillDuring(
        [&] { return WriteNetworkFile(path, second).ok() && WriteNetworkFile(path, first).ok(); },
        random.Next() % kLongestWaitMicroseconds));
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
  Network network = NetworkOf(60, 3);
  const std::string text = TextOf(network);
  Random random(20240301);
  int snapshots = 0;
  for (int i = 0; i < kKills; ++i) {
    SCOPED_TRACE(i);
    ASSERT_TRUE(CreateStore(store).ok());
    network.iteration = 1000;
    ASSERT_TRUE(KillDuring(
        [&] {
          ++network.iteration;
          return AppendSnapshot(store, network);
        },
        random.Next() % kLongestWaitMicroseconds));
    // However far it came: whole snapshots, and at the end the beginning of one more.
    const std::string found = ReadFile(store);
    std::string expected;
    int whole = 0;
    for (int iteration = 1001; expected.size() < found.size(); ++iteration) {
      expected.append("ITERATION " + std::to_string(iteration) + "\n").append(text);
      if (expected.size() <= found.size()) ++whole;
    }
    ASSERT_TRUE(expected.starts_with(found));
    // Restored in memory: the disk would be waited for each time.
    MemoryFiles memory;
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
