#include "netgraph/graph_renderer.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>
#include <gtest/gtest.h>
#include <limits>
#include <map>

#include "netgraph/drawn_graph.h"

namespace tarn {
namespace {

using Limits = std::numeric_limits<float>;

// A curve of one graph that is drawn on its own.
CurveShape ShapeOf(const CURVE_DEF& curve) {
  const auto curves = Draw(GraphOf({curve})).canvas.Curves(Role::kCurve);
  EXPECT_EQ(curves.size(), 1u);
  return curves.empty() ? CurveShape() : curves[0];
}

Graph NamedCurves() {
  Graph graph = GraphOf(std::vector(3, WaveCurve({0, 10}, {0, 1})));
  graph.title = "Network Outputs vs. Targets";
  graph.x_label = "Pattern";
  graph.y_label = "Output";
  graph.curves[0].name = "Targets";
  graph.curves[2].name = "Errors";
  return graph;
}

// The stage of drawing that a call belongs to.
int StageOf(const CanvasCall& call) {
  static const std::map<std::pair<CallKind, Role>, int> kStages = {
      {{CallKind::kRect, Role::kPage}, 0},        {{CallKind::kRect, Role::kPlotArea}, 1},
      {{CallKind::kLine, Role::kGrid}, 2},        {{CallKind::kBeginClip, Role::kPlotArea}, 3},
      {{CallKind::kPolygons, Role::kBand}, 4},    {{CallKind::kCurve, Role::kCurve}, 5},
      {{CallKind::kEndClip, Role::kPlotArea}, 6}, {{CallKind::kLine, Role::kTick}, 7},
      {{CallKind::kCurve, Role::kLegend}, 8},     {{CallKind::kRect, Role::kLegend}, 9}};
  if (call.kind == CallKind::kText) return 10;
  const auto found = kStages.find({call.kind, call.role});
  return found == kStages.end() ? -1 : found->second;
}

std::vector<int> Stages(const RecordingCanvas& canvas) {
  std::vector<int> stages;
  for (const CanvasCall& call : canvas.calls()) {
    if (stages.empty() || stages.back() != StageOf(call)) stages.push_back(StageOf(call));
  }
  return stages;
}

TEST(GraphRenderer, DrawsFromThePageUpToTheTexts) {
  EXPECT_EQ(Stages(Draw(NamedCurves()).canvas), (std::vector<int>{0, 1, 2, 7, 3, 5, 6, 8, 10}));
}

TEST(GraphRenderer, DrawsContoursFromThePageUpToTheTexts) {
  EXPECT_EQ(Stages(Draw(ContourGraph({0, 1}, {0, 1}, {0, 1})).canvas),
            (std::vector<int>{0, 1, 3, 4, 6, 7, 9, 10}));
}

// Memory is short when bands or curves are drawn.
class CanvasWithoutMemory : public RecordingCanvas {
 public:
  using RecordingCanvas::RecordingCanvas;
  void FillPolygons(Role, const std::vector<Polygon>&, const Colour&) override {
    throw std::bad_alloc();
  }
  void DrawCurve(Role, const CurveShape&) override { throw std::bad_alloc(); }
};

TEST(GraphRenderer, TellsThatMemoryIsShortForContours) {
  CanvasWithoutMemory canvas(Size{800, 600});
  const Graph graph = ContourGraph({0, 1}, {0, 1}, {0, 1});
  const std::optional<Message> message = PaintGraph(graph, GraphView(graph), canvas);
  ASSERT_TRUE(message);
  EXPECT_EQ(message->caption, "NetGraph Error");
  EXPECT_EQ(message->text, "Memory Error generating Contours");
  EXPECT_EQ(message->icon, MessageIcon::kExclamation);
  RecordingCanvas enough(Size{800, 600});
  EXPECT_FALSE(PaintGraph(graph, GraphView(graph), enough));
}

TEST(GraphRenderer, LeavesShortMemoryOfOtherGraphsToItsCaller) {
  CanvasWithoutMemory canvas(Size{800, 600});
  const Graph graph = NamedCurves();
  EXPECT_THROW(PaintGraph(graph, GraphView(graph), canvas), std::bad_alloc);
}

TEST(GraphRenderer, DrawsTheSameOverALayoutOfTheCanvas) {
  const Graph graph = NamedCurves();
  const Picture picture = Draw(graph);
  RecordingCanvas again(kPage);
  DrawGraph(graph, picture.layout, again);
  ASSERT_EQ(again.calls().size(), picture.canvas.calls().size());
  EXPECT_EQ(Stages(again), Stages(picture.canvas));
  EXPECT_EQ(again.Curves(Role::kCurve).at(1).lines, picture.canvas.Curves(Role::kCurve)[1].lines);
}

TEST(GraphRenderer, CoversTheWholePage) {
  const auto pages = Draw(NamedCurves()).canvas.CallsOf(CallKind::kRect, Role::kPage);
  ASSERT_EQ(pages.size(), 1u);
  EXPECT_EQ(pages[0].rect.left, 0);
  EXPECT_EQ(pages[0].rect.top, 0);
  EXPECT_EQ(pages[0].rect.width, 800);
  EXPECT_EQ(pages[0].rect.height, 600);
  EXPECT_EQ(pages[0].colour, (Colour{255, 255, 255}));
}

TEST(GraphRenderer, ClipsWhatIsInThePlotToThePlot) {
  const Picture picture = Draw(NamedCurves());
  const Rect plot = PlotArea(picture.canvas);
  EXPECT_EQ(plot.left, picture.layout.plot.left);
  EXPECT_EQ(plot.bottom(), picture.layout.plot.bottom());
  for (const CanvasCall& call : picture.canvas.CallsOf(CallKind::kCurve, Role::kCurve)) {
    ASSERT_TRUE(call.clip);
    EXPECT_EQ(call.clip->left, plot.left);
    EXPECT_EQ(call.clip->top, plot.top);
    EXPECT_EQ(call.clip->width, plot.width);
    EXPECT_EQ(call.clip->height, plot.height);
  }
  for (const CanvasCall& call : picture.canvas.calls()) {
    const bool in_plot = call.role == Role::kCurve || call.kind == CallKind::kEndClip;
    EXPECT_EQ(call.clip.has_value(), in_plot);
  }
  EXPECT_EQ(picture.canvas.open_clips(), 0u);
}

TEST(GraphRenderer, DrawsALineOfTheGridAtEveryLabel) {
  const Picture picture = Draw(NamedCurves());
  const Rect plot = PlotArea(picture.canvas);
  const auto grid = picture.canvas.CallsOf(CallKind::kLine, Role::kGrid);
  std::vector<double> across, up;
  for (const CanvasCall& line : grid) {
    if (line.from.x == line.to.x) {
      across.push_back(line.from.x);
      EXPECT_EQ(line.from.y, plot.top);
      EXPECT_EQ(line.to.y, plot.bottom());
    } else {
      up.push_back(line.from.y);
      EXPECT_EQ(line.from.x, plot.left);
      EXPECT_EQ(line.to.x, plot.right());
      EXPECT_EQ(line.from.y, line.to.y);
    }
  }
  std::vector<double> x_texts, y_texts;
  for (const TextLine& text : picture.canvas.Texts()) {
    if (text.role == Role::kXTick) x_texts.push_back(text.at.x);
    if (text.role == Role::kYTick) y_texts.push_back(text.at.y);
  }
  EXPECT_EQ(across, x_texts);
  EXPECT_EQ(up, y_texts);
  EXPECT_EQ(across.size(), 6u);
}

TEST(GraphRenderer, FramesThePlotAndMarksEveryTick) {
  const Picture picture = Draw(NamedCurves());
  const Rect plot = PlotArea(picture.canvas);
  const auto lines = picture.canvas.CallsOf(CallKind::kLine, Role::kTick);
  ASSERT_EQ(lines.size(), 4 + picture.layout.x_ticks.size() + picture.layout.y_ticks.size());
  const Point upper_left = {plot.left, plot.top};
  EXPECT_EQ(lines[0].from, upper_left);
  for (size_t i = 0; i < 4; ++i) EXPECT_EQ(lines[i].to, lines[(i + 1) % 4].from);
  EXPECT_EQ(lines[1].to, (Point{plot.right(), plot.bottom()}));
  for (size_t i = 0; i < picture.layout.x_ticks.size(); ++i) {
    const CanvasCall& tick = lines[4 + i];
    EXPECT_EQ(tick.from.y, plot.bottom());
    EXPECT_EQ(tick.to.y, plot.bottom() + (picture.layout.x_ticks[i].labelled ? 6 : 3));
    EXPECT_NEAR(tick.from.x, picture.layout.ToCanvas({picture.layout.x_ticks[i].value, 0}).x,
                kRounding);
  }
  EXPECT_EQ(lines.back().to.x, plot.left);
}

TEST(GraphRenderer, DrawsEveryCurveOnce) {
  for (size_t count = 1; count <= 4; ++count) {
    Graph graph = GraphOf(std::vector(count, WaveCurve({0, 1}, {0, 1})));
    for (size_t i = 0; i < count; ++i) graph.curves[i].colour.red = static_cast<uint8_t>(10 * i);
    const auto curves = Draw(graph).canvas.Curves(Role::kCurve);
    ASSERT_EQ(curves.size(), count);
    for (size_t i = 0; i < count; ++i) EXPECT_EQ(curves[i].pen.colour.red, 10 * i);
  }
}

TEST(GraphRenderer, DrawsNoCurveThatHasNothingToShow) {
  const float nan = Limits::quiet_NaN();
  const Graph graph = GraphOf({CURVE_DEF(), PointsCurve({nan, 1, Limits::infinity()}, {1, nan, 0}),
                               MarkersOf(PointsCurve({nan}, {1})), WaveCurve({0, 1}, {0, 1})});
  EXPECT_EQ(Draw(graph).canvas.Curves(Role::kCurve).size(), 1u);
}

TEST(GraphRenderer, DrawsNoCurveThatIsOutOfSight) {
  Graph graph = GraphOf(
      {WaveCurve({5, 6}, {5, 6}), MarkersOf(WaveCurve({5, 6}, {0, 1})), PointsCurve({7}, {0})});
  graph.range = {0, 1, 0, 1};
  EXPECT_TRUE(Draw(graph).canvas.Curves(Role::kCurve).empty());
}

TEST(GraphRenderer, JoinsThePointsWhereTheyAre) {
  const Picture picture = Draw(GraphOf({PointsCurve({0, 1, 2}, {3, -1, 2})}));
  const CurveShape curve = picture.canvas.Curves(Role::kCurve).at(0);
  ASSERT_EQ(curve.lines.size(), 1u);
  ASSERT_EQ(curve.lines[0].size(), 3u);
  const double expected[][2] = {{0, 3}, {1, -1}, {2, 2}};
  for (size_t i = 0; i < 3; ++i) {
    const Point place = picture.layout.ToCanvas({expected[i][0], expected[i][1]});
    EXPECT_NEAR(curve.lines[0][i].x, place.x, kRounding);
    EXPECT_NEAR(curve.lines[0][i].y, place.y, kRounding);
  }
  EXPECT_TRUE(curve.markers.empty());
}

TEST(GraphRenderer, BreaksALineWhereAPointIsNoNumber) {
  const float nan = Limits::quiet_NaN();
  const CurveShape curve =
      ShapeOf(PointsCurve({0, 1, 2, 3, 4, 5, 6}, {0, 1, nan, 0, 1, Limits::infinity(), 1}));
  ASSERT_EQ(curve.lines.size(), 2u);
  EXPECT_EQ(curve.lines[0].size(), 2u);
  EXPECT_EQ(curve.lines[1].size(), 2u);
  EXPECT_LT(curve.lines[0][1].x, curve.lines[1][0].x);
  EXPECT_EQ(curve.markers.size(), 1u);  // the last point, alone
}

TEST(GraphRenderer, ShowsASingleJoinedPointAsAMarker) {
  const Picture picture = Draw(GraphOf({PointsCurve({3}, {4})}));
  const CurveShape curve = picture.canvas.Curves(Role::kCurve).at(0);
  EXPECT_TRUE(curve.lines.empty());
  ASSERT_EQ(curve.markers.size(), 1u);
  EXPECT_EQ(curve.markers[0], picture.layout.ToCanvas({3, 4}));
  EXPECT_GT(curve.radius, 1);
}

TEST(GraphRenderer, ShowsJoinedPointsThatAreAllTheSameAsAMarker) {
  const CurveShape curve = ShapeOf(PointsCurve({3, 3, 3}, {4, 4, 4}));
  EXPECT_TRUE(curve.lines.empty());
  EXPECT_EQ(curve.markers.size(), 1u);
}

TEST(GraphRenderer, DrawsPointsOnAJoinedCurveThatHasMarkers) {
  CURVE_DEF curve = PointsCurve({0, 1, 2}, {0, 1, 0});
  curve.marker = kPointMarker;
  const CurveShape shape = ShapeOf(curve);
  ASSERT_EQ(shape.lines.size(), 1u);
  EXPECT_EQ(shape.markers, shape.lines[0]);
}

TEST(GraphRenderer, DrawsMarkersWithoutALine) {
  for (const int32_t marker : {kPointMarker, kNoMarker}) {
    CURVE_DEF curve = MarkersOf(PointsCurve({0, 1, 2}, {0, 1, 0}));
    curve.marker = marker;
    const CurveShape shape = ShapeOf(curve);
    EXPECT_TRUE(shape.lines.empty());
    EXPECT_EQ(shape.markers.size(), 3u);
  }
}

TEST(GraphRenderer, TellsCurvesApartByDashesAndMarkers) {
  CURVE_DEF curve = WaveCurve({0, 1}, {0, 1});
  curve.colour = kGreen;
  EXPECT_EQ(ShapeOf(curve).pen.dashes, Dashes::kSolid);
  EXPECT_EQ(ShapeOf(curve).shape, MarkerShape::kCircle);
  EXPECT_EQ(ShapeOf(curve).pen.colour, kGreen);
  curve.style = kDashedDiamond;
  EXPECT_EQ(ShapeOf(curve).pen.dashes, Dashes::kDashed);
  EXPECT_EQ(ShapeOf(curve).shape, MarkerShape::kDiamond);
  curve.style = kDottedCross;
  EXPECT_EQ(ShapeOf(curve).pen.dashes, Dashes::kDotted);
  EXPECT_EQ(ShapeOf(curve).shape, MarkerShape::kCross);
}

TEST(GraphRenderer, DrawsMarkersWithAWholeLine) {
  for (const CurveStyle style : {kSolidCircle, kDashedDiamond, kDottedCross}) {
    CURVE_DEF curve = MarkersOf(WaveCurve({0, 1}, {0, 1}));
    curve.style = style;
    EXPECT_EQ(ShapeOf(curve).pen.dashes, Dashes::kSolid);
  }
}

TEST(GraphRenderer, TakesSmallerMarkersWhereThereAreMany) {
  const auto radius = [](size_t markers) {
    return ShapeOf(MarkersOf(WaveCurve({0, 1}, {0, 1}, markers))).radius;
  };
  EXPECT_EQ(radius(1), radius(200));
  EXPECT_GT(radius(200), radius(201));
  EXPECT_EQ(radius(201), radius(2000));
  EXPECT_GT(radius(2000), radius(2001));
  EXPECT_EQ(radius(2001), radius(20000));
  EXPECT_GT(radius(20000), 1);
}

TEST(GraphRenderer, DrawsWiderLinesOnLargerPages) {
  const Graph graph = GraphOf({MarkersOf(WaveCurve({0, 1}, {0, 1}))});
  const CurveShape small = Draw(graph).canvas.Curves(Role::kCurve).at(0);
  const CurveShape large = Draw(graph, {3200, 2400}).canvas.Curves(Role::kCurve).at(0);
  EXPECT_NEAR(large.pen.width, 4 * small.pen.width, kRounding);
  EXPECT_NEAR(large.radius, 4 * small.radius, kRounding);
}

// A smooth wave with a spike up and one down that no neighbour has.
CURVE_DEF SpikedCurve(size_t points) {
  CURVE_DEF curve = WaveCurve({0, 1}, {-1, 1}, points);
  curve.y[points / 3] = 7;
  curve.y[points / 2] = -8;
  return curve;
}

TEST(GraphRenderer, ThinsALineToFourPointsAColumnAndKeepsItsExtremes) {
  for (const Size& page : kPageSizes) {
    const Picture picture = Draw(GraphOf({SpikedCurve(100000)}), page);
    const CurveShape curve = picture.canvas.Curves(Role::kCurve).at(0);
    ASSERT_EQ(curve.lines.size(), 1u);
    const auto& line = curve.lines[0];
    EXPECT_LE(static_cast<double>(line.size()), 4 * (picture.layout.plot.width + 2));
    EXPECT_LT(line.size(), 40000u);
    const auto [highest, lowest] = std::ranges::minmax(line, {}, &Point::y);
    EXPECT_NEAR(highest.y, picture.layout.ToCanvas({0, 7}).y, kRounding);
    EXPECT_NEAR(lowest.y, picture.layout.ToCanvas({0, -8}).y, kRounding);
    EXPECT_NEAR(line.front().x, picture.layout.plot.left, kRounding);
    EXPECT_NEAR(line.back().x, picture.layout.plot.right(), kRounding);
  }
}

TEST(GraphRenderer, KeepsAllPointsOfALineThatHasFew) {
  EXPECT_EQ(ShapeOf(WaveCurve({0, 1}, {0, 1}, 300)).lines.at(0).size(), 300u);
}

TEST(GraphRenderer, DrawsMarkersThatCoverEachOtherOnce) {
  const CURVE_DEF curve = MarkersOf(WaveCurve({0, 1}, {0, 1}, 100000));
  const Picture picture = Draw(GraphOf({curve}));
  const CurveShape shape = picture.canvas.Curves(Role::kCurve).at(0);
  const Rect& plot = picture.layout.plot;
  const double cells = (plot.width / shape.radius + 2) * (plot.height / shape.radius + 2);
  EXPECT_LT(static_cast<double>(shape.markers.size()), cells);
  EXPECT_LT(shape.markers.size(), 20000u);
  for (size_t i = 0; i < curve.x.size(); i += 97) {
    const Point place = picture.layout.ToCanvas({curve.x[i], curve.y[i]});
    ASSERT_TRUE(std::ranges::any_of(shape.markers, [&](const Point& marker) {
      return std::abs(marker.x - place.x) <= shape.radius &&
             std::abs(marker.y - place.y) <= shape.radius;
    })) << i;
  }
}

TEST(GraphRenderer, DrawsBandsAndNoGridForContours) {
  const RecordingCanvas canvas = Draw(ContourGraph({0, 1}, {0, 1}, {0, 1})).canvas;
  EXPECT_TRUE(canvas.CallsOf(CallKind::kLine, Role::kGrid).empty());
  EXPECT_TRUE(canvas.Curves(Role::kCurve).empty());
  const auto bands = canvas.CallsOf(CallKind::kPolygons, Role::kBand);
  EXPECT_GE(bands.size(), 8u);
  for (size_t i = 1; i < bands.size(); ++i) EXPECT_FALSE(bands[i].colour == bands[i - 1].colour);
}

double AreaOf(const Polygon& polygon) {
  double area = 0;
  for (size_t i = 0; i < polygon.size(); ++i) {
    const Point& a = polygon[i];
    const Point& b = polygon[(i + 1) % polygon.size()];
    area += (a.x * b.y - b.x * a.y) / 2;
  }
  return std::abs(area);
}

double AreaOfBands(const RecordingCanvas& canvas) {
  double area = 0;
  for (const CanvasCall& band : canvas.CallsOf(CallKind::kPolygons, Role::kBand)) {
    for (const Polygon& polygon : band.polygons) area += AreaOf(polygon);
  }
  return area;
}

TEST(GraphRenderer, CoversThePlotWithBandsInEveryView) {
  const Graph graph = ContourGraph({0, 1}, {0, 1}, {-3, 5});
  GraphView view(graph);
  for (int zoom = 0; zoom < 5; ++zoom) {
    const Picture picture = Draw(graph, view);
    const Rect& plot = picture.layout.plot;
    EXPECT_NEAR(AreaOfBands(picture.canvas) / (plot.width * plot.height), 1, 1e-9) << zoom;
    ASSERT_FALSE(view.ZoomTo(picture.layout, {plot.left + 40, plot.top + 30},
                             {plot.right() - 100, plot.bottom() - 70}));
  }
}

TEST(GraphRenderer, LeavesOutBandsWithoutNumbers) {
  Graph graph = ContourGraph({0, 1}, {0, 1}, {0, 1});
  std::ranges::fill(graph.contours->values, Limits::quiet_NaN());
  const RecordingCanvas canvas = Draw(graph).canvas;
  EXPECT_TRUE(canvas.CallsOf(CallKind::kPolygons, Role::kBand).empty());
  EXPECT_TRUE(canvas.CallsOf(CallKind::kRect, Role::kLegend).empty());
}

TEST(GraphRenderer, PaintsTheLegendOfContoursInTheColoursOfTheBands) {
  const RecordingCanvas canvas = Draw(ContourGraph({0, 1}, {0, 1}, {0, 1})).canvas;
  const auto samples = canvas.CallsOf(CallKind::kRect, Role::kLegend);
  for (const CanvasCall& band : canvas.CallsOf(CallKind::kPolygons, Role::kBand)) {
    EXPECT_TRUE(std::ranges::any_of(
        samples, [&](const CanvasCall& sample) { return sample.colour == band.colour; }));
  }
}

TEST(GraphRenderer, DrawsWhatLiesOnTheSidesOfThePlotAtEverySize) {
  const CURVE_DEF square = PointsCurve({0, 10, 10, 0, 0}, {0, 0, 1, 1, 0});
  const Graph graph = GraphOf({square, MarkersOf(square)});
  for (int width = 300; width <= 1600; width += 13) {
    for (int height = 200; height <= 1200; height += 17) {
      const Size page = {static_cast<double>(width), static_cast<double>(height)};
      const auto curves = Draw(graph, page).canvas.Curves(Role::kCurve);
      ASSERT_EQ(curves.size(), 2u);
      ASSERT_EQ(curves[0].lines.size(), 1u) << width << " x " << height;
      ASSERT_EQ(curves[0].lines[0].size(), 5u) << width << " x " << height;
      ASSERT_EQ(curves[1].markers.size(), 5u) << width << " x " << height;
    }
  }
}

TEST(GraphRenderer, WritesTheNamesInTheColoursOfTheCurves) {
  Graph graph = NamedCurves();
  graph.curves[0].colour = kRed;
  graph.curves[2].colour = kGreen;
  const auto texts = Draw(graph).layout.texts;
  const auto colour_of = [&](const std::string& name) {
    return std::ranges::find(texts, name, &TextLine::text)->colour;
  };
  EXPECT_EQ(colour_of("Targets"), kRed);
  EXPECT_EQ(colour_of("Errors"), kGreen);
  EXPECT_EQ(colour_of(graph.title), Colour());
}

TEST(GraphRenderer, ShowsASampleOfEveryNamedCurve) {
  Graph graph = NamedCurves();
  graph.curves[0].style = kDashedDiamond;
  graph.curves[0].colour = kRed;
  graph.curves[2].mode = kMarkersOnly;
  const auto samples = Draw(graph).canvas.Curves(Role::kLegend);
  ASSERT_EQ(samples.size(), 2u);
  EXPECT_EQ(samples[0].lines.size(), 1u);
  EXPECT_TRUE(samples[0].markers.empty());
  EXPECT_EQ(samples[0].pen.dashes, Dashes::kDashed);
  EXPECT_EQ(samples[0].pen.colour, kRed);
  EXPECT_TRUE(samples[1].lines.empty());
  EXPECT_EQ(samples[1].markers.size(), 1u);
}

TEST(GraphRenderer, ShowsNoSampleWithoutTheLegend) {
  const Graph graph = NamedCurves();
  GraphView view(graph);
  view.ToggleLegend();
  const RecordingCanvas canvas = Draw(graph, view).canvas;
  EXPECT_TRUE(canvas.Curves(Role::kLegend).empty());
  EXPECT_EQ(canvas.Curves(Role::kCurve).size(), 3u);
  for (const TextLine& text : canvas.Texts()) EXPECT_NE(text.role, Role::kLegend);
}

TEST(GraphRenderer, ShowsAPartOfACurveAfterZoomingIn) {
  const Graph graph = GraphOf({WaveCurve({0, 10}, {0, 1}, 1000)});
  GraphView view(graph);
  const GraphLayout layout = Draw(graph, view).layout;
  const Rect& plot = layout.plot;
  ASSERT_FALSE(view.ZoomTo(layout, {plot.left + 100, plot.top + 0.4 * plot.height},
                           {plot.left + 400, plot.bottom() - 0.4 * plot.height}));
  const auto curves = Draw(graph, view).canvas.Curves(Role::kCurve);
  ASSERT_EQ(curves.size(), 1u);
  EXPECT_GT(curves[0].lines.size(), 1u);
}

TEST(GraphRenderer, DrawsALineThatCrossesThePlotWithBothEndsOutside) {
  Graph graph = GraphOf({PointsCurve({-10, 10}, {-10, 10})});
  graph.range = {-1, 1, -1, 1};
  const Picture picture = Draw(graph);
  const CurveShape curve = picture.canvas.Curves(Role::kCurve).at(0);
  ASSERT_EQ(curve.lines.size(), 1u);
  ASSERT_EQ(curve.lines[0].size(), 2u);
  const Rect& plot = picture.layout.plot;
  EXPECT_NEAR(curve.lines[0][0].x, plot.left, kRounding);
  EXPECT_NEAR(curve.lines[0][0].y, plot.bottom(), kRounding);
  EXPECT_NEAR(curve.lines[0][1].x, plot.right(), kRounding);
  EXPECT_NEAR(curve.lines[0][1].y, plot.top, kRounding);
}

TEST(GraphRenderer, DrawsALineBetweenTheFarthestPointsThereAre) {
  Graph graph = GraphOf({PointsCurve({-Limits::max(), Limits::max()}, {0.5f, 0.5f})});
  graph.range = {0, Limits::denorm_min(), 0, 1};
  const Picture picture = Draw(graph);
  const CurveShape curve = picture.canvas.Curves(Role::kCurve).at(0);
  ASSERT_EQ(curve.lines.size(), 1u);
  EXPECT_NEAR(curve.lines[0].front().x, picture.layout.plot.left, kRounding);
  EXPECT_NEAR(curve.lines[0].back().x, picture.layout.plot.right(), kRounding);
}

TEST(GraphRenderer, LeavesOutMarkersBesideThePlot) {
  Graph graph = GraphOf({MarkersOf(PointsCurve({-1, 0.5f, 1, 2}, {0, 0.5f, 0.5f, 3}))});
  graph.range = {0, 1, 0, 1};
  EXPECT_EQ(Draw(graph).canvas.Curves(Role::kCurve).at(0).markers.size(), 2u);
}

}  // namespace
}  // namespace tarn
