// What a network file and a store hold when the program is killed while it writes them.

#include "netfile/autosave_store.h"
#include "netfile/connections_section.h"
#include "netfile/setup_save.h"
#include "netfile/weights_section.h"
#include "netfile_test.h"
#include "support/doomed_file.h"
#include "support/doomed_process.h"
#include "support/doomed_work.h"
#include "support/line_ends.h"
#include "support/temp_folder.h"

namespace tarn {
namespace {

constexpr int32_t kLongestWaitMicroseconds = 8000;
// A kill ends a write that is under way on Linux; Windows lets it come to its end.
#ifdef _WIN32
constexpr bool kWritesAreCut = false;
#else
constexpr bool kWritesAreCut = true;
#endif

bool Loads(const std::string& path) {
  Network network;
  network.file_name = path;
  return ReadHeader(network).ok() && AllocateArrays(network).ok() && ReadWeights(network, 1).ok() &&
         !network.random_weights && ReadConnections(network, "/no such folder").ok();
}

std::string StoredText(const Network& network) {
  return Stored(TextOf(network), SystemFiles().LineEnd());
}

// A kill has to strike during a save, else nothing is shown.
TEST(NetworkFile, IsOneOfTwoNetworksWheneverTheProcessIsKilled) {
  const TempFolder folder;
  const std::string path = folder / "a.net";
  Network first = DoomedNetwork(1);
  first.file_name = path;
  const std::string first_text = StoredText(first);
  const std::string second_text = StoredText(DoomedNetwork(2));
  for (const std::string& text : {second_text, first_text}) {
    WriteFile(path, text);
    ASSERT_TRUE(Loads(path));
  }
  const KillFigures figures =
      KillOver({.work = kSaveNetworks,
                .folder = folder.path(),
                .path = path,
                .contents = {first_text, second_text},
                .save = [&] { return WriteNetworkFile(path, first).ok(); }});
  EXPECT_GT(figures.leftovers, 0);
  EXPECT_GT(figures.changes, 0);
}

TEST(NetworkFile, IsTheOldFileOrTheNetworkSavedOverItWheneverTheProcessIsKilled) {
  const TempFolder folder;
  const std::string path = folder / "b.net";
  Network network = DoomedNetwork(2);
  network.file_name = path;
  const KillFigures figures =
      KillOver({.work = kSaveAs,
                .folder = folder.path(),
                .path = path,
                .contents = {"what stood there\n", StoredText(network)},
                .restart = true,
                .save = [&] { return WriteNetworkFile(path, network).ok(); },
                .percent_of_kills = 20});
  EXPECT_GT(figures.leftovers, 0);
  EXPECT_GT(figures.changes, 0);
}

TEST(NetworkFile, HasOneOfTwoSetupsWheneverTheProcessIsKilled) {
  const TempFolder folder;
  const std::string path = folder / "a.net";
  ASSERT_TRUE(SystemFiles().MakeFolder(folder / "scratch"));
  Network network = DoomedNetwork(1);
  network.file_name = path;
  std::vector<std::string> contents;
  for (const int which : {1, 2}) {
    network.NetName = DoomedName(which);
    contents.push_back(StoredText(network));
  }
  const KillFigures figures =
      KillOver({.work = kSaveSetups,
                .folder = folder.path(),
                .path = path,
                .contents = contents,
                .save = [&] { return SaveSetup(network, path, folder / "scratch").ok(); },
                .percent_of_kills = 20});
  EXPECT_GT(figures.leftovers, 0);
  EXPECT_GT(figures.changes, 0);
}

TEST(NetworkFile, OfAStoreRestoresEveryEarlierSnapshotWhenTheProcessIsKilled) {
  const TempFolder folder;
  const std::string store = folder / "store";
  const std::string text = StoredText(DoomedNetwork(3));
  const std::string line_end(SystemFiles().LineEnd());
  Random random(20240301);
  const int kills = ManyKills(60);
  int snapshots = 0;
  int torn = 0;
  // More, should none of them have struck within a snapshot.
  for (int i = 0; i < kills || (kWritesAreCut && torn == 0 && i < 50 * kills); ++i) {
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
    torn += expected.size() > found.size() ? 1 : 0;
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
  TellKills(kStoreSnapshots, fmt::sprintf("%d kills, %d within a snapshot, %d whole snapshots",
                                          kills, torn, snapshots));
  EXPECT_GT(snapshots, 0);
  EXPECT_TRUE(torn > 0 || !kWritesAreCut);
}

}  // namespace
}  // namespace tarn
