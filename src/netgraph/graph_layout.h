#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "netgraph/axis_scaling.h"
#include "netgraph/canvas.h"
#include "netgraph/contour_bands.h"
#include "netgraph/graph.h"
#include "netgraph/graph_view.h"

namespace tarn {

// An entry of the legend: a piece of the curve beside its name.
struct LegendSample {
  size_t curve = 0;
  Rect place;
};

// A band's place in the scale of colours beside a contour plot.
struct LegendBand {
  size_t level = 0;
  Rect place;
};

// Where everything of a graph goes on a page of a given size. Texts lie within the page and apart
// from each other and from the plot.
struct GraphLayout {
  Size page;
  double unit = 1;  // what a pixel is on a page of 800 x 600: lengths grow with the page
  Rect plot;
  AxisScale x_scale;
  AxisScale y_scale;
  std::vector<AxisTick> x_ticks;
  std::vector<AxisTick> y_ticks;
  std::vector<TextLine> texts;
  std::vector<LegendSample> samples;
  std::optional<ContourBands> bands;
  std::vector<LegendBand> band_legend;

  // Data units to the canvas and back, through the axes; a degenerate axis puts everything on its
  // middle.
  Point ToCanvas(const Point& data) const;
  Point ToData(const Point& on_canvas) const;
  // The place itself, or that on the side of the plot that is nearest to it.
  Point NearestInPlot(const Point& on_canvas) const;
};

// `view` is of this graph. Pages from 300 x 200 to 8000 x 6000 pixels are legible.
GraphLayout LayoutGraph(const Graph& graph, const GraphView& view, const Canvas& canvas);

}  // namespace tarn
