#include "netgraph/graph_csv.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <fmt/printf.h>

namespace tarn {
namespace {

std::string InOneLine(std::string text) {
  std::ranges::replace_if(
      text, [](char c) { return c == '\n' || c == '\r'; }, ' ');
  return text;
}

// A NaN has the sign that the processor gave it: none is shown.
std::string Number(float value) {
  if (std::isnan(value)) return "nan";
  return fmt::sprintf("%.9g", double{value});
}

void AppendCurve(const CURVE_DEF& curve, std::string& csv) {
  const Colour& colour = curve.colour;
  csv += fmt::sprintf("curve,%s,#%02x%02x%02x,%d,%d\n", InOneLine(curve.name), colour.red,
                      colour.green, colour.blue, curve.marker, curve.mode);
  for (size_t i = 0; i < curve.x.size(); ++i) {
    csv += Number(curve.x[i]) + "," + Number(curve.y[i]) + "\n";
  }
}

void AppendGrid(const ContourSurface& surface, std::string& csv) {
  csv += "grid\n";
  for (size_t row = 0; row < kContourSteps; ++row) {
    for (size_t column = 0; column < kContourSteps; ++column) {
      csv += Number(surface.At(row, column)) + (column + 1 < kContourSteps ? "," : "\n");
    }
  }
}

}  // namespace

std::string GraphCsv(const Graph& graph) {
  std::string csv = fmt::sprintf("title,%s\nx-label,%s\ny-label,%s\n", InOneLine(graph.title),
                                 InOneLine(graph.x_label), InOneLine(graph.y_label));
  if (graph.range.IsFixed()) {
    const GraphRange& range = graph.range;
    csv += fmt::sprintf("range,%s,%s,%s,%s\n", Number(range.x_min), Number(range.x_max),
                        Number(range.y_min), Number(range.y_max));
  }
  for (const CURVE_DEF& curve : graph.curves) AppendCurve(curve, csv);
  if (graph.contours) AppendGrid(*graph.contours, csv);
  return csv;
}

}  // namespace tarn
