#include "netgraph/contour_bands.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <fmt/printf.h>
#include <limits>
#include <string>
#include <utility>

#include "netgraph/axis_scaling.h"

namespace tarn {
namespace {

constexpr size_t kCells = kContourSteps - 1;
constexpr double kLevelPixels = 600;  // the axis whose ticks are the levels
constexpr size_t kMostBands = 16;     // of one tick each; where they are more a band is two

// A corner of the surface or of a band within a cell.
struct Corner {
  double x = 0;
  double y = 0;
  double value = 0;
};
using CornerPolygon = std::vector<Corner>;

// The place of a level on a side; from the lower end, so that both cells at it find the same.
Corner Crossing(const Corner& one, const Corner& other, double level) {
  const bool ascending = one.value < other.value;
  const Corner& low = ascending ? one : other;
  const Corner& high = ascending ? other : one;
  const double share = (level - low.value) / (high.value - low.value);
  return {std::lerp(low.x, high.x, share), std::lerp(low.y, high.y, share), level};
}

enum class Side { kBelow, kFromLevelUp };

// The part of a polygon on one side of a level. A corner on the level belongs to the upper side
// alone: both parts are cut along the same line.
CornerPolygon Clip(const CornerPolygon& polygon, double level, Side side) {
  CornerPolygon part;
  for (size_t i = 0; i < polygon.size(); ++i) {
    const Corner& corner = polygon[i];
    const Corner& next = polygon[(i + 1) % polygon.size()];
    const bool up = corner.value >= level;
    const bool next_up = next.value >= level;
    if (up == (side == Side::kFromLevelUp)) part.push_back(corner);
    if (up != next_up) part.push_back(Crossing(corner, next, level));
  }
  return part;
}

// Twice the area; from the first corner, as the area may be small beside what it is away from 0.
double DoubleArea(const std::vector<Point>& polygon) {
  const Point& origin = polygon.front();
  double area = 0;
  for (size_t i = 2; i < polygon.size(); ++i) {
    const Point& a = polygon[i - 1];
    const Point& b = polygon[i];
    area += (a.x - origin.x) * (b.y - origin.y) - (b.x - origin.x) * (a.y - origin.y);
  }
  return std::fabs(area);
}

// Opposite corners on the same side, both above or both below the other two.
bool IsSaddle(const CornerPolygon& cell) {
  const auto [low_a, high_a] = std::minmax(cell[0].value, cell[2].value);
  const auto [low_b, high_b] = std::minmax(cell[1].value, cell[3].value);
  return low_a > high_b || low_b > high_a;
}

// Triangles around the middle of a saddle; other cells as they are.
std::vector<CornerPolygon> Parts(const CornerPolygon& cell) {
  if (!IsSaddle(cell)) return {cell};
  Corner middle;
  for (const Corner& corner : cell) {
    middle.x += corner.x / 4;
    middle.y += corner.y / 4;
    middle.value += corner.value / 4;
  }
  std::vector<CornerPolygon> parts;
  for (size_t i = 0; i < cell.size(); ++i) {
    parts.push_back({cell[i], cell[(i + 1) % cell.size()], middle});
  }
  return parts;
}

class Tracer {
 public:
  Tracer(const ContourSurface& surface, const GraphRange& area, ContourBands& bands)
      : m_surface(surface), m_area(area), m_bands(bands) {}

  void Trace() {
    for (size_t row = 0; row < kCells; ++row) {
      for (size_t column = 0; column < kCells;) {
        const size_t end = EndOfRun(row, column);
        if (end > column) {
          AddRun(row, column, end);
          column = end;
        } else {
          AddCell(row, column++);
        }
      }
    }
  }

 private:
  static constexpr size_t kMixed = std::numeric_limits<size_t>::max();

  size_t LevelOf(double value) const {
    const auto inner = m_bands.bounds.begin() + 1;
    const auto last = m_bands.bounds.end() - 1;
    return static_cast<size_t>(std::upper_bound(inner, last, value) - inner);
  }

  Corner CornerAt(size_t row, size_t column) const {
    const double across = static_cast<double>(column) / kCells;
    const double up = static_cast<double>(row) / kCells;
    return {m_area.x_min + across * (double{m_area.x_max} - m_area.x_min),
            m_area.y_min + up * (double{m_area.y_max} - m_area.y_min),
            double{m_surface.At(row, column)}};
  }

  CornerPolygon Cell(size_t row, size_t first, size_t end) const {
    return {CornerAt(row, first), CornerAt(row, end), CornerAt(row + 1, end),
            CornerAt(row + 1, first)};
  }

  // The one band of a cell, or kMixed.
  size_t LevelOfCell(size_t row, size_t column) const {
    const CornerPolygon cell = Cell(row, column, column + 1);
    double lowest = cell[0].value;
    double highest = lowest;
    for (const Corner& corner : cell) {
      if (!std::isfinite(corner.value)) return kMixed;
      lowest = std::min(lowest, corner.value);
      highest = std::max(highest, corner.value);
    }
    const size_t level = LevelOf(lowest);
    return LevelOf(highest) == level ? level : kMixed;
  }

  // Cells of one band beside each other are one region.
  size_t EndOfRun(size_t row, size_t column) const {
    const size_t level = LevelOfCell(row, column);
    if (level == kMixed) return column;
    size_t end = column + 1;
    while (end < kCells && LevelOfCell(row, end) == level) ++end;
    return end;
  }

  void AddRun(size_t row, size_t first, size_t end) {
    AddRegion(LevelOfCell(row, first), Cell(row, first, end));
  }

