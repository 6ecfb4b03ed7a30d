#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "netgraph/canvas.h"
#include "netgraph/contour_surface.h"
#include "netgraph/graph.h"

namespace tarn {

// A filled polygon of one band, its corners in data units. It does not cross itself.
struct ContourRegion {
  size_t level = 0;  // the band, from 0, the lowest
  std::vector<Point> points;
};

// The bands of a surface: band i holds values from bounds[i] to below bounds[i + 1]. The regions
// tile the surface without gaps or overlaps, but for grid cells with a corner that is no number.
struct ContourBands {
  std::vector<double> bounds;            // ascending; one more than bands
  std::vector<std::string> bound_texts;  // as the legend has them
  std::vector<ContourRegion> regions;

  size_t count() const { return bounds.empty() ? 0 : bounds.size() - 1; }
};

// Bounds at the ticks of an axis over the values, 6 to 20 bands; a surface that is constant is one
// band between equal bounds. The grid is laid over `area`. Values run linearly along the sides of a
// cell; where opposite corners lie on the same side of a level and the others do not, the mean of
// the four decides. Throws std::bad_alloc.
ContourBands TraceBands(const ContourSurface& surface, const GraphRange& area);

// The colour of a band: an even climb in lightness from a dark blue to a bright yellow.
Colour BandColour(size_t level, size_t count);

}  // namespace tarn
