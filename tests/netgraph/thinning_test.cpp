#include "netgraph/thinning.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <map>
#include <random>

namespace tarn {
namespace {

using Line = std::vector<Point>;

// A random walk over so many pixels.
Line Walk(unsigned seed, size_t points, double width) {
  std::mt19937 random(seed);
  std::normal_distribution<double> step;
  Line line;
  double y = 0;
  for (size_t i = 0; i < points; ++i) {
    y += step(random);
    line.push_back({width * static_cast<double>(i) / static_cast<double>(points), y});
  }
  return line;
}

struct Column {
  double first;
  double lowest;
  double highest;
  double last;

  bool operator==(const Column&) const = default;
};

// What each column of pixels shows of a line that runs from left to right.
std::map<double, Column> Columns(const Line& line) {
  std::map<double, Column> columns;
  for (const Point& point : line) {
    const double y = point.y;
    const auto [place, added] = columns.try_emplace(std::floor(point.x), Column{y, y, y, y});
    Column& column = place->second;
    column.lowest = std::min(column.lowest, y);
    column.highest = std::max(column.highest, y);
    column.last = y;
  }
  return columns;
}

// Whether the kept points are points of the line in its order.
bool IsPartOf(const Line& kept, const Line& line) {
  size_t next = 0;
  for (const Point& point : line) {
    if (next < kept.size() && kept[next] == point) ++next;
  }
  return next == kept.size();
}

TEST(ThinLine, KeepsWhatEveryColumnShows) {
  for (unsigned seed = 1; seed <= 5; ++seed) {
    const Line line = Walk(seed, 100000, 700);
    const Line thinned = ThinLine(line);
    EXPECT_LE(thinned.size(), 4U * 700);
    EXPECT_TRUE(Columns(thinned) == Columns(line));
    EXPECT_TRUE(IsPartOf(thinned, line));
  }
}

TEST(ThinLine, KeepsFirstLowestHighestAndLastInTheirOrder) {
  const Line line = {{3.0, 5}, {3.1, 6}, {3.2, 9}, {3.3, 7}, {3.4, 1}, {3.5, 2}, {3.6, 4}};
  EXPECT_EQ(ThinLine(line), (Line{{3.0, 5}, {3.2, 9}, {3.4, 1}, {3.6, 4}}));
}

TEST(ThinLine, KeepsAPointOnceThatIsTwoOfTheFour) {
  EXPECT_EQ(ThinLine({{0.1, 1}, {0.2, 2}, {0.3, 3}, {0.4, 4}}), (Line{{0.1, 1}, {0.4, 4}}));
  EXPECT_EQ(ThinLine({{0.1, 4}, {0.2, 2}, {0.3, 1}, {0.4, 3}}),
            (Line{{0.1, 4}, {0.3, 1}, {0.4, 3}}));
  EXPECT_EQ(ThinLine({{0.1, 2}, {0.2, 2}, {0.3, 2}}), (Line{{0.1, 2}, {0.3, 2}}));
}

TEST(ThinLine, LeavesPointsOfDifferentColumnsAlone) {
  Line line;
  for (int i = 0; i < 1000; ++i) line.push_back({i * 1.0, std::sin(i)});
  EXPECT_EQ(ThinLine(line), line);
}

TEST(ThinLine, LeavesTwoPointsOfAColumnAlone) {
  const Line line = Walk(3, 1000, 500);
  EXPECT_EQ(ThinLine(line), line);
}

TEST(ThinLine, LeavesFourPointsOfAColumnAloneThatAreTheExtremes) {
  Line line;
  for (int i = 0; i < 400; ++i) {
    const bool outside = i % 4 == 1 || i % 4 == 2;
    line.push_back({i / 4.0, (outside ? 9.0 : 1.0) * (i % 2 == 0 ? 1 : -1)});
  }
  EXPECT_EQ(ThinLine(line), line);
}

TEST(ThinLine, LeavesNothingAndSinglePointsAlone) {
  EXPECT_TRUE(ThinLine({}).empty());
  EXPECT_EQ(ThinLine({{2.5, 7}}), (Line{{2.5, 7}}));
}

TEST(ThinLine, ThinsEachVisitOfAColumnByItself) {
  const Line line = {{0.1, 1}, {0.2, 2}, {0.3, 3}, {1.1, 0}, {0.3, 7}, {0.2, 8}, {0.1, 9}};
  EXPECT_EQ(ThinLine(line), (Line{{0.1, 1}, {0.3, 3}, {1.1, 0}, {0.3, 7}, {0.1, 9}}));
}

TEST(ThinLine, CountsColumnsBelowZeroFromTheirLeft) {
  const Line line = {{-0.9, 1}, {-0.5, 2}, {-0.1, 3}, {0.1, 4}, {0.5, 5}, {0.9, 6}};
  EXPECT_EQ(ThinLine(line), (Line{{-0.9, 1}, {-0.1, 3}, {0.1, 4}, {0.9, 6}}));
}

TEST(ThinLine, HoldsLinesThatGoStraightUpOrFarAway) {
  EXPECT_EQ(ThinLine({{5, 0}, {5, -1e30}, {5, 3}, {5, 1e30}, {5, 1}}),
            (Line{{5, 0}, {5, -1e30}, {5, 1e30}, {5, 1}}));
  const Line far = {{-1e30, 1}, {1e30, 2}, {1e300, 3}};
  EXPECT_EQ(ThinLine(far), far);
}

TEST(ThinLine, ChangesNoLineThatItHasThinned) {
  const Line thinned = ThinLine(Walk(9, 20000, 300));
  EXPECT_EQ(ThinLine(thinned), thinned);
}

Line Cloud(unsigned seed, size_t points, double width) {
  std::mt19937 random(seed);
  std::uniform_real_distribution<double> place(-width, width);
  Line markers;
  for (size_t i = 0; i < points; ++i) {
    const double x = place(random);
    markers.push_back({x, place(random)});
  }
  return markers;
}

double NearestKept(const Line& kept, const Point& marker) {
  double nearest = HUGE_VAL;
  for (const Point& point : kept) {
    nearest = std::min(nearest, std::hypot(point.x - marker.x, point.y - marker.y));
  }
  return nearest;
}

TEST(ThinMarkers, KeepsAllWhereTheyAreFew) {
  const Line cloud = Cloud(1, 2000, 5);
  EXPECT_EQ(ThinMarkers(cloud, 3), cloud);
  const Line alike(2000, Point{1, 1});
  EXPECT_EQ(ThinMarkers(alike, 3), alike);
  EXPECT_TRUE(ThinMarkers({}, 3).empty());
}

TEST(ThinMarkers, KeepsAllThatStandApart) {
  Line grid;
  for (int i = 0; i < 10000; ++i) grid.push_back({i % 100 * 4.0, i / 100 * 4.0});
  EXPECT_EQ(ThinMarkers(grid, 2), grid);
}

TEST(ThinMarkers, KeepsOneOfMarkersInTheSamePlace) {
  EXPECT_EQ(ThinMarkers(Line(100000, Point{7, 8}), 1.5), (Line{{7, 8}}));
}

TEST(ThinMarkers, KeepsFarFewerOfManyInTheirOrder) {
  const Line cloud = Cloud(2, 100000, 60);
  const Line kept = ThinMarkers(cloud, 3);
  EXPECT_LE(kept.size(), 40U * 40);  // cells of 3 pixels
  EXPECT_GT(kept.size(), 1500U);
  EXPECT_TRUE(IsPartOf(kept, cloud));
  EXPECT_EQ(kept.front(), cloud.front());
}

// Both are in a cell as wide and high as the radius.
TEST(ThinMarkers, HasAKeptMarkerNearEveryOtherOne) {
  for (const double radius : {1.5, 4.0}) {
    const Line cloud = Cloud(3, 100000, 50);
    const Line kept = ThinMarkers(cloud, radius);
    double farthest = 0;
    for (size_t i = 0; i < cloud.size(); i += 101) {
      farthest = std::max(farthest, NearestKept(kept, cloud[i]));
    }
    EXPECT_LE(farthest, radius * std::sqrt(2.0));
    EXPECT_GT(farthest, 0);
  }
}

TEST(ThinMarkers, KeepsTheSameOnesWhenThinnedAgain) {
  const Line kept = ThinMarkers(Cloud(4, 100000, 200), 3);
  ASSERT_GT(kept.size(), 2000U);
  EXPECT_EQ(ThinMarkers(kept, 3), kept);
}

}  // namespace
}  // namespace tarn
