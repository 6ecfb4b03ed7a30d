#include <algorithm>
#include <cmath>
#include <fmt/format.h>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

#include "netgraph/drawn_graph.h"

// That nothing leaves its place, whatever is drawn at whatever size.

namespace tarn {
namespace {

using Limits = std::numeric_limits<float>;

std::vector<Point> PointsOf(const CanvasCall& call) {
  std::vector<Point> points = call.curve.markers;
  for (const auto& line : call.curve.lines) points.insert(points.end(), line.begin(), line.end());
  for (const Polygon& polygon : call.polygons) {
    points.insert(points.end(), polygon.begin(), polygon.end());
  }
  return points;
}

Rect PlaceOf(const CanvasCall& call) {
  if (call.kind == CallKind::kText) return BoxOf(call.text);
  if (call.kind != CallKind::kLine) return call.rect;
  const auto [left, right] = std::minmax(call.from.x, call.to.x);
  const auto [top, bottom] = std::minmax(call.from.y, call.to.y);
  return {left, top, right - left, bottom - top};
}

// Curves and bands stay in the plot, all else on the page.
std::string WrongCall(const CanvasCall& call, const Rect& plot, const Rect& page) {
  const bool in_plot = call.role == Role::kCurve || call.role == Role::kBand;
  for (const Point& point : PointsOf(call)) {
    if (!std::isfinite(point.x) || !std::isfinite(point.y)) return "point that is no place";
    if (!(in_plot ? plot : page).Contains(point)) return "point outside";
  }
  for (const auto& line : call.curve.lines) {
    if (line.size() < 2) return "line of a single point";
  }
  for (const Polygon& polygon : call.polygons) {
    if (polygon.size() < 3) return "polygon without an area";
  }
  const bool empty = call.kind == CallKind::kCurve && PointsOf(call).empty();
  return empty ? "empty curve" : IsWithin(PlaceOf(call), page) ? "" : "leaves the page";
}

std::string Fault(const Graph& graph, const GraphView& view, const Size& size) {
  const RecordingCanvas canvas = Draw(graph, view, size).canvas;
  const Rect page = {0, 0, size.width, size.height};
  const Rect plot = PlotArea(canvas);
  std::string fault = canvas.open_clips() == 0 ? "" : "clip left open";
  for (const CanvasCall& call : canvas.calls()) {
    if (fault.empty()) fault = WrongCall(call, plot, page);
  }
  return fault.empty() ? "" : fmt::format("{} x {}: {}", size.width, size.height, fault);
}

// The whole graph on every page, and what is seen of it from ever nearer.
std::string Fault(const Graph& graph) {
  for (const Size& size : kPageSizes) {
    GraphView view(graph);
    for (int zoom = 0; zoom < 3; ++zoom) {
      const std::string fault = Fault(graph, view, size);
      if (!fault.empty()) return fault;
      const GraphLayout layout = LayoutGraph(graph, view, RecordingCanvas(size));
      const Rect& plot = layout.plot;
      const Point corner = {plot.left + 0.4 * plot.width, plot.top + 0.3 * plot.height};
      if (view.ZoomTo(layout, corner, {plot.right() - 3, plot.bottom() - 0.4 * plot.height})) break;
    }
  }
  return "";
}

CURVE_DEF Styled(CURVE_DEF curve, int32_t marker, int32_t mode, int32_t style) {
  curve.marker = marker;
  curve.mode = mode;
  curve.style = style;
  return curve;
}

TEST(RendererSweep, KeepsCurvesInThePlotForEveryRange) {
  for (const Span& x : AllSpans()) {
    for (const Span& y : AllSpans()) {
      ASSERT_EQ(Fault(GraphOf({Styled(WaveCurve(x, y), kPointMarker, kJoined, kSolidCircle)})), "");
    }
  }
}

TEST(RendererSweep, KeepsCurvesInThePlotForEveryKindOfCurve) {
  for (const int32_t marker : {kNoMarker, kPointMarker}) {
    for (const int32_t mode : {kJoined, kMarkersOnly}) {
      for (const int32_t style : {kSolidCircle, kDashedDiamond, kDottedCross}) {
        for (const size_t points : {1, 2, 300, 3000}) {
          CURVE_DEF curve = Styled(WaveCurve({-3, 8}, {5, -1}, points), marker, mode, style);
          curve.name = Words(44);
          ASSERT_EQ(Fault(GraphOf(std::vector(4, curve))), "");
        }
      }
    }
  }
}

TEST(RendererSweep, KeepsCurvesInThePlotOfAFixedRange) {
  for (const Span& span : AllSpans()) {
    Graph graph = GraphOf({Styled(WaveCurve({-2, 3}, {-2, 3}), kPointMarker, kJoined, 0),
                           WaveCurve({1e30f, -1e30f}, {-1e30f, 1e30f})});
    graph.range = {span.first, span.last, span.last, span.first};
    ASSERT_EQ(Fault(graph), "");
  }
}

TEST(RendererSweep, KeepsBandsInThePlot) {
  ASSERT_EQ(Fault(ContourGraph({0, 1}, {0.15f, 0.85f}, {-2e6f, 0})), "");
  for (const Span& span : AllSpans()) {
    for (const Graph& graph :
         {ContourGraph(span, span, {0, 1}), ContourGraph({0, 1}, {0.15f, 0.85f}, span)}) {
      ASSERT_EQ(Fault(graph, GraphView(graph), kPage), "");
    }
  }
}

TEST(RendererSweep, DrawsGraphsWithoutAnythingToShow) {
  const float nan = Limits::quiet_NaN();
  ASSERT_EQ(Fault(Graph()), "");
  ASSERT_EQ(Fault(GraphOf({CURVE_DEF()})), "");
  ASSERT_EQ(Fault(GraphOf({PointsCurve({nan, 1}, {1, nan})})), "");
  ASSERT_EQ(Fault(GraphOf({PointsCurve({2, 2}, {3, 3})})), "");
  Graph endless = GraphOf({WaveCurve({0, 1}, {0, 1})});
  endless.range = {0, Limits::infinity(), nan, 0};
  ASSERT_EQ(Fault(endless), "");
}

}  // namespace
}  // namespace tarn
