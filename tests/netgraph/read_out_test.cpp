#include "netgraph/read_out.h"

#include <gtest/gtest.h>
#include <limits>
#include <string>

#include "netgraph/graph_shapes.h"
#include "netgraph/graph_view.h"
#include "netgraph/recording_canvas.h"
#include "support/comma_locale.h"

namespace tarn {
namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

// At shares of the plot, from its lower left corner.
std::string ReadOutAt(const Graph& graph, double across, double up) {
  const GraphLayout layout = LayoutGraph(graph, GraphView(graph), RecordingCanvas({800, 600}));
  const Rect& plot = layout.plot;
  return ReadOut(graph, layout,
                 {plot.left + across * plot.width, plot.bottom() - up * plot.height});
}

// A plane: the value is the sum of both inputs.
Graph PlaneGraph() {
  Graph graph;
  graph.range = {0, 39, 0, 39};
  graph.contours.emplace();
  for (size_t row = 0; row < kContourSteps; ++row) {
    for (size_t column = 0; column < kContourSteps; ++column) {
      graph.contours->At(row, column) = static_cast<float>(row + column);
    }
  }
  return graph;
}

// Where the axes are at 0 and at 39 of the plane, which ends within them.
std::string PlaneAt(const Graph& graph, double x, double y) {
  const GraphLayout layout = LayoutGraph(graph, GraphView(graph), RecordingCanvas({800, 600}));
  return ReadOut(graph, layout, layout.ToCanvas({x, y}));
}

TEST(ReadOut, HasTwoDigitsMoreThanTheLabelsOfTheAxes) {
  const Graph graph = GraphOf({PointsCurve({0, 1000}, {0, 1})});
  EXPECT_EQ(ReadOutAt(graph, 0.25, 0.5), "x = 250.00, y = 0.500");
  EXPECT_EQ(ReadOutAt(graph, 0, 0), "x = 0.00, y = 0.000");
  EXPECT_EQ(ReadOutAt(graph, 1, 1), "x = 1000.00, y = 1.000");
}

TEST(ReadOut, HasAnExponentWhereLabelsHaveOne) {
  const Graph graph = GraphOf({PointsCurve({0, 2e7F}, {0, 1})});
  EXPECT_EQ(ReadOutAt(graph, 0.5, 0).substr(0, 13), "x = 1.0000e+0");
}

TEST(ReadOut, IsEmptyBesideThePlot) {
  const Graph graph = GraphOf({PointsCurve({0, 1}, {0, 1})});
  EXPECT_EQ(ReadOutAt(graph, -0.01, 0.5), "");
  EXPECT_EQ(ReadOutAt(graph, 1.01, 0.5), "");
  EXPECT_EQ(ReadOutAt(graph, 0.5, -0.01), "");
  EXPECT_EQ(ReadOutAt(graph, 0.5, 1.01), "");
}

TEST(ReadOut, IsTheOneValueOfADegenerateAxis) {
  const Graph graph = GraphOf({PointsCurve({2, 2}, {0, 1})});
  EXPECT_EQ(ReadOutAt(graph, 0.3, 0.5), "x = 2, y = 0.500");
}

TEST(ReadOut, IsEmptyWhereAnAxisHasNoNumbers) {
  Graph graph = GraphOf({PointsCurve({0, 1}, {0, 1})});
  graph.range = {0, 1, 0, kNaN};
  EXPECT_EQ(ReadOutAt(graph, 0.5, 0.5), "");
}

TEST(ReadOut, IsTheSameInEveryLocale) {
  const CommaLocale locale;
  const Graph graph = GraphOf({PointsCurve({0, 1000}, {0, 1})});
  EXPECT_EQ(ReadOutAt(graph, 0.25, 0.5), "x = 250.00, y = 0.500");
}

TEST(ReadOut, HasTheValueOfContoursBetweenThePointsOfTheirGrid) {
  const Graph graph = PlaneGraph();
  EXPECT_EQ(PlaneAt(graph, 0, 0), "x = 0.00, y = 0.00, value = 0");
  EXPECT_EQ(PlaneAt(graph, 3, 4.5), "x = 3.00, y = 4.50, value = 7.5");
  EXPECT_EQ(PlaneAt(graph, 10.25, 20.5), "x = 10.25, y = 20.50, value = 30.75");
}

TEST(ReadOut, HasNoValueBesideContours) {
  const Graph graph = PlaneGraph();
  EXPECT_EQ(PlaneAt(graph, 39.5, 10), "x = 39.50, y = 10.00");
  EXPECT_EQ(PlaneAt(graph, 10, 39.5), "x = 10.00, y = 39.50");
}

TEST(ReadOut, HasNoValueWhereContoursHaveNone) {
  Graph graph = PlaneGraph();
  graph.contours->At(4, 3) = kNaN;
  EXPECT_EQ(PlaneAt(graph, 3.5, 4.5), "x = 3.50, y = 4.50");
  EXPECT_EQ(PlaneAt(graph, 7, 8), "x = 7.00, y = 8.00, value = 15");
}

}  // namespace
}  // namespace tarn
