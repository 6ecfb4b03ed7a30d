#include "netfile/setup_save.h"

#include "netfile/connections_section.h"
#include "netfile_test.h"
#include "support/comma_locale.h"

namespace tarn {
namespace {

// The sections of a file as a training run leaves them, 2-2-1 nodes.
const std::string kWeights = "WEIGHTS:READ\n0.1 0.2 0.3\n0.4 0.5 0.6\n0.7 0.8 0.9\nWEIGHTS:STOP\n";
const std::string kConnections = "CONNECTIONS:READ\n1\n1 0 1\nCONNECTIONS:STOP\n";
const std::string kPatterns = "TESTPATTERNS:READ\n3 2 1\n0 2\n1\nTESTPATTERNS:STOP\n";
const std::string kLimits = "NORMALIZE:READ\nINPUTS\n0.0 1.0 \n2.0 3.0 \nNORMALIZE:STOP\n";

std::string HeaderText() {
  Lines header = SmallNetwork();
  header.resize(14);
  return Join(header);
}

class SetupSave : public NetFileTest {
 protected:
  SetupSave() { m_files.AddFolder("/scratch"); }

  // Puts a file with this text behind the header and reads the header back.
  void Open(const std::string& sections) {
    m_files.Put("/home/a.net", HeaderText() + sections);
    ASSERT_TRUE(ReadHeader(m_network).ok());
  }
  // What of the file follows the header after a save over itself.
  std::string SavedOver(const std::string& sections) {
    Open(sections);
    EXPECT_EQ(SaveSetup(m_network, "/home/a.net", "/scratch").message(), "");
    EXPECT_EQ(m_files.Paths(), Lines{"/home/a.net"});
    EXPECT_EQ(m_files.OpenHandles(), 0);
    const std::string text = Get("/home/a.net");
    EXPECT_TRUE(text.starts_with(HeaderText())) << text;
    return text.substr(std::min(HeaderText().size(), text.size()));
  }
  void MarkEdited(int32_t layer, const std::vector<int32_t>& present) {
    m_files.Put(ConnectionFilePath("/scratch", layer),
                {reinterpret_cast<const char*>(present.data()), present.size() * sizeof(int32_t)});
    m_network.connections_edited[static_cast<size_t>(layer)] = true;
  }
};

TEST_F(SetupSave, KeepsEverySectionOfTheOldFile) {
  const std::string sections = kWeights + kConnections + kPatterns + kLimits;
  EXPECT_EQ(SavedOver(sections), sections);
}

TEST_F(SetupSave, KeepsTheKeyLinesOfANewNetwork) {
  const std::string sections =
      "WEIGHTS:RANDOM\nCONNECTIONS:FULL\nTESTPATTERNS:COMPUTE\nNORMALIZE:NONE\n";
  EXPECT_EQ(SavedOver(sections), sections);
}

TEST_F(SetupSave, TakesTheHeaderFromTheRecord) {
  Open(kWeights + kConnections + kPatterns + kLimits);
  m_network.NetName = "Renamed";
  m_network.Eta = 0.5F;
  m_network.LRC = 100;
  m_network.iteration = 5000;
  ASSERT_TRUE(SaveSetup(m_network, "/home/a.net", "/scratch").ok());
  Lines header = SmallNetwork();
  header.resize(14);
  header[1] = "Renamed";
  header[4] = "0.500000 0.500000 0.001000 0.300000 0.800000 0.250000";
  EXPECT_EQ(Get("/home/a.net"), Join(header) + kWeights + kConnections + kPatterns + kLimits);
}

TEST_F(SetupSave, CopiesTheLinesOfASectionAsTheyStand) {
  const std::string weights =
      "WEIGHTS:READ\n  0.1,odd\n\n\t" + std::string(1500, '7') + "WEIGHTS:\n \nWEIGHTS:STOPPED \n";
  EXPECT_EQ(SavedOver(weights + kPatterns + kLimits),
            weights + "CONNECTIONS:FULL\n" + kPatterns + kLimits);
}

TEST_F(SetupSave, TakesALineOf510CharactersForOneLine) {
  const std::string weights =
      "WEIGHTS:READ\n" + std::string(510, '7') + "WEIGHTS:\n0.5\nWEIGHTS:STOP\n";
  EXPECT_EQ(SavedOver(weights + kPatterns + kLimits),
            weights + "CONNECTIONS:FULL\n" + kPatterns + kLimits);
}

TEST_F(SetupSave, TakesAModeWordThatBeginsWithReadForRead) {
  EXPECT_EQ(SavedOver("WEIGHTS:READY\n1 2\nWEIGHTS:STOP\nTESTPATTERNS:READ it\n5\nTESTPATTERNS:\n" +
                      kLimits),
            "WEIGHTS:READ\n1 2\nWEIGHTS:STOP\nCONNECTIONS:FULL\nTESTPATTERNS:READ\n5\n"
            "TESTPATTERNS:\n" +
                kLimits);
}

TEST_F(SetupSave, KeepsAnUnknownModeWord) {
  EXPECT_EQ(SavedOver("WEIGHTS:ODD word\n1 2\nTESTPATTERNS:read\nNORMALIZE: READ\n"),
            "WEIGHTS:ODD word\nCONNECTIONS:FULL\nTESTPATTERNS:read\nNORMALIZE: READ\n");
}

TEST_F(SetupSave, WritesALoneKeyLineForASectionThatIsMissing) {
  EXPECT_EQ(SavedOver("0.1 0.2 0.3\n" + kConnections + kPatterns + kLimits),
            "WEIGHTS:\n" + kConnections + kPatterns + kLimits);
  EXPECT_EQ(SavedOver(""), "WEIGHTS:\nCONNECTIONS:FULL\nTESTPATTERNS:\nNORMALIZE:\n");
}

// The oldest version: no transfer functions, five rates, a test range, and weights without a key.
std::string OldestHeader() {
  return "TARNV1.0\nOld\n3\n2 2 1\n0 0.5 0.001 0.3 0.8\n100\n50 5\n0\nnone\n1\n0 0\nnone\n1\n"
         "0 0\n";
}

TEST_F(SetupSave, CarriesTheWeightsOfTheOldestVersionOver) {
  m_files.Put("/home/a.net",
              OldestHeader() + "-20000\n0.1 0.2 0.3\n0.4 0.5 0.6\n0.7 0.8 0.9\n-20000\n");
  ASSERT_TRUE(ReadHeader(m_network).ok());
  m_network.Eta = 0.25F;
  ASSERT_EQ(SaveSetup(m_network, "/home/a.net", "/scratch").message(), "");
  const std::string text = Get("/home/a.net");
  EXPECT_TRUE(text.ends_with(kWeights + "CONNECTIONS:FULL\nTESTPATTERNS:COMPUTE\nNORMALIZE:NONE\n"))
      << text;
  EXPECT_EQ(m_network.version, 3);
  EXPECT_EQ(m_network.Eta, 0.25F);
  Network reread;
  reread.file_name = "/home/a.net";
  EXPECT_EQ(ReadHeader(reread).message(), "");
}

TEST_F(SetupSave, LosesNoWeightsOfTheOldestVersionWhenTheDiskFails) {
  const std::string old =
      OldestHeader() + "-20000\n0.1 0.2 0.3\n0.4 0.5 0.6\n0.7 0.8 0.9\n-20000\n";
  Status status;
  ForAllFaults(
      [&] {
        for (const std::string& left : m_files.Paths()) m_files.Remove(left);
        m_files.Put("/home/a.net", old);
        m_network.file_name = "/home/a.net";
        ASSERT_TRUE(ReadHeader(m_network).ok());
      },
      [&] { status = SaveSetup(m_network, "/home/a.net", "/scratch"); },
      [&](bool struck) {
        EXPECT_TRUE(struck || status.ok());
        if (status.ok()) {
          EXPECT_NE(Get("/home/a.net").find(kWeights), std::string::npos);
        } else {
          EXPECT_EQ(Get("/home/a.net"), old);
        }
      },
      10);
}

TEST_F(SetupSave, LeavesTheOldestVersionRandomWhereItIs) {
  for (const char* weights : {"RANDOM\n", "-20000\n0.1 0.2\n-20000\n", ""}) {
    m_files.Put("/home/a.net", OldestHeader() + weights);
    ASSERT_TRUE(ReadHeader(m_network).ok());
    ASSERT_EQ(SaveSetup(m_network, "/home/a.net", "/scratch").message(), "");
    EXPECT_TRUE(
        Get("/home/a.net")
            .ends_with(
                "0 0\nWEIGHTS:RANDOM\nCONNECTIONS:FULL\nTESTPATTERNS:COMPUTE\nNORMALIZE:NONE\n"))
        << weights;
  }
}

// More than any memory: but a file of this size holds no weights of theirs.
TEST_F(SetupSave, NeedsNoMemoryForTheNodesOfTheOldestVersion) {
  for (const char* nodes : {"2 2000000000 1", "2147483647 2147483647 2147483647"}) {
    std::string old = OldestHeader() + "-20000\n0.1 0.2\n-20000\n";
    m_files.Put("/home/a.net", old.replace(old.find("2 2 1"), 5, nodes));
    ASSERT_TRUE(ReadHeader(m_network).ok());
    ASSERT_EQ(SaveSetup(m_network, "/home/a.net", "/scratch").message(), "");
    EXPECT_NE(Get("/home/a.net").find("WEIGHTS:RANDOM\n"), std::string::npos) << nodes;
  }
}

TEST_F(SetupSave, CopiesASectionWithoutEndToTheEndOfTheFile) {
  const std::string open_end = "NORMALIZE:READ\nINPUTS\n1.0\n";
  EXPECT_EQ(SavedOver(kWeights + kPatterns + open_end),
            kWeights + "CONNECTIONS:FULL\n" + kPatterns + open_end);
}

TEST_F(SetupSave, EndsTheLastLineOfAFileThatLacksALineEnd) {
  // The sections are in an odd order: what is copied last does not stay last.
  EXPECT_EQ(SavedOver(kLimits + kPatterns + kConnections + "WEIGHTS:READ\n0.1 0.2"),
            "WEIGHTS:READ\n0.1 0.2\n" + kConnections + kPatterns + kLimits);
  EXPECT_EQ(SavedOver(kLimits + kPatterns + "WEIGHTS:READ\n0.1 0.2\nWEIGHTS:STOP"),
            "WEIGHTS:READ\n0.1 0.2\nWEIGHTS:STOP\nCONNECTIONS:FULL\n" + kPatterns + kLimits);
}

TEST_F(SetupSave, WritesCrLfFilesAnewWithLineFeeds) {
  std::string text;
  for (const char c : HeaderText() + kWeights + kConnections + kPatterns + kLimits) {
    text.append(c == '\n' ? "\r\n" : std::string(1, c));
  }
  m_files.Put("/home/a.net", text);
  ASSERT_TRUE(ReadHeader(m_network).ok());
  ASSERT_TRUE(SaveSetup(m_network, "/home/a.net", "/scratch").ok());
  EXPECT_EQ(Get("/home/a.net"), HeaderText() + kWeights + kConnections + kPatterns + kLimits);
}

TEST_F(SetupSave, TakesEditedConnectionsFromTheirFilesAndClearsTheMarks) {
  Open(kWeights + kConnections + kPatterns + kLimits);
  MarkEdited(2, {1, 0});
  ASSERT_TRUE(SaveSetup(m_network, "/home/a.net", "/scratch").ok());
  const std::string edited = "CONNECTIONS:READ\n2\n1 0 1\n2 0 1\nCONNECTIONS:STOP\n";
  EXPECT_EQ(Get("/home/a.net"), HeaderText() + kWeights + edited + kPatterns + kLimits);
  EXPECT_THAT(m_network.connections_edited, testing::Each(false));
  MarkEdited(1, {1, 1, 1, 1});
  MarkEdited(2, {1, 1});
  ASSERT_TRUE(SaveSetup(m_network, "/home/a.net", "/scratch").ok());
  EXPECT_EQ(Get("/home/a.net"),
            HeaderText() + kWeights + "CONNECTIONS:FULL\n" + kPatterns + kLimits);
}

TEST_F(SetupSave, DropsRemovedConnectionsThatTheNewShapeHasNot) {
  Open(kWeights + "CONNECTIONS:READ\n2\n1 1 0\n2 0 1\nCONNECTIONS:STOP\n" + kPatterns + kLimits);
  m_network.layers[1].nUnits = 1;
  ASSERT_TRUE(SaveSetup(m_network, "/home/a.net", "/scratch").ok());
  EXPECT_NE(Get("/home/a.net").find("WEIGHTS:STOP\nCONNECTIONS:FULL\n"), std::string::npos);
}

TEST_F(SetupSave, WritesAnotherFileAndLeavesTheOldOneAlone) {
  const std::string sections = kWeights + kConnections + kPatterns + kLimits;
  Open(sections);
  m_files.Put("/other/b.net", "what stood there");
  m_network.NetName = "Renamed";
  ASSERT_TRUE(SaveSetup(m_network, "/other/b.net", "/scratch").ok());
  EXPECT_EQ(Get("/home/a.net"), HeaderText() + sections);
  EXPECT_EQ(Get("/other/b.net"), Join(WithLine(
                                     [] {
                                       Lines header = SmallNetwork();
                                       header.resize(14);
                                       return header;
                                     }(),
                                     2, "Renamed")) +
                                     sections);
  EXPECT_EQ(m_network.file_name, "/home/a.net");
}

TEST_F(SetupSave, BringsAnOlderHeaderIntoTheCurrentVersion) {
  Lines lines = OldHeader("TARNV1.5");
  Put(lines);
  ASSERT_TRUE(ReadHeader(m_network).ok());
  ASSERT_TRUE(SaveSetup(m_network, "/home/a.net", "/scratch").ok());
  lines = SmallNetwork();
  lines[4] = "0.500000 0.010000 0.001000 0.300000 0.800000 0.000000";
  lines[7] = "500 0";
  EXPECT_EQ(Get("/home/a.net"), Join(lines));
}

TEST_F(SetupSave, WritesTheSameUnderADecimalCommaLocale) {
  const CommaLocale comma;
  const std::string sections = kWeights + kConnections + kPatterns + kLimits;
  EXPECT_EQ(SavedOver(sections), sections);
}

TEST_F(SetupSave, IsAbortedWhenTheOldFileCannotBeOpened) {
  Open(kWeights);
  MarkEdited(1, {1, 1, 1, 1});
  m_files.Remove("/home/a.net");
  EXPECT_EQ(SaveSetup(m_network, "/home/b.net", "/scratch").message(),
            "Error openning old network file - save aborted");
  EXPECT_EQ(m_files.Paths(), Lines{"/scratch/~tarn1.cnx"});
  EXPECT_TRUE(m_network.connections_edited[1]);
}

TEST_F(SetupSave, FailsWhereNoFileCanBeMade) {
  Open(kWeights);
  const std::string before = Get("/home/a.net");
  MarkEdited(1, {1, 1, 1, 1});
  for (const auto& [destination, scratch] :
       std::vector<std::pair<std::string, std::string>>{{"/no such folder/b.net", "/scratch"},
                                                        {"/home/a.net", "/no such folder"},
                                                        {"/scratch", "/scratch"},
                                                        {"", "/scratch"}}) {
    SCOPED_TRACE(destination);
    EXPECT_EQ(SaveSetup(m_network, destination, scratch).message(),
              "Tarn Network File Error Detected");
    EXPECT_EQ(Get("/home/a.net"), before);
    EXPECT_TRUE(m_network.connections_edited[1]);
    EXPECT_EQ(m_files.Paths().size(), 2U);
  }
}

TEST_F(SetupSave, StandsAbsurdHeaderValues) {
  for (const auto& [line3, line4] : std::vector<std::pair<std::string, std::string>>{
           {"-2147483648", "2"},
           {"0", "2"},
           {"1", "2"},
           {"2", "2147483647 2147483647 0"},
           {"3", "2147483647 2147483647 2147483647 0 0"},
           {"3", "-1 -1 -1 0 0"},
           {"3", "2147483647 -1 2147483647 2147483647 -2147483648"},
           {"10", "2147483647 0 0 0 0 0 0 0 0 -1 0 0 0 0 0 0 0 0 0"}}) {
    SCOPED_TRACE(line3 + " layers: " + line4);
    m_files.Put("/home/a.net", Join(WithLine(WithLine(SmallNetwork(), 3, line3), 4, line4)) +
                                   "CONNECTIONS:READ\n2147483647\n1 0 1\n");
    ASSERT_TRUE(ReadHeader(m_network).ok());
    for (int32_t layer = 1; layer < kMaxLayers; ++layer) MarkEdited(layer, {1, 0, 1});
    EXPECT_TRUE(SaveSetup(m_network, "/home/a.net", "/scratch").ok());
    EXPECT_TRUE(Get("/home/a.net").starts_with("TARNV2.1\nSmall\n" + line3 + "\n"));
  }
}

TEST_F(SetupSave, ChangesNothingWheneverTheDiskFails) {
  const std::string sections = kWeights + kConnections + kPatterns + kLimits;
  const std::string old = HeaderText() + sections;
  const std::string edited = "CONNECTIONS:READ\n2\n1 0 1\n2 0 1\nCONNECTIONS:STOP\n";
  const std::string wanted = HeaderText() + kWeights + edited + kPatterns + kLimits;
  for (const std::string destination : {"/home/a.net", "/other/b.net"}) {
    SCOPED_TRACE(destination);
    m_files.AddFolder("/other");
    const bool same = destination == "/home/a.net";
    Status status;
    ForAllFaults(
        [&] {
          for (const std::string& left : m_files.Paths()) m_files.Remove(left);
          Open(sections);
          if (!same) m_files.Put(destination, "what stood there");
          MarkEdited(2, {1, 0});
        },
        [&] { status = SaveSetup(m_network, destination, "/scratch"); },
        [&](bool struck) {
          EXPECT_TRUE(struck || status.ok());
          EXPECT_EQ(Get(destination), status.ok() ? wanted : same ? old : "what stood there");
          if (!same) {
            EXPECT_EQ(Get("/home/a.net"), old);
          }
          if (!status.ok() &&
              status.message() != "Error openning old network file - save aborted") {
            EXPECT_EQ(status.message(), "Tarn Network File Error Detected");
          }
          EXPECT_EQ(m_network.connections_edited[2], !status.ok());
          EXPECT_TRUE(m_files.Exists("/scratch/~tarn2.cnx"));
          for (const std::string& path : m_files.Paths()) {
            EXPECT_TRUE(path == destination || path == "/home/a.net" ||
                        path.starts_with("/scratch/"))
                << path;
          }
          EXPECT_EQ(m_files.OpenHandles(), 0);
        },
        10);
  }
}

}  // namespace
}  // namespace tarn
