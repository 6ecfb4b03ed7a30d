#include "netgraph/graph.h"

#include <gtest/gtest.h>
#include <limits>

#include "netgraph/graph_shapes.h"

namespace tarn {
namespace {

using Limits = std::numeric_limits<float>;

constexpr float kNan = Limits::quiet_NaN();
constexpr float kInf = Limits::infinity();

TEST(GraphRange, IsFixedWhenAnyOfItIsNotZero) {
  EXPECT_FALSE(GraphRange().IsFixed());
  EXPECT_FALSE((GraphRange{-0.0f, 0, 0, 0}).IsFixed());
  EXPECT_TRUE((GraphRange{1, 0, 0, 0}).IsFixed());
  EXPECT_TRUE((GraphRange{0, -1, 0, 0}).IsFixed());
  EXPECT_TRUE((GraphRange{0, 0, Limits::denorm_min(), 0}).IsFixed());
  EXPECT_TRUE((GraphRange{0, 0, 0, 1}).IsFixed());
}

TEST(DataRange, SpansAllPointsOfACurve) {
  const Graph graph = GraphOf({PointsCurve({3, -1, 2}, {0.5f, 7, -4})});
  EXPECT_EQ(DataRange(graph), (GraphRange{-1, 3, -4, 7}));
}

TEST(DataRange, SpansAllCurves) {
  const Graph graph = GraphOf({PointsCurve({1, 2}, {10, 20}), PointsCurve({5}, {15}), CURVE_DEF(),
                               PointsCurve({1.5f}, {-3})});
  EXPECT_EQ(DataRange(graph), (GraphRange{1, 5, -3, 20}));
}

TEST(DataRange, DoesNotReachToZeroByItself) {
  EXPECT_EQ(DataRange(GraphOf({PointsCurve({5, 6}, {-9, -8})})), (GraphRange{5, 6, -9, -8}));
}

TEST(DataRange, IsAPointForOnePoint) {
  EXPECT_EQ(DataRange(GraphOf({PointsCurve({3}, {4})})), (GraphRange{3, 3, 4, 4}));
}

TEST(DataRange, LeavesOutPointsThatAreNotFinite) {
  const Graph graph =
      GraphOf({PointsCurve({kNan, 1, 100, 2, kInf, -100, -kInf}, {0, 5, kNan, 6, 50, kInf, -50})});
  EXPECT_EQ(DataRange(graph), (GraphRange{1, 2, 5, 6}));
}

TEST(DataRange, IsZeroWithoutAPointThatCanBeDrawn) {
  EXPECT_EQ(DataRange(Graph()), GraphRange());
  EXPECT_EQ(DataRange(GraphOf({CURVE_DEF(), CURVE_DEF()})), GraphRange());
  EXPECT_EQ(DataRange(GraphOf({PointsCurve({kNan, 1, kInf}, {1, kNan, 1})})), GraphRange());
}

TEST(DataRange, HoldsTheLargestFloats) {
  const Graph graph =
      GraphOf({PointsCurve({-Limits::max(), Limits::max()}, {Limits::max(), -Limits::max()})});
  EXPECT_EQ(DataRange(graph),
            (GraphRange{-Limits::max(), Limits::max(), -Limits::max(), Limits::max()}));
}

TEST(OpeningRange, IsThatOfTheDataUnlessItIsFixed) {
  Graph graph = GraphOf({PointsCurve({1, 2}, {10, 20})});
  EXPECT_EQ(OpeningRange(graph), (GraphRange{1, 2, 10, 20}));
  graph.range = {0, 1, 0, 0};
  EXPECT_EQ(OpeningRange(graph), (GraphRange{0, 1, 0, 0}));
  graph.range = {9, 8, 7, 6};
  EXPECT_EQ(OpeningRange(graph), (GraphRange{9, 8, 7, 6}));
}

TEST(OpeningRange, IsZeroForAnEmptyGraph) {
  EXPECT_EQ(OpeningRange(Graph()), GraphRange());
}

}  // namespace
}  // namespace tarn
