#include "setup/network_drawing.h"

#include <algorithm>
#include <cstddef>

#include "setup/connections_draft.h"

namespace tarn {
namespace {

constexpr int32_t kLeastNodesForSize = 20;
constexpr int32_t kOpaque = 255;
constexpr int32_t kFaintest = 3;

// Where the layers and nodes of a design stand on its page.
class Places {
 public:
  Places(const Network& design, PageSize page)
      : m_design(design), m_page(page), m_spacing(page.height / (design.nLayers + 1)) {}

  int32_t spacing() const { return m_spacing; }
  int32_t LineOf(int32_t layer) const { return (layer + 1) * m_spacing; }
  int64_t Nodes(int32_t layer) const { return m_design.layers[static_cast<size_t>(layer)].nUnits; }

  PagePoint Node(int32_t layer, int64_t node) const {
    return {static_cast<int32_t>(m_page.width * (node + 1) / (Nodes(layer) + 1)), LineOf(layer)};
  }

  // The nodes of a layer, but for those that would hide each other.
  std::vector<PagePoint> DistinctNodes(int32_t layer) const {
    std::vector<PagePoint> points;
    if (Nodes(layer) <= m_page.width) {
      for (int64_t node = 0; node < Nodes(layer); ++node) points.push_back(Node(layer, node));
      return points;
    }
    // They stand on every pixel between the first and the last.
    PagePoint point = Node(layer, 0);
    for (const int32_t last = Node(layer, Nodes(layer) - 1).x; point.x <= last; ++point.x) {
      points.push_back(point);
    }
    return points;
  }

 private:
  const Network& m_design;
  PageSize m_page;
  int32_t m_spacing;
};

int64_t LargestLayer(const Network& design) {
  int32_t nodes = kLeastNodesForSize;
  for (int32_t l = 0; l < design.nLayers; ++l) {
    nodes = std::max(nodes, design.layers[static_cast<size_t>(l)].nUnits);
  }
  return nodes;
}

int32_t Diameter(const Network& design, PageSize page, int32_t text_height) {
  const int64_t fitting = page.width / (2 * LargestLayer(design));
  return std::max(static_cast<int32_t>(fitting), text_height / 2);
}

// The arrow points down, its tip at `tip`.
DrawnArrow Arrow(DrawnLine shaft, PagePoint tip, int32_t size) {
  const int32_t half = size / 2;
  return {shaft, {tip, {tip.x - half, tip.y - size}, {tip.x + half, tip.y - size}}};
}

void DrawArrows(const Network& design, const Places& places, int32_t text_height,
                NetworkDrawing& drawing) {
  const int32_t size = text_height / 3;
  const int32_t spacing = places.spacing();
  // Where the circle of the node does not cover it.
  const int32_t entry = spacing - std::max(2, drawing.diameter / 2 + 1);
  for (const PagePoint node : places.DistinctNodes(0)) {
    const DrawnLine shaft = {{node.x, spacing / 2}, {node.x, spacing - 2}};
    drawing.arrows.push_back(Arrow(shaft, {node.x, entry}, size));
  }
  for (const PagePoint node : places.DistinctNodes(design.nLayers - 1)) {
    const DrawnLine shaft = {{node.x, node.y + 2}, {node.x, node.y + spacing / 2}};
    drawing.arrows.push_back(Arrow(shaft, shaft.to, size));
  }
}

// Sloping for tanh, upright for sech.
void DrawMark(int32_t code, PagePoint node, int32_t diameter, std::vector<DrawnLine>& marks) {
  if (code == kTanh) {
    const int32_t reach = diameter / 3;
    marks.push_back({{node.x - reach, node.y - reach}, {node.x + reach, node.y + reach}});
    marks.push_back({{node.x - reach, node.y + reach}, {node.x + reach, node.y - reach}});
  } else if (code == kSech) {
    const int32_t reach = diameter / 2;
    marks.push_back({{node.x - reach, node.y}, {node.x + reach, node.y}});
    marks.push_back({{node.x, node.y - reach}, {node.x, node.y + reach}});
  }
}

}  // namespace

NetworkDrawing DrawNetwork(const Network& design, PageSize page, int32_t text_height) {
  const Places places(design, page);
  NetworkDrawing drawing;
  const int32_t quarter = places.spacing() / 4;
  drawing.texts = {DrawnText{"Inputs", {page.width / 2, quarter}},
                   DrawnText{"Outputs", {page.width / 2, page.height - quarter}}};
  drawing.diameter = Diameter(design, page, text_height);
  DrawArrows(design, places, text_height, drawing);
  for (int32_t layer = 0; layer < design.nLayers; ++layer) {
    // The input layer only hands its values on.
    const int32_t code =
        layer == 0 ? kSigmoid : design.layers[static_cast<size_t>(layer)].TransFunc;
    for (const PagePoint node : places.DistinctNodes(layer)) {
      drawing.nodes.push_back(node);
      DrawMark(code, node, drawing.diameter, drawing.marks);
    }
  }
  return drawing;
}

void ForEachConnection(const Network& design, PageSize page, int32_t layer,
                       const std::vector<RemovedConnection>& removed,
                       const std::function<void(const DrawnLine&)>& draw) {
  const Places places(design, page);
  const auto nodes = static_cast<int32_t>(places.Nodes(layer));
  const auto sources = static_cast<int32_t>(places.Nodes(layer - 1));
  if (int64_t{nodes} * sources > kMostListedConnections) return;
  auto next = removed.begin();
  for (int32_t node = 0; node < nodes; ++node) {
    for (int32_t source = 0; source < sources; ++source) {
      if (next != removed.end() && *next == RemovedConnection{node, source}) {
        ++next;
      } else {
        draw({places.Node(layer - 1, source), places.Node(layer, node)});
      }
    }
  }
}

int32_t ConnectionOpacity(const Network& design, PageSize page, int32_t layer) {
  const Places places(design, page);
  const double lines =
      static_cast<double>(places.Nodes(layer)) * static_cast<double>(places.Nodes(layer - 1));
  // A line goes across a third of the page on the average.
  const double inked = lines * std::max(places.spacing(), page.width / 3);
  const double pixels = static_cast<double>(page.width) * places.spacing();
  return static_cast<int32_t>(
      std::clamp<double>(kOpaque * pixels / std::max(inked, 1.0), kFaintest, kOpaque));
}

}  // namespace tarn
