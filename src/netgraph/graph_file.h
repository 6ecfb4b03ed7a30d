#pragma once

#include <string>
#include <string_view>

#include "base/status.h"
#include "netgraph/canvas.h"
#include "netgraph/graph.h"
#include "netgraph/graph_view.h"

namespace tarn {

// The size of a picture in pixels: unless another one is wanted, and its limits.
inline constexpr Size kPictureSize = {800, 600};
inline constexpr Size kSmallestPicture = {300, 200};
inline constexpr Size kLargestPicture = {8000, 6000};

// Replace the file `path` by the whole graph: as a picture in SVG, with its legend or as a view
// has it, or as text in CSV. kGraphNotSaved when it cannot be written, kContourMemory when
// memory is too short for contours; the file is as it was then.
Status SavePicture(const Graph& graph, const Size& size, const std::string& path);
Status SavePicture(const Graph& graph, const GraphView& view, const Size& size,
                   const std::string& path);
Status SaveTable(const Graph& graph, const std::string& path);
// The same for the bytes of a picture that is drawn already.
Status SaveGraphBytes(std::string_view bytes, const std::string& path);

}  // namespace tarn
