#pragma once

#include <optional>

#include "base/status.h"
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

// For a window that paints: what the user is told where memory is too short for contours, and the
// window closes then. For other graphs it throws std::bad_alloc.
std::optional<Message> PaintGraph(const Graph& graph, const GraphView& view, Canvas& canvas);
// The same, and keeps the layout that it has drawn.
std::optional<Message> PaintGraph(const Graph& graph, const GraphView& view, Canvas& canvas,
                                  GraphLayout& layout);

// That memory is too short for contours.
Message ContourMemoryMessage();

}  // namespace tarn