  void AddCell(size_t row, size_t column) {
    const CornerPolygon cell = Cell(row, column, column + 1);
    for (const Corner& corner : cell) {
      if (!std::isfinite(corner.value)) return;
    }
    for (CornerPolygon rest : Parts(cell)) {
      for (size_t level = 0; level + 1 < m_bands.count(); ++level) {
        const double bound = m_bands.bounds[level + 1];
        AddRegion(level, Clip(rest, bound, Side::kBelow));
        rest = Clip(rest, bound, Side::kFromLevelUp);
      }
      AddRegion(m_bands.count() - 1, rest);
    }
  }

  // Leaves out what a level only touches.
  void AddRegion(size_t level, const CornerPolygon& polygon) {
    ContourRegion region;
    region.level = level;
    std::vector<Point>& points = region.points;
    for (const Corner& corner : polygon) {
      const Point point = {corner.x, corner.y};
      if (points.empty() || points.back() != point) points.push_back(point);
    }
    if (points.size() > 1 && points.back() == points.front()) points.pop_back();
    if (points.size() < 3 || !(DoubleArea(points) > 0)) return;
    m_bands.regions.push_back(std::move(region));
  }

  const ContourSurface& m_surface;
  const GraphRange& m_area;
  ContourBands& m_bands;
};

struct ValueRange {
  float lowest = std::numeric_limits<float>::infinity();
  float highest = -std::numeric_limits<float>::infinity();
};

// Of the values that are numbers.
ValueRange RangeOf(const ContourSurface& surface) {
  ValueRange range;
  for (size_t i = 0; i < kContourSteps * kContourSteps; ++i) {
    const float value = surface.At(i / kContourSteps, i % kContourSteps);
    if (!std::isfinite(value)) continue;
    range.lowest = std::min(range.lowest, value);
    range.highest = std::max(range.highest, value);
  }
  return range;
}

// The first, the third and so on, and the last one.
std::vector<double> EverySecond(const std::vector<double>& bounds) {
  std::vector<double> kept;
  for (size_t i = 0; i < bounds.size(); i += 2) kept.push_back(bounds[i]);
  if (bounds.size() % 2 == 0) kept.push_back(bounds.back());
  return kept;
}

// Without the bands at either end that no value reaches: the ends of an axis go out to labelled
// steps.
std::vector<double> Trim(std::vector<double> bounds, const ValueRange& range) {
  while (bounds.size() > 2 && bounds[1] <= range.lowest) bounds.erase(bounds.begin());
  while (bounds.size() > 2 && bounds[bounds.size() - 2] >= range.highest) bounds.pop_back();
  return bounds;
}

// At the ticks; the end of the axis takes the place of one that is only a rounding before it.
std::vector<double> BoundsOf(const ValueRange& range, const AxisScale& scale) {
  std::vector<double> ticks;
  for (const AxisTick& tick : AxisTicks(scale, LabelAxis(scale))) ticks.push_back(tick.value);
  ticks.back() = scale.second;
  const std::vector<double> bounds = Trim(ticks, range);
  return bounds.size() > kMostBands + 1 ? Trim(EverySecond(ticks), range) : bounds;
}

// With as many digits as tell them apart, 9 at most: values are single precision.
std::vector<std::string> Texts(const std::vector<double>& bounds) {
  std::vector<std::string> texts;
  for (int digits = 5; digits <= 9; ++digits) {
    texts.clear();
    for (const double bound : bounds) texts.push_back(fmt::sprintf("%.*g", digits, bound));
    if (std::ranges::adjacent_find(texts) == texts.end()) break;
  }
  return texts;
}

void SetBounds(const ContourSurface& surface, ContourBands& bands) {
  const ValueRange range = RangeOf(surface);
  if (range.lowest > range.highest) return;
  const AxisScale scale = ScaleAxis(range.lowest, range.highest, kLevelPixels);
  bands.bounds = scale.IsDegenerate() ? std::vector<double>{range.lowest, range.highest}
                                      : BoundsOf(range, scale);
  for (double& bound : bands.bounds) bound += 0.0;  // no negative zero
  bands.bound_texts = Texts(bands.bounds);
}

}  // namespace

ContourBands TraceBands(const ContourSurface& surface, const GraphRange& area) {
  ContourBands bands;
  SetBounds(surface, bands);
  if (bands.count() > 0) Tracer(surface, area, bands).Trace();
  return bands;
}

Colour BandColour(size_t level, size_t count) {
  // Stops of the "viridis" map, which its authors gave to the public domain.
  constexpr std::array<uint8_t, 10> kRedStops = {68, 72, 62, 49, 38, 31, 53, 110, 181, 253};
  constexpr std::array<uint8_t, 10> kGreenStops = {1, 40, 74, 104, 130, 158, 183, 206, 222, 231};
  constexpr std::array<uint8_t, 10> kBlueStops = {84, 120, 137, 142, 142, 137, 121, 88, 43, 37};
  const double place =
      count < 2 ? 0.5 : static_cast<double>(level) / static_cast<double>(count - 1);
  const double stop = place * (kRedStops.size() - 1);
  const size_t below = std::min(static_cast<size_t>(stop), kRedStops.size() - 2);
  const auto mix = [&](const std::array<uint8_t, 10>& stops) {
    return static_cast<uint8_t>(
        std::lround(std::lerp(stops[below], stops[below + 1], stop - static_cast<double>(below))));
  };
  return {mix(kRedStops), mix(kGreenStops), mix(kBlueStops)};
}

}  // namespace tarn
