#include "netgraph/graph_view.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

#include "netgraph/graph_layout.h"
#include "netgraph/graph_shapes.h"
#include "netgraph/recording_canvas.h"

namespace tarn {
namespace {

using Limits = std::numeric_limits<float>;

GraphLayout LayoutOf(const Graph& graph, const GraphView& view, const Size& page = {800, 600}) {
  return LayoutGraph(graph, view, RecordingCanvas(page));
}

// Shares of the plot, from its lower left corner.
Point PlaceIn(const GraphLayout& layout, double across, double up) {
  return {layout.plot.left + across * layout.plot.width,
          layout.plot.bottom() - up * layout.plot.height};
}

Graph UnitGraph() {
  return GraphOf({PointsCurve({0, 10}, {0, 1})});
}

bool IsFinite(const GraphRange& range) {
  return std::isfinite(range.x_min) && std::isfinite(range.x_max) && std::isfinite(range.y_min) &&
         std::isfinite(range.y_max);
}

TEST(GraphView, OpensWithTheRangeOfTheData) {
  const GraphView view(GraphOf({PointsCurve({3, -1}, {5, 6})}));
  EXPECT_EQ(view.range(), (GraphRange{-1, 3, 5, 6}));
}

TEST(GraphView, OpensWithTheRangeOfTheGraphWhereItIsFixed) {
  Graph graph = UnitGraph();
  graph.range = {2, 4, -1, 0};
  EXPECT_EQ(GraphView(graph).range(), graph.range);
}

TEST(GraphView, ShowsALegendWhereACurveHasAName) {
  Graph graph = UnitGraph();
  EXPECT_FALSE(GraphView(graph).legend());
  graph.curves.push_back(graph.curves[0]);
  graph.curves[1].name = "Targets";
  EXPECT_TRUE(GraphView(graph).legend());
}

TEST(GraphView, ShowsALegendOfContours) {
  EXPECT_TRUE(GraphView(ContourGraph({0, 1}, {0, 1}, {0, 1})).legend());
}

TEST(GraphView, TurnsTheLegendOnAndOff) {
  GraphView view(UnitGraph());
  view.ToggleLegend();
  EXPECT_TRUE(view.legend());
  view.ToggleLegend();
  EXPECT_FALSE(view.legend());
}

TEST(GraphViewZoom, TakesTheRangeFromTheSidesOfTheRectangle) {
  const Graph graph = UnitGraph();
  GraphView view(graph);
  const GraphLayout layout = LayoutOf(graph, view);
  EXPECT_FALSE(view.ZoomTo(layout, PlaceIn(layout, 0.2, 0.9), PlaceIn(layout, 0.4, 0.3)));
  EXPECT_NEAR(view.range().x_min, 2, 1e-6);
  EXPECT_NEAR(view.range().x_max, 4, 1e-6);
  EXPECT_NEAR(view.range().y_min, 0.3, 1e-6);
  EXPECT_NEAR(view.range().y_max, 0.9, 1e-6);
}

TEST(GraphViewZoom, ScalesTheAxesAgain) {
  const Graph graph = UnitGraph();
  GraphView view(graph);
  const GraphLayout layout = LayoutOf(graph, view);
  ASSERT_FALSE(view.ZoomTo(layout, PlaceIn(layout, 0.213, 0.87), PlaceIn(layout, 0.397, 0.33)));
  const GraphLayout zoomed = LayoutOf(graph, view);
  EXPECT_EQ(zoomed.x_scale.first, 2);
  EXPECT_EQ(zoomed.x_scale.second, 4);
  EXPECT_NEAR(zoomed.y_scale.first, 0.2, 1e-6);
  EXPECT_NEAR(zoomed.y_scale.second, 1.0, 1e-6);
}

TEST(GraphViewZoom, ReachesBeyondThePlotWithARectangleThatDoes) {
  const Graph graph = UnitGraph();
  GraphView view(graph);
  const GraphLayout layout = LayoutOf(graph, view);
  EXPECT_FALSE(view.ZoomTo(layout, PlaceIn(layout, -0.1, 1.1), PlaceIn(layout, 1.05, -0.2)));
  EXPECT_NEAR(view.range().x_min, -1, 1e-5);
  EXPECT_NEAR(view.range().x_max, 10.5, 1e-5);
  EXPECT_NEAR(view.range().y_min, -0.2, 1e-6);
  EXPECT_NEAR(view.range().y_max, 1.1, 1e-6);
}

TEST(GraphViewZoom, RefusesARectangleThatIsNoArea) {
  const Graph graph = UnitGraph();
  GraphView view(graph);
  const GraphLayout layout = LayoutOf(graph, view);
  ASSERT_FALSE(view.ZoomTo(layout, PlaceIn(layout, 0.1, 0.9), PlaceIn(layout, 0.9, 0.1)));
  const GraphRange before = view.range();
  const struct {
    Point first;
    Point second;
  } corners[] = {{{0.4, 0.4}, {0.4, 0.4}}, {{0.2, 0.4}, {0.6, 0.4}}, {{0.4, 0.6}, {0.4, 0.2}},
                 {{0.6, 0.6}, {0.4, 0.4}}, {{0.4, 0.4}, {0.6, 0.6}}, {{0.6, 0.4}, {0.4, 0.6}}};
  for (const auto& [first, second] : corners) {
    const auto message =
        view.ZoomTo(layout, PlaceIn(layout, first.x, first.y), PlaceIn(layout, second.x, second.y));
    ASSERT_TRUE(message) << first.x << ' ' << second.x;
    EXPECT_EQ(message->caption, "Invalid Zoom Area");
    EXPECT_EQ(message->text, "Define Zoom Area TOP/LEFT to BOTTOM/RIGHT");
    EXPECT_EQ(message->icon, MessageIcon::kExclamation);
    EXPECT_EQ(view.range(), before);
  }
}

TEST(GraphViewZoom, IsUndoneByAReset) {
  const Graph graph = UnitGraph();
  GraphView view(graph);
  const GraphRange opening = view.range();
  for (int i = 0; i < 3; ++i) {
    const GraphLayout layout = LayoutOf(graph, view);
    ASSERT_FALSE(view.ZoomTo(layout, PlaceIn(layout, 0.2, 0.8), PlaceIn(layout, 0.7, 0.3)));
    EXPECT_NE(view.range(), opening);
  }
  view.ResetZoom();
  EXPECT_EQ(view.range(), opening);
}

TEST(GraphViewZoom, LeavesTheLegendAlone) {
  const Graph graph = UnitGraph();
  GraphView view(graph);
  view.ToggleLegend();
  const GraphLayout layout = LayoutOf(graph, view);
  ASSERT_FALSE(view.ZoomTo(layout, PlaceIn(layout, 0.2, 0.8), PlaceIn(layout, 0.7, 0.3)));
  EXPECT_TRUE(view.legend());
  view.ResetZoom();
  EXPECT_TRUE(view.legend());
}

TEST(GraphViewZoom, FindsNoAreaOnADegenerateAxis) {
  for (const auto& [x, y] : {std::pair{Span{3, 3}, Span{4, 4}}, std::pair{Span{0, 1}, Span{4, 4}},
                             std::pair{Span{3, 3}, Span{0, 1}}}) {
    const Graph graph = GraphOf({WaveCurve(x, y)});
    GraphView view(graph);
    const GraphRange opening = view.range();
    const GraphLayout layout = LayoutOf(graph, view);
    const auto message = view.ZoomTo(layout, PlaceIn(layout, 0.2, 0.8), PlaceIn(layout, 0.7, 0.3));
    ASSERT_TRUE(message);
    EXPECT_EQ(message->caption, "Invalid Zoom Area");
    EXPECT_EQ(view.range(), opening);
  }
}

TEST(GraphViewZoom, FindsNoAreaWithoutARange) {
  Graph graph = UnitGraph();
  graph.range = {0, Limits::infinity(), Limits::quiet_NaN(), 1};
  GraphView view(graph);
  const GraphLayout layout = LayoutOf(graph, view);
  EXPECT_TRUE(view.ZoomTo(layout, PlaceIn(layout, 0.2, 0.8), PlaceIn(layout, 0.7, 0.3)));
}

TEST(GraphViewZoom, FindsNoAreaWhereACornerIsNoPlace) {
  const Graph graph = UnitGraph();
  GraphView view(graph);
  const GraphRange opening = view.range();
  const GraphLayout layout = LayoutOf(graph, view);
  EXPECT_TRUE(view.ZoomTo(layout, {std::nan(""), 100}, {300, 300}));
  EXPECT_TRUE(view.ZoomTo(layout, {200, 100}, {300, std::nan("")}));
  EXPECT_EQ(view.range(), opening);
}

// Zooms until there is nothing nearer; how often.
int ZoomInFully(const Graph& graph, GraphView& view, const Point& lower, const Point& upper) {
  for (int count = 0; count < 1000; ++count) {
    const GraphLayout layout = LayoutOf(graph, view);
    if (view.ZoomTo(layout, PlaceIn(layout, lower.x, upper.y), PlaceIn(layout, upper.x, lower.y))) {
      return count;
    }
    EXPECT_TRUE(IsFinite(view.range()));
    EXPECT_LT(view.range().x_min, view.range().x_max);
    EXPECT_LT(view.range().y_min, view.range().y_max);
    EXPECT_FALSE(LayoutOf(graph, view).x_scale.IsDegenerate());
  }
  return 1000;
}

TEST(GraphViewZoom, EndsWhereTheRangeIsASingleNumber) {
  for (const Span& x : AllSpans()) {
    const Graph graph = GraphOf({WaveCurve(x, {-1, 1})});
    GraphView view(graph);
    const GraphRange opening = view.range();
    if (opening.x_min == opening.x_max) continue;
    const int zooms = ZoomInFully(graph, view, {0.45, 0.45}, {0.55, 0.55});
    EXPECT_LT(zooms, 100) << x.first << ' ' << x.last;
    view.ResetZoom();
    EXPECT_EQ(view.range(), opening);
  }
}

TEST(GraphViewZoom, EndsWhereverItIsTakenTo) {
  const Graph graph = GraphOf({WaveCurve({-1e30f, 1e30f}, {0, 1e-30f})});
  for (const Point& at : {Point{0.1, 0.1}, Point{0.3, 0.9}, Point{0.77, 0.5}}) {
    GraphView view(graph);
    const int zooms =
        ZoomInFully(graph, view, {at.x - 0.04, at.y - 0.04}, {at.x + 0.03, at.y + 0.03});
    EXPECT_GT(zooms, 3);
    EXPECT_LT(zooms, 100);
  }
}

TEST(GraphViewZoom, KeepsToFiniteNumbersAtTheEndsOfTheFloats) {
  const Span all = {-Limits::max(), Limits::max()};
  const Graph graph = GraphOf({WaveCurve(all, all)});
  GraphView view(graph);
  for (int i = 0; i < 5; ++i) {
    const GraphLayout layout = LayoutOf(graph, view);
    ASSERT_FALSE(view.ZoomTo(layout, PlaceIn(layout, -0.2, 1.2), PlaceIn(layout, 1.2, -0.2)));
    ASSERT_TRUE(IsFinite(view.range()));
    ASSERT_FALSE(LayoutOf(graph, view).x_scale.IsDegenerate());
  }
  EXPECT_EQ(view.range(), (GraphRange{all.first, all.last, all.first, all.last}));
}

TEST(GraphViewFollowing, SeesAllOfTheNewData) {
  GraphView view(UnitGraph());
  view.Follow(GraphOf({PointsCurve({0, 20}, {0, 3})}));
  EXPECT_EQ(view.range(), (GraphRange{0, 20, 0, 3}));
}

TEST(GraphViewFollowing, StaysWhereItWasZoomedTo) {
  const Graph graph = UnitGraph();
  GraphView view(graph);
  const GraphLayout layout = LayoutOf(graph, view);
  ASSERT_FALSE(view.ZoomTo(layout, PlaceIn(layout, 0.2, 0.9), PlaceIn(layout, 0.4, 0.3)));
  const GraphRange zoomed = view.range();
  view.Follow(GraphOf({PointsCurve({0, 20}, {0, 3})}));
  EXPECT_EQ(view.range(), zoomed);
  view.ResetZoom();
  EXPECT_EQ(view.range(), (GraphRange{0, 20, 0, 3}));
  view.Follow(graph);
  EXPECT_EQ(view.range(), (GraphRange{0, 10, 0, 1})) << "nothing is zoomed any more";
}

TEST(GraphViewFollowing, SeesAllAfterAZoomThatWasRefused) {
  const Graph graph = UnitGraph();
  GraphView view(graph);
  const GraphLayout layout = LayoutOf(graph, view);
  ASSERT_TRUE(view.ZoomTo(layout, PlaceIn(layout, 0.4, 0.3), PlaceIn(layout, 0.2, 0.9)));
  view.Follow(GraphOf({PointsCurve({0, 20}, {0, 3})}));
  EXPECT_EQ(view.range(), (GraphRange{0, 20, 0, 3}));
}

TEST(GraphViewFollowing, KeepsTheLegendAsItIs) {
  Graph graph = UnitGraph();
  graph.curves[0].name = "Targets";
  GraphView view(graph);
  view.ToggleLegend();
  view.Follow(graph);
  EXPECT_FALSE(view.legend());
  view.ToggleLegend();
  view.Follow(UnitGraph());
  EXPECT_TRUE(view.legend());
}

}  // namespace
}  // namespace tarn
