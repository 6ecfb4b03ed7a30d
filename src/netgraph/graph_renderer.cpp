#include "netgraph/graph_renderer.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <new>
#include <string>
#include <utility>

#include "netgraph/clipping.h"
#include "netgraph/messages.h"
#include "netgraph/thinning.h"

namespace tarn {
namespace {

constexpr Colour kWhite = {255, 255, 255};
constexpr Colour kBlack = {0, 0, 0};
constexpr Colour kGridColour = {225, 225, 225};

// Lengths on a page of 800 x 600 pixels.
constexpr double kAxisWidth = 1;
constexpr double kCurveWidth = 1.6;
constexpr double kMarkerWidth = 1.2;
constexpr double kLabelledTick = 6;
constexpr double kMinorTick = 3;

// The radius of a marker among so many.
double MarkerRadius(size_t markers) {
  constexpr size_t kFew = 200;
  constexpr size_t kMany = 2000;
  if (markers <= kFew) return 3.5;
  return markers <= kMany ? 2.5 : 1.5;
}

struct Look {
  Dashes dashes;
  MarkerShape shape;
};

Look LookOf(const CURVE_DEF& curve) {
  switch (curve.style) {
    case kDashedDiamond:
      return {Dashes::kDashed, MarkerShape::kDiamond};
    case kDottedCross:
      return {Dashes::kDotted, MarkerShape::kCross};
    default:
      return {Dashes::kSolid, MarkerShape::kCircle};
  }
}

bool HasLine(const CURVE_DEF& curve) {
  return curve.mode == kJoined;
}
bool HasMarkers(const CURVE_DEF& curve) {
  return curve.mode == kMarkersOnly || curve.marker == kPointMarker;
}

// Its points on the canvas, in the pieces between those that are no numbers.
std::vector<std::vector<Point>> Pieces(const CURVE_DEF& curve, const GraphLayout& layout) {
  std::vector<std::vector<Point>> pieces;
  bool goes_on = false;
  for (size_t i = 0; i < curve.x.size(); ++i) {
    const bool drawn = std::isfinite(curve.x[i]) && std::isfinite(curve.y[i]);
    if (drawn && !goes_on) pieces.emplace_back();
    if (drawn) pieces.back().push_back(layout.ToCanvas({curve.x[i], curve.y[i]}));
    goes_on = drawn;
  }
  return pieces;
}

CurveShape ShapeFor(const CURVE_DEF& curve, const GraphLayout& layout, size_t markers) {
  CurveShape shape;
  const bool line = HasLine(curve);
  shape.pen = {curve.colour, (line ? kCurveWidth : kMarkerWidth) * layout.unit,
               line ? LookOf(curve).dashes : Dashes::kSolid};
  shape.shape = LookOf(curve).shape;
  shape.radius = MarkerRadius(markers) * layout.unit;
  return shape;
}

void DrawCurve(const CURVE_DEF& curve, const GraphLayout& layout, Canvas& canvas) {
  CurveShape shape = ShapeFor(curve, layout, HasMarkers(curve) ? curve.x.size() : 0);
  std::vector<Point> markers;
  for (const std::vector<Point>& piece : Pieces(curve, layout)) {
    // A line needs two places: one that stands alone would not be seen.
    const bool alone =
        std::ranges::all_of(piece, [&](const Point& point) { return point == piece.front(); });
    if (HasMarkers(curve)) {
      markers.insert(markers.end(), piece.begin(), piece.end());
    } else if (alone) {
      markers.push_back(piece.front());
    }
    if (!HasLine(curve) || alone) continue;
    for (std::vector<Point>& line : ClipLine(ThinLine(piece), layout.plot)) {
      shape.lines.push_back(std::move(line));
    }
  }
  std::erase_if(markers, [&](const Point& marker) { return !layout.plot.Contains(marker); });
  shape.markers = ThinMarkers(markers, shape.radius);
  if (shape.lines.empty() && shape.markers.empty()) return;
  canvas.DrawCurve(Role::kCurve, shape);
}

void DrawBands(const GraphLayout& layout, Canvas& canvas) {
  const ContourBands& bands = *layout.bands;
  std::vector<std::vector<Polygon>> by_level(bands.count());
  for (const ContourRegion& region : bands.regions) {
    Polygon polygon;
    for (const Point& point : region.points) polygon.push_back(layout.ToCanvas(point));
    polygon = ClipPolygon(polygon, layout.plot);
    if (polygon.size() > 2) by_level[region.level].push_back(std::move(polygon));
  }
  for (size_t level = 0; level < by_level.size(); ++level) {
    if (by_level[level].empty()) continue;
    canvas.FillPolygons(Role::kBand, by_level[level], BandColour(level, bands.count()));
  }
}

void DrawGrid(const GraphLayout& layout, Canvas& canvas) {
  const Rect& plot = layout.plot;
  const Pen pen = {kGridColour, kAxisWidth * layout.unit};
  for (const AxisTick& tick : layout.x_ticks) {
    const double x = layout.ToCanvas({tick.value, 0}).x;
    if (tick.labelled) canvas.DrawLine(Role::kGrid, {x, plot.top}, {x, plot.bottom()}, pen);
  }
  for (const AxisTick& tick : layout.y_ticks) {
    const double y = layout.ToCanvas({0, tick.value}).y;
    if (tick.labelled) canvas.DrawLine(Role::kGrid, {plot.left, y}, {plot.right(), y}, pen);
  }
}

void DrawTicks(const GraphLayout& layout, Canvas& canvas) {
  const Rect& plot = layout.plot;
  const Pen pen = {kBlack, kAxisWidth * layout.unit};
  const auto length = [&](const AxisTick& tick) {
    return (tick.labelled ? kLabelledTick : kMinorTick) * layout.unit;
  };
  for (const AxisTick& tick : layout.x_ticks) {
    const double x = layout.ToCanvas({tick.value, 0}).x;
    canvas.DrawLine(Role::kTick, {x, plot.bottom()}, {x, plot.bottom() + length(tick)}, pen);
  }
  for (const AxisTick& tick : layout.y_ticks) {
    const double y = layout.ToCanvas({0, tick.value}).y;
    canvas.DrawLine(Role::kTick, {plot.left - length(tick), y}, {plot.left, y}, pen);
  }
}

void DrawAxes(const GraphLayout& layout, Canvas& canvas) {
  const Rect& plot = layout.plot;
  const Pen pen = {kBlack, kAxisWidth * layout.unit};
  const std::array<Point, 4> corners = {{{plot.left, plot.top},
                                         {plot.right(), plot.top},
                                         {plot.right(), plot.bottom()},
                                         {plot.left, plot.bottom()}}};
  for (size_t i = 0; i < corners.size(); ++i) {
    canvas.DrawLine(Role::kTick, corners[i], corners[(i + 1) % corners.size()], pen);
  }
  DrawTicks(layout, canvas);
}

void DrawLegend(const Graph& graph, const GraphLayout& layout, Canvas& canvas) {
  for (const LegendSample& sample : layout.samples) {
    const CURVE_DEF& curve = graph.curves[sample.curve];
    CurveShape shape = ShapeFor(curve, layout, 1);
    const double y = sample.place.top + sample.place.height / 2;
    if (HasLine(curve)) shape.lines = {{{sample.place.left, y}, {sample.place.right(), y}}};
    if (HasMarkers(curve)) shape.markers = {{sample.place.left + sample.place.width / 2, y}};
    shape.radius = std::min(shape.radius, sample.place.height / 2);
    canvas.DrawCurve(Role::kLegend, shape);
  }
  const Pen pen = {kBlack, kAxisWidth * layout.unit / 2};
  for (const LegendBand& band : layout.band_legend) {
    canvas.DrawRect(Role::kLegend, band.place, BandColour(band.level, layout.bands->count()), pen);
  }
}

template <typename Draw>
void Clipped(const GraphLayout& layout, Canvas& canvas, const Draw& draw) {
  canvas.BeginClip(layout.plot);
  draw();
  canvas.EndClip();
}

}  // namespace

void DrawGraph(const Graph& graph, const GraphLayout& layout, Canvas& canvas) {
  const Size& page = layout.page;
  canvas.DrawRect(Role::kPage, {0, 0, page.width, page.height}, kWhite, std::nullopt);
  canvas.DrawRect(Role::kPlotArea, layout.plot, kWhite, std::nullopt);
  if (layout.bands) {
    Clipped(layout, canvas, [&] { DrawBands(layout, canvas); });
  } else {
    DrawGrid(layout, canvas);
  }
  // Over the bands the frame stays whole; a curve along its side is seen on it.
  DrawAxes(layout, canvas);
  if (!graph.curves.empty()) {
    Clipped(layout, canvas, [&] {
      for (const CURVE_DEF& curve : graph.curves) DrawCurve(curve, layout, canvas);
    });
  }
  DrawLegend(graph, layout, canvas);
  for (const TextLine& text : layout.texts) canvas.DrawText(text);
}

void DrawGraph(const Graph& graph, const GraphView& view, Canvas& canvas) {
  DrawGraph(graph, LayoutGraph(graph, view, canvas), canvas);
}

std::optional<Message> PaintGraph(const Graph& graph, const GraphView& view, Canvas& canvas) {
  GraphLayout layout;
  return PaintGraph(graph, view, canvas, layout);
}

std::optional<Message> PaintGraph(const Graph& graph, const GraphView& view, Canvas& canvas,
                                  GraphLayout& layout) {
  try {
    layout = LayoutGraph(graph, view, canvas);
    DrawGraph(graph, layout, canvas);
  } catch (const std::bad_alloc&) {
    if (!graph.contours) throw;
    return ContourMemoryMessage();
  }
  return std::nullopt;
}

Message ContourMemoryMessage() {
  return {std::string(kNetGraphErrorCaption), std::string(kContourMemory),
          MessageIcon::kExclamation};
}

}  // namespace tarn
