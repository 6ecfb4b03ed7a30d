#include "setup/network_drawing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>

#include "setup/setup_fixture.h"

namespace tarn {
namespace {

using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::Field;
using testing::Ge;
using testing::Le;

constexpr int32_t kTextHeight = 18;

std::vector<DrawnLine> Lines(const Network& design, PageSize page, int32_t layer,
                             const std::vector<RemovedConnection>& removed = {}) {
  std::vector<DrawnLine> lines;
  ForEachConnection(design, page, layer, removed,
                    [&lines](const DrawnLine& line) { lines.push_back(line); });
  return lines;
}

size_t LineCount(const Network& design, PageSize page = {400, 300}) {
  size_t count = 0;
  for (int32_t layer = 1; layer < design.nLayers; ++layer) {
    count += Lines(design, page, layer).size();
  }
  return count;
}

TEST(NetworkDrawing, WritesInputsAboveAndOutputsBelow) {
  // Three layers: a spacing of 303 / 4 = 75.
  const NetworkDrawing drawing = DrawNetwork(MakeNetwork({2, 2, 1}), {401, 303}, kTextHeight);
  EXPECT_EQ(drawing.texts[0].text, "Inputs");
  EXPECT_EQ(drawing.texts[0].centre, (PagePoint{200, 18}));
  EXPECT_EQ(drawing.texts[1].text, "Outputs");
  EXPECT_EQ(drawing.texts[1].centre, (PagePoint{200, 285}));
}

TEST(NetworkDrawing, SpreadsTheNodesOfEachLayerOverItsLine) {
  const NetworkDrawing drawing = DrawNetwork(MakeNetwork({2, 3, 1}), {401, 303}, kTextHeight);
  EXPECT_THAT(drawing.nodes,
              ElementsAre(PagePoint{133, 75}, PagePoint{267, 75}, PagePoint{100, 150},
                          PagePoint{200, 150}, PagePoint{300, 150}, PagePoint{200, 225}));
}

TEST(NetworkDrawing, MakesCirclesAFortiethOfTheWidthUpToTwentyNodes) {
  EXPECT_EQ(DrawNetwork(MakeNetwork({1, 1, 1}), {839, 300}, kTextHeight).diameter, 20);
  EXPECT_EQ(DrawNetwork(MakeNetwork({20, 2, 1}), {839, 300}, kTextHeight).diameter, 20);
  EXPECT_EQ(DrawNetwork(MakeNetwork({2, 21, 1}), {839, 300}, kTextHeight).diameter, 19);
}

TEST(NetworkDrawing, MakesCirclesNeverSmallerThanHalfALetter) {
  EXPECT_EQ(DrawNetwork(MakeNetwork({2, 2, 1}), {400, 300}, 19).diameter, 10);
  EXPECT_EQ(DrawNetwork(MakeNetwork({2, 2, 1}), {359, 300}, 19).diameter, 9);
  EXPECT_EQ(DrawNetwork(MakeNetwork({1000, 2, 1}), {400, 300}, 19).diameter, 9);
}

TEST(NetworkDrawing, GivesEachInputAnArrowDownToItsCircle) {
  const NetworkDrawing drawing = DrawNetwork(MakeNetwork({2, 3, 1}), {800, 400}, kTextHeight);
  ASSERT_EQ(drawing.arrows.size(), 3U);
  EXPECT_EQ(drawing.diameter, 20);
  EXPECT_EQ(drawing.arrows[0].shaft, (DrawnLine{{266, 50}, {266, 98}}));
  EXPECT_THAT(drawing.arrows[0].head,
              ElementsAre(PagePoint{266, 89}, PagePoint{263, 83}, PagePoint{269, 83}));
  EXPECT_EQ(drawing.arrows[1].shaft, (DrawnLine{{533, 50}, {533, 98}}));
}

TEST(NetworkDrawing, EndsTheArrowsOfInputsTwoPixelsAboveTheSmallestCircles) {
  const NetworkDrawing drawing = DrawNetwork(MakeNetwork({2, 2, 1}), {80, 400}, 4);
  EXPECT_EQ(drawing.diameter, 2);
  EXPECT_EQ(drawing.arrows[0].head[0], (PagePoint{26, 98}));
}

TEST(NetworkDrawing, GivesEachOutputAnArrowAwayFromIt) {
  const NetworkDrawing drawing = DrawNetwork(MakeNetwork({2, 3, 1}), {800, 400}, kTextHeight);
  EXPECT_EQ(drawing.arrows[2].shaft, (DrawnLine{{400, 302}, {400, 350}}));
  EXPECT_THAT(drawing.arrows[2].head,
              ElementsAre(PagePoint{400, 350}, PagePoint{397, 344}, PagePoint{403, 344}));
}

TEST(NetworkDrawing, MarksTheNodesOfTanhAndSechLayersAlone) {
  Network design = MakeNetwork({2, 2, 1, 1});
  design.layers[1].TransFunc = kTanh;
  design.layers[2].TransFunc = kSech;
  design.layers[3].TransFunc = kGaussian;
  const NetworkDrawing drawing = DrawNetwork(design, {800, 500}, kTextHeight);
  EXPECT_THAT(drawing.marks,
              ElementsAre(DrawnLine{{260, 194}, {272, 206}}, DrawnLine{{260, 206}, {272, 194}},
                          DrawnLine{{527, 194}, {539, 206}}, DrawnLine{{527, 206}, {539, 194}},
                          DrawnLine{{390, 300}, {410, 300}}, DrawnLine{{400, 290}, {400, 310}}));
}

TEST(NetworkDrawing, MarksNoneOfASigmoidNetwork) {
  Network design = MakeNetwork({2, 2, 1});
  design.layers[0].TransFunc = kTanh;  // says nothing
  EXPECT_TRUE(DrawNetwork(design, {800, 500}, kTextHeight).marks.empty());
}

TEST(NetworkDrawing, ConnectsEachNodeWithEachOfTheLayerBelow) {
  EXPECT_THAT(Lines(MakeNetwork({2, 2, 1}), {300, 400}, 1),
              ElementsAre(DrawnLine{{100, 100}, {100, 200}}, DrawnLine{{200, 100}, {100, 200}},
                          DrawnLine{{100, 100}, {200, 200}}, DrawnLine{{200, 100}, {200, 200}}));
  EXPECT_THAT(Lines(MakeNetwork({2, 2, 1}), {300, 400}, 2),
              ElementsAre(DrawnLine{{100, 200}, {150, 300}}, DrawnLine{{200, 200}, {150, 300}}));
}

TEST(NetworkDrawing, DrawsNineConnectionsAndThreeArrowsForTwoThreeOne) {
  const Network design = MakeNetwork({2, 3, 1});
  EXPECT_EQ(LineCount(design), 9U);
  EXPECT_EQ(DrawNetwork(design, {400, 300}, kTextHeight).arrows.size(), 3U);
}

TEST(NetworkDrawing, LeavesRemovedConnectionsOut) {
  const Network design = MakeNetwork({2, 2, 1});
  EXPECT_THAT(Lines(design, {300, 400}, 1, {{0, 1}, {1, 0}}),
              ElementsAre(DrawnLine{{100, 100}, {100, 200}}, DrawnLine{{200, 100}, {200, 200}}));
  EXPECT_TRUE(Lines(design, {300, 400}, 2, {{0, 0}, {0, 1}}).empty());
}

TEST(NetworkDrawing, DrawsTenLayersOfAHundredNodesWhole) {
  const Network design = MakeNetwork({100, 100, 100, 100, 100, 100, 100, 100, 100, 100});
  const NetworkDrawing drawing = DrawNetwork(design, {1000, 700}, kTextHeight);
  EXPECT_EQ(drawing.nodes.size(), 1000U);
  EXPECT_EQ(drawing.arrows.size(), 200U);
  EXPECT_EQ(LineCount(design, {1000, 700}), 90'000U);
}

TEST(NetworkDrawing, DrawsNodesThatShareAPixelOnce) {
  const Network design = MakeNetwork({std::numeric_limits<int32_t>::max(), 300, 1});
  const NetworkDrawing drawing = DrawNetwork(design, {200, 100}, kTextHeight);
  EXPECT_EQ(drawing.nodes.size(), 200U + 200U + 1U);
  EXPECT_EQ(drawing.nodes[0].x, 0);
  EXPECT_EQ(drawing.nodes[199].x, 199);
  EXPECT_EQ(drawing.arrows.size(), 201U);
}

TEST(NetworkDrawing, HasNoLinesForPairsThatTheEditorCannotHold) {
  constexpr int32_t kMost = std::numeric_limits<int32_t>::max();
  EXPECT_TRUE(Lines(MakeNetwork({kMost, kMost, 1}), {200, 100}, 1).empty());
  EXPECT_TRUE(Lines(MakeNetwork({2001, 2000, 1}), {200, 100}, 1).empty());
}

TEST(NetworkDrawing, StaysOnPagesOfAnySize) {
  for (const PageSize page : {PageSize{0, 0}, PageSize{1, 1}, PageSize{7, 2}, PageSize{3, 9000},
                              PageSize{30'000, 20'000}}) {
    const Network design = MakeNetwork({3, 40, 2});
    const NetworkDrawing drawing = DrawNetwork(design, page, kTextHeight);
    EXPECT_THAT(drawing.nodes, Each(AllOf(Field(&PagePoint::x, AllOf(Ge(0), Le(page.width))),
                                          Field(&PagePoint::y, AllOf(Ge(0), Le(page.height))))));
    EXPECT_GE(drawing.diameter, 9);
    EXPECT_EQ(LineCount(design, page), 200U);
  }
}

TEST(NetworkDrawing, DrawsFewLinesInFullAndManyFaintly) {
  EXPECT_EQ(ConnectionOpacity(MakeNetwork({2, 3, 1}), {640, 480}, 1), 255);
  EXPECT_EQ(ConnectionOpacity(MakeNetwork({100, 100, 1}), {1000, 700}, 1), 13);
  EXPECT_EQ(ConnectionOpacity(MakeNetwork({1000, 1000, 1}), {1000, 700}, 1), 3);
}

}  // namespace
}  // namespace tarn
