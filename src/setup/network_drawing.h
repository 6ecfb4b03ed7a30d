#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

#include "engine/network.h"
#include "netfile/connections_section.h"

// What the network view (`NetViewDlg`) shows, in whole pixels of a page of that size: layers from
// top to bottom, inputs above them and outputs below. Later parts are drawn over earlier ones:
// texts, arrows, connections, nodes, marks. The design has passed CheckShape.

namespace tarn {

struct PagePoint {
  int32_t x = 0;
  int32_t y = 0;
  bool operator==(const PagePoint&) const = default;
};

struct PageSize {
  int32_t width = 0;
  int32_t height = 0;
};

struct DrawnText {
  std::string_view text;
  PagePoint centre;
};

struct DrawnLine {
  PagePoint from;
  PagePoint to;
  bool operator==(const DrawnLine&) const = default;
};

// A shaft with a filled head, its tip first. That of an input stands above the node's circle,
// which covers the end of the shaft.
struct DrawnArrow {
  DrawnLine shaft;
  std::array<PagePoint, 3> head;
};

struct NetworkDrawing {
  std::array<DrawnText, 2> texts;
  std::vector<DrawnArrow> arrows;
  std::vector<PagePoint> nodes;  // the centres of their circles
  int32_t diameter = 0;          // of all of them
  std::vector<DrawnLine> marks;  // two within each node of a tanh or a sech layer
};

// Everything but the connections; `text_height` is the height of an "X". Nodes that share a pixel
// are drawn once.
NetworkDrawing DrawNetwork(const Network& design, PageSize page, int32_t text_height);

// The connections into one layer, 1..nLayers - 1, node after node, but for the `removed`, which
// are rising. Pairs that the connection editor cannot hold have none.
void ForEachConnection(const Network& design, PageSize page, int32_t layer,
                       const std::vector<RemovedConnection>& removed,
                       const std::function<void(const DrawnLine&)>& draw);

// How strongly the lines of a layer are drawn, 1..255: the more of them cross each pixel, the
// fainter, so that their crowd shows where it is dense.
int32_t ConnectionOpacity(const Network& design, PageSize page, int32_t layer);

}  // namespace tarn
