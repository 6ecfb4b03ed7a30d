#pragma once

#include <optional>

#include "base/status.h"
#include "netgraph/canvas.h"
#include "netgraph/graph.h"

namespace tarn {

struct GraphLayout;

// What of a graph is to be seen.
class GraphView {
 public:
  // The whole of it, the legend when any curve has a name or there are contours.
  explicit GraphView(const Graph& graph);

  const GraphRange& range() const { return m_range; }
  bool legend() const { return m_legend; }
  void ToggleLegend() { m_legend = !m_legend; }

  // Looks at the rectangle that was drawn on a layout of this view, its upper left corner first.
  // What the user is told when that is no area; the view stays then.
  std::optional<Message> ZoomTo(const GraphLayout& layout, const Point& top_left,
                                const Point& bottom_right);
  // Back to the range that the graph was opened with.
  void ResetZoom();
  // Goes on with new data of the same plot: what was zoomed to stays, as does the legend; otherwise
  // the whole of it is seen.
  void Follow(const Graph& graph);

 private:
  GraphRange m_opening;
  GraphRange m_range;
  bool m_legend;
  bool m_zoomed = false;
};

}  // namespace tarn
