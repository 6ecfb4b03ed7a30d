#include "app/network_loader.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "app/session_fixture.h"
#include "base/file_layer.h"
#include "netfile/connections_section.h"
#include "support/slashes.h"

namespace tarn {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class NetworkLoaderTest : public SessionFixture {
 protected:
  // The setup as the dialogs have it when they open.
  NetworkShape ReadTheSetup() {
    EXPECT_TRUE(OpenNetwork(m_session, "/home/nets/test.net").ok());
    EXPECT_EQ(ReadSetup(m_session).message(), "");
    return ShapeOf(m_network);
  }
  std::vector<std::string> Load(NetworkLoader::Kind kind, const NetworkShape& stored = {}) {
    NetworkLoader loader(m_session, kind, stored);
    std::vector<std::string> steps;
    while (!loader.NextStep().empty()) {
      steps.emplace_back(loader.NextStep());
      m_status = loader.DoStep(m_notices);
    }
    return steps;
  }

  static constexpr const char* kWeights =
      "WEIGHTS:READ\n0.1 0.2 0.3\n0.4 0.5 0.6\n0.7 0.8 0.9\n1 2 3 4\nWEIGHTS:STOP\n";
  Status m_status;
};

TEST_F(NetworkLoaderTest, NamesItsSteps) {
  ReadTheSetup();
  EXPECT_THAT(Load(NetworkLoader::Kind::kTraining),
              ElementsAre("Reading Network File", "Counting Patterns", "Reading Patterns",
                          "Reading Weights", "Reading Connections", "Selecting Test Set"));
  EXPECT_EQ(m_status.message(), "");
}

TEST_F(NetworkLoaderTest, RunsTheRecallAtLast) {
  SetSections(std::string(kWeights) + "CONNECTIONS:FULL\nNORMALIZE:NONE\n");
  SetLine(11, "0 0");
  ReadTheSetup();
  m_network.RecallPatName = "data.txt";
  m_network.RecallTargets = false;
  const std::vector<std::string> steps = Load(NetworkLoader::Kind::kRecall);
  EXPECT_EQ(m_status.message(), "");
  EXPECT_EQ(steps.back(), "Processing Recall Inputs...");
  EXPECT_TRUE(m_network.results_ready);
}

TEST_F(NetworkLoaderTest, KeepsWhatWasEditedSinceTheSetupWasRead) {
  SetSections(kWeights);
  const NetworkShape stored = ReadTheSetup();
  m_network.Eta = 0.875F;
  m_network.NetName = "Edited";
  Load(NetworkLoader::Kind::kEdited, stored);
  EXPECT_EQ(m_status.message(), "");
  EXPECT_EQ(m_network.Eta, 0.875F);
  EXPECT_EQ(m_network.NetName, "Edited");
  EXPECT_EQ(m_network.nPats, 10);
  EXPECT_EQ(m_network.layers[1].weights.Row(0)[0], 0.1F) << "stored weights that fit are kept";
  EXPECT_THAT(m_notices, IsEmpty());
}

// Weights of a changed design are not looked for in the file, so that none is read into another's
// place.
TEST_F(NetworkLoaderTest, TakesRandomWeightsForAnotherShapeWithoutANotice) {
  SetSections(kWeights);
  const NetworkShape stored = ReadTheSetup();
  m_network.layers[1].nUnits = 4;
  Load(NetworkLoader::Kind::kEdited, stored);
  EXPECT_EQ(m_status.message(), "");
  EXPECT_THAT(m_notices, IsEmpty());
  Network expected = m_network;
  InitializeRandomWeights(expected, 1);
  EXPECT_TRUE(
      std::ranges::equal(m_network.layers[1].weights.All(), expected.layers[1].weights.All()));
}

TEST_F(NetworkLoaderTest, ChecksTheShapeThatWasEdited) {
  const NetworkShape stored = ReadTheSetup();
  m_network.nLayers = 2;
  Load(NetworkLoader::Kind::kEdited, stored);
  EXPECT_EQ(m_status.message(), "Set number of network layers between 3 and 10");
}

TEST_F(NetworkLoaderTest, ResetsWeightsBeforeConnectionsAreRemoved) {
  SetSections(std::string(kWeights) + "CONNECTIONS:READ\n1\n1 2 1\nCONNECTIONS:STOP\n");
  const NetworkShape stored = ReadTheSetup();
  m_network.reset_weights = true;
  Load(NetworkLoader::Kind::kEdited, stored);
  EXPECT_FALSE(m_network.reset_weights);
  EXPECT_NE(m_network.layers[1].weights.Row(0)[0], 0.1F);
  EXPECT_EQ(m_network.layers[1].weights.Row(2)[1], 0.0F);
}

TEST_F(NetworkLoaderTest, HasNoStepLeftAfterAFailure) {
  SetLine(9, "missing.txt");
  ReadTheSetup();
  EXPECT_EQ(Load(NetworkLoader::Kind::kTraining).back(), "Counting Patterns");
  EXPECT_FALSE(m_status.ok());
}

TEST_F(NetworkLoaderTest, ForgetsConnectionEditsOfAnEarlierSetup) {
  ReadTheSetup();
  m_network.connections_edited[1] = true;
  const std::string path = ConnectionFilePath(m_session.scratch.path(), 1);
  m_files.Put(path, std::string(24, '\0'));
  EXPECT_EQ(ReadSetup(m_session).message(), "");
  EXPECT_FALSE(m_files.Exists(path));
  EXPECT_FALSE(m_network.connections_edited[1]);
}

TEST_F(NetworkLoaderTest, KeepsTheSetupOfAnUntitledNetworkForTheNextLook) {
  m_files.EnterDirectory("/home/nets");
  StartNewNetwork(m_session);
  EXPECT_EQ(ReadSetup(m_session).message(), "");
  m_network.NetName = "Mine";
  m_network.layers[1].nUnits = 7;
  KeepUntitledSetup(m_session);
  m_network.NetName = "forgotten";
  EXPECT_EQ(ReadSetup(m_session).message(), "");
  EXPECT_EQ(m_network.NetName, "Mine");
  EXPECT_EQ(m_network.layers[1].nUnits, 7);
}

TEST_F(NetworkLoaderTest, LeavesTheFileOfANamedNetworkAlone) {
  ReadTheSetup();
  const std::string before = m_files.Get("/home/nets/test.net").value_or("");
  m_network.NetName = "Mine";
  KeepUntitledSetup(m_session);
  EXPECT_EQ(m_files.Get("/home/nets/test.net").value_or(""), before);
}

TEST_F(NetworkLoaderTest, BeginsANewNetworkEachTime) {
  m_files.EnterDirectory("/home/nets");
  m_files.Put("/home/nets/UNTITLED.NE_", "left over");
  for (int i = 0; i < 2; ++i) {
    StartNewNetwork(m_session);
    EXPECT_EQ(Slashes(m_network.file_name), "/home/nets/UNTITLED.NE_");
    EXPECT_FALSE(m_network.trained);
    EXPECT_FALSE(m_files.Exists("/home/nets/UNTITLED.NE_"));
    EXPECT_EQ(ReadSetup(m_session).message(), "");
    EXPECT_TRUE(m_files.Exists("/home/nets/UNTITLED.NE_"));
    EXPECT_EQ(m_network.NetName, "NO NAME");
    m_network.NetName = "changed";
  }
}

}  // namespace
}  // namespace tarn
