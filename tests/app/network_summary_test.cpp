#include "app/network_summary.h"

#include <gtest/gtest.h>

namespace tarn {
namespace {

Network FourLayers() {
  Network network;
  network.nLayers = 4;
  const int32_t nodes[] = {5, 4, 3, 2};
  for (size_t l = 0; l < 4; ++l) network.layers[l].nUnits = nodes[l];
  EXPECT_TRUE(AllocateArrays(network).ok());
  return network;
}

TEST(NetworkSummary, CountsNodesByTheirRole) {
  const NetworkSummary summary = Summarize(FourLayers());
  EXPECT_EQ(summary.input_nodes, 5);
  EXPECT_EQ(summary.hidden_nodes, 7);
  EXPECT_EQ(summary.output_nodes, 2);
  EXPECT_EQ(summary.connections, 6 * 4 + 5 * 3 + 4 * 2);
}

TEST(NetworkSummary, LeavesOutRemovedConnections) {
  Network network = FourLayers();
  network.layers[1].masks.Row(3)[4] = 0.0F;
  network.layers[3].masks.Row(0)[0] = 0.0F;
  network.fully_connected = false;
  EXPECT_EQ(Summarize(network).connections, 6 * 4 + 5 * 3 + 4 * 2 - 2);
}

}  // namespace
}  // namespace tarn
