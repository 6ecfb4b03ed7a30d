#pragma once

#include <gtest/gtest.h>
#include <utility>

#include "netgraph/graph_renderer.h"
#include "netgraph/graph_shapes.h"
#include "netgraph/recording_canvas.h"

// Graphs drawn on a canvas that records.

namespace tarn {

inline constexpr Size kPage = {800, 600};

struct Picture {
  GraphLayout layout;
  RecordingCanvas canvas;
};

inline Picture Draw(const Graph& graph, const GraphView& view, const Size& page = kPage) {
  RecordingCanvas canvas(page);
  DrawGraph(graph, view, canvas);
  return {LayoutGraph(graph, view, canvas), std::move(canvas)};
}

inline Picture Draw(const Graph& graph, const Size& page = kPage) {
  return Draw(graph, GraphView(graph), page);
}

inline Rect PlotArea(const RecordingCanvas& canvas) {
  const auto areas = canvas.CallsOf(CallKind::kRect, Role::kPlotArea);
  EXPECT_EQ(areas.size(), 1u);
  return areas.empty() ? Rect() : areas[0].rect;
}

inline CURVE_DEF MarkersOf(CURVE_DEF curve) {
  curve.mode = kMarkersOnly;
  curve.marker = kPointMarker;
  return curve;
}

}  // namespace tarn
