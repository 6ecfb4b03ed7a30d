#include "netgraph/node_shares.h"

#include <cstddef>
#include <numeric>
#include <utility>

namespace tarn {

void ToShares(std::span<float> values) {
  const float total = std::accumulate(values.begin(), values.end(), 0.0F);
  if (!(total > 0)) return;
  for (float& value : values) value /= total;
}

Graph NodeSharePlot(const std::vector<float>& shares) {
  CURVE_DEF curve;
  curve.colour = kRed;
  for (size_t i = 0; i < shares.size(); ++i) {
    curve.x.push_back(static_cast<float>(i + 1));
    curve.y.push_back(100.0F * shares[i]);
  }
  Graph graph;
  graph.curves.push_back(std::move(curve));
  return graph;
}

}  // namespace tarn
