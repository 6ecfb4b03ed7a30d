#include "netgraph/read_out.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <fmt/printf.h>
#include <optional>
#include <string_view>

#include "base/text_numbers.h"
#include "netgraph/axis_scaling.h"

namespace tarn {
namespace {

// A place between the points of the grid along one input.
struct GridPlace {
  size_t before = 0;
  double share = 0;  // of the way to the next point
};

std::optional<GridPlace> PlaceOf(double value, double first, double last) {
  constexpr double kCells = kContourSteps - 1;
  const double place = (value - first) / (last - first) * kCells;
  // What is no number is not within either.
  if (!(place >= 0 && place <= kCells)) return std::nullopt;
  const double before = std::min(std::floor(place), kCells - 1);
  return GridPlace{static_cast<size_t>(before), place - before};
}

// The surface between the points of its grid; no number beside it or at a corner that is none.
double SurfaceAt(const ContourSurface& surface, const GraphRange& area, const Point& data) {
  const std::optional<GridPlace> column = PlaceOf(data.x, area.x_min, area.x_max);
  const std::optional<GridPlace> row = PlaceOf(data.y, area.y_min, area.y_max);
  if (!column || !row) return std::nan("");
  // std::lerp gives a number where one end is none.
  const auto between = [](double first, double last, double share) {
    return first + share * (last - first);
  };
  const auto along = [&](size_t at_row) {
    return between(surface.At(at_row, column->before), surface.At(at_row, column->before + 1),
                   column->share);
  };
  return between(along(row->before), along(row->before + 1), row->share);
}

// Labels tell tick from tick; between two of them pixels tell some more digits.
constexpr int32_t kMoreDigits = 2;

std::string ValueText(const AxisScale& scale, double value) {
  AxisLabels labels = LabelAxis(scale);
  const size_t point = labels.format.find('.');
  if (point != std::string::npos) {
    const std::string_view digits = std::string_view(labels.format).substr(point + 1);
    labels.format = fmt::sprintf("%s.%d%c", labels.format.substr(0, point),
                                 ToInt(digits) + kMoreDigits, labels.format.back());
  }
  return LabelText(labels, value);
}

}  // namespace

std::string ReadOut(const Graph& graph, const GraphLayout& layout, const Point& on_canvas) {
  if (!layout.plot.Contains(on_canvas)) return "";
  const Point data = layout.ToData(on_canvas);
  if (!std::isfinite(data.x) || !std::isfinite(data.y)) return "";
  std::string text = fmt::sprintf("x = %s, y = %s", ValueText(layout.x_scale, data.x),
                                  ValueText(layout.y_scale, data.y));
  if (!graph.contours) return text;
  const double value = SurfaceAt(*graph.contours, OpeningRange(graph), data);
  if (std::isfinite(value)) text += fmt::sprintf(", value = %.4g", value);
  return text;
}

}  // namespace tarn
