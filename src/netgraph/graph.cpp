#include "netgraph/graph.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace tarn {

GraphRange DataRange(const Graph& graph) {
  GraphRange range;
  bool begun = false;
  for (const CURVE_DEF& curve : graph.curves) {
    for (size_t i = 0; i < curve.x.size(); ++i) {
      const float x = curve.x[i];
      const float y = curve.y[i];
      if (!std::isfinite(x) || !std::isfinite(y)) continue;
      if (!begun) range = {x, x, y, y};
      begun = true;
      range.x_min = std::min(range.x_min, x);
      range.x_max = std::max(range.x_max, x);
      range.y_min = std::min(range.y_min, y);
      range.y_max = std::max(range.y_max, y);
    }
  }
  return range;
}

GraphRange OpeningRange(const Graph& graph) {
  return graph.range.IsFixed() ? graph.range : DataRange(graph);
}

}  // namespace tarn
