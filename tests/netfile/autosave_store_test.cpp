#include "netfile/autosave_store.h"

#include <limits>

#include "netfile/connections_section.h"
#include "netfile/weights_section.h"
#include "netfile_test.h"

namespace tarn {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class AutoSaveStore : public NetFileTest {
 protected:
  AutoSaveStore() {
    Prepare(SmallNetwork());
    EXPECT_TRUE(ReadWeights(m_network, 1).ok());
    EXPECT_TRUE(CreateStore("/home/store").ok());
  }
  // The network as it is after so many iterations: one weight tells.
  const Network& At(int32_t iteration) {
    m_network.iteration = iteration;
    m_network.layers[1].weights.All()[0] = static_cast<float>(iteration);
    return m_network;
  }
  void Append(int32_t iteration) { EXPECT_TRUE(AppendSnapshot("/home/store", At(iteration))); }
  RestoreResult Restore(std::string_view choice) {
    return RestoreSnapshot("/home/store", "/home/restored.net", choice);
  }
  static std::optional<StoredSnapshot> Newest() {
    std::optional<StoredSnapshot> newest;
    EXPECT_TRUE(FindNewestSnapshot("/home/store", newest).ok());
    return newest;
  }
  Lines Listed() {
    Lines iterations = {"left over"};
    EXPECT_TRUE(ListSnapshots("/home/store", iterations).ok());
    return iterations;
  }
};

TEST_F(AutoSaveStore, HoldsWholeNetworksBehindTheirIterations) {
  Append(50);
  Append(150);
  EXPECT_EQ(Get("/home/store"),
            "ITERATION 50\n" + TextOf(At(50)) + "ITERATION 150\n" + TextOf(At(150)));
  // Learn rate control starts at 100: only the second snapshot goes on with it at once.
  EXPECT_NE(TextOf(At(50)).find("\n10000\n100 5\n"), std::string::npos);
  EXPECT_NE(TextOf(At(150)).find("\n10000\n1 5\n"), std::string::npos);
}

TEST_F(AutoSaveStore, IsCreatedEmpty) {
  m_files.Put("/home/store", "an earlier store");
  EXPECT_TRUE(CreateStore("/home/store").ok());
  EXPECT_EQ(Get("/home/store"), "");
  EXPECT_THAT(Listed(), IsEmpty());
}

TEST_F(AutoSaveStore, TellsWhenItCannotBeCreated) {
  EXPECT_EQ(CreateStore("/no such folder/store").message(), "Cannot Create AutoSave File Storage");
  m_faulty.FailAt(2);
  EXPECT_EQ(CreateStore("/home/new").message(), "Cannot Create AutoSave File Storage");
  EXPECT_EQ(m_files.OpenHandles(), 0);
}

TEST_F(AutoSaveStore, ListsItsIterationsInFileOrder) {
  for (const int32_t iteration : {500, 1000, 1500}) Append(iteration);
  EXPECT_THAT(Listed(), ElementsAre("500", "1000", "1500"));
}

TEST_F(AutoSaveStore, ListsTheTextBehindTheWordAndABlank) {
  m_files.Put("/home/store",
              "ITERATION 5 and more\r\nITERATION\nITERATIONS 7\n ITERATION 8\n"
              "iteration 9\nITERATION \nITERATION 10");
  EXPECT_THAT(Listed(), ElementsAre("5 and more", "", "10"));
}

TEST_F(AutoSaveStore, TellsWhenItIsNotFound) {
  m_files.Remove("/home/store");
  Lines iterations = {"left over"};
  EXPECT_EQ(ListSnapshots("/home/store", iterations).message(), "AutoSave File Not Found");
  EXPECT_THAT(iterations, IsEmpty());
  m_files.Put("/home/restored.net", "old");
  const RestoreResult result = Restore("500");
  EXPECT_EQ(result.status.message(), "AutoSave File Not Found");
  EXPECT_EQ(result.iteration, 0);
  EXPECT_EQ(RestoreStatus(result).message(), "AutoSave File Not Found");
  EXPECT_EQ(Get("/home/restored.net"), "old");
}

TEST_F(AutoSaveStore, RestoresTheSnapshotOfAnIteration) {
  for (const int32_t iteration : {500, 1000, 1500}) Append(iteration);
  for (const int32_t iteration : {1500, 500, 1000}) {
    const RestoreResult result = Restore(std::to_string(iteration));
    EXPECT_TRUE(RestoreStatus(result).ok());
    EXPECT_EQ(result.iteration, iteration);
    EXPECT_EQ(Get("/home/restored.net"), TextOf(At(iteration)));
  }
  EXPECT_EQ(m_files.OpenHandles(), 0);
}

TEST_F(AutoSaveStore, FindsTheNewestSnapshotThatIsThereAsAWhole) {
  EXPECT_FALSE(Newest().has_value());
  for (const int32_t iteration : {5, 50}) Append(iteration);
  const std::string store = Get("/home/store");
  const size_t second = store.rfind("ITERATION");
  for (size_t size = 0; size <= store.size(); ++size) {
    m_files.Put("/home/store", store.substr(0, size));
    const std::optional<StoredSnapshot> newest = Newest();
    const int expected = size == store.size() ? 50 : size < second ? 0 : 5;
    ASSERT_EQ(newest ? newest->iteration : 0, expected) << size << " bytes";
    if (!newest) continue;
    ASSERT_TRUE(WriteSnapshot("/home/store", *newest, "/home/newest.net").ok());
    ASSERT_EQ(Get("/home/newest.net"), TextOf(At(expected))) << "alone";
  }
}

TEST_F(AutoSaveStore, TakesNoTextOfAHeaderForAnythingElse) {
  for (const char* name : {"ITERATION 9999", "NORMALIZE:NONE", "NORMALIZE:STOP"}) {
    m_network.NetName = name;
    m_network.PatName = m_network.TargName = "ITERATIONS.txt";
    EXPECT_TRUE(CreateStore("/home/store").ok());
    OutputFile store;
    ASSERT_TRUE(store.OpenAppending("/home/store") && store.Printf("ITERATION %d\n", 7) &&
                WriteNetwork(store, At(7)) && store.Commit());
    ASSERT_TRUE(Newest().has_value());
    EXPECT_EQ(Newest()->iteration, 7);
    EXPECT_TRUE(WriteSnapshot("/home/store", *Newest(), "/home/newest.net").ok());
    EXPECT_EQ(Get("/home/newest.net"), TextOf(At(7)));
  }
}

TEST_F(AutoSaveStore, TellsWhenItsNewestSnapshotCannotBeFoundOut) {
  Append(5);
  std::optional<StoredSnapshot> newest;
  EXPECT_EQ(FindNewestSnapshot("/home/none", newest).message(), "AutoSave File Not Found");
  m_faulty.FailAt(2, FaultyFiles::Fault::kOnce, FaultyFiles::Kinds::kAll);
  EXPECT_EQ(FindNewestSnapshot("/home/store", newest).message(), "AutoSave File Not Found");
  EXPECT_FALSE(newest.has_value());
}

TEST_F(AutoSaveStore, WritesASnapshotWholeOrNotAtAllWheneverTheDiskFails) {
  Append(5);
  const StoredSnapshot snapshot = Newest().value();
  m_files.Put("/home/newest.net", "old");
  Status written;
  const int64_t faults = ForEveryFault(
      m_faulty, FaultyFiles::Fault::kOnce, FaultyFiles::Kinds::kAll, [] {},
      [&] { written = WriteSnapshot("/home/store", snapshot, "/home/newest.net"); },
      [&](bool struck) {
        EXPECT_TRUE(struck || written.ok());
        if (!written.ok()) {
          EXPECT_THAT(written.message(),
                      testing::AnyOf("AutoSave File Not Found", "Error Writing Network File"));
        }
        EXPECT_EQ(Get("/home/newest.net"), written.ok() ? TextOf(At(5)) : "old");
        m_files.Put("/home/newest.net", "old");
      });
  EXPECT_GE(faults, 5);
}

TEST_F(AutoSaveStore, TakesNoNetworkThatCouldNotBeReadBack) {
  Append(5);
  const std::string before = Get("/home/store");
  m_network.layers[2].weights.All()[0] = std::numeric_limits<float>::infinity();
  EXPECT_FALSE(AppendSnapshot("/home/store", m_network));
  EXPECT_EQ(Get("/home/store"), before);
}

TEST_F(AutoSaveStore, MatchesAnIterationByTheBeginningOfItsLine) {
  for (int32_t iteration = 5; iteration <= 55; iteration += 5) Append(iteration);
  const RestoreResult result = Restore("5");
  EXPECT_EQ(result.iteration, 5);
  // 50 matches too; the line of 55 ends the snapshot before it and is not looked at again.
  EXPECT_EQ(Get("/home/restored.net"), TextOf(At(5)) + TextOf(At(50)));
  Network restored;
  restored.file_name = "/home/restored.net";
  ASSERT_TRUE(ReadHeader(restored).ok());
  ASSERT_TRUE(AllocateArrays(restored).ok());
  ASSERT_TRUE(ReadWeights(restored, 1).ok());
  EXPECT_EQ(restored.layers[1].weights.All()[0], 5.0F);
}

TEST_F(AutoSaveStore, TakesTheLineBehindACopiedSnapshotForItsEndOnly) {
  Append(5);
  Append(50);
  Append(51);
  Append(52);
  EXPECT_EQ(Restore("5").iteration, 5);
  EXPECT_EQ(Get("/home/restored.net"), TextOf(At(5)) + TextOf(At(51)));
}

TEST_F(AutoSaveStore, CopiesAnyLinesUpToTheNextIteration) {
  const std::string lines = "a\n\n" + std::string(2000, 'x') + "\n ITERATION 7\nlast";
  m_files.Put("/home/store", "before\nITERATION 5\n" + lines + "\nITERATIONS\nafter\n");
  EXPECT_EQ(Restore("5").iteration, 5);
  EXPECT_EQ(Get("/home/restored.net"), lines + "\n");
  m_files.Put("/home/store", "ITERATION 5\n" + lines);
  EXPECT_EQ(Restore("5").iteration, 5);
  EXPECT_EQ(Get("/home/restored.net"), lines);
}

TEST_F(AutoSaveStore, ReadsCrLfStores) {
  m_files.Put("/home/store", "ITERATION 5\r\na\r\nb\r\nITERATION 6\r\n");
  EXPECT_EQ(Restore("5").iteration, 5);
  EXPECT_EQ(Get("/home/restored.net"), "a\nb\n");
}

TEST_F(AutoSaveStore, ConvertsTheChoiceAsTyped) {
  Append(500);
  EXPECT_EQ(Restore(" +500 or so").iteration, 500);
  EXPECT_EQ(Restore(std::string(508, ' ') + "500").iteration, 500);
  EXPECT_EQ(Restore(std::string(510, ' ') + "500").iteration, 5);  // 511 characters are taken
  EXPECT_EQ(Restore(std::string(511, ' ') + "500").iteration, 0);
}

TEST_F(AutoSaveStore, DoesNothingForAChoiceBelow1) {
  Append(500);
  m_files.Remove("/home/restored.net");
  for (const char* choice : {"0", "-500", "", "latest", "0500x"}) {
    SCOPED_TRACE(choice);
    const RestoreResult result = Restore(choice);
    EXPECT_TRUE(result.status.ok());
    EXPECT_EQ(result.iteration, choice == std::string("0500x") ? 500 : 0);
    EXPECT_EQ(m_files.Exists("/home/restored.net"), result.iteration == 500);
  }
}

TEST_F(AutoSaveStore, LeavesTheDestinationAloneWhenNothingIsFound) {
  Append(500);
  m_files.Put("/home/restored.net", "old");
  for (const char* choice : {"0", "7", "5000", "501", "99999999999"}) {
    SCOPED_TRACE(choice);
    const RestoreResult result = Restore(choice);
    EXPECT_TRUE(result.status.ok());
    EXPECT_EQ(result.iteration, 0);
    EXPECT_EQ(RestoreStatus(result).message(), "File Not Saved");
    EXPECT_EQ(Get("/home/restored.net"), "old");
  }
  EXPECT_EQ(m_files.Paths().size(), 3U);
}

TEST_F(AutoSaveStore, TellsWhenTheDestinationCannotBeMade) {
  Append(500);
  const RestoreResult result = RestoreSnapshot("/home/store", "/no such folder/b.net", "500");
  EXPECT_EQ(result.status.message(), "Error Writing Network File");
  EXPECT_EQ(result.iteration, 0);
}

TEST_F(AutoSaveStore, KeepsItsEarlierSnapshotsWheneverAnAppendFails) {
  const std::string first = "ITERATION 500\n" + TextOf(At(500));
  const std::string second = "ITERATION 1000\n" + TextOf(At(1000));
  for (const std::string& old : {first, std::string()}) {
    bool appended = false;
    ForAllFaults([&] { m_files.Put("/home/store", old); },
                 [&] { appended = AppendSnapshot("/home/store", m_network); },
                 [&](bool struck) {
                   EXPECT_TRUE(struck || appended);
                   EXPECT_EQ(Get("/home/store"), appended ? old + second : old);
                   EXPECT_EQ(m_files.Paths().size(), 2U);
                   EXPECT_EQ(m_files.OpenHandles(), 0);
                 });
  }
  EXPECT_FALSE(AppendSnapshot("/no such folder/store", m_network));
}

TEST_F(AutoSaveStore, RestoresWholeOrNotAtAllWheneverTheDiskFails) {
  Append(500);
  Append(1000);
  const std::string store = Get("/home/store");
  const std::string wanted = TextOf(At(500));
  for (const bool exists : {true, false}) {
    RestoreResult result;
    ForAllFaults(
        [&] {
          m_files.Remove("/home/restored.net");
          if (exists) m_files.Put("/home/restored.net", "old");
        },
        [&] { result = Restore("500"); },
        [&](bool struck) {
          const bool ok = result.status.ok();
          EXPECT_TRUE(struck || ok);
          EXPECT_EQ(result.iteration, ok ? 500 : 0);
          EXPECT_EQ(Get("/home/restored.net"), ok ? wanted : exists ? "old" : "(none)");
          if (!ok && result.status.message() != "AutoSave File Not Found") {
            EXPECT_EQ(result.status.message(), "Error Writing Network File");
          }
          EXPECT_EQ(Get("/home/store"), store);
          EXPECT_EQ(m_files.Paths().size(), ok || exists ? 3U : 2U);
          EXPECT_EQ(m_files.OpenHandles(), 0);
        });
  }
}

}  // namespace
}  // namespace tarn
