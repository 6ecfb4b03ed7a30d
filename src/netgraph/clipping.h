#pragma once

#include <vector>

#include "netgraph/canvas.h"

namespace tarn {

// The pieces of a line that lie within a rectangle.
std::vector<std::vector<Point>> ClipLine(const std::vector<Point>& line, const Rect& rect);

// The part of a polygon that lies within a rectangle; empty when none does.
Polygon ClipPolygon(const Polygon& polygon, const Rect& rect);

}  // namespace tarn
