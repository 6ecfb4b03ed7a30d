#include "netgraph/clipping.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <optional>

namespace tarn {
namespace {

struct Segment {
  Point from;
  Point to;
};

// One side of a rectangle.
struct Side {
  double Point::*across;  // the coordinate that it limits
  double limit;
  double inwards;  // 1 or -1

  // The way from the side to a point; below 0 outside.
  double Room(const Point& point) const { return inwards * (point.*across - limit); }
};

std::array<Side, 4> SidesOf(const Rect& rect) {
  return {{{&Point::x, rect.left, 1},
           {&Point::x, rect.right(), -1},
           {&Point::y, rect.top, 1},
           {&Point::y, rect.bottom(), -1}}};
}

// Where the way from one point to another meets a side. Reckoned from the point that is nearer to
// it: a line that comes from far away would have no digits left for the place.
Point Crossing(const Point& one, const Point& other, const Side& side) {
  const bool one_is_near = std::abs(side.Room(one)) < std::abs(side.Room(other));
  const Point& near = one_is_near ? one : other;
  const Point& far = one_is_near ? other : one;
  const double share = side.Room(near) / (side.Room(near) - side.Room(far));
  Point crossing = {near.x + share * (far.x - near.x), near.y + share * (far.y - near.y)};
  crossing.*side.across = side.limit;
  return crossing;
}

Point Within(const Point& point, const Rect& rect) {
  return {std::clamp(point.x, rect.left, rect.right()),
          std::clamp(point.y, rect.top, rect.bottom())};
}

// The part of a segment in a rectangle: an end that is inside stays what it is.
std::optional<Segment> ClipSegment(Segment segment, const Rect& rect) {
  for (const Side& side : SidesOf(rect)) {
    const bool from_outside = side.Room(segment.from) < 0;
    const bool to_outside = side.Room(segment.to) < 0;
    if (from_outside && to_outside) return std::nullopt;
    if (from_outside) segment.from = Crossing(segment.from, segment.to, side);
    if (to_outside) segment.to = Crossing(segment.from, segment.to, side);
  }
  return Segment{Within(segment.from, rect), Within(segment.to, rect)};
}

// Cuts away what lies beyond one side. What only touches it from there has no area and goes too.
Polygon CutSide(const Polygon& polygon, const Side& side) {
  Polygon part;
  for (size_t i = 0; i < polygon.size(); ++i) {
    const Point& point = polygon[i];
    const Point& next = polygon[(i + 1) % polygon.size()];
    const double here = side.Room(point);
    const double there = side.Room(next);
    if (here >= 0) part.push_back(point);
    const bool crosses = (here < 0 && there > 0) || (here > 0 && there < 0);
    if (crosses) part.push_back(Crossing(point, next, side));
  }
  if (part.size() < 3) part.clear();
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
  Polygon part = polygon;
  for (const Side& side : SidesOf(rect)) part = CutSide(part, side);
  for (Point& point : part) point = Within(point, rect);
  return part;
}

}  // namespace tarn
