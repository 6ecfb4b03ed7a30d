#include "setup/connections_draft.h"

#include <algorithm>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>

#include "netfile/connections_section.h"
#include "setup/setup_fixture.h"
#include "support/faulty_files.h"
#include "support/temp_folder.h"

namespace tarn {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using List = ConnectionsDraft::List;

class ConnectionsDraftTest : public testing::Test {
 protected:
  // The editor of the connections into that layer, as it opens.
  ConnectionsDraft Opened(int32_t layer) const {
    ConnectionsDraft draft(m_design, layer, m_scratch.path());
    EXPECT_TRUE(draft.Load().ok());
    return draft;
  }
  static std::vector<std::string> Texts(const ConnectionsDraft& draft, List list) {
    std::vector<std::string> texts;
    draft.ForEachText(list, [&texts](const std::string& text) { texts.push_back(text); });
    EXPECT_EQ(texts.size(), draft.Count(list));
    return texts;
  }
  static std::vector<std::string> Removed(const ConnectionsDraft& draft) {
    return Texts(draft, List::kRemoved);
  }
  static bool Remove(ConnectionsDraft& draft, const std::vector<int>& selection) {
    return draft.Remove(selection);
  }
  static bool Add(ConnectionsDraft& draft, const std::vector<int>& selection) {
    return draft.Add(selection);
  }
  void WriteNetworkFile(const std::string& section) {
    m_design.file_name = m_folder / "a.net";
    WriteFile(m_design.file_name, "CONNECTIONS:" + section);
  }
  std::string PendingPath(int32_t layer) const {
    return ConnectionFilePath(m_scratch.path(), layer);
  }
  std::vector<int32_t> PendingMask(int32_t layer) const {
    const std::string bytes = ReadFile(PendingPath(layer));
    std::vector<int32_t> mask(bytes.size() / sizeof(int32_t));
    EXPECT_EQ(bytes.size() % sizeof(int32_t), 0U);
    std::copy(bytes.begin(), bytes.end(), reinterpret_cast<char*>(mask.data()));
    return mask;
  }

