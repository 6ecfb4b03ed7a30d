#pragma once

#include <vector>

#include "netgraph/canvas.h"

namespace tarn {

// Of the points of a line that follow each other within a column of pixels the first, the lowest,
// the highest and the last, in their order: what the column shows is the same.
std::vector<Point> ThinLine(const std::vector<Point>& line);

// Of markers that nearly cover each other the first; all of them where they are few.
std::vector<Point> ThinMarkers(const std::vector<Point>& markers, double radius);

}  // namespace tarn
