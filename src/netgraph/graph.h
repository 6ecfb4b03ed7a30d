#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "netgraph/canvas.h"
#include "netgraph/contour_surface.h"

namespace tarn {

inline constexpr Colour kBlue = {0, 0, 255};
inline constexpr Colour kGreen = {0, 150, 0};
inline constexpr Colour kRed = {255, 0, 0};

enum MarkerCode : int32_t { kNoMarker = 0, kPointMarker = 5 };
enum DrawingMode : int32_t { kJoined = 1, kMarkersOnly = 2 };

// Tells curves apart where colours cannot: the dashes of a line, the shape of a marker.
enum CurveStyle : int32_t { kSolidCircle = 0, kDashedDiamond = 1, kDottedCross = 2 };

struct CURVE_DEF {
  std::vector<float> x;  // as many as y; a point that is not finite is not drawn
  std::vector<float> y;
  int32_t marker = kNoMarker;  // a MarkerCode
  int32_t mode = kJoined;      // a DrawingMode
  int32_t style = kSolidCircle;
  Colour colour = kBlue;
  std::string name;  // in the legend; empty: not listed
};

// Data units. All four 0: the range of the data.
struct GraphRange {
  float x_min = 0;
  float x_max = 0;
  float y_min = 0;
  float y_max = 0;

  bool IsFixed() const { return x_min != 0 || x_max != 0 || y_min != 0 || y_max != 0; }
  bool operator==(const GraphRange&) const = default;
};

// One graph, as a builder fills it and as it is drawn: 1 to 4 curves, or a contour surface.
struct Graph {
  std::vector<CURVE_DEF> curves;
  std::optional<ContourSurface> contours;
  std::string title;
  std::string x_label;
  std::string y_label;
  GraphRange range;
};

// Of all points that can be drawn; all 0 when there are none.
GraphRange DataRange(const Graph& graph);

// The range that a graph is opened with: its own or that of its data.
GraphRange OpeningRange(const Graph& graph);

}  // namespace tarn
