#include "engine/forward_probe.h"

#include <algorithm>
#include <gtest/gtest.h>

#include "engine/recall_run.h"
#include "engine/small_network.h"

namespace tarn {
namespace {

class ForwardProbeTest : public testing::Test {
 protected:
  ForwardProbeTest() {
    InitializeRandomWeights(m_network, 7);
    FillWithRandomData(m_network, 8);
  }

  Network m_network = MakeNetwork({5, 7, 4, 3}, {kSigmoid, kTanh, kSech}, 30);
};

TEST_F(ForwardProbeTest, GivesTheActivationsOfTheForwardPass) {
  ForwardProbe probe(m_network, 30);
  ASSERT_EQ(probe.rows(), 30U);
  for (size_t p = 0; p < 30; ++p) {
    std::ranges::copy(m_network.layers[0].activations.Row(p), probe.Inputs(p).begin());
  }
  probe.Run(30);
  ASSERT_TRUE(PropagateAll(m_network).ok());
  for (size_t p = 0; p < 30; ++p) {
    EXPECT_TRUE(std::ranges::equal(probe.Outputs(p), OutputLayer(m_network).activations.Row(p)));
    EXPECT_TRUE(
        std::ranges::equal(probe.Activations(1, p), m_network.layers[1].activations.Row(p)));
  }
}

TEST_F(ForwardProbeTest, KeepsTheWeightsThatItWasMadeWith) {
  ForwardProbe probe(m_network, 1);
  std::ranges::copy(m_network.layers[0].activations.Row(0), probe.Inputs(0).begin());
  probe.Run(1);
  const float before = probe.Outputs(0)[2];
  InitializeRandomWeights(m_network, 9);
  probe.Run(1);
  EXPECT_EQ(probe.Outputs(0)[2], before);
}

TEST_F(ForwardProbeTest, TakesFewerRowsOfAWideNetwork) {
  EXPECT_EQ(ForwardProbe(m_network, 0).rows(), 1U);
  EXPECT_EQ(ForwardProbe(m_network, 1000000).rows(), 1024U);
  EXPECT_EQ(ForwardProbe(MakeNetwork({2000, 2000, 1}, {kSigmoid}, 1), 1000).rows(), 4U);
}

}  // namespace
}  // namespace tarn
