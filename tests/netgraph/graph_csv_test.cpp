#include "netgraph/graph_csv.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <sstream>

#include "netgraph/graph_shapes.h"
#include "support/comma_locale.h"

namespace tarn {
namespace {

using Limits = std::numeric_limits<float>;

Graph TwoCurves() {
  Graph graph = GraphOf({PointsCurve({1, 2.5f}, {0.1f, -3}), PointsCurve({1}, {1e-20f})});
  graph.title = "Network Outputs vs. Targets";
  graph.x_label = "Pattern";
  graph.y_label = "Output";
  graph.curves[0].name = "Targets";
  graph.curves[0].colour = kGreen;
  graph.curves[0].marker = kPointMarker;
  graph.curves[1].colour = {1, 171, 255};
  graph.curves[1].mode = kMarkersOnly;
  return graph;
}

std::vector<std::string> LinesOf(const std::string& csv) {
  std::vector<std::string> lines;
  std::istringstream stream(csv);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

TEST(GraphCsv, WritesTextsCurvesAndPoints) {
  EXPECT_EQ(GraphCsv(TwoCurves()),
            "title,Network Outputs vs. Targets\n"
            "x-label,Pattern\n"
            "y-label,Output\n"
            "curve,Targets,#009600,5,1\n"
            "1,0.100000001\n"
            "2.5,-3\n"
            "curve,,#01abff,0,2\n"
            "1,9.99999968e-21\n");
}

TEST(GraphCsv, WritesARangeThatIsFixed) {
  Graph graph = TwoCurves();
  graph.range = {-0.5f, 2, 0, 1e10f};
  EXPECT_EQ(GraphCsv(graph),
            "title,Network Outputs vs. Targets\n"
            "x-label,Pattern\n"
            "y-label,Output\n"
            "range,-0.5,2,0,1e+10\n"
            "curve,Targets,#009600,5,1\n"
            "1,0.100000001\n"
            "2.5,-3\n"
            "curve,,#01abff,0,2\n"
            "1,9.99999968e-21\n");
}

TEST(GraphCsv, WritesAnEmptyGraph) {
  EXPECT_EQ(GraphCsv(Graph()), "title,\nx-label,\ny-label,\n");
}

TEST(GraphCsv, LeavesTextsAsTheyAreButForLineEnds) {
  Graph graph = GraphOf({CURVE_DEF()});
  graph.title = "a, \"b\" % %s %d\r\nc";
  graph.x_label = "\n";
  graph.y_label = "\xC3\xA4\xFF;";
  graph.curves[0].name = "one\ntwo,\rthree";
  EXPECT_EQ(GraphCsv(graph),
            "title,a, \"b\" % %s %d  c\n"
            "x-label, \n"
            "y-label,\xC3\xA4\xFF;\n"
            "curve,one two, three,#0000ff,0,1\n");
}

TEST(GraphCsv, WritesTheGridOfContoursRowByRow) {
  Graph graph;
  graph.contours.emplace();
  for (size_t row = 0; row < kContourSteps; ++row) {
    for (size_t column = 0; column < kContourSteps; ++column) {
      graph.contours->At(row, column) = static_cast<float>(100 * row + column) + 0.5f;
    }
  }
  graph.range = {0, 1, 0.25f, 0.75f};
  const std::string csv = GraphCsv(graph);
  EXPECT_EQ(csv.back(), '\n');
  const auto lines = LinesOf(csv);
  ASSERT_EQ(lines.size(), 4u + 41u);
  EXPECT_EQ(lines[3], "range,0,1,0.25,0.75");
  EXPECT_EQ(lines[4], "grid");
  EXPECT_TRUE(lines[5].starts_with("0.5,1.5,2.5,"));
  EXPECT_TRUE(lines[5].ends_with(",38.5,39.5"));
  EXPECT_TRUE(lines[44].starts_with("3900.5,3901.5,"));
  EXPECT_TRUE(lines[44].ends_with(",3939.5"));
  for (size_t i = 5; i < lines.size(); ++i) EXPECT_EQ(std::ranges::count(lines[i], ','), 39);
}

TEST(GraphCsv, WritesWhatIsNoNumberAsAWord) {
  const float inf = Limits::infinity();
  const auto lines = LinesOf(GraphCsv(
      GraphOf({PointsCurve({Limits::quiet_NaN(), inf, -Limits::quiet_NaN()}, {-inf, -0.0f, 1})})));
  ASSERT_EQ(lines.size(), 7u);
  EXPECT_EQ(lines[4], "nan,-inf");
  EXPECT_EQ(lines[5], "inf,-0");
  EXPECT_EQ(lines[6], "nan,1");
}

void ExpectSameBits(const std::string& text, float value) {
  const float read = std::strtof(text.c_str(), nullptr);
  EXPECT_EQ(std::bit_cast<uint32_t>(read), std::bit_cast<uint32_t>(value)) << text;
}

TEST(GraphCsv, GivesBackEveryFloat) {
  std::mt19937 bits(77);
  CURVE_DEF curve = PointsCurve({0, -0.0f, Limits::denorm_min(), Limits::min(), Limits::max()},
                                {1, 0.1f, -Limits::denorm_min(), -Limits::max(), 16777216});
  while (curve.x.size() < 20000) {
    const float x = std::bit_cast<float>(static_cast<uint32_t>(bits()));
    const float y = std::bit_cast<float>(static_cast<uint32_t>(bits()));
    if (!std::isfinite(x) || !std::isfinite(y)) continue;
    curve.x.push_back(x);
    curve.y.push_back(y);
  }
  const auto lines = LinesOf(GraphCsv(GraphOf({curve})));
  ASSERT_EQ(lines.size(), 4 + curve.x.size());
  for (size_t i = 0; i < curve.x.size(); ++i) {
    const std::string& line = lines[4 + i];
    const size_t comma = line.find(',');
    ASSERT_NE(comma, std::string::npos);
    ExpectSameBits(line.substr(0, comma), curve.x[i]);
    ExpectSameBits(line.substr(comma + 1), curve.y[i]);
  }
}

TEST(GraphCsv, WritesPointsUnderADecimalCommaLocale) {
  Graph graph = TwoCurves();
  graph.range = {-0.5f, 1234567, 0.25f, 1e-7f};
  graph.curves[0].marker = 1234;
  const std::string before = GraphCsv(graph);
  const CommaLocale comma;
  EXPECT_EQ(GraphCsv(graph), before);
}

}  // namespace
}  // namespace tarn
