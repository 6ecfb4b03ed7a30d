#pragma once

#include <optional>
#include <string>
#include <wx/bitmap.h>

#include "base/status.h"
#include "netgraph/bitmap_file.h"
#include "netgraph/graph.h"
#include "netgraph/graph_layout.h"
#include "netgraph/graph_view.h"

namespace tarn {

// Draws a graph over the whole of a bitmap and keeps the layout. `unit` is what a pixel of the
// layout is in logical pixels of the bitmap. What the user is told when memory is short, as
// PaintGraph.
std::optional<Message> DrawOnBitmap(const Graph& graph, const GraphView& view, double unit,
                                    wxBitmap& bitmap, GraphLayout& layout);

// Its pixels. Throws std::bad_alloc.
Raster RasterOf(const wxBitmap& bitmap);

// Replaces the file `path` by a picture in PNG of that size.
Status SavePng(const Graph& graph, const GraphView& view, const Size& size,
               const std::string& path);

}  // namespace tarn
