#include "netgraph/clipping.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <utility>

namespace tarn {
namespace {

struct Segment {
  Point from;
  Point to;
};

Point Between(const Point& from, const Point& to, double share) {
  return {from.x + share * (to.x - from.x), from.y + share * (to.y - from.y)};
}

Point Within(const Point& point, const Rect& rect) {
  return {std::clamp(point.x, rect.left, rect.right()),
          std::clamp(point.y, rect.top, rect.bottom())};
}

// The part of a segment in a rectangle (Liang and Barsky, 1984): the shares of the way at which it
// is inside all four sides.
std::optional<Segment> ClipSegment(const Segment& segment, const Rect& rect) {
  const double dx = segment.to.x - segment.from.x;
  const double dy = segment.to.y - segment.from.y;
  const std::array<std::pair<double, double>, 4> sides = {{{-dx, segment.from.x - rect.left},
                                                           {dx, rect.right() - segment.from.x},
                                                           {-dy, segment.from.y - rect.top},
                                                           {dy, rect.bottom() - segment.from.y}}};
  double enters = 0;
  double leaves = 1;
  for (const auto& [outwards, room] : sides) {
    if (outwards == 0 && room < 0) return std::nullopt;
    if (outwards < 0) enters = std::max(enters, room / outwards);
    if (outwards > 0) leaves = std::min(leaves, room / outwards);
  }
  if (enters > leaves) return std::nullopt;
  // An end that is inside stays what it is; the others are put on the side that rounding misses.
  const Point from = enters > 0 ? Between(segment.from, segment.to, enters) : segment.from;
  const Point to = leaves < 1 ? Between(segment.from, segment.to, leaves) : segment.to;
  return Segment{Within(from, rect), Within(to, rect)};
}

// Cuts away what lies beyond one side: where `inside`, a share of the way in, is below 0.
template <typename Inside>
Polygon CutSide(const Polygon& polygon, const Inside& inside) {
  Polygon part;
  for (size_t i = 0; i < polygon.size(); ++i) {
    const Point& point = polygon[i];
    const Point& next = polygon[(i + 1) % polygon.size()];
    const double here = inside(point);
    const double there = inside(next);
    if (here >= 0) part.push_back(point);
    if ((here < 0) != (there < 0)) part.push_back(Between(point, next, here / (here - there)));
  }
  return part;
}

}  // namespace

std::vector<std::vector<Point>> ClipLine(const std::vector<Point>& line, const Rect& rect) {
  std::vector<std::vector<Point>> pieces;
  for (size_t i = 1; i < line.size(); ++i) {
    const std::optional<Segment> segment = ClipSegment({line[i - 1], line[i]}, rect);
    if (!segment) continue;
    if (pieces.empty() || pieces.back().back() != segment->from) pieces.push_back({segment->from});
    pieces.back().push_back(segment->to);
  }
  return pieces;
}

Polygon ClipPolygon(const Polygon& polygon, const Rect& rect) {
  Polygon part = CutSide(polygon, [&](const Point& p) { return p.x - rect.left; });
  part = CutSide(part, [&](const Point& p) { return rect.right() - p.x; });
  part = CutSide(part, [&](const Point& p) { return p.y - rect.top; });
  part = CutSide(part, [&](const Point& p) { return rect.bottom() - p.y; });
  for (Point& point : part) point = Within(point, rect);
  return part;
}

}  // namespace tarn
