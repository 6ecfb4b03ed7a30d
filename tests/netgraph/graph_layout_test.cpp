#include "netgraph/graph_layout.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>
#include <gtest/gtest.h>
#include <limits>

#include "netgraph/graph_shapes.h"
#include "netgraph/recording_canvas.h"

namespace tarn {
namespace {

using Limits = std::numeric_limits<float>;

GraphLayout LayoutOf(const Graph& graph, const Size& page) {
  return LayoutGraph(graph, GraphView(graph), RecordingCanvas(page));
}

// The longest texts leave the plot half of a page from 640 x 480 on, and of smaller ones 0.3 of the
// width and 0.25 of the height.
std::string WrongPlot(const GraphLayout& layout) {
  const Rect page = {0, 0, layout.page.width, layout.page.height};
  const bool large = page.width >= 640 && page.height >= 480;
  if (!IsWithin(layout.plot, page)) return "plot leaves the page";
  if (layout.plot.width < (large ? 0.5 : 0.3) * page.width) return "plot too narrow";
  return layout.plot.height < (large ? 0.5 : 0.25) * page.height ? "plot too low" : "";
}

std::string WrongText(const GraphLayout& layout, size_t i) {
  const TextLine& text = layout.texts[i];
  const Rect box = BoxOf(text);
  if (!IsWithin(box, {0, 0, layout.page.width, layout.page.height})) return "leaves the page";
  if (Overlap(box, layout.plot)) return "lies on the plot";
  if (!(text.size > 3)) return "is too small to be seen";
  for (size_t j = 0; j < i; ++j) {
    if (Overlap(box, BoxOf(layout.texts[j]))) return "overlaps " + layout.texts[j].text;
  }
  return "";
}

std::string WrongTexts(const GraphLayout& layout) {
  for (size_t i = 0; i < layout.texts.size(); ++i) {
    const std::string fault = WrongText(layout, i);
    if (!fault.empty()) return "text \"" + layout.texts[i].text + "\" " + fault;
  }
  return "";
}

std::vector<Rect> LegendPlaces(const GraphLayout& layout) {
  std::vector<Rect> places;
  for (const LegendSample& sample : layout.samples) places.push_back(sample.place);
  for (const LegendBand& band : layout.band_legend) places.push_back(band.place);
  return places;
}

std::string WrongLegend(const GraphLayout& layout) {
  const Rect page = {0, 0, layout.page.width, layout.page.height};
  const std::vector<Rect> places = LegendPlaces(layout);
  for (size_t i = 0; i < places.size(); ++i) {
    const Rect& place = places[i];
    if (!IsWithin(place, page)) return "legend leaves the page";
    if (Overlap(place, layout.plot)) return "legend lies on the plot";
    for (size_t j = 0; j < i; ++j) {
      if (Overlap(place, places[j])) return "parts of the legend overlap";
    }
    for (const TextLine& text : layout.texts) {
      if (Overlap(place, BoxOf(text))) return "legend lies on \"" + text.text + "\"";
    }
  }
  return "";
}

std::vector<TextLine> TextsOf(const GraphLayout& layout, Role role) {
  std::vector<TextLine> texts;
  for (const TextLine& text : layout.texts) {
    if (text.role == role) texts.push_back(text);
  }
  return texts;
}

std::vector<AxisTick> Labelled(const std::vector<AxisTick>& ticks) {
  std::vector<AxisTick> labelled;
  for (const AxisTick& tick : ticks) {
    if (tick.labelled) labelled.push_back(tick);
  }
  return labelled;
}

bool SitsAt(const TextLine& text, const Point& place) {
  return std::abs(text.at.x - place.x) < kRounding && std::abs(text.at.y - place.y) < kRounding;
}

// Every labelled tick has its text, at its place along the axis.
std::string WrongTicks(const GraphLayout& layout) {
  const auto x_ticks = Labelled(layout.x_ticks);
  const auto y_ticks = Labelled(layout.y_ticks);
  const auto x_texts = TextsOf(layout, Role::kXTick);
  const auto y_texts = TextsOf(layout, Role::kYTick);
  if (x_texts.size() != x_ticks.size() || y_texts.size() != y_ticks.size()) return "label missing";
  if (!layout.x_scale.IsDegenerate() && x_texts.size() < 2) return "x axis without two labels";
  if (!layout.y_scale.IsDegenerate() && y_texts.size() < 2) return "y axis without two labels";
  for (size_t i = 0; i < x_ticks.size(); ++i) {
    const double x = layout.ToCanvas({x_ticks[i].value, 0}).x;
    const bool below = x_texts[i].at.y > layout.plot.bottom();
    if (x_texts[i].text != x_ticks[i].text) return "label of another x tick";
    if (!below || !SitsAt(x_texts[i], {x, x_texts[i].at.y})) return "x label off its tick";
  }
  for (size_t i = 0; i < y_ticks.size(); ++i) {
    const double y = layout.ToCanvas({0, y_ticks[i].value}).y;
    const bool beside = y_texts[i].at.x < layout.plot.left;
    if (y_texts[i].text != y_ticks[i].text) return "label of another y tick";
    if (!beside || !SitsAt(y_texts[i], {y_texts[i].at.x, y})) return "y label off its tick";
  }
  return "";
}

// What is wrong with a page; nothing of a sound one.
std::string FaultOn(const Graph& graph, const GraphView& view, const Size& page) {
  const GraphLayout layout = LayoutGraph(graph, view, RecordingCanvas(page));
  const std::string fault =
      WrongPlot(layout) + WrongTexts(layout) + WrongLegend(layout) + WrongTicks(layout);
  return fault.empty() ? ""
                       : fmt::format("{} x {}, x {} to {}, y {} to {}: {}", page.width, page.height,
                                     view.range().x_min, view.range().x_max, view.range().y_min,
                                     view.range().y_max, fault);
}

std::string Fault(const Graph& graph) {
  for (const Size& page : kPageSizes) {
    GraphView view(graph);
    for (const bool toggled : {false, true}) {
      if (toggled) view.ToggleLegend();
      const std::string fault = FaultOn(graph, view, page);
      if (!fault.empty()) return fault;
    }
  }
  return "";
}

struct Texts {
  std::string title;
  std::string label;  // of both axes
  std::string name;   // of every curve
};

std::vector<Texts> AllTexts() {
  std::vector<Texts> all;
  for (const std::string& title : {std::string(), Words(40), Words(255), OneWord(255)}) {
    for (const std::string& label : {std::string(), std::string("ETA"), Words(79), OneWord(79)}) {
      for (const std::string& name : {std::string(), std::string("Targets"), OneWord(44)}) {
        all.push_back({title, label, name});
      }
    }
  }
  return all;
}

void SetTexts(const Texts& texts, Graph& graph) {
  graph.title = texts.title;
  graph.x_label = texts.label;
  graph.y_label = texts.label;
  for (CURVE_DEF& curve : graph.curves) curve.name = texts.name;
}

// The longest texts that there are.
Texts LongTexts() {
  return {Words(255), Words(79), Words(44)};
}

TEST(LayoutSweep, IsSoundForEveryLengthOfText) {
  for (const Texts& texts : AllTexts()) {
    for (const size_t curves : {1, 2, 4}) {
      Graph graph = GraphOf(std::vector(curves, WaveCurve({0, 2e6f}, {-1000008, -1000000})));
      SetTexts(texts, graph);
      ASSERT_EQ(Fault(graph), "") << curves;
    }
  }
}

TEST(LayoutSweep, IsSoundWhereSomeCurvesHaveNames) {
  for (size_t named = 0; named < 16; ++named) {
    Graph graph = GraphOf(std::vector(4, WaveCurve({0, 1}, {0, 1})));
    for (size_t i = 0; i < 4; ++i) {
      if ((named >> i & 1u) != 0) graph.curves[i].name = Words(10 + 11 * i);
    }
    ASSERT_EQ(Fault(graph), "") << named;
  }
}

TEST(LayoutSweep, IsSoundForEveryRange) {
  for (const Span& x : AllSpans()) {
    for (const Span& y : AllSpans()) {
      Graph graph = GraphOf({WaveCurve(x, y)});
      SetTexts({"Learn Rate (ETA) History", "ETA", ""}, graph);
      ASSERT_EQ(Fault(graph), "");
    }
  }
}

TEST(LayoutSweep, IsSoundForEveryRangeWithLongTexts) {
  for (const Span& span : AllSpans()) {
    Graph graph = GraphOf(std::vector(4, WaveCurve(span, span)));
    SetTexts(LongTexts(), graph);
    ASSERT_EQ(Fault(graph), "");
  }
}

TEST(LayoutSweep, IsSoundForReversedAxes) {
  for (const Span& span : AllSpans()) {
    Graph graph = GraphOf(std::vector(2, WaveCurve(span, span)));
    SetTexts(LongTexts(), graph);
    graph.range = {span.last, span.first, span.last, span.first};
    ASSERT_EQ(Fault(graph), "");
  }
}

TEST(LayoutSweep, IsSoundForContours) {
  for (const Span& span : AllSpans()) {
    Graph graph = ContourGraph(span, span, span);
    ASSERT_EQ(Fault(graph), "");
    SetTexts(LongTexts(), graph);
    ASSERT_EQ(Fault(graph), "");
  }
}

TEST(LayoutSweep, IsSoundOnPagesOfAnySize) {
  Graph graph = GraphOf(std::vector(4, WaveCurve({-1.5e-12f, -1.1e-12f}, {1000000, 1000008}, 2)));
  SetTexts(LongTexts(), graph);
  const GraphView view(graph);
  for (int i = 0; i < 400; ++i) {
    ASSERT_EQ(FaultOn(graph, view, {300.0 + 7 * i, 200.0 + 5 * i}), "");
    ASSERT_EQ(FaultOn(graph, view, {300.0 + i, 3000.0 - 7 * i}), "");
  }
}

TEST(LayoutSweep, IsSoundWithoutAnythingToShow) {
  const float nan = Limits::quiet_NaN();
  const float inf = Limits::infinity();
  ASSERT_EQ(Fault(Graph()), "");
  for (const CURVE_DEF& curve :
       {CURVE_DEF(), PointsCurve({3}, {4}), PointsCurve({nan, 1}, {1, nan}),
        PointsCurve({inf, -inf}, {0, 1}), PointsCurve({2, 2, 2}, {5, 5, 5})}) {
    Graph graph = GraphOf({curve});
    SetTexts(LongTexts(), graph);
    ASSERT_EQ(Fault(graph), "");
  }
  Graph endless = GraphOf({WaveCurve({0, 1}, {0, 1})});
  endless.range = {-inf, inf, nan, 0};
  ASSERT_EQ(Fault(endless), "");
}

// An ordinary graph.
Graph TwoCurves() {
  Graph graph = GraphOf({WaveCurve({0, 10}, {0, 1}), WaveCurve({0, 10}, {0.2f, 0.6f})});
  graph.title = "Network Outputs vs. Targets";
  graph.x_label = "Pattern";
  graph.y_label = "Output";
  graph.curves[0].name = "Targets";
  graph.curves[1].name = "Network Outputs";
  return graph;
}

TEST(GraphLayout, PlacesTheTextsAroundThePlot) {
  const GraphLayout layout = LayoutOf(TwoCurves(), {800, 600});
  const TextLine title = TextsOf(layout, Role::kTitle).at(0);
  EXPECT_EQ(title.text, "Network Outputs vs. Targets");
  EXPECT_EQ(title.at.x, 400);
  EXPECT_LT(BoxOf(title).bottom(), layout.plot.top);
  const TextLine x_label = TextsOf(layout, Role::kXLabel).at(0);
  EXPECT_EQ(x_label.text, "Pattern");
  EXPECT_NEAR(x_label.at.x, layout.plot.left + layout.plot.width / 2, kRounding);
  const TextLine y_label = TextsOf(layout, Role::kYLabel).at(0);
  EXPECT_EQ(y_label.text, "Output");
  EXPECT_TRUE(y_label.upwards);
  EXPECT_NEAR(y_label.at.y, layout.plot.top + layout.plot.height / 2, kRounding);
  for (const TextLine& tick : TextsOf(layout, Role::kXTick)) {
    EXPECT_GT(BoxOf(x_label).top, BoxOf(tick).bottom());
  }
  for (const TextLine& tick : TextsOf(layout, Role::kYTick)) {
    EXPECT_LT(BoxOf(y_label).right(), BoxOf(tick).left);
  }
  for (const TextLine& name : TextsOf(layout, Role::kLegend)) {
    EXPECT_GT(BoxOf(name).top, BoxOf(x_label).bottom());
  }
}

TEST(GraphLayout, SetsFontsByRole) {
  for (const TextLine& text : LayoutOf(TwoCurves(), {800, 600}).texts) {
    EXPECT_EQ(text.size, text.role == Role::kTitle ? 16 : 13) << text.text;
  }
}

TEST(GraphLayout, GrowsWithThePage) {
  const GraphLayout small = LayoutOf(TwoCurves(), {800, 600});
  const GraphLayout large = LayoutOf(TwoCurves(), {3200, 2400});
  EXPECT_EQ(small.unit, 1);
  EXPECT_EQ(large.unit, 4);
  EXPECT_NEAR(large.plot.left, 4 * small.plot.left, kRounding);
  EXPECT_NEAR(large.plot.top, 4 * small.plot.top, kRounding);
  EXPECT_NEAR(large.plot.width, 4 * small.plot.width, kRounding);
  EXPECT_NEAR(large.plot.height, 4 * small.plot.height, kRounding);
  ASSERT_EQ(large.texts.size(), small.texts.size());
  for (size_t i = 0; i < small.texts.size(); ++i) {
    EXPECT_EQ(large.texts[i].text, small.texts[i].text);
    EXPECT_NEAR(large.texts[i].size, 4 * small.texts[i].size, kRounding);
    EXPECT_NEAR(large.texts[i].at.x, 4 * small.texts[i].at.x, kRounding);
    EXPECT_NEAR(large.texts[i].at.y, 4 * small.texts[i].at.y, kRounding);
  }
}

TEST(GraphLayout, KeepsFontsLegibleOnSmallPages) {
  EXPECT_EQ(LayoutOf(TwoCurves(), {300, 200}).unit, 0.7);
  EXPECT_EQ(LayoutOf(TwoCurves(), {8000, 200}).unit, 0.7);
  EXPECT_EQ(LayoutOf(TwoCurves(), {300, 6000}).unit, 0.7);
}

TEST(GraphLayout, WrapsALongTitle) {
  Graph graph = TwoCurves();
  graph.title = Words(255);
  const auto lines = TextsOf(LayoutOf(graph, {800, 600}), Role::kTitle);
  ASSERT_GT(lines.size(), 1u);
  std::string joined = lines[0].text;
  for (size_t i = 1; i < lines.size(); ++i) {
    joined += " " + lines[i].text;
    EXPECT_GT(lines[i].at.y, lines[i - 1].at.y);
  }
  EXPECT_EQ(joined, graph.title);
}

TEST(GraphLayout, WrapsALabelOfTheYAxisFromLeftToRight) {
  Graph graph = TwoCurves();
  graph.y_label = Words(79);
  const auto lines = TextsOf(LayoutOf(graph, {640, 300}), Role::kYLabel);
  ASSERT_GT(lines.size(), 1u);
  for (size_t i = 1; i < lines.size(); ++i) EXPECT_GT(lines[i].at.x, lines[i - 1].at.x);
}

TEST(GraphLayout, HasNoTextWithoutTexts) {
  const GraphLayout layout = LayoutOf(GraphOf({WaveCurve({0, 1}, {0, 1})}), {800, 600});
  for (const TextLine& text : layout.texts) {
    EXPECT_TRUE(text.role == Role::kXTick || text.role == Role::kYTick) << text.text;
  }
}

TEST(GraphLayout, LabelsTheTicksOfBothAxes) {
  const GraphLayout layout = LayoutOf(TwoCurves(), {800, 600});
  std::vector<std::string> x_texts, y_texts;
  for (const TextLine& text : TextsOf(layout, Role::kXTick)) x_texts.push_back(text.text);
  for (const TextLine& text : TextsOf(layout, Role::kYTick)) y_texts.push_back(text.text);
  EXPECT_EQ(x_texts, (std::vector<std::string>{"0", "2", "4", "6", "8", "10"}));
  EXPECT_EQ(y_texts, (std::vector<std::string>{"0.0", "0.2", "0.4", "0.6", "0.8", "1.0"}));
}

TEST(GraphLayout, LabelsFewerTicksWhereThereIsNoRoom) {
  const Graph graph = GraphOf({WaveCurve({1000000, 1000008}, {0, 1})});
  const auto wide = Labelled(LayoutOf(graph, {800, 600}).x_ticks);
  const auto narrow = Labelled(LayoutOf(graph, {300, 600}).x_ticks);
  EXPECT_LT(narrow.size(), wide.size());
  EXPECT_EQ(narrow.front().text, wide.front().text);
  Graph texts = GraphOf(std::vector(4, WaveCurve({0, 10}, {0, 100})));
  SetTexts(LongTexts(), texts);
  const GraphLayout high = LayoutOf(texts, {300, 200});
  const GraphLayout flat = LayoutOf(texts, {300, 150});
  EXPECT_EQ(flat.y_ticks.size(), high.y_ticks.size());
  EXPECT_LT(Labelled(flat.y_ticks).size(), Labelled(high.y_ticks).size());
}

TEST(GraphLayout, MakesRoomForALongLabelAtTheRightEnd) {
  const Graph graph = GraphOf({WaveCurve({1000000, 1000008}, {0, 1})});
  const GraphLayout layout = LayoutOf(graph, {800, 600});
  const TextLine last = TextsOf(layout, Role::kXTick).back();
  EXPECT_EQ(last.text, "1.000008e+06");
  EXPECT_NEAR(last.at.x, layout.plot.right(), kRounding);
  EXPECT_LE(BoxOf(last).right(), 800);
}

TEST(GraphLayout, ScalesTheAxesOverTheView) {
  Graph graph = TwoCurves();
  graph.range = {-3, 97, 5, 2};
  const GraphLayout layout = LayoutOf(graph, {800, 600});
  EXPECT_EQ(layout.x_scale.first, -20);
  EXPECT_EQ(layout.x_scale.second, 100);
  EXPECT_EQ(layout.y_scale.first, 5);
  EXPECT_EQ(layout.y_scale.second, 2);
}

TEST(GraphLayout, PutsEntriesOfTheLegendBesideEachOther) {
  const GraphLayout layout = LayoutOf(TwoCurves(), {800, 600});
  const auto names = TextsOf(layout, Role::kLegend);
  ASSERT_EQ(names.size(), 2u);
  ASSERT_EQ(layout.samples.size(), 2u);
  EXPECT_EQ(names[0].text, "Targets");
  EXPECT_EQ(names[1].text, "Network Outputs");
  EXPECT_EQ(names[0].at.y, names[1].at.y);
  for (size_t i = 0; i < 2; ++i) {
    EXPECT_EQ(layout.samples[i].curve, i);
    EXPECT_LT(layout.samples[i].place.right(), BoxOf(names[i]).left);
  }
  EXPECT_LT(BoxOf(names[0]).right(), layout.samples[1].place.left);
}

TEST(GraphLayout, BreaksALongLegendIntoRows) {
  Graph graph = GraphOf(std::vector(4, WaveCurve({0, 1}, {0, 1})));
  for (CURVE_DEF& curve : graph.curves) curve.name = Words(44);
  const auto names = TextsOf(LayoutOf(graph, {800, 600}), Role::kLegend);
  ASSERT_EQ(names.size(), 4u);
  EXPECT_EQ(names[0].at.y, names[1].at.y);
  EXPECT_LT(names[1].at.y, names[2].at.y);
  EXPECT_EQ(names[2].at.y, names[3].at.y);
}

TEST(GraphLayout, ListsNamedCurvesOnly) {
  Graph graph = GraphOf(std::vector(3, WaveCurve({0, 1}, {0, 1})));
  graph.curves[1].name = "Targets";
  const GraphLayout layout = LayoutOf(graph, {800, 600});
  ASSERT_EQ(layout.samples.size(), 1u);
  EXPECT_EQ(layout.samples[0].curve, 1u);
  EXPECT_EQ(TextsOf(layout, Role::kLegend).size(), 1u);
}

TEST(GraphLayout, GivesThePlotTheRoomOfAHiddenLegend) {
  const Graph graph = TwoCurves();
  GraphView view(graph);
  const RecordingCanvas canvas({800, 600});
  const GraphLayout with = LayoutGraph(graph, view, canvas);
  view.ToggleLegend();
  const GraphLayout without = LayoutGraph(graph, view, canvas);
  EXPECT_TRUE(without.samples.empty());
  EXPECT_TRUE(TextsOf(without, Role::kLegend).empty());
  EXPECT_GT(without.plot.height, with.plot.height);
}

TEST(GraphLayout, StacksTheColoursOfContoursBesideThePlot) {
  const Graph graph = ContourGraph({0, 1}, {0, 1}, {0, 1});
  const GraphLayout layout = LayoutOf(graph, {800, 600});
  ASSERT_TRUE(layout.bands);
  ASSERT_EQ(layout.band_legend.size(), layout.bands->count());
  double bottom = layout.plot.bottom();
  for (size_t i = 0; i < layout.band_legend.size(); ++i) {
    const LegendBand& band = layout.band_legend[i];
    EXPECT_EQ(band.level, i);
    EXPECT_GT(band.place.left, layout.plot.right());
    EXPECT_NEAR(band.place.bottom(), bottom, kRounding);
    bottom = band.place.top;
  }
  EXPECT_NEAR(bottom, layout.plot.top, kRounding);
}

TEST(GraphLayout, WritesTheBoundsOfContoursAtTheirColours) {
  const GraphLayout layout = LayoutOf(ContourGraph({0, 1}, {0, 1}, {0, 1}), {800, 600});
  const auto bounds = TextsOf(layout, Role::kLegend);
  ASSERT_EQ(bounds.size(), layout.bands->bounds.size());
  for (size_t i = 0; i < layout.band_legend.size(); ++i) {
    EXPECT_EQ(bounds[i].text, layout.bands->bound_texts[i]);
    EXPECT_NEAR(bounds[i].at.y, layout.band_legend[i].place.bottom(), kRounding);
    EXPECT_NEAR(bounds[i + 1].at.y, layout.band_legend[i].place.top, kRounding);
  }
}

TEST(GraphLayout, HidesTheColoursOfContoursWithTheLegend) {
  const Graph graph = ContourGraph({0, 1}, {0, 1}, {0, 1});
  GraphView view(graph);
  const RecordingCanvas canvas({800, 600});
  const GraphLayout with = LayoutGraph(graph, view, canvas);
  view.ToggleLegend();
  const GraphLayout without = LayoutGraph(graph, view, canvas);
  EXPECT_TRUE(without.bands);
  EXPECT_TRUE(without.band_legend.empty());
  EXPECT_GT(without.plot.width, with.plot.width);
}

// Nothing is legible there, but nothing fails.
TEST(GraphLayout, HasAPlotOnPagesThatHaveNoRoomForOne) {
  Graph lines = GraphOf(std::vector(4, WaveCurve({0, 2e6f}, {-1000008, -1000000})));
  SetTexts(LongTexts(), lines);
  Graph contours = ContourGraph({0, 1}, {0, 1}, {0, 1});
  SetTexts(LongTexts(), contours);
  for (const double width : {0.0, 1.0, 5.0, 11.0, 12.0, 40.0, 100.0, 299.0}) {
    for (const double height : {0.0, 1.0, 10.0, 50.0, 199.0}) {
      for (const Graph& graph : {lines, contours}) {
        const GraphLayout layout = LayoutOf(graph, {width, height});
        EXPECT_GT(layout.plot.width, 0) << width << ' ' << height;
        EXPECT_GT(layout.plot.height, 0) << width << ' ' << height;
      }
    }
  }
}

TEST(GraphLayout, MapsTheEndsOfTheAxesToTheCornersOfThePlot) {
  const GraphLayout layout = LayoutOf(TwoCurves(), {800, 600});
  const Point low = layout.ToCanvas({0, 0});
  EXPECT_NEAR(low.x, layout.plot.left, kRounding);
  EXPECT_NEAR(low.y, layout.plot.bottom(), kRounding);
  const Point high = layout.ToCanvas({10, 1});
  EXPECT_NEAR(high.x, layout.plot.right(), kRounding);
  EXPECT_NEAR(high.y, layout.plot.top, kRounding);
}

TEST(GraphLayout, RunsFromTheFirstEndOfAReversedAxisToTheSecond) {
  Graph graph = TwoCurves();
  graph.range = {10, 0, 1, 0};
  const GraphLayout layout = LayoutOf(graph, {800, 600});
  const Point zero = layout.ToCanvas({0, 0});
  EXPECT_NEAR(zero.x, layout.plot.right(), kRounding);
  EXPECT_NEAR(zero.y, layout.plot.top, kRounding);
}

// The way to the data and back, at places in and around the plot.
TEST(GraphLayout, FindsTheDataOfEveryPlace) {
  for (const Span& x : AllSpans()) {
    for (const Size& page : kPageSizes) {
      const GraphLayout layout = LayoutOf(GraphOf({WaveCurve(x, {-2, 7})}), page);
      if (layout.x_scale.IsDegenerate()) continue;
      for (int i = -2; i <= 12; ++i) {
        const Point place = {layout.plot.left + i * layout.plot.width / 10,
                             layout.plot.bottom() - i * layout.plot.height / 10};
        const Point there = layout.ToCanvas(layout.ToData(place));
        // A range of the last bits of its values has places to a few of their rounding errors.
        ASSERT_NEAR(there.x, place.x, 1e-6 * page.width) << x.first << ' ' << x.last;
        ASSERT_NEAR(there.y, place.y, 1e-9 * page.height) << x.first << ' ' << x.last;
      }
    }
  }
}

TEST(GraphLayout, FindsThePlaceOfAllData) {
  const GraphLayout layout = LayoutOf(TwoCurves(), {800, 600});
  for (double x = -5; x < 15; x += 0.37) {
    for (double y = -1; y < 2; y += 0.13) {
      const Point data = layout.ToData(layout.ToCanvas({x, y}));
      ASSERT_NEAR(data.x, x, 1e-12);
      ASSERT_NEAR(data.y, y, 1e-12);
    }
  }
}

TEST(GraphLayout, PutsEverythingOnTheMiddleOfADegenerateAxis) {
  const GraphLayout layout = LayoutOf(GraphOf({PointsCurve({3}, {-4})}), {800, 600});
  const Point middle = {layout.plot.left + layout.plot.width / 2,
                        layout.plot.top + layout.plot.height / 2};
  for (const Point& data : {Point{3, -4}, Point{0, 0}, Point{1e30, -1e30}}) {
    EXPECT_NEAR(layout.ToCanvas(data).x, middle.x, kRounding);
    EXPECT_NEAR(layout.ToCanvas(data).y, middle.y, kRounding);
  }
  for (const Point& place : {middle, Point{0, 0}, Point{800, 600}}) {
    EXPECT_EQ(layout.ToData(place), (Point{3, -4}));
  }
  ASSERT_EQ(TextsOf(layout, Role::kXTick).size(), 1u);
  EXPECT_EQ(TextsOf(layout, Role::kXTick)[0].text, "3");
  EXPECT_NEAR(TextsOf(layout, Role::kXTick)[0].at.x, middle.x, kRounding);
  ASSERT_EQ(TextsOf(layout, Role::kYTick).size(), 1u);
  EXPECT_EQ(TextsOf(layout, Role::kYTick)[0].text, "-4");
}

TEST(GraphLayout, PutsEverythingOnTheMiddleOfAnEndlessAxis) {
  Graph graph = TwoCurves();
  graph.range = {0, Limits::infinity(), -Limits::infinity(), Limits::infinity()};
  const GraphLayout layout = LayoutOf(graph, {800, 600});
  const Point place = layout.ToCanvas({5, 0.5});
  EXPECT_NEAR(place.x, layout.plot.left + layout.plot.width / 2, kRounding);
  EXPECT_NEAR(place.y, layout.plot.top + layout.plot.height / 2, kRounding);
  EXPECT_TRUE(TextsOf(layout, Role::kXTick).empty());
}

TEST(GraphLayoutPlaces, BesideThePlotAreMovedOntoItsSides) {
  GraphLayout layout;
  layout.plot = {10, 20, 100, 50};
  EXPECT_EQ(layout.NearestInPlot({30, 40}), (Point{30, 40}));
  EXPECT_EQ(layout.NearestInPlot({0, 40}), (Point{10, 40}));
  EXPECT_EQ(layout.NearestInPlot({200, 0}), (Point{110, 20}));
  EXPECT_EQ(layout.NearestInPlot({-5, 500}), (Point{10, 70}));
}

}  // namespace
}  // namespace tarn
