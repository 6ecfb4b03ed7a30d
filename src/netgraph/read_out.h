#pragma once

#include <string>

#include "netgraph/graph.h"
#include "netgraph/graph_layout.h"

namespace tarn {

// The data at a place on the canvas that the layout is of: "x = 12.25, y = 0.350" in the form of
// the axes' labels with two digits more, and over contours ", value = 0.4321". Empty beside the
// plot.
std::string ReadOut(const Graph& graph, const GraphLayout& layout, const Point& on_canvas);

}  // namespace tarn
