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
  return {low.x + share * (high.x - low.x), low.y + share * (high.y - low.y), level};
}

// The part of a polygon that `keeps` has, cut where values cross the level.
template <typename Keeps>
CornerPolygon Clip(const CornerPolygon& polygon, double level, const Keeps& keeps) {
  CornerPolygon part;
  for (size_t i = 0; i < polygon.size(); ++i) {
    const Corner& corner = polygon[i];
    const Corner& next = polygon[(i + 1) % polygon.size()];
    if (keeps(corner.value)) part.push_back(corner);
    const bool crosses = (corner.value < level && next.value > level) ||
                         (corner.value > level && next.value < level);
    if (crosses) part.push_back(Crossing(corner, next, level));
  }
  return part;
}

CornerPolygon Band(const CornerPolygon& polygon, double lower, double upper) {
  const CornerPolygon above =
      Clip(polygon, lower, [lower](double value) { return value >= lower; });
  return Clip(above, upper, [upper](double value) { return value <= upper; });
}

// Twice the area.
double DoubleArea(const CornerPolygon& polygon) {
  double area = 0;
  for (size_t i = 0; i < polygon.size(); ++i) {
    const Corner& a = polygon[i];
    const Corner& b = polygon[(i + 1) % polygon.size()];
    area += a.x * b.y - b.x * a.y;
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
    double highest = cell[0].value;
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
    constexpr double kNoBound = std::numeric_limits<double>::infinity();
    for (const CornerPolygon& part : Parts(cell)) {
      for (size_t level = 0; level < m_bands.count(); ++level) {
        const double lower = level == 0 ? -kNoBound : m_bands.bounds[level];
        const double upper = level + 1 == m_bands.count() ? kNoBound : m_bands.bounds[level + 1];
        AddRegion(level, Band(part, lower, upper));
      }
    }
  }

  void AddRegion(size_t level, const CornerPolygon& polygon) {
    if (polygon.size() < 3 || !(DoubleArea(polygon) > 0)) return;
    ContourRegion region;
    region.level = level;
    for (const Corner& corner : polygon) region.points.push_back({corner.x, corner.y});
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

void AddBound(double bound, ContourBands& bands) {
  bands.bounds.push_back(bound);
  bands.bound_texts.push_back(fmt::sprintf("%.5g", bound));
}

void SetBounds(const ContourSurface& surface, ContourBands& bands) {
  const ValueRange range = RangeOf(surface);
  if (range.lowest > range.highest) return;
  const AxisScale scale = ScaleAxis(range.lowest, range.highest, kLevelPixels);
  if (scale.IsDegenerate()) {
    AddBound(range.lowest, bands);
    AddBound(range.highest, bands);
    return;
  }
  const std::vector<AxisTick> ticks = AxisTicks(scale, LabelAxis(scale));
  const size_t stride = ticks.size() > kMostBands + 1 ? 2 : 1;
  for (size_t i = 0; i < ticks.size(); i += stride) AddBound(ticks[i].value, bands);
  if (bands.bounds.back() < range.highest) AddBound(scale.second, bands);
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
