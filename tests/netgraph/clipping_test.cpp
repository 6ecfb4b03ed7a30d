#include "netgraph/clipping.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <random>

namespace tarn {
namespace {

using Line = std::vector<Point>;
using Lines = std::vector<Line>;

constexpr Rect kRect = {10, 20, 100, 50};  // 10 to 110 across, 20 to 70 down

Lines Clip(const Point& from, const Point& to) {
  return ClipLine({from, to}, kRect);
}

void ExpectNear(const Point& point, const Point& expected) {
  EXPECT_NEAR(point.x, expected.x, 1e-9);
  EXPECT_NEAR(point.y, expected.y, 1e-9);
}

// One piece from one point to another.
void ExpectPiece(const Lines& pieces, const Point& from, const Point& to) {
  ASSERT_EQ(pieces.size(), 1U);
  ASSERT_EQ(pieces[0].size(), 2U);
  ExpectNear(pieces[0][0], from);
  ExpectNear(pieces[0][1], to);
}

bool AllWithin(const std::vector<Point>& points, const Rect& rect) {
  return std::ranges::all_of(points, [&](const Point& point) { return rect.Contains(point); });
}

TEST(ClipLine, KeepsWhatIsInside) {
  const Line line = {{11, 21}, {50, 60}, {109, 22}, {11, 21}};
  EXPECT_EQ(ClipLine(line, kRect), Lines{line});
}

TEST(ClipLine, DropsWhatIsOutside) {
  EXPECT_TRUE(Clip({0, 30}, {9, 60}).empty());
  EXPECT_TRUE(Clip({111, 30}, {200, 60}).empty());
  EXPECT_TRUE(Clip({20, 0}, {90, 19}).empty());
  EXPECT_TRUE(Clip({20, 71}, {90, 200}).empty());
}

TEST(ClipLine, DropsWhatPassesACorner) {
  EXPECT_TRUE(Clip({0, 25}, {15, 5}).empty());
  EXPECT_TRUE(Clip({105, 5}, {120, 25}).empty());
  EXPECT_TRUE(Clip({100, 90}, {130, 60}).empty());
  EXPECT_TRUE(Clip({0, 62}, {20, 82}).empty());
}

TEST(ClipLine, CutsTheEndThatIsOutside) {
  ExpectPiece(Clip({60, 40}, {160, 40}), {60, 40}, {110, 40});
  ExpectPiece(Clip({60, 40}, {-40, 40}), {60, 40}, {10, 40});
  ExpectPiece(Clip({60, 40}, {60, -60}), {60, 40}, {60, 20});
  ExpectPiece(Clip({60, 100}, {60, 40}), {60, 70}, {60, 40});
  ExpectPiece(Clip({0, 30}, {20, 40}), {10, 35}, {20, 40});
}

TEST(ClipLine, KeepsTheEndThatIsInsideAsItIs) {
  const Point inside = {1.0 / 3 + 30, 2.0 / 3 + 40};
  const Lines leaving = Clip(inside, {1000, 1e7});
  ASSERT_EQ(leaving.size(), 1U);
  EXPECT_EQ(leaving[0].front(), inside);
  const Lines coming = Clip({-1e7, 3}, inside);
  ASSERT_EQ(coming.size(), 1U);
  EXPECT_EQ(coming[0].back(), inside);
}

TEST(ClipLine, CutsBothEnds) {
  ExpectPiece(Clip({0, 30}, {200, 30}), {10, 30}, {110, 30});
  ExpectPiece(Clip({30, 200}, {30, 0}), {30, 70}, {30, 20});
  ExpectPiece(Clip({0, 35}, {40, 15}), {10, 30}, {30, 20});
  ExpectPiece(Clip({0, 0}, {140, 70}), {40, 20}, {110, 55});
}

TEST(ClipLine, CutsAtTheCorners) {
  ExpectPiece(Clip({-90, -30}, {210, 120}), {10, 20}, {110, 70});
  ExpectPiece(Clip({-90, 120}, {210, -30}), {10, 70}, {110, 20});
}

TEST(ClipLine, KeepsLinesAlongTheSides) {
  EXPECT_EQ(Clip({10, 20}, {110, 20}), (Lines{{{10, 20}, {110, 20}}}));
  EXPECT_EQ(Clip({110, 20}, {110, 70}), (Lines{{{110, 20}, {110, 70}}}));
  ExpectPiece(Clip({0, 70}, {200, 70}), {10, 70}, {110, 70});
  ExpectPiece(Clip({10, 100}, {10, 0}), {10, 70}, {10, 20});
}

TEST(ClipLine, KeepsPointsOnTheBorder) {
  const Line line = {{10, 20}, {110, 45}, {60, 70}, {10, 30}, {60, 20}};
  EXPECT_EQ(ClipLine(line, kRect), Lines{line});
}

TEST(ClipLine, KeepsALineWithoutLength) {
  EXPECT_EQ(Clip({30, 30}, {30, 30}), (Lines{{{30, 30}, {30, 30}}}));
  EXPECT_TRUE(Clip({3, 30}, {3, 30}).empty());
}

TEST(ClipLine, KeepsThePointWhereALineTouchesACorner) {
  ExpectPiece(Clip({0, 60}, {20, 80}), {10, 70}, {10, 70});
  ExpectPiece(Clip({110, 20}, {200, 0}), {110, 20}, {110, 20});
}

TEST(ClipLine, HasNoPieceOfLessThanTwoPoints) {
  EXPECT_TRUE(ClipLine({}, kRect).empty());
  EXPECT_TRUE(ClipLine({{30, 30}}, kRect).empty());
}

TEST(ClipLine, MakesPiecesOfALineThatLeavesAndComesBack) {
  const Lines pieces = ClipLine({{60, 40}, {60, 100}, {80, 100}, {80, 40}, {90, 40}}, kRect);
  ASSERT_EQ(pieces.size(), 2U);
  EXPECT_EQ(pieces[0], (Line{{60, 40}, {60, 70}}));
  EXPECT_EQ(pieces[1], (Line{{80, 70}, {80, 40}, {90, 40}}));
}

TEST(ClipLine, MakesAPieceOfEveryWayAcross) {
  Line line;
  for (int i = 0; i < 20; ++i) line.push_back({i * 5.0 + 12, i % 2 == 0 ? 0.0 : 90.0});
  const Lines pieces = ClipLine(line, kRect);
  ASSERT_EQ(pieces.size(), 19U);
  for (const Line& piece : pieces) EXPECT_EQ(piece.size(), 2U);
}

TEST(ClipLine, CutsLinesFromFarAway) {
  ExpectPiece(Clip({-1e30, 40}, {1e30, 40}), {10, 40}, {110, 40});
  ExpectPiece(Clip({40, 1e30}, {40, -1e30}), {40, 70}, {40, 20});
  ExpectPiece(Clip({-1e30, 1e30}, {50, 50}), {30, 70}, {50, 50});
  ExpectPiece(Clip({50, 50}, {-1e30, 1e30}), {50, 50}, {30, 70});
  ExpectPiece(Clip({60, 40}, {61, 1e30}), {60, 40}, {60, 70});
  ExpectPiece(Clip({61, -1e30}, {60, 40}), {60, 20}, {60, 40});
  EXPECT_TRUE(Clip({-1e30, -1e30}, {1e30, -1e29}).empty());
}

TEST(ClipLine, HasTheSamePieceInBothDirections) {
  std::mt19937 random(1);
  std::uniform_real_distribution<double> place(-100, 200);
  int crossing = 0;
  for (int i = 0; i < 2000; ++i) {
    const Point from = {place(random), place(random)};
    const Point to = {place(random), place(random)};
    const Lines pieces = Clip(from, to);
    if (pieces.empty()) {
      EXPECT_TRUE(Clip(to, from).empty());
      continue;
    }
    ++crossing;
    ExpectPiece(Clip(to, from), pieces[0][1], pieces[0][0]);
  }
  EXPECT_GT(crossing, 300);
}

double Length(const Line& line) {
  double length = 0;
  for (size_t i = 1; i < line.size(); ++i) {
    length += std::hypot(line[i].x - line[i - 1].x, line[i].y - line[i - 1].y);
  }
  return length;
}

// How much of the way between two points is inside, by steps.
double LengthByCounting(const Point& from, const Point& to) {
  constexpr int kSteps = 2000;
  int inside = 0;
  for (int i = 0; i < kSteps; ++i) {
    const double share = (i + 0.5) / kSteps;
    if (kRect.Contains({std::lerp(from.x, to.x, share), std::lerp(from.y, to.y, share)})) ++inside;
  }
  return Length({from, to}) * inside / kSteps;
}

TEST(ClipLine, KeepsAsMuchAsIsInside) {
  std::mt19937 random(2);
  std::uniform_real_distribution<double> place(-60, 180);
  for (int i = 0; i < 500; ++i) {
    const Point from = {place(random), place(random)};
    const Point to = {place(random), place(random)};
    double kept = 0;
    for (const Line& piece : Clip(from, to)) kept += Length(piece);
    EXPECT_NEAR(kept, LengthByCounting(from, to), 0.4);
  }
}

TEST(ClipLine, StaysWithinTheRectangleExactly) {
  std::mt19937 random(3);
  std::uniform_real_distribution<double> place(-1, 1);
  for (const double reach : {1.0, 100.0, 1e6, 1e15, 1e30}) {
    for (int i = 0; i < 500; ++i) {
      const Rect rect = {place(random), place(random), 1 + place(random), 1 + place(random)};
      Line line;
      for (int k = 0; k < 10; ++k) line.push_back({reach * place(random), reach * place(random)});
      for (const Line& piece : ClipLine(line, rect)) {
        EXPECT_GE(piece.size(), 2U);
        EXPECT_TRUE(AllWithin(piece, rect));
      }
    }
  }
}

double AreaOf(const Polygon& polygon) {
  double doubled = 0;
  for (size_t i = 0; i < polygon.size(); ++i) {
    const Point& a = polygon[i];
    const Point& b = polygon[(i + 1) % polygon.size()];
    doubled += a.x * b.y - b.x * a.y;
  }
  return std::abs(doubled) / 2;
}

TEST(ClipPolygon, KeepsWhatIsInside) {
  const Polygon triangle = {{20, 30}, {80, 35}, {40, 65}};
  EXPECT_EQ(ClipPolygon(triangle, kRect), triangle);
  const Polygon whole = {{10, 20}, {110, 20}, {110, 70}, {10, 70}};
  EXPECT_EQ(ClipPolygon(whole, kRect), whole);
}

TEST(ClipPolygon, DropsWhatIsOutside) {
  EXPECT_TRUE(ClipPolygon({}, kRect).empty());
  EXPECT_TRUE(ClipPolygon({{0, 30}, {9, 30}, {5, 60}}, kRect).empty());
  EXPECT_TRUE(ClipPolygon({{111, 30}, {190, 30}, {150, 60}}, kRect).empty());
  EXPECT_TRUE(ClipPolygon({{20, 0}, {90, 0}, {50, 19}}, kRect).empty());
  EXPECT_TRUE(ClipPolygon({{20, 90}, {90, 90}, {50, 71}}, kRect).empty());
}

TEST(ClipPolygon, DropsWhatPassesACorner) {
  EXPECT_TRUE(ClipPolygon({{0, 25}, {15, 5}, {0, 0}}, kRect).empty());
  EXPECT_TRUE(ClipPolygon({{130, 60}, {100, 90}, {130, 90}}, kRect).empty());
}

TEST(ClipPolygon, DropsWhatOnlyTouchesTheRectangle) {
  EXPECT_TRUE(ClipPolygon({{110, 30}, {150, 30}, {150, 60}, {110, 60}}, kRect).empty());
  EXPECT_TRUE(ClipPolygon({{0, 30}, {10, 30}, {10, 60}, {0, 60}}, kRect).empty());
  EXPECT_TRUE(ClipPolygon({{0, 0}, {110, 0}, {110, 20}, {0, 20}}, kRect).empty());
  EXPECT_TRUE(ClipPolygon({{40, 70}, {60, 90}, {20, 90}}, kRect).empty());
  EXPECT_TRUE(ClipPolygon({{110, 70}, {120, 70}, {120, 80}, {110, 80}}, kRect).empty());
}

TEST(ClipPolygon, CutsOffCorners) {
  const Polygon cut = ClipPolygon({{60, 0}, {80, 40}, {40, 40}}, kRect);
  ASSERT_EQ(cut.size(), 4U);
  EXPECT_NEAR(AreaOf(cut), 20.0 * (20 + 40) / 2, 1e-9);
  const Polygon square = ClipPolygon({{0, 0}, {30, 0}, {30, 30}, {0, 30}}, kRect);
  ASSERT_EQ(square.size(), 4U);
  EXPECT_NEAR(AreaOf(square), 20.0 * 10, 1e-9);
}

TEST(ClipPolygon, IsTheRectangleWhereItIsCoveredWholly) {
  for (const double reach : {200.0, 1e6, 1e12, 1e30}) {
    const Polygon cover =
        ClipPolygon({{-reach, -reach}, {reach, -reach}, {reach, reach}, {-reach, reach}}, kRect);
    EXPECT_EQ(cover.size(), 4U);
    EXPECT_NEAR(AreaOf(cover), 5000, 1e-9) << reach;
    const Polygon triangle =
        ClipPolygon({{-3 * reach, -reach}, {3 * reach, -reach}, {0, 4 * reach}}, kRect);
    EXPECT_NEAR(AreaOf(triangle), 5000, 1e-9) << reach;
  }
}

TEST(ClipPolygon, CutsPolygonsThatGoFarAway) {
  const Polygon strip = ClipPolygon({{-1e30, 30}, {1e30, 30}, {1e30, 40}, {-1e30, 40}}, kRect);
  EXPECT_NEAR(AreaOf(strip), 1000, 1e-9);
  const Polygon wedge = ClipPolygon({{50, 50}, {1e30, 50}, {1e30, 1e30}}, kRect);
  EXPECT_NEAR(AreaOf(wedge), 20.0 * 20 / 2 + 40.0 * 20, 1e-9);
}

TEST(ClipPolygon, KeepsNothingInARectangleWithoutExtent) {
  EXPECT_TRUE(ClipPolygon({{0, 0}, {90, 0}, {90, 90}}, {10, 10, -5, 20}).empty());
  EXPECT_TRUE(ClipLine({{0, 0}, {90, 90}}, {10, 10, -5, 20}).empty());
}

// Corners on an ellipse, in order.
Polygon RandomConvex(std::mt19937& random) {
  std::uniform_real_distribution<double> place(-20, 140);
  std::uniform_real_distribution<double> radius(5, 90);
  std::uniform_real_distribution<double> step(0.2, 2);
  const Point middle = {place(random), place(random) / 2};
  const Point reach = {radius(random), radius(random)};
  Polygon polygon;
  for (double angle = 0; angle < 6.2; angle += step(random)) {
    polygon.push_back({middle.x + reach.x * std::cos(angle), middle.y + reach.y * std::sin(angle)});
  }
  return polygon;
}

// The rectangle and the eight fields around it share the polygon out.
TEST(ClipPolygon, LeavesToTheFieldsAroundTheRectangleWhatItCutsAway) {
  constexpr double kFar = 1000;
  const std::vector<double> across = {-kFar, 10, 110, kFar};
  const std::vector<double> down = {-kFar, 20, 70, kFar};
  std::mt19937 random(4);
  for (int i = 0; i < 500; ++i) {
    const Polygon polygon = RandomConvex(random);
    double sum = 0;
    for (size_t row = 0; row < 3; ++row) {
      for (size_t column = 0; column < 3; ++column) {
        const Rect field = {across[column], down[row], across[column + 1] - across[column],
                            down[row + 1] - down[row]};
        const Polygon part = ClipPolygon(polygon, field);
        EXPECT_TRUE(AllWithin(part, field));
        EXPECT_TRUE(part.empty() || part.size() >= 3);
        sum += AreaOf(part);
      }
    }
    EXPECT_NEAR(sum, AreaOf(polygon), 1e-8);
  }
}

// The height of a convex polygon in a column, within the rectangle.
double HeightAt(const Polygon& polygon, double x) {
  double top = HUGE_VAL;
  double bottom = -HUGE_VAL;
  for (size_t i = 0; i < polygon.size(); ++i) {
    const Point& a = polygon[i];
    const Point& b = polygon[(i + 1) % polygon.size()];
    if ((a.x > x) == (b.x > x)) continue;
    const double y = std::lerp(a.y, b.y, (x - a.x) / (b.x - a.x));
    top = std::min(top, y);
    bottom = std::max(bottom, y);
  }
  return std::max(0.0, std::min(bottom, kRect.bottom()) - std::max(top, kRect.top));
}

TEST(ClipPolygon, KeepsAsMuchAsIsInside) {
  constexpr int kColumns = 4000;
  std::mt19937 random(5);
  int cut = 0;
  for (int i = 0; i < 200; ++i) {
    const Polygon polygon = RandomConvex(random);
    double area = 0;
    for (int k = 0; k < kColumns; ++k) {
      area += HeightAt(polygon, kRect.left + (k + 0.5) * kRect.width / kColumns);
    }
    const Polygon part = ClipPolygon(polygon, kRect);
    EXPECT_NEAR(AreaOf(part), area * kRect.width / kColumns, 0.5);
    if (!part.empty() && part != polygon) ++cut;
  }
  EXPECT_GT(cut, 100);
}

TEST(ClipPolygon, StaysWithinTheRectangleExactly) {
  std::mt19937 random(6);
  std::uniform_real_distribution<double> place(-1, 1);
  int kept = 0;
  for (const double reach : {1.0, 100.0, 1e6, 1e15, 1e30}) {
    for (int i = 0; i < 500; ++i) {
      const Rect rect = {place(random), place(random), 1 + place(random), 1 + place(random)};
      Polygon polygon;
      for (int k = 0; k < 5; ++k) {
        polygon.push_back({reach * place(random), reach * place(random)});
      }
      const Polygon part = ClipPolygon(polygon, rect);
      EXPECT_TRUE(AllWithin(part, rect));
      if (!part.empty()) ++kept;
    }
  }
  EXPECT_GT(kept, 500);
}

}  // namespace
}  // namespace tarn
