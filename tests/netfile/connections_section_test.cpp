#include "netfile/connections_section.h"

#include "netfile_test.h"
#include "support/slashes.h"

namespace tarn {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kFallback = "Error Reading Connections - Fully Connecting Network";

// The bytes of a pending connection file.
std::string Pending(const std::vector<int32_t>& values) {
  return {reinterpret_cast<const char*>(values.data()), values.size() * sizeof(int32_t)};
}

// 2-2-1 nodes, every weight 1, pending connection files in "/scratch".
class ConnectionsTest : public NetFileTest {
 protected:
  ConnectionsTest() { m_files.AddFolder("/scratch"); }

  // The small network with another text in place of its connections section.
  static Lines With(const std::string& section) {
    Lines lines = SmallNetwork();
    lines.erase(lines.begin() + 19, lines.begin() + 23);
    lines.insert(lines.begin() + 19, section);
    return lines;
  }
  std::string Read(const Lines& lines) {
    Prepare(lines);
    for (Layer& layer : m_network.layers) {
      for (float& weight : layer.weights.All()) weight = 1;
    }
    const std::string message = ReadConnections(m_network, "/scratch").message();
    EXPECT_EQ(m_files.OpenHandles(), 0);
    return message;
  }
  void MarkEdited(int32_t layer, const std::string& bytes) {
    m_files.Put(ConnectionFilePath("/scratch", layer), bytes);
    m_network.connections_edited[static_cast<size_t>(layer)] = true;
  }
  std::vector<float> Masks(size_t layer) const { return Values(m_network.layers[layer].masks); }
  std::vector<float> Weights(size_t layer) const { return Values(m_network.layers[layer].weights); }
  void ExpectFull() const {
    EXPECT_TRUE(m_network.fully_connected);
    EXPECT_THAT(Masks(1), ElementsAre(1, 1, 1, 1));
    EXPECT_THAT(Masks(2), ElementsAre(1, 1));
  }
};

using ConnectionsReader = ConnectionsTest;

TEST_F(ConnectionsReader, RemovesTheConnectionsOfTheSection) {
  EXPECT_EQ(Read(With("CONNECTIONS:READ\n3\n1 0 1\n1 1 0\n2 0 1\nCONNECTIONS:STOP")), "");
  EXPECT_FALSE(m_network.fully_connected);
  EXPECT_THAT(Masks(1), ElementsAre(1, 0, 0, 1));
  EXPECT_THAT(Masks(2), ElementsAre(1, 0));
  EXPECT_THAT(Weights(1), ElementsAre(1, 0, 1, 0, 1, 1));
  EXPECT_THAT(Weights(2), ElementsAre(1, 0, 1));
}

TEST_F(ConnectionsReader, ReadsTheNumbersFromTheStream) {
  EXPECT_EQ(Read(With("CONNECTIONS:READ\r\n\r\n2 1 0 1\r\n\r\n2\r\n0 1")), "");
  EXPECT_THAT(Masks(1), ElementsAre(1, 0, 1, 1));
  EXPECT_THAT(Masks(2), ElementsAre(1, 0));
}

TEST_F(ConnectionsReader, ConnectsFullyForAnyOtherModeWord) {
  for (const char* section : {"CONNECTIONS:FULL", "CONNECTIONS:", "CONNECTIONS:READY\n1\n1 0 1",
                              "CONNECTIONS:read\n1\n1 0 1", "CONNECTIONS:READ \n1\n1 0 1", ""}) {
    SCOPED_TRACE(section);
    EXPECT_EQ(Read(With(section)), "");
    ExpectFull();
    EXPECT_THAT(Weights(1), testing::Each(1.0F));
  }
}

TEST_F(ConnectionsReader, ConnectsFullyWhenTheFileIsGone) {
  Prepare(SmallNetwork());
  m_files.Remove("/home/a.net");
  m_network.layers[1].masks.All()[0] = 0;
  m_network.fully_connected = false;
  EXPECT_TRUE(ReadConnections(m_network, "/scratch").ok());
  ExpectFull();
}

TEST_F(ConnectionsReader, TakesACountOfNoConnections) {
  for (const char* count : {"0", "-1", "-2147483648"}) {
    EXPECT_EQ(Read(With("CONNECTIONS:READ\n" + std::string(count) + "\nCONNECTIONS:STOP")), "");
    ExpectFull();
  }
}

TEST_F(ConnectionsReader, ConnectsFullyForAConnectionThatCannotBe) {
  for (const char* triple :
       {"1 0 2", "2 0 2",  // the bias
        "1 2 0", "2 1 0", "0 0 0", "3 0 0", "4 0 0", "-1 0 0", "1 -1 0", "1 0 -1", "2147483647 0 0",
        "-2147483648 0 0", "1 2147483647 0", "1 0 2147483647"}) {
    SCOPED_TRACE(triple);
    EXPECT_EQ(
        Read(With("CONNECTIONS:READ\n2\n1 0 1\n" + std::string(triple) + "\nCONNECTIONS:STOP")),
        "Error Reading Connections - Fully Connecting Network");
    ExpectFull();
  }
}

TEST_F(ConnectionsReader, ConnectsFullyWhenANumberDoesNotScan) {
  for (const char* body : {"", "x", "1", "1\n1", "1\n1 0", "1\n1 0 x", "1\nx 0 1", "2\n1 0 1",
                           "2147483648\n1 0 1", "1\n1 0 2147483648"}) {
    SCOPED_TRACE(body);
    EXPECT_EQ(Read(With("CONNECTIONS:READ\n" + std::string(body) + "\nCONNECTIONS:STOP")),
              kFallback);
    ExpectFull();
  }
}

TEST_F(ConnectionsReader, EndsAnAbsurdCountWithTheFile) {
  EXPECT_EQ(Read(With("CONNECTIONS:READ\n2147483647\n1 0 1\n1 0 1")), kFallback);
  ExpectFull();
}

TEST_F(ConnectionsReader, TellsAReadErrorFromAFullNetwork) {
  Prepare(SmallNetwork());
  for (const int64_t operation : {2, 3}) {  // rewind, read
    m_faulty.FailAt(operation, FaultyFiles::Fault::kOnce, FaultyFiles::Kinds::kAll);
    EXPECT_EQ(ReadConnections(m_network, "/scratch").message(), kFallback);
    ExpectFull();
  }
}

TEST_F(ConnectionsReader, TakesAPendingFileInPlaceOfTheSectionAndDeletesIt) {
  MarkEdited(1, Pending({0, 1, 5, -3}));
  EXPECT_EQ(Read(With("CONNECTIONS:READ\n2\n1 0 1\n2 0 0\nCONNECTIONS:STOP")), "");
  EXPECT_FALSE(m_network.fully_connected);
  EXPECT_THAT(Masks(1), ElementsAre(0, 1, 1, 0));
  EXPECT_THAT(Masks(2), ElementsAre(0, 1));
  EXPECT_THAT(Weights(1), ElementsAre(0, 0, 1, 1, 0, 1));
  EXPECT_FALSE(m_files.Exists("/scratch/~tarn1.cnx"));
}

TEST_F(ConnectionsReader, ReadsPendingFilesOfMarkedLayersOnly) {
  MarkEdited(2, Pending({0, 1}));
  MarkEdited(1, Pending({0, 0, 0, 0}));
  m_network.connections_edited[1] = false;
  EXPECT_EQ(Read(With("CONNECTIONS:FULL")), "");
  EXPECT_THAT(Masks(1), ElementsAre(1, 1, 1, 1));
  EXPECT_THAT(Masks(2), ElementsAre(0, 1));
  EXPECT_FALSE(m_network.fully_connected);
  EXPECT_TRUE(m_files.Exists("/scratch/~tarn1.cnx"));
}

TEST_F(ConnectionsReader, SkipsAPendingFileThatIsNotThere) {
  m_network.connections_edited[1] = m_network.connections_edited[2] = true;
  EXPECT_EQ(Read(SmallNetwork()), "");
  EXPECT_THAT(Masks(1), ElementsAre(1, 0, 1, 1));
}

TEST_F(ConnectionsReader, ConnectsFullyWhenAPendingFileIsShort) {
  for (const size_t bytes : {0U, 3U, 4U, 15U}) {
    SCOPED_TRACE(bytes);
    MarkEdited(1, Pending({0, 1, 1, 1}).substr(0, bytes));
    EXPECT_EQ(Read(SmallNetwork()), kFallback);
    ExpectFull();
    EXPECT_FALSE(m_files.Exists("/scratch/~tarn1.cnx"));
  }
}

TEST_F(ConnectionsReader, IgnoresWhatFollowsInAPendingFile) {
  MarkEdited(2, Pending({1, 0, 0, 0, 0}));
  EXPECT_EQ(Read(With("CONNECTIONS:FULL")), "");
  EXPECT_THAT(Masks(2), ElementsAre(1, 0));
}

TEST_F(ConnectionsReader, ReadsLargePendingFiles) {
  std::vector<int32_t> present(200 * 101, 1);
  present[101 * 150 + 17] = 0;
  present.back() = 0;
  MarkEdited(1, Pending(present));
  EXPECT_EQ(Read(WithLine(With("CONNECTIONS:FULL"), 4, "101 200 1 0 0")), "");
  EXPECT_EQ(m_network.layers[1].masks.Row(150)[17], 0.0F);
  EXPECT_EQ(m_network.layers[1].masks.Row(199)[100], 0.0F);
  EXPECT_EQ(m_network.layers[1].masks.Row(150)[16], 1.0F);
  const std::vector<float> masks = Masks(1);
  EXPECT_EQ(std::count(masks.begin(), masks.end(), 0.0F), 2);
}

TEST_F(ConnectionsReader, NamesPendingFilesByTheirLayer) {
  EXPECT_EQ(Slashes(ConnectionFilePath("/scratch", 1)), "/scratch/~tarn1.cnx");
  EXPECT_EQ(Slashes(ConnectionFilePath("/scratch/", 9)), "/scratch/~tarn9.cnx");
}

class ConnectionsWriter : public ConnectionsTest {
 protected:
  std::string Written() {
    OutputFile file;
    EXPECT_TRUE(file.OpenReplacing("/home/out") && WriteConnections(file, m_network) &&
                file.Commit());
    return Get("/home/out");
  }
};

TEST_F(ConnectionsWriter, WritesFullWithoutRemovedConnections) {
  Prepare(SmallNetwork());
  m_network.fully_connected = false;  // the masks tell, not the flag
  EXPECT_EQ(Written(), "CONNECTIONS:FULL\n");
}

TEST_F(ConnectionsWriter, WritesTriplesInTheOrderOfLayerNodeAndSource) {
  Prepare(SmallNetwork());
  m_network.layers[2].masks.Row(0)[0] = 0;
  m_network.layers[1].masks.Row(1)[0] = 0;
  m_network.layers[1].masks.Row(0)[1] = 0;
  EXPECT_EQ(Written(), "CONNECTIONS:READ\n3\n1 0 1\n1 1 0\n2 0 0\nCONNECTIONS:STOP\n");
}

TEST_F(ConnectionsWriter, WritesWhatItReads) {
  const std::string section = "CONNECTIONS:READ\n2\n1 1 1\n2 0 0\nCONNECTIONS:STOP";
  EXPECT_EQ(Read(With(section)), "");
  EXPECT_EQ(Written(), section + "\n");
}

class RemovedConnectionsTest : public ConnectionsTest {
 protected:
  using List = std::vector<RemovedConnection>;
  List Removed(int32_t layer) {
    const List removed = RemovedConnections(m_network, layer, "/scratch");
    EXPECT_EQ(m_files.OpenHandles(), 0);
    return removed;
  }
};

TEST_F(RemovedConnectionsTest, ComeFromTheSectionRisingAndOnce) {
  ASSERT_TRUE(ReadHeaderOf(With("CONNECTIONS:READ\n5\n1 1 1\n2 0 1\n1 0 1\n1 1 0\n1 1 1")).ok());
  EXPECT_EQ(Removed(1), (List{{0, 1}, {1, 0}, {1, 1}}));
  EXPECT_EQ(Removed(2), (List{{0, 1}}));
}

TEST_F(RemovedConnectionsTest, SkipWhatDoesNotFitAndStopAtALineThatDoesNotScan) {
  ASSERT_TRUE(ReadHeaderOf(With("CONNECTIONS:READ\n7\n1 0 2\n1 2 0\n3 0 0\n-1 0 0\n1 -1 0\n"
                                "1 0 1\nx\n1 1 1"))
                  .ok());
  EXPECT_EQ(Removed(1), (List{{0, 1}}));
  EXPECT_EQ(Removed(2), List{});
}

TEST_F(RemovedConnectionsTest, AreReadByLinesAndNoMoreThanTheCountTells) {
  ASSERT_TRUE(ReadHeaderOf(With("CONNECTIONS:READ\n1\n1 0 1\n1 1 1")).ok());
  EXPECT_EQ(Removed(1), (List{{0, 1}}));
  ASSERT_TRUE(ReadHeaderOf(With("CONNECTIONS:READ\n2\n1 0\n1 1 1")).ok());
  EXPECT_EQ(Removed(1), List{});
  ASSERT_TRUE(ReadHeaderOf(With("CONNECTIONS:READ\n2147483647\n1 0 1")).ok());
  EXPECT_EQ(Removed(1), (List{{0, 1}}));
  for (const char* section : {"CONNECTIONS:READ\nx\n1 0 1", "CONNECTIONS:FULL\n1\n1 0 1", ""}) {
    ASSERT_TRUE(ReadHeaderOf(With(section)).ok());
    EXPECT_EQ(Removed(1), List{});
  }
}

TEST_F(RemovedConnectionsTest, ComeFromThePendingFileOfAMarkedLayer) {
  ASSERT_TRUE(ReadHeaderOf(SmallNetwork()).ok());
  MarkEdited(1, Pending({1, 1, -1, 0}));
  EXPECT_EQ(Removed(1), (List{{1, 0}, {1, 1}}));
  EXPECT_TRUE(m_files.Exists("/scratch/~tarn1.cnx"));
  MarkEdited(1, Pending({1, 0, 0}) + "xy");
  EXPECT_EQ(Removed(1), (List{{0, 1}, {1, 0}}));
  m_files.Remove("/scratch/~tarn1.cnx");
  EXPECT_EQ(Removed(1), (List{{0, 1}}));  // of the section
}

TEST_F(RemovedConnectionsTest, AreNoneWithoutAFile) {
  ASSERT_TRUE(ReadHeaderOf(SmallNetwork()).ok());
  m_network.file_name.clear();
  EXPECT_THAT(Removed(1), IsEmpty());
  m_network.file_name = "/home/gone.net";
  EXPECT_THAT(Removed(1), IsEmpty());
  EXPECT_FALSE(m_files.Exists("/home/gone.net"));
}

TEST_F(RemovedConnectionsTest, AreNoneForALayerThatCannotReceive) {
  ASSERT_TRUE(ReadHeaderOf(SmallNetwork()).ok());
  for (const int32_t layer : {-2147483647 - 1, -1, 0, 3, 9, 10, 2147483647}) {
    EXPECT_THAT(Removed(layer), IsEmpty());
  }
}

TEST_F(RemovedConnectionsTest, StandAbsurdShapes) {
  m_network.connections_edited.fill(true);
  for (const char* nodes : {"2147483647 2147483647 1 0 0", "-1 -5 1 0 0", "0 2 0 0 0",
                            "-2147483648 -2147483648 -2147483648 0 0"}) {
    SCOPED_TRACE(nodes);
    ASSERT_TRUE(ReadHeaderOf(WithLine(SmallNetwork(), 4, nodes)).ok());
    const bool huge = m_network.layers[0].nUnits > 0;
    MarkEdited(1, Pending({1, 0, 1}));
    EXPECT_EQ(Removed(1), huge ? (List{{0, 1}}) : List{});
    m_files.Remove("/scratch/~tarn1.cnx");
    EXPECT_EQ(Removed(1), huge ? (List{{0, 1}}) : List{});
  }
  m_network.nLayers = 2147483647;
  EXPECT_THAT(Removed(10), IsEmpty());
}

TEST_F(RemovedConnectionsTest, AreNotCompleteWhenAFileThatIsThereCannotBeRead) {
  std::vector<RemovedConnection> removed;
  for (const bool edited : {false, true}) {
    SCOPED_TRACE(edited);
    ASSERT_TRUE(ReadHeaderOf(SmallNetwork()).ok());
    if (edited) MarkEdited(1, Pending({1, 1, -1, 0}));
    bool complete = false;
    ForEveryFault(
        m_faulty, FaultyFiles::Fault::kOnce, FaultyFiles::Kinds::kAll, [] {},
        [&] { complete = FindRemovedConnections(m_network, 1, "/scratch", removed); },
        [&](bool struck) {
          EXPECT_TRUE(struck || complete);
          if (complete) {
            EXPECT_EQ(removed, edited ? (List{{1, 0}, {1, 1}}) : (List{{0, 1}}));
          }
        });
  }
}

}  // namespace
}  // namespace tarn
