#include "netgraph/graph_view.h"

#include <algorithm>
#include <limits>
#include <string>

#include "netgraph/graph_layout.h"
#include "netgraph/messages.h"

namespace tarn {
namespace {

bool HasLegend(const Graph& graph) {
  return graph.contours || std::ranges::any_of(graph.curves, [](const CURVE_DEF& curve) {
           return !curve.name.empty();
         });
}

// The ends of an axis may lie beyond the largest data.
float NearestFloat(double value) {
  constexpr double kLargest = std::numeric_limits<float>::max();
  return static_cast<float>(std::clamp(value, -kLargest, kLargest));
}

}  // namespace

GraphView::GraphView(const Graph& graph)
    : m_opening(OpeningRange(graph)), m_range(m_opening), m_legend(HasLegend(graph)) {}

std::optional<Message> GraphView::ZoomTo(const GraphLayout& layout, const Point& top_left,
                                         const Point& bottom_right) {
  const Point upper = layout.ToData(top_left);
  const Point lower = layout.ToData(bottom_right);
  const GraphRange range = {NearestFloat(upper.x), NearestFloat(lower.x), NearestFloat(lower.y),
                            NearestFloat(upper.y)};
  if (range.x_min < range.x_max && range.y_min < range.y_max) {
    m_range = range;
    m_zoomed = true;
    return std::nullopt;
  }
  return Message{std::string(kInvalidZoomCaption), std::string(kInvalidZoomArea),
                 MessageIcon::kExclamation};
}

void GraphView::ResetZoom() {
  m_range = m_opening;
  m_zoomed = false;
}

void GraphView::Follow(const Graph& graph) {
  m_opening = OpeningRange(graph);
  if (!m_zoomed) m_range = m_opening;
}

}  // namespace tarn
