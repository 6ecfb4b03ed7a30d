#include "netgraph/svg_canvas.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <limits>
#include <set>

#include "netgraph/graph_renderer.h"
#include "netgraph/graph_shapes.h"
#include "netgraph/text_metrics.h"
#include "support/comma_locale.h"

namespace tarn {
namespace {

constexpr Pen kPen = {{1, 2, 255}, 1.5, Dashes::kSolid};

// A document of one thing is this, then the thing, then the end.
const std::string kHead =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<svg xmlns=\"http://www.w3.org/2000/svg\" version=\"1.1\" width=\"300\" height=\"200\" "
    "viewBox=\"0 0 300 200\" font-family=\"DejaVu Sans, Verdana, Arial, sans-serif\">\n"
    "<title></title>\n";
const std::string kFoot = "</svg>\n";

SvgCanvas NewCanvas() {
  return SvgCanvas({300, 200}, "");
}

// What stands between head and foot.
std::string BodyOf(const SvgCanvas& canvas) {
  const std::string document = canvas.Document();
  EXPECT_TRUE(document.starts_with(kHead)) << document;
  EXPECT_TRUE(document.ends_with(kFoot)) << document;
  return document.substr(kHead.size(), document.size() - kHead.size() - kFoot.size());
}

TextLine LineOf(std::string text) {
  TextLine line;
  line.text = std::move(text);
  line.size = 10;
  line.at = {50, 20};
  return line;
}

// The content of the one text element.
std::string WrittenAs(const std::string& text) {
  SvgCanvas canvas = NewCanvas();
  canvas.DrawText(LineOf(text));
  const std::string body = BodyOf(canvas);
  const size_t begin = body.find('>') + 1;
  return body.substr(begin, body.rfind("</text>") - begin);
}

CurveShape CurveOf(std::vector<std::vector<Point>> lines, std::vector<Point> markers,
                   MarkerShape shape = MarkerShape::kCircle) {
  CurveShape curve;
  curve.lines = std::move(lines);
  curve.markers = std::move(markers);
  curve.shape = shape;
  curve.radius = 3.5;
  curve.pen = kPen;
  return curve;
}

std::string PathOf(const CurveShape& curve) {
  SvgCanvas canvas = NewCanvas();
  canvas.DrawCurve(Role::kCurve, curve);
  const std::string body = BodyOf(canvas);
  const size_t begin = body.find(" d=\"") + 4;
  return body.substr(begin, body.find('"', begin) - begin);
}

TEST(SvgCanvas, IsAnEmptyDocumentAtFirst) {
  const SvgCanvas canvas({300, 200}, "");
  EXPECT_EQ(canvas.Document(), kHead + kFoot);
  EXPECT_EQ(canvas.size().width, 300);
  EXPECT_EQ(canvas.size().height, 200);
}

TEST(SvgCanvas, MeasuresTextByThePictureFonts) {
  const SvgCanvas canvas = NewCanvas();
  EXPECT_EQ(canvas.TextWidth("Wide & i", 13), PictureTextWidth("Wide & i", 13));
  EXPECT_EQ(canvas.TextWidth("", 13), 0);
}

TEST(SvgCanvas, WritesRectangles) {
  SvgCanvas canvas = NewCanvas();
  canvas.DrawRect(Role::kPage, {0, 0, 300, 200}, {255, 255, 255}, std::nullopt);
  canvas.DrawRect(Role::kPlotArea, {10.5, 20, 30.25, 40}, {0, 16, 171}, kPen);
  EXPECT_EQ(BodyOf(canvas),
            "<rect class=\"page\" x=\"0\" y=\"0\" width=\"300\" height=\"200\" fill=\"#ffffff\"/>\n"
            "<rect class=\"plot-area\" x=\"10.5\" y=\"20\" width=\"30.25\" height=\"40\" "
            "fill=\"#0010ab\" stroke=\"#0102ff\" stroke-width=\"1.5\"/>\n");
}

TEST(SvgCanvas, WritesLines) {
  SvgCanvas canvas = NewCanvas();
  canvas.DrawLine(Role::kGrid, {1, 2}, {3, 4.5}, kPen);
  canvas.DrawLine(Role::kTick, {1, 2}, {3, 4.5}, {{0, 0, 0}, 1, Dashes::kSolid});
  EXPECT_EQ(BodyOf(canvas),
            "<line class=\"grid\" x1=\"1\" y1=\"2\" x2=\"3\" y2=\"4.5\" stroke=\"#0102ff\" "
            "stroke-width=\"1.5\"/>\n"
            "<line class=\"tick\" x1=\"1\" y1=\"2\" x2=\"3\" y2=\"4.5\" stroke=\"#000000\" "
            "stroke-width=\"1\"/>\n");
}

TEST(SvgCanvas, WritesDashesInWidthsOfThePen) {
  SvgCanvas canvas = NewCanvas();
  canvas.DrawLine(Role::kTick, {0, 0}, {9, 0}, {{0, 0, 0}, 1.5, Dashes::kDashed});
  canvas.DrawLine(Role::kTick, {0, 0}, {9, 0}, {{0, 0, 0}, 2, Dashes::kDotted});
  EXPECT_EQ(BodyOf(canvas),
            "<line class=\"tick\" x1=\"0\" y1=\"0\" x2=\"9\" y2=\"0\" stroke=\"#000000\" "
            "stroke-width=\"1.5\" stroke-dasharray=\"6 3\"/>\n"
            "<line class=\"tick\" x1=\"0\" y1=\"0\" x2=\"9\" y2=\"0\" stroke=\"#000000\" "
            "stroke-width=\"2\" stroke-dasharray=\"2 3.2\"/>\n");
}

TEST(SvgCanvas, WritesTextOnItsBaseLine) {
  SvgCanvas canvas = NewCanvas();
  canvas.DrawText({Role::kTitle, "Title", 10, {50, 20}, Anchor::kMiddle, false});
  canvas.DrawText({Role::kLegend, "Name", 10, {50, 20}, Anchor::kStart, false});
  canvas.DrawText({Role::kYTick, "0.5", 12.5, {50, 20}, Anchor::kEnd, false});
  EXPECT_EQ(BodyOf(canvas),
            "<text class=\"title\" x=\"50\" y=\"23.6\" font-size=\"10\" text-anchor=\"middle\">"
            "Title</text>\n"
            "<text class=\"legend\" x=\"50\" y=\"23.6\" font-size=\"10\" text-anchor=\"start\">"
            "Name</text>\n"
            "<text class=\"y-tick\" x=\"50\" y=\"24.5\" font-size=\"12.5\" text-anchor=\"end\">"
            "0.5</text>\n");
}

TEST(SvgCanvas, TurnsTextThatRunsUpwards) {
  SvgCanvas canvas = NewCanvas();
  canvas.DrawText({Role::kYLabel, "Output", 10, {50, 20}, Anchor::kMiddle, true});
  EXPECT_EQ(BodyOf(canvas),
            "<text class=\"y-label\" x=\"53.6\" y=\"20\" font-size=\"10\" text-anchor=\"middle\" "
            "transform=\"rotate(-90 53.6 20)\">Output</text>\n");
}

TEST(SvgCanvas, NamesTheClassOfEveryRole) {
  const std::pair<Role, const char*> classes[] = {
      {Role::kPage, "page"},     {Role::kPlotArea, "plot-area"}, {Role::kGrid, "grid"},
      {Role::kTick, "tick"},     {Role::kXTick, "x-tick"},       {Role::kYTick, "y-tick"},
      {Role::kTitle, "title"},   {Role::kXLabel, "x-label"},     {Role::kYLabel, "y-label"},
      {Role::kLegend, "legend"}, {Role::kBand, "band"},          {Role::kCurve, "curve"}};
  for (const auto& [role, name] : classes) {
    SvgCanvas canvas = NewCanvas();
    TextLine line = LineOf("text");
    line.role = role;
    canvas.DrawText(line);
    EXPECT_TRUE(BodyOf(canvas).starts_with("<text class=\"" + std::string(name) + "\" ")) << name;
  }
}

TEST(SvgCanvas, WritesACurveAsOnePath) {
  SvgCanvas canvas = NewCanvas();
  canvas.DrawCurve(Role::kCurve, CurveOf({{{1, 2}, {3, 4}, {5.25, 6}}, {{7, 8}, {9, 10}}}, {}));
  EXPECT_EQ(BodyOf(canvas),
            "<path class=\"curve\" d=\"M1 2L3 4L5.25 6M7 8L9 10\" fill=\"none\" "
            "stroke=\"#0102ff\" stroke-width=\"1.5\" stroke-linejoin=\"round\"/>\n");
}

TEST(SvgCanvas, DashesACurve) {
  CurveShape curve = CurveOf({{{1, 2}, {3, 4}}}, {});
  curve.pen.dashes = Dashes::kDashed;
  SvgCanvas canvas = NewCanvas();
  canvas.DrawCurve(Role::kLegend, curve);
  EXPECT_EQ(BodyOf(canvas),
            "<path class=\"legend\" d=\"M1 2L3 4\" fill=\"none\" stroke=\"#0102ff\" "
            "stroke-width=\"1.5\" stroke-dasharray=\"6 3\" stroke-linejoin=\"round\"/>\n");
}

TEST(SvgCanvas, DrawsCircles) {
  EXPECT_EQ(PathOf(CurveOf({}, {{10, 20}})), "M6.5 20a3.5 3.5 0 1 0 7 0a3.5 3.5 0 1 0 -7 0z");
}

TEST(SvgCanvas, DrawsDiamonds) {
  EXPECT_EQ(PathOf(CurveOf({}, {{10, 20}}, MarkerShape::kDiamond)),
            "M10 16.5l3.5 3.5l-3.5 3.5l-3.5 -3.5z");
}

TEST(SvgCanvas, DrawsCrosses) {
  EXPECT_EQ(PathOf(CurveOf({}, {{10, 20}}, MarkerShape::kCross)), "M6.5 20h7M10 16.5v7");
}

TEST(SvgCanvas, DrawsMarkersAfterTheLines) {
  EXPECT_EQ(PathOf(CurveOf({{{1, 2}, {3, 4}}}, {{1, 2}, {30, 40}}, MarkerShape::kCross)),
            "M1 2L3 4M-2.5 2h7M1 -1.5v7M26.5 40h7M30 36.5v7");
}

TEST(SvgCanvas, FillsPolygonsTogether) {
  SvgCanvas canvas = NewCanvas();
  canvas.FillPolygons(Role::kBand, {{{0, 0}, {1, 0}, {1, 1}}, {{5, 5}, {6, 5}, {6, 6}, {5, 6}}},
                      {68, 1, 84});
  EXPECT_EQ(BodyOf(canvas),
            "<path class=\"band\" d=\"M0 0L1 0L1 1zM5 5L6 5L6 6L5 6z\" fill=\"#440154\" "
            "stroke=\"#440154\" stroke-width=\"0.6\" stroke-linejoin=\"round\"/>\n");
}

TEST(SvgCanvas, GroupsWhatIsClipped) {
  SvgCanvas canvas = NewCanvas();
  canvas.BeginClip({1, 2, 3, 4.5});
  canvas.DrawLine(Role::kTick, {0, 0}, {9, 9}, {{0, 0, 0}, 1, Dashes::kSolid});
  canvas.EndClip();
  canvas.BeginClip({5, 6, 7, 8});
  canvas.EndClip();
  EXPECT_EQ(BodyOf(canvas),
            "<clipPath id=\"clip1\"><rect x=\"1\" y=\"2\" width=\"3\" height=\"4.5\"/></clipPath>\n"
            "<g clip-path=\"url(#clip1)\">\n"
            "<line class=\"tick\" x1=\"0\" y1=\"0\" x2=\"9\" y2=\"9\" stroke=\"#000000\" "
            "stroke-width=\"1\"/>\n"
            "</g>\n"
            "<clipPath id=\"clip2\"><rect x=\"5\" y=\"6\" width=\"7\" height=\"8\"/></clipPath>\n"
            "<g clip-path=\"url(#clip2)\">\n"
            "</g>\n");
}

TEST(SvgText, EscapesMarkup) {
  EXPECT_EQ(WrittenAs("a<b && c>d]]>"), "a&lt;b &amp;&amp; c&gt;d]]&gt;");
  EXPECT_EQ(WrittenAs("&amp;"), "&amp;amp;");
  EXPECT_EQ(WrittenAs("</text><script>"), "&lt;/text&gt;&lt;script&gt;");
}

TEST(SvgText, LeavesQuotesAlone) {
  EXPECT_EQ(WrittenAs(R"("one" 'two')"), R"("one" 'two')");
}

TEST(SvgText, KeepsCharactersOfEveryLength) {
  const std::string text = "\t\u007F\u00E4\u20AC\uFFFD\U0001F600\U0010FFFF";
  EXPECT_EQ(WrittenAs(text), text);
}

TEST(SvgText, ReplacesControlCharacters) {
  EXPECT_EQ(WrittenAs(std::string("a\0b\x01\n\r\x1F", 7)), "a\uFFFDb\uFFFD\uFFFD\uFFFD\uFFFD");
}

TEST(SvgText, ReplacesWhatIsNoCharacterOfXml) {
  EXPECT_EQ(WrittenAs("\xEF\xBF\xBE"), "\uFFFD");    // U+FFFE
  EXPECT_EQ(WrittenAs("\xEF\xBF\xBFx"), "\uFFFDx");  // U+FFFF
  EXPECT_EQ(WrittenAs("\xEF\xBF\xBD"), "\uFFFD");    // itself
}

TEST(SvgText, ReplacesEveryByteThatIsNoUtf8) {
  EXPECT_EQ(WrittenAs("\xFFz"), "\uFFFDz");
  EXPECT_EQ(WrittenAs("\xE4h"), "\uFFFDh");                              // Latin-1
  EXPECT_EQ(WrittenAs("\xC0\xBC"), "\uFFFD\uFFFD");                      // '<', too long
  EXPECT_EQ(WrittenAs("\xED\xA0\x80"), "\uFFFD\uFFFD\uFFFD");            // half a pair
  EXPECT_EQ(WrittenAs("\xF4\x90\x80\x80"), "\uFFFD\uFFFD\uFFFD\uFFFD");  // beyond the last
  EXPECT_EQ(WrittenAs("\xE2\x82"), "\uFFFD\uFFFD");                      // cut off
  EXPECT_EQ(WrittenAs("\xE2\x82<"), "\uFFFD\uFFFD&lt;");
}

TEST(SvgText, EscapesTheTitleOfTheDocument) {
  const std::string document = SvgCanvas({300, 200}, "A <b> & \"c\"\n\xFF").Document();
  EXPECT_NE(document.find("<title>A &lt;b&gt; &amp; \"c\"\uFFFD\uFFFD</title>\n"),
            std::string::npos);
}

std::string NumberOf(double value) {
  return PathOf(CurveOf({{{value, 0}, {1, 1}}}, {}));
}

TEST(SvgNumbers, HaveTwoDecimalsAtMostAndNoZerosBehindThem) {
  EXPECT_EQ(NumberOf(0), "M0 0L1 1");
  EXPECT_EQ(NumberOf(100), "M100 0L1 1");
  EXPECT_EQ(NumberOf(10.5), "M10.5 0L1 1");
  EXPECT_EQ(NumberOf(10.25), "M10.25 0L1 1");
  EXPECT_EQ(NumberOf(10.2549), "M10.25 0L1 1");
  EXPECT_EQ(NumberOf(10.999), "M11 0L1 1");
  EXPECT_EQ(NumberOf(-7.1), "M-7.1 0L1 1");
}

TEST(SvgNumbers, HaveNoNegativeZero) {
  EXPECT_EQ(NumberOf(-0.0), "M0 0L1 1");
  EXPECT_EQ(NumberOf(-0.004), "M0 0L1 1");
}

TEST(SvgNumbers, HaveNoExponent) {
  EXPECT_EQ(NumberOf(1e-9), "M0 0L1 1");
  EXPECT_EQ(NumberOf(12345678), "M12345678 0L1 1");
  EXPECT_EQ(NumberOf(1e15), "M1000000000000000 0L1 1");
}

Graph GraphWithTexts() {
  Graph graph = GraphOf({WaveCurve({0, 2e6f}, {-0.5f, 0.25f}), WaveCurve({0, 2e6f}, {0, 1})});
  graph.title = "Errors < 5 % & \"more\"";
  graph.x_label = "Pattern\x01";
  graph.y_label = "</svg>\xFF";
  graph.curves[0].name = "Targets & <Outputs>";
  graph.curves[0].style = kDashedDiamond;
  graph.curves[0].marker = kPointMarker;
  graph.curves[1].mode = kMarkersOnly;
  return graph;
}

std::string Picture(const Graph& graph, const Size& size = {800, 600}) {
  SvgCanvas canvas(size, graph.title);
  DrawGraph(graph, GraphView(graph), canvas);
  return canvas.Document();
}

TEST(SvgNumbers, AreTheSameUnderADecimalCommaLocale) {
  const Graph graph = GraphWithTexts();
  const std::string before = Picture(graph, {8000.5, 6000.25});
  const CommaLocale comma;
  EXPECT_EQ(Picture(graph, {8000.5, 6000.25}), before);
}

// Of the element that a tag opens or closes.
std::string NameOf(const std::string& tag) {
  const size_t begin = tag[1] == '/' ? 2 : 1;
  return tag.substr(begin, tag.find_first_of(" />", begin) - begin);
}

// What is wrong with the tags and references of a document; nothing of one that is well-formed.
std::string WrongTag(const std::string& document) {
  std::vector<std::string> open;
  size_t at = document.find("?>") + 2;
  while ((at = document.find('<', at)) != std::string::npos) {
    const size_t end = document.find('>', at);
    if (end == std::string::npos) return "tag without an end";
    const std::string tag = document.substr(at, end + 1 - at);
    if (std::ranges::count(tag, '"') % 2 != 0) return "quote without its other: " + tag;
    if (tag[1] == '/') {
      if (open.empty() || open.back() != NameOf(tag)) return "closes nothing: " + tag;
      open.pop_back();
    } else if (tag[tag.size() - 2] != '/') {
      open.push_back(NameOf(tag));
    }
    at = end;
  }
  return open.empty() ? "" : "not closed: " + open.back();
}

std::string WrongReference(const std::string& document) {
  for (size_t at = 0; (at = document.find('&', at)) != std::string::npos; ++at) {
    const std::string name = document.substr(at, document.find(';', at) + 1 - at);
    if (name != "&amp;" && name != "&lt;" && name != "&gt;") return "unknown: " + name;
  }
  return "";
}

std::vector<Graph> SomeGraphs() {
  Graph contours = ContourGraph({0.15f, 0.85f}, {0, 1}, {-1, 1});
  contours.title = "Contours & <more>";
  return {Graph(), GraphWithTexts(), contours, GraphOf({PointsCurve({3}, {4})})};
}

TEST(SvgPicture, IsWellFormed) {
  for (const Graph& graph : SomeGraphs()) {
    for (const Size& size : kPageSizes) {
      const std::string document = Picture(graph, size);
      EXPECT_EQ(WrongTag(document), "");
      EXPECT_EQ(WrongReference(document), "");
      EXPECT_TRUE(document.starts_with("<?xml "));
      EXPECT_TRUE(document.ends_with("</svg>\n"));
    }
  }
}

TEST(SvgPicture, HasNumbersOnlyWhereNumbersBelong) {
  for (const Graph& graph : SomeGraphs()) {
    const std::string document = Picture(graph);
    EXPECT_EQ(document.find("\"nan"), std::string::npos);
    EXPECT_EQ(document.find("nan "), std::string::npos);
    EXPECT_EQ(document.find("\"inf"), std::string::npos);
    EXPECT_EQ(document.find("-0\""), std::string::npos);
  }
}

TEST(SvgPicture, HasClipsOfTheirOwn) {
  SvgCanvas canvas({800, 600}, "Two");
  for (const Graph& graph : SomeGraphs()) DrawGraph(graph, GraphView(graph), canvas);
  const std::string document = canvas.Document();
  EXPECT_EQ(WrongTag(document), "");
  std::set<std::string> ids;
  size_t clips = 0;
  for (size_t at = 0; (at = document.find(" id=\"", at)) != std::string::npos; ++at, ++clips) {
    const size_t begin = at + 5;
    const std::string id = document.substr(begin, document.find('"', begin) - begin);
    ids.insert(id);
    EXPECT_NE(document.find("url(#" + id + ")"), std::string::npos);
  }
  EXPECT_EQ(clips, 3u);  // a graph without curves has none
  EXPECT_EQ(ids.size(), clips);
}

}  // namespace
}  // namespace tarn
