#include <cstddef>
#include <gtest/gtest.h>
#include <string>

#include "data/outputs_export.h"
#include "engine/recall_run.h"
#include "golden/golden_files.h"
#include "golden/trained_scenario.h"
#include "reference/plain_reference.h"

namespace tarn {
namespace {

class RecallGolden : public TrainedScenario {
 protected:
  void ExpectGolden(const std::string& name) {
    const Network& network = m_session.network;
    ASSERT_TRUE(ExportOutputs(network, m_folder / "outputs").ok());
    ExpectGoldenFile(name + ".out", ReadFile(m_folder / "outputs"));
    Hash hash;
    for (const Layer& layer : network.layers) hash.Add(layer.activations.All());
    ExpectGoldenHash(name + ".activations", hash.value());
  }
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
