#include "netgraph/contour_bands.h"

#include <algorithm>
#include <cmath>
#include <fmt/printf.h>
#include <functional>
#include <gtest/gtest.h>
#include <limits>
#include <optional>
#include <random>
#include <string>

namespace tarn {
namespace {

using Limits = std::numeric_limits<float>;
constexpr size_t kCells = kContourSteps - 1;
constexpr GraphRange kUnit = {0, 1, 0, 1};
constexpr float kNan = Limits::quiet_NaN();

// By the shares of the way up and across.
ContourSurface SurfaceOf(const std::function<double(double x, double y)>& value) {
  ContourSurface surface;
  for (size_t row = 0; row < kContourSteps; ++row) {
    for (size_t column = 0; column < kContourSteps; ++column) {
      surface.At(row, column) = static_cast<float>(
          value(static_cast<double>(column) / kCells, static_cast<double>(row) / kCells));
    }
  }
  return surface;
}

ContourSurface RandomSurface(unsigned seed, double lowest, double highest) {
  std::mt19937 random(seed);
  std::uniform_real_distribution<double> value(lowest, highest);
  return SurfaceOf([&](double, double) { return value(random); });
}

// Whole numbers from -reach to reach times a unit: with many on the levels.
ContourSurface SteppedSurface(unsigned seed, int reach, double unit) {
  std::mt19937 random(seed);
  std::uniform_int_distribution<int> value(-reach, reach);
  return SurfaceOf([&](double, double) { return unit * value(random); });
}

ContourSurface Checkerboard(double even, double odd) {
  ContourSurface surface;
  for (size_t row = 0; row < kContourSteps; ++row) {
    for (size_t column = 0; column < kContourSteps; ++column) {
      surface.At(row, column) = static_cast<float>((row + column) % 2 == 0 ? even : odd);
    }
  }
  return surface;
}

// All cells but the first are left out; its corners anticlockwise from the lower left one.
ContourSurface SingleCell(float a, float b, float c, float d) {
  ContourSurface surface = Checkerboard(kNan, kNan);
  surface.At(0, 0) = a;
  surface.At(0, 1) = b;
  surface.At(1, 1) = c;
  surface.At(1, 0) = d;
  return surface;
}
// The area whose first cell is the unit square.
constexpr GraphRange kUnitCell = {0, kCells, 0, kCells};

bool IsDrawn(const ContourSurface& surface, size_t row, size_t column) {
  return std::isfinite(surface.At(row, column)) && std::isfinite(surface.At(row, column + 1)) &&
         std::isfinite(surface.At(row + 1, column)) &&
         std::isfinite(surface.At(row + 1, column + 1));
}

size_t DrawnCells(const ContourSurface& surface) {
  size_t count = 0;
  for (size_t i = 0; i < kCells * kCells; ++i) {
    if (IsDrawn(surface, i / kCells, i % kCells)) ++count;
  }
  return count;
}

// Anticlockwise positive.
double Cross(const Point& origin, const Point& a, const Point& b) {
  return (a.x - origin.x) * (b.y - origin.y) - (b.x - origin.x) * (a.y - origin.y);
}

double AreaOf(const std::vector<Point>& points) {
  double doubled = 0;
  for (size_t i = 2; i < points.size(); ++i) {
    doubled += Cross(points.front(), points[i - 1], points[i]);
  }
  return std::abs(doubled) / 2;
}

double AreaOf(const ContourBands& bands) {
  double sum = 0;
  for (const ContourRegion& region : bands.regions) sum += AreaOf(region.points);
  return sum;
}

double AreaOf(const GraphRange& area) {
  return std::abs((double{area.x_max} - area.x_min) * (double{area.y_max} - area.y_min));
}

// A side that two regions share counts for one of them.
bool Holds(const std::vector<Point>& points, const Point& point) {
  bool inside = false;
  for (size_t i = 0; i < points.size(); ++i) {
    const Point& one = points[i];
    const Point& other = points[(i + 1) % points.size()];
    if ((one.y > point.y) == (other.y > point.y)) continue;
    const Point& low = one.y < other.y ? one : other;
    const Point& high = one.y < other.y ? other : one;
    if (Cross(low, high, point) > 0) inside = !inside;
  }
  return inside;
}

std::vector<size_t> LevelsAt(const ContourBands& bands, const Point& point) {
  std::vector<size_t> levels;
  for (const ContourRegion& region : bands.regions) {
    if (Holds(region.points, point)) levels.push_back(region.level);
  }
  return levels;
}

// Sides that meet elsewhere than in a corner of both.
bool CrossesItself(const std::vector<Point>& points) {
  const size_t count = points.size();
  for (size_t i = 0; i < count; ++i) {
    for (size_t j = i + 2; j < count; ++j) {
      if (i == 0 && j + 1 == count) continue;
      const Point& a = points[i];
      const Point& b = points[i + 1];
      const Point& c = points[j];
      const Point& d = points[(j + 1) % count];
      const bool parts = Cross(a, b, c) * Cross(a, b, d) < 0;
      if (parts && Cross(c, d, a) * Cross(c, d, b) < 0) return true;
    }
  }
  return false;
}

bool RepeatsACorner(const std::vector<Point>& points) {
  for (size_t i = 0; i < points.size(); ++i) {
    if (std::count(points.begin(), points.end(), points[i]) > 1) return true;
  }
  return false;
}

// What is wrong with a region of these bands; nothing of a sound one.
std::string Fault(const ContourRegion& region, const ContourBands& bands, const GraphRange& area) {
  if (region.level >= bands.count()) return "no such band";
  if (region.points.size() < 3) return "too few corners";
  if (RepeatsACorner(region.points)) return "corner repeated";
  if (!(AreaOf(region.points) > 0)) return "no area";
  if (CrossesItself(region.points)) return "crosses itself";
  const auto [left, right] = std::minmax({double{area.x_min}, double{area.x_max}});
  const auto [bottom, top] = std::minmax({double{area.y_min}, double{area.y_max}});
  const double slack = 1e-15 * std::max({-left, right, -bottom, top});
  for (const Point& point : region.points) {
    if (point.x < left - slack || point.x > right + slack) return "beyond the area";
    if (point.y < bottom - slack || point.y > top + slack) return "beyond the area";
  }
  return "";
}

std::string FirstFault(const ContourBands& bands, const GraphRange& area) {
  for (const ContourRegion& region : bands.regions) {
    std::string fault = Fault(region, bands, area);
    if (!fault.empty()) return fault;
  }
  return "";
}

double Mix(double from, double to, double share) {
  return from + share * (to - from);
}

Point PointIn(const GraphRange& area, double x, double y) {
  return {Mix(area.x_min, area.x_max, x), Mix(area.y_min, area.y_max, y)};
}

// How often the number of regions at random points is not that of the cell: 1, or 0 where the cell
// is left out.
int WrongPoints(const ContourSurface& surface, const ContourBands& bands, const GraphRange& area) {
  constexpr int kPoints = 150;
  std::mt19937 random(11);
  std::uniform_real_distribution<double> share(0, 1);
  int wrong = 0;
  for (int i = 0; i < kPoints; ++i) {
    const double x = share(random);
    const double y = share(random);
    const bool drawn =
        IsDrawn(surface, static_cast<size_t>(y * kCells), static_cast<size_t>(x * kCells));
    if (LevelsAt(bands, PointIn(area, x, y)).size() != (drawn ? 1U : 0U)) ++wrong;
  }
  return wrong;
}

void ExpectTiles(const ContourSurface& surface, const GraphRange& area) {
  const ContourBands bands = TraceBands(surface, area);
  const double drawn = AreaOf(area) * static_cast<double>(DrawnCells(surface)) / (kCells * kCells);
  ASSERT_GT(drawn, 0);
  EXPECT_NEAR(AreaOf(bands) / drawn, 1, 1e-12);
  EXPECT_EQ(FirstFault(bands, area), "");
  EXPECT_EQ(WrongPoints(surface, bands, area), 0);
}

double Hills(double x, double y) {
  return std::sin(7 * x) * std::cos(5 * y) + 0.5 * x;
}

TEST(ContourBands, TileRandomSurfaces) {
  for (unsigned seed = 1; seed <= 5; ++seed) {
    SCOPED_TRACE(seed);
    ExpectTiles(RandomSurface(seed, 0, 1), kUnit);
    ExpectTiles(RandomSurface(seed, -3, 8), {-2, 5, 10, 11});
  }
}

TEST(ContourBands, TileHillsAndPlanes) {
  ExpectTiles(SurfaceOf(Hills), kUnit);
  ExpectTiles(SurfaceOf([](double x, double) { return x; }), kUnit);
  ExpectTiles(SurfaceOf([](double, double y) { return -y; }), kUnit);
  ExpectTiles(SurfaceOf([](double x, double y) { return 3 * x - 2 * y; }), kUnit);
  ExpectTiles(SurfaceOf([](double x, double y) { return (x - 0.5) * (y - 0.5); }), kUnit);
}

TEST(ContourBands, TileSaddlesEverywhere) {
  ExpectTiles(Checkerboard(0, 1), kUnit);
  ExpectTiles(Checkerboard(1, 0), kUnit);
  ExpectTiles(Checkerboard(-1, 1), kUnit);
  ExpectTiles(Checkerboard(1e-3, 100), kUnit);
}

TEST(ContourBands, TileSurfacesWithValuesOnTheLevels) {
  for (unsigned seed = 1; seed <= 5; ++seed) {
    SCOPED_TRACE(seed);
    ExpectTiles(SteppedSurface(seed, 1, 1), kUnit);
    ExpectTiles(SteppedSurface(seed, 2, 0.5), kUnit);
    ExpectTiles(SteppedSurface(seed, 10, 0.1), kUnit);
  }
}

// Of a cell all patterns of corners below, on and above the level 0.
TEST(ContourBands, TileACellWhicheverOfItsCornersAreOnALevel) {
  const std::vector<float> values = {-1, -0.25F, 0, 1};
  for (const float a : values) {
    for (const float b : values) {
      for (const float c : values) {
        for (const float d : values) {
          SCOPED_TRACE(fmt::sprintf("%g %g %g %g", a, b, c, d));
          ContourSurface surface = SingleCell(a, b, c, d);
          surface.At(20, 20) = -1;  // in no cell: the levels are always the same
          surface.At(30, 30) = 1;
          const ContourBands bands = TraceBands(surface, kUnitCell);
          ASSERT_EQ(std::ranges::count(bands.bounds, 0.0), 1);
          EXPECT_NEAR(AreaOf(bands), 1, 1e-12);
          EXPECT_EQ(FirstFault(bands, kUnitCell), "");
        }
      }
    }
  }
}

TEST(ContourBands, CountAValueOnALevelToTheBandAboveIt) {
  const ContourBands flat = TraceBands(Checkerboard(-1, 1), kUnit);
  const auto zero = static_cast<size_t>(std::ranges::find(flat.bounds, 0.0) - flat.bounds.begin());
  ASSERT_LT(zero, flat.count());
  // A plateau on the level, but for the ends that make the bounds.
  ContourSurface surface = SurfaceOf([](double, double) { return 0; });
  surface.At(0, 0) = -1;
  surface.At(39, 39) = 1;
  const ContourBands bands = TraceBands(surface, kUnit);
  ASSERT_EQ(bands.bounds, flat.bounds);
  EXPECT_EQ(LevelsAt(bands, {0.5, 0.5}), std::vector<size_t>{zero});
  // Three corners on the level and one below it: half of the cell is as high as the level.
  EXPECT_EQ(LevelsAt(bands, {0.9 / kCells, 0.9 / kCells}), std::vector<size_t>{zero});
  EXPECT_EQ(LevelsAt(bands, {0.45 / kCells, 0.45 / kCells}), std::vector<size_t>{zero - 1});
}

TEST(ContourBands, TileHugeAndTinyValues) {
  for (const double unit : {1e30, 1e-30, 1e-40, -1e30, 3e38}) {
    SCOPED_TRACE(unit);
    ExpectTiles(SurfaceOf([&](double x, double y) { return unit / 2 * Hills(x, y); }), kUnit);
  }
  ExpectTiles(RandomSurface(1, -3.4e38, 3.4e38), kUnit);
  ExpectTiles(RandomSurface(1, 1000000, 1000001), kUnit);
  ExpectTiles(RandomSurface(1, -1e-30, 1e30), kUnit);
}

TEST(ContourBands, TileSurfacesThatMissALevelByARounding) {
  std::mt19937 random(5);
  const std::vector<double> values = {-1, 1, 1e-45, -1e-45, 1e-20, -1e-20, 0};
  ExpectTiles(SurfaceOf([&](double, double) { return values[random() % values.size()]; }), kUnit);
}

TEST(ContourBands, TileHugeTinyAndNegativeAreas) {
  for (const GraphRange& area : std::vector<GraphRange>{{0, 1e30F, 0, 1e-30F},
                                                        {-1e30F, 1e30F, -1e-30F, 1e-30F},
                                                        {0, 1e-30F, 0, 1e-30F},
                                                        {-7, -3, -200, -100},
                                                        {-3e38F, 3e38F, -3e38F, 3e38F}}) {
    SCOPED_TRACE(area.x_max);
    ExpectTiles(SurfaceOf(Hills), area);
    ExpectTiles(SteppedSurface(3, 1, 1), area);
  }
}

TEST(ContourBands, TileASmallAreaFarFromZero) {
  for (const float place : {1e6F, -1e6F, 1e30F}) {
    const float end = place + std::abs(place) * 1e-6F;
    ASSERT_NE(place, end);
    SCOPED_TRACE(place);
    ExpectTiles(SurfaceOf(Hills), {place, end, place, end});
  }
}

TEST(ContourBands, TileAnAreaGivenFromHighToLow) {
  ExpectTiles(SurfaceOf(Hills), {1, 0, 0, 1});
  ExpectTiles(SurfaceOf(Hills), {0, 1, 5, -3});
  ExpectTiles(RandomSurface(2, 0, 1), {9, 2, 4, 1});
}

TEST(ContourBands, LeaveAnAreaWithoutExtentEmpty) {
  EXPECT_TRUE(TraceBands(SurfaceOf(Hills), {2, 2, 0, 1}).regions.empty());
  EXPECT_TRUE(TraceBands(SurfaceOf(Hills), {0, 1, 2, 2}).regions.empty());
}

TEST(ContourBands, LeaveOutCellsWithACornerThatIsNoNumber) {
  ContourSurface surface = SurfaceOf(Hills);
  surface.At(0, 0) = kNan;
  surface.At(20, 20) = kNan;
  surface.At(39, 39) = Limits::infinity();
  surface.At(10, 0) = -Limits::infinity();
  EXPECT_EQ(DrawnCells(surface), kCells * kCells - 1 - 4 - 1 - 2);
  ExpectTiles(surface, kUnit);
  const ContourBands bands = TraceBands(surface, kUnit);
  EXPECT_TRUE(LevelsAt(bands, {0.5 / kCells, 0.4 / kCells}).empty());
  EXPECT_TRUE(LevelsAt(bands, {20.5 / kCells, 20.4 / kCells}).empty());
  EXPECT_TRUE(LevelsAt(bands, {0.5 / kCells, 10.4 / kCells}).empty());
  EXPECT_EQ(LevelsAt(bands, {1.5 / kCells, 10.4 / kCells}).size(), 1U);

  std::mt19937 random(3);
  for (size_t i = 0; i < 300; ++i) surface.At(random() % 40, random() % 40) = kNan;
  ExpectTiles(surface, kUnit);
}

TEST(ContourBands, AreNoneWhereNoValueIsANumber) {
  for (const double value : {std::nan(""), HUGE_VAL, -HUGE_VAL}) {
    const ContourBands bands = TraceBands(Checkerboard(value, value), kUnit);
    EXPECT_EQ(bands.count(), 0U);
    EXPECT_TRUE(bands.bounds.empty());
    EXPECT_TRUE(bands.bound_texts.empty());
    EXPECT_TRUE(bands.regions.empty());
  }
}

TEST(ContourBands, HaveNoRegionWhereOnlySingleValuesAreNumbers) {
  const ContourBands bands = TraceBands(Checkerboard(0.25, kNan), kUnit);
  EXPECT_EQ(bands.count(), 1U);
  EXPECT_TRUE(bands.regions.empty());
}

TEST(ContourBands, AreOneForAConstantSurface) {
  for (const double value : {0.25, -3e30, 1e-40, 0.0}) {
    SCOPED_TRACE(value);
    const ContourSurface surface = Checkerboard(value, value);
    const ContourBands bands = TraceBands(surface, kUnit);
    ASSERT_EQ(bands.count(), 1U);
    EXPECT_EQ(bands.bounds, (std::vector<double>(2, static_cast<float>(value))));
    EXPECT_EQ(bands.bound_texts[0], bands.bound_texts[1]);
    ExpectTiles(surface, kUnit);
  }
}

TEST(ContourBands, WriteZeroWithoutASign) {
  const std::vector<std::string> zeros = {"0", "0"};
  EXPECT_EQ(TraceBands(Checkerboard(-0.0, -0.0), kUnit).bound_texts, zeros);
  EXPECT_EQ(TraceBands(Checkerboard(0.0, -0.0), kUnit).bound_texts, zeros);
}

// The band that a value belongs to; none close to a bound.
std::optional<size_t> BandOf(const ContourBands& bands, double value) {
  const double near = 1e-6 * (bands.bounds.back() - bands.bounds.front());
  for (const double bound : bands.bounds) {
    if (std::abs(bound - value) < near) return std::nullopt;
  }
  const auto above = std::ranges::upper_bound(bands.bounds, value);
  return static_cast<size_t>(above - bands.bounds.begin()) - 1;
}

void ExpectBand(const ContourBands& bands, const Point& point, double value) {
  const std::optional<size_t> band = BandOf(bands, value);
  if (!band) return;
  EXPECT_EQ(LevelsAt(bands, point), std::vector<size_t>{*band})
      << point.x << ' ' << point.y << ' ' << value;
}

TEST(ContourBands, HoldTheValuesOfAPlane) {
  const auto plane = [](double x, double y) { return 3 * x - 2 * y + 0.3; };
  const ContourSurface surface = SurfaceOf(plane);
  std::mt19937 random(4);
  std::uniform_real_distribution<double> share(0, 1);
  for (const GraphRange& area : {kUnit, GraphRange{5, -5, 0, 1}, GraphRange{0, 1, 100, 0}}) {
    const ContourBands bands = TraceBands(surface, area);
    for (int i = 0; i < 200; ++i) {
      const double x = share(random);
      const double y = share(random);
      ExpectBand(bands, PointIn(area, x, y), plane(x, y));
    }
  }
}

// Of the sides between cells, where a corner lies at a whole number of steps.
void ExpectBandsAlongSides(const ContourSurface& surface) {
  constexpr GraphRange kSteps = {0, kCells, 0, kCells};
  const ContourBands bands = TraceBands(surface, kSteps);
  std::mt19937 random(6);
  std::uniform_real_distribution<double> share(0.01, 0.99);
  for (int i = 0; i < 200; ++i) {
    const size_t row = random() % kCells;
    const size_t column = random() % kCells;
    const double way = share(random);
    const double x = static_cast<double>(column);
    const double y = static_cast<double>(row);
    const float corner = surface.At(row, column);
    ExpectBand(bands, {x + way, y}, Mix(corner, surface.At(row, column + 1), way));
    ExpectBand(bands, {x, y + way}, Mix(corner, surface.At(row + 1, column), way));
  }
}

TEST(ContourBands, HoldTheValuesAlongTheSidesOfCells) {
  ExpectBandsAlongSides(SurfaceOf(Hills));
  ExpectBandsAlongSides(RandomSurface(8, -1, 1));
  ExpectBandsAlongSides(SteppedSurface(8, 1, 1));
  ExpectBandsAlongSides(Checkerboard(0, 1));
}

// From the corners to the mean of the four in the middle.
void ExpectSaddle(float a, float b, float c, float d) {
  const ContourBands bands = TraceBands(SingleCell(a, b, c, d), kUnitCell);
  const double mean = (double{a} + b + c + d) / 4;
  EXPECT_NEAR(AreaOf(bands), 1, 1e-12);
  EXPECT_EQ(FirstFault(bands, kUnitCell), "");
  for (double way = 0.02; way < 1; way += 0.06) {
    const double half = way / 2;
    ExpectBand(bands, {half, half}, Mix(a, mean, way));
    ExpectBand(bands, {1 - half, half}, Mix(b, mean, way));
    ExpectBand(bands, {1 - half, 1 - half}, Mix(c, mean, way));
    ExpectBand(bands, {half, 1 - half}, Mix(d, mean, way));
  }
}

TEST(ContourBands, JoinAcrossASaddleWhatIsOnTheSideOfItsMean) {
  ExpectSaddle(1, 0, 1, 0.31F);  // mean 0.5775: the high corners are joined from 0.5 on
  ExpectSaddle(0, 1, 0.31F, 1);
  ExpectSaddle(0, 1, 0, 0.69F);  // mean 0.4225: the low ones
  ExpectSaddle(1, 0, 0.69F, 0);
  ExpectSaddle(-5, 80, 17, 33);
}

TEST(ContourBands, JoinAcrossASaddleWhatIsAboveALevelThatIsTheMean) {
  const ContourBands bands = TraceBands(SingleCell(-1, 1, -1, 1), kUnitCell);
  const auto zero =
      static_cast<size_t>(std::ranges::find(bands.bounds, 0.0) - bands.bounds.begin());
  ASSERT_LT(zero, bands.count());
  for (const double way : {0.1, 0.3, 0.499, 0.501, 0.7, 0.9}) {
    const std::vector<size_t> high = LevelsAt(bands, {way, 1 - way});
    ASSERT_EQ(high.size(), 1U);
    EXPECT_GE(high[0], zero);
    const std::vector<size_t> low = LevelsAt(bands, {way, way});
    ASSERT_EQ(low.size(), 1U);
    EXPECT_LT(low[0], zero);
  }
}

// What is wrong with the bounds of values from one to the other; nothing of sound ones.
std::string WrongBounds(float lowest, float highest) {
  ContourSurface surface = Checkerboard(kNan, kNan);
  surface.At(3, 7) = lowest;
  surface.At(30, 2) = highest;
  const ContourBands bands = TraceBands(surface, kUnit);
  const std::vector<double>& bounds = bands.bounds;
  if (bands.count() < 6 || bands.count() > 20) return "too many or too few bands";
  if (bands.bound_texts.size() != bounds.size()) return "texts of other bounds";
  const double width = bounds[1] - bounds[0];
  const double slack = 1e-5 * width;  // a bound that nearly is 0 is 0
  if (bounds.front() > lowest + slack) return "lowest value not covered";
  if (bounds.back() < highest - slack) return "highest value not covered";
  if (bounds[1] <= lowest) return "a band below all values";
  if (bounds[bounds.size() - 2] >= highest) return "a band above all values";
  for (size_t i = 0; i < bounds.size(); ++i) {
    const double told = std::stod(bands.bound_texts[i]);
    if (std::fabs(told - bounds[i]) > 6e-5 * std::fabs(bounds[i])) return "text of another bound";
    if (i > 0 && bands.bound_texts[i] == bands.bound_texts[i - 1]) return "texts that are equal";
    if (i > 0 && !(bounds[i] > bounds[i - 1])) return "not ascending";
    if (i > 0 && bounds[i] - bounds[i - 1] < 0.49 * width) return "a sliver of a band";
    if (i > 0 && bounds[i] - bounds[i - 1] > 1.03 * width) return "a band wider than the first";
  }
  return "";
}

TEST(ContourBands, HaveSoundBoundsOverASweepOfRanges) {
  std::mt19937 random(9);
  std::uniform_real_distribution<double> share(-1, 1);
  for (int i = 0; i < 2000; ++i) {
    const double place = share(random) * std::pow(10, 3 * share(random));
    const double length = std::pow(10, 3 * share(random));
    const auto lowest = static_cast<float>(place);
    const auto highest = static_cast<float>(place + length);
    ASSERT_EQ(WrongBounds(lowest, highest), "") << fmt::sprintf("%.9g %.9g", lowest, highest);
  }
}

TEST(ContourBands, HaveSoundBoundsForValuesThatEndBesideATick) {
  for (const float end : {0.1F, 0.2F, 0.3F, 1.0F, 7.0F, 100.0F}) {
    for (int i = -20; i <= 20; ++i) {
      const float highest = end * (1 + 1e-6F * static_cast<float>(i));
      ASSERT_EQ(WrongBounds(0, highest), "") << fmt::sprintf("%.9g", highest);
      ASSERT_EQ(WrongBounds(-highest, 0), "") << fmt::sprintf("%.9g", highest);
    }
  }
}

TEST(ContourBands, HaveSoundBoundsForHugeAndTinyValues) {
  for (const float unit : {1e-40F, 1e-30F, 1e-7F, 1e7F, 1e30F, 3e38F}) {
    EXPECT_EQ(WrongBounds(0, unit), "") << unit;
    EXPECT_EQ(WrongBounds(-unit, unit), "") << unit;
    EXPECT_EQ(WrongBounds(-unit, -unit / 3), "") << unit;
  }
}

TEST(ContourBands, WriteTheirBoundsWithAsManyDigitsAsTellThemApart) {
  const ContourBands narrow = TraceBands(Checkerboard(1000000, 1000001), kUnit);
  EXPECT_EQ(narrow.bound_texts[1], "1000000.1");
  const ContourBands bands = TraceBands(Checkerboard(0, 1), kUnit);
  EXPECT_EQ(bands.bound_texts, (std::vector<std::string>{"0", "0.1", "0.2", "0.3", "0.4", "0.5",
                                                         "0.6", "0.7", "0.8", "0.9", "1"}));
}

// Of the part of sRGB colours that is linear light (IEC 61966-2-1).
double LinearLight(uint8_t channel) {
  const double value = channel / 255.0;
  return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

// CIE L*, from 0 to 100.
double Lightness(const Colour& colour) {
  const double light = 0.2126 * LinearLight(colour.red) + 0.7152 * LinearLight(colour.green) +
                       0.0722 * LinearLight(colour.blue);
  return light > 216.0 / 24389 ? 116 * std::cbrt(light) - 16 : light * 24389 / 27;
}

TEST(BandColour, ClimbsEvenlyInLightness) {
  constexpr double kRounding = 0.5;  // of lightness: channels are whole numbers
  for (size_t count = 2; count <= 40; ++count) {
    const double all = Lightness(BandColour(count - 1, count)) - Lightness(BandColour(0, count));
    const double even = all / static_cast<double>(count - 1);
    EXPECT_GT(all, 70);
    for (size_t level = 1; level < count; ++level) {
      const double step =
          Lightness(BandColour(level, count)) - Lightness(BandColour(level - 1, count));
      EXPECT_GT(step, 0.9 * even - kRounding) << level << " of " << count;
      EXPECT_LT(step, 1.15 * even + kRounding) << level << " of " << count;
      EXPECT_GT(step, 0) << level << " of " << count;
    }
  }
}

TEST(BandColour, GoesFromDarkBlueToBrightYellow) {
  for (size_t count = 2; count <= 40; ++count) {
    const Colour first = BandColour(0, count);
    const Colour last = BandColour(count - 1, count);
    EXPECT_LT(Lightness(first), 20);
    EXPECT_GT(first.blue, first.red);
    EXPECT_GT(first.blue, first.green);
    EXPECT_GT(Lightness(last), 85);
    EXPECT_GT(last.red, 200);
    EXPECT_GT(last.green, 200);
    EXPECT_LT(last.blue, 100);
  }
}

TEST(BandColour, OfASingleBandIsTheMiddleOne) {
  EXPECT_EQ(BandColour(0, 1), BandColour(1, 3));
  EXPECT_EQ(BandColour(0, 1), BandColour(20, 41));
}

}  // namespace
}  // namespace tarn
