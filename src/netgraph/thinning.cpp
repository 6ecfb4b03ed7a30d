#include "netgraph/thinning.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <set>
#include <utility>

namespace tarn {
namespace {

constexpr size_t kFewMarkers = 2000;

size_t EndOfColumn(const std::vector<Point>& line, size_t first) {
  const double column = std::floor(line[first].x);
  size_t end = first + 1;
  while (end < line.size() && std::floor(line[end].x) == column) ++end;
  return end;
}

}  // namespace

std::vector<Point> ThinLine(const std::vector<Point>& line) {
  std::vector<Point> thinned;
  const auto lower = [](const Point& a, const Point& b) { return a.y < b.y; };
  for (size_t first = 0; first < line.size();) {
    const size_t end = EndOfColumn(line, first);
    const auto begin = line.begin() + static_cast<std::ptrdiff_t>(first);
    const auto behind = line.begin() + static_cast<std::ptrdiff_t>(end);
    const auto [lowest, highest] = std::minmax_element(begin, behind, lower);
    std::array<size_t, 4> kept = {first, static_cast<size_t>(lowest - line.begin()),
                                  static_cast<size_t>(highest - line.begin()), end - 1};
    std::ranges::sort(kept);
    const auto last = std::unique(kept.begin(), kept.end());
    std::for_each(kept.begin(), last, [&](size_t i) { thinned.push_back(line[i]); });
    first = end;
  }
  return thinned;
}

std::vector<Point> ThinMarkers(const std::vector<Point>& markers, double radius) {
  if (markers.size() <= kFewMarkers) return markers;
  std::set<std::pair<double, double>> taken;
  std::vector<Point> thinned;
  for (const Point& marker : markers) {
    const std::pair cell = {std::floor(marker.x / radius), std::floor(marker.y / radius)};
    if (taken.insert(cell).second) thinned.push_back(marker);
  }
  return thinned;
}

}  // namespace tarn
