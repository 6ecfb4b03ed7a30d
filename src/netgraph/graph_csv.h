#pragma once

#include <string>

#include "netgraph/graph.h"

namespace tarn {

// A graph as text, in lines: "title,TEXT", "x-label,TEXT", "y-label,TEXT", where the range is fixed
// "range,X MIN,X MAX,Y MIN,Y MAX"; then for each curve "curve,NAME,#rrggbb,MARKER,MODE" and its
// points "X,Y"; for contours "grid" and a line of values for each row. Numbers are in "%.9g", which
// gives back every float. A text stands as it is, commas and all, but for line ends.
std::string GraphCsv(const Graph& graph);

}  // namespace tarn
