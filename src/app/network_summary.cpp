#include "app/network_summary.h"

#include <algorithm>

namespace tarn {

NetworkSummary Summarize(const Network& network) {
  NetworkSummary summary;
  const auto layers = static_cast<size_t>(network.nLayers);
  summary.input_nodes = network.layers[0].nUnits;
  summary.output_nodes = network.layers[layers - 1].nUnits;
  summary.connections = ConnectionCount(network);
  for (size_t l = 1; l < layers; ++l) {
    const Layer& layer = network.layers[l];
    if (l < layers - 1) summary.hidden_nodes += layer.nUnits;
    if (!network.fully_connected)
      summary.connections -= std::ranges::count(layer.masks.All(), 0.0F);
  }
  return summary;
}

}  // namespace tarn
