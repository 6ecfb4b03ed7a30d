#pragma once

#include "netgraph/canvas.h"
#include "netgraph/graph.h"
#include "netgraph/graph_layout.h"
#include "netgraph/graph_view.h"

namespace tarn {

// Draws what the view shows of the graph. Lines of many points are thinned to what a column of
// pixels can show, its extremes kept; markers that would cover each other are drawn once.
void DrawGraph(const Graph& graph, const GraphView& view, Canvas& canvas);
// The same over a layout that was made for this canvas.
void DrawGraph(const Graph& graph, const GraphLayout& layout, Canvas& canvas);

}  // namespace tarn