  TempFolder m_folder;
  ScratchFolder m_scratch;
  Network m_design = MakeNetwork({2, 3, 1, 2});
  bool m_edited = false;
};

TEST_F(ConnectionsDraftTest, IsCalledByItsTwoLayers) {
  EXPECT_EQ(Opened(3).Caption(), "Connection Editor: From Layer 3 to Layer 4");
  EXPECT_EQ(Opened(1).Caption(),
            fmt::sprintf("Connection Editor: From Layer %d to Layer %d", 1, 2));
}

TEST_F(ConnectionsDraftTest, ListsEveryConnectionOfAFreshNetworkByReceivingNode) {
  const ConnectionsDraft draft = Opened(1);
  EXPECT_THAT(Texts(draft, List::kInNetwork),
              ElementsAre("From L1 N1 to L2 N1", "From L1 N2 to L2 N1", "From L1 N1 to L2 N2",
                          "From L1 N2 to L2 N2", "From L1 N1 to L2 N3",
                          fmt::sprintf("From L%d N%d to L%d N%d", 1, 2, 2, 3)));
  EXPECT_THAT(Removed(draft), IsEmpty());
  EXPECT_FALSE(draft.modified());
}

TEST_F(ConnectionsDraftTest, MovesTheSelectedConnectionsInMaskOrder) {
  ConnectionsDraft draft = Opened(1);
  EXPECT_TRUE(Remove(draft, {0, 2, 5}));
  EXPECT_TRUE(draft.modified());
  EXPECT_THAT(Removed(draft),
              ElementsAre("From L1 N1 to L2 N1", "From L1 N1 to L2 N2", "From L1 N2 to L2 N3"));
  // Places count in the list as it stands now.
  EXPECT_TRUE(Remove(draft, {1}));
  EXPECT_THAT(Texts(draft, List::kInNetwork),
              ElementsAre("From L1 N2 to L2 N1", "From L1 N1 to L2 N3"));
  EXPECT_TRUE(Add(draft, {0, 3}));
  EXPECT_THAT(Removed(draft), ElementsAre("From L1 N1 to L2 N2", "From L1 N2 to L2 N2"));
  EXPECT_EQ(draft.Count(List::kInNetwork), 4U);
}

TEST_F(ConnectionsDraftTest, RemovesAllAndPutsAllBack) {
  ConnectionsDraft draft = Opened(1);
  const std::vector<int> all = {0, 1, 2, 3, 4, 5};
  EXPECT_TRUE(Remove(draft, all));
  EXPECT_EQ(draft.Count(List::kInNetwork), 0U);
  EXPECT_FALSE(Remove(draft, {}));
  EXPECT_TRUE(Add(draft, all));
  EXPECT_THAT(Removed(draft), IsEmpty());
}

TEST_F(ConnectionsDraftTest, DoesNothingWithoutASelection) {
  ConnectionsDraft draft = Opened(1);
  EXPECT_FALSE(Remove(draft, {}));
  EXPECT_FALSE(Add(draft, {}));
  EXPECT_FALSE(draft.modified());
}

TEST_F(ConnectionsDraftTest, PassesOverPlacesThatTheListHasNot) {
  ConnectionsDraft draft = Opened(2);
  EXPECT_TRUE(Remove(draft, {1, 3, 17}));
  EXPECT_THAT(Removed(draft), ElementsAre("From L2 N2 to L3 N1"));
  EXPECT_TRUE(Add(draft, {4}));
  EXPECT_EQ(draft.Count(List::kRemoved), 1U);
}

TEST_F(ConnectionsDraftTest, WritesTheMaskAndMarksTheLayer) {
  ConnectionsDraft draft = Opened(1);
  Remove(draft, {0, 2});
  EXPECT_TRUE(draft.Save(m_edited).ok());
  EXPECT_TRUE(m_edited);
  EXPECT_THAT(PendingMask(1), ElementsAre(0, 1, 0, 1, 1, 1));
}

TEST_F(ConnectionsDraftTest, WritesTheFileAlsoWhenEverythingIsBack) {
  ConnectionsDraft draft = Opened(1);
  Remove(draft, {0});
  Add(draft, {0});
  EXPECT_TRUE(draft.Save(m_edited).ok());
  EXPECT_TRUE(m_edited);
  EXPECT_THAT(PendingMask(1), testing::Each(1));
}

TEST_F(ConnectionsDraftTest, WritesNothingWhenNothingWasMoved) {
  const ConnectionsDraft draft = Opened(1);
  EXPECT_TRUE(draft.Save(m_edited).ok());
  EXPECT_FALSE(m_edited);
  EXPECT_FALSE(std::filesystem::exists(PendingPath(1)));
}

TEST_F(ConnectionsDraftTest, ShowsWhatWasRemovedWhenOpenedAgain) {
  {
    ConnectionsDraft draft = Opened(1);
    Remove(draft, {0, 2});
    EXPECT_TRUE(draft.Save(m_design.connections_edited[1]).ok());
  }
  const ConnectionsDraft again = Opened(1);
  EXPECT_THAT(Removed(again), ElementsAre("From L1 N1 to L2 N1", "From L1 N1 to L2 N2"));
  EXPECT_FALSE(again.modified());
}

TEST_F(ConnectionsDraftTest, PrefersThePendingFileOfAMarkedLayer) {
  WriteNetworkFile("READ\n1\n1 2 0\nCONNECTIONS:STOP\n");
  ConnectionsDraft draft = Opened(1);
  Add(draft, {0});
  Remove(draft, {3});
  EXPECT_TRUE(draft.Save(m_edited).ok());
  // Without the mark the file of an earlier setup does not count.
  EXPECT_THAT(Removed(Opened(1)), ElementsAre("From L1 N1 to L2 N3"));
  m_design.connections_edited[1] = true;
  EXPECT_THAT(Removed(Opened(1)), ElementsAre("From L1 N2 to L2 N2"));
}

TEST_F(ConnectionsDraftTest, TakesWhatTheSectionOfTheNetworkFileRemoves) {
  WriteNetworkFile("READ\n6\n1 0 1\n2 0 2\n1 3 0\n1 0 2\n1 -1 0\n1 2 0\nCONNECTIONS:STOP\n");
  EXPECT_THAT(Removed(Opened(1)), ElementsAre("From L1 N2 to L2 N1", "From L1 N1 to L2 N3"));
  EXPECT_THAT(Removed(Opened(2)), ElementsAre("From L2 N3 to L3 N1"));
  EXPECT_THAT(Removed(Opened(3)), IsEmpty());
}

TEST_F(ConnectionsDraftTest, StopsAtALineOfTheSectionThatIsNotThreeNumbers) {
  WriteNetworkFile("READ\n3\n1 0 1\n1 x 0\n1 2 0\nCONNECTIONS:STOP\n");
  EXPECT_THAT(Removed(Opened(1)), ElementsAre("From L1 N2 to L2 N1"));
}

TEST_F(ConnectionsDraftTest, IsFullyConnectedWhenNothingCanBeRead) {
  WriteNetworkFile("FULL\n");
  EXPECT_THAT(Removed(Opened(1)), IsEmpty());
  WriteNetworkFile("READ\nmany\n1 0 1\n");
  EXPECT_THAT(Removed(Opened(1)), IsEmpty());
  m_design.file_name = m_folder / "missing.net";
  EXPECT_THAT(Removed(Opened(1)), IsEmpty());
  m_design.file_name.clear();
  m_design.connections_edited[1] = true;
  EXPECT_THAT(Removed(Opened(1)), IsEmpty());
  EXPECT_EQ(Opened(1).Count(List::kInNetwork), 6U);
}

TEST_F(ConnectionsDraftTest, KeepsConnectionsThatAShortPendingFileDoesNotReach) {
  WriteFile(PendingPath(1), std::string(2 * sizeof(int32_t), '\0'));
  m_design.connections_edited[1] = true;
  EXPECT_THAT(Removed(Opened(1)), ElementsAre("From L1 N1 to L2 N1", "From L1 N2 to L2 N1"));
}

TEST_F(ConnectionsDraftTest, LoadsNothingForALayerThatIsMissing) {
  for (const int32_t layer : {0, 4, 10}) {
    const ConnectionsDraft draft = Opened(layer);
    EXPECT_EQ(draft.Count(List::kInNetwork), 0U) << layer;
    EXPECT_THAT(Removed(draft), IsEmpty()) << layer;
  }
}

TEST_F(ConnectionsDraftTest, TellsThatMemoryIsShortForCountsThatNoListHolds) {
  constexpr int32_t kMost = std::numeric_limits<int32_t>::max();
  for (const int32_t nodes : {2001, 100'000, kMost}) {
    m_design = MakeNetwork({nodes, nodes, 1});
    ConnectionsDraft draft(m_design, 1, m_scratch.path());
    const Status loaded = draft.Load();
    EXPECT_FALSE(loaded.ok());
    EXPECT_EQ(loaded.message(), "Memory insufficient for allocation of connections");
    EXPECT_EQ(draft.Count(List::kInNetwork), 0U);
  }
}

TEST_F(ConnectionsDraftTest, HoldsAMillionConnections) {
  m_design = MakeNetwork({1000, 1000, 1});
  ConnectionsDraft draft = Opened(1);
  EXPECT_EQ(draft.Count(List::kInNetwork), 1'000'000U);
  EXPECT_TRUE(Remove(draft, {999'999}));
  EXPECT_THAT(Removed(draft), ElementsAre("From L1 N1000 to L2 N1000"));
}

TEST_F(ConnectionsDraftTest, LeavesFileAndMarkAsTheyWereWhenTheWriteFails) {
  ConnectionsDraft first = Opened(1);
  Remove(first, {0});
  EXPECT_TRUE(first.Save(m_edited).ok());
  ConnectionsDraft second = Opened(1);
  Remove(second, {1, 2});
  for (int64_t k = 1; k <= 3; ++k) {
    FaultyFiles files(SystemFiles());
    const ScopedFileLayer scope(files);
    files.FailAt(k, FaultyFiles::Fault::kDiskFull);
    bool edited = false;
    const Status saved = second.Save(edited);
    EXPECT_FALSE(saved.ok()) << k;
    EXPECT_EQ(saved.message(), "The connections could not be written into the temporary folder");
    EXPECT_FALSE(edited);
    EXPECT_THAT(PendingMask(1), ElementsAre(0, 1, 1, 1, 1, 1));
  }
  EXPECT_TRUE(second.modified());
  EXPECT_TRUE(second.Save(m_edited).ok());
  EXPECT_THAT(PendingMask(1), ElementsAre(1, 0, 0, 1, 1, 1));
}

}  // namespace
}  // namespace tarn
