#include <cstddef>
#include <gtest/gtest.h>
#include <string>

#include "app/session.h"
#include "data/outputs_export.h"
#include "engine/recall_run.h"
#include "golden/golden_files.h"
#include "golden/scenario_run.h"
#include "reference/plain_reference.h"
#include "scenarios/scenario.h"

namespace tarn {
namespace {

// Trains a scenario, saves it, and has the saved file recall the scenario's own data.
class RecallGolden : public testing::Test {
 protected:
  void Train(const std::string& scenario) {
    const SetClock clock;
    ScenarioRun training(GoldenScenario(scenario), clock);
    EXPECT_TRUE(training.run().Start().ok());
    ASSERT_EQ(training.run().RunFor(kNoLimitMs), RunState::kComplete);
    Network& network = training.network();
    WriteFile(m_folder / "trained.net", training.Collect().network);
    WriteFile(m_folder / "inputs", ReadFile(training.loaded() / network.PatName));
    m_target_column = network.TargCol;
  }

  void Recall(bool targets) {
    const Status opened = OpenNetwork(m_session, m_folder / "trained.net");
    ASSERT_TRUE(opened.ok()) << opened.message();
    Network& network = m_session.network;
    network.RecallPatName = "inputs";
    network.RecallPatCol = 1;
    network.RecallTargets = targets;
    if (targets) {
      network.RecallTargName = "inputs";
      network.RecallTargCol = m_target_column;
    }
    Notices notices;
    const Status recalled = LoadAndRecall(m_session, notices);
    ASSERT_TRUE(recalled.ok()) << recalled.message();
    EXPECT_EQ(notices, Notices());
  }

  void ExpectGolden(const std::string& name) {
    const Network& network = m_session.network;
    ASSERT_TRUE(ExportOutputs(network, m_folder / "outputs").ok());
    ExpectGoldenFile(name + ".out", ReadFile(m_folder / "outputs"));
    Hash hash;
    for (const Layer& layer : network.layers) hash.Add(layer.activations.All());
    ExpectGoldenHash(name + ".activations", hash.value());
  }

  TempFolder m_folder;
  Session m_session;
  int32_t m_target_column = 0;
};

TEST_F(RecallGolden, LeavesTheOutputsThatAreKept) {
  Train("iris");
  Recall(false);
  ExpectGolden("recall_inputs_alone");
}

TEST_F(RecallGolden, LeavesTheOutputsAndTargetsThatAreKept) {
  Train("iris");
  Recall(true);
  ExpectGolden("recall_targets");
}

TEST_F(RecallGolden, LeavesTheOutputsThatAreKeptWithRemovedConnections) {
  Train("fast_prop_removed");
  Recall(true);
  EXPECT_FALSE(m_session.network.fully_connected);
  ExpectGolden("recall_removed");
}

TEST_F(RecallGolden, AgreesWithThePlainReference) {
  Train("iris");
  Recall(true);
  const Network& network = m_session.network;
  // Passes the test list, which holds every pattern in recall.
  reference::PlainTrainer plain(network);
  plain.TestFigures();
  Hash expected;
  Hash recalled;
  for (size_t l = 0; l < plain.layers().size(); ++l) {
    for (const reference::Row& row : plain.layers()[l].activations) expected.Add(row);
    recalled.Add(network.layers[l].activations.All());
  }
  EXPECT_EQ(recalled.value(), expected.value());
}

}  // namespace
}  // namespace tarn
