#include "netgraph/graph_file.h"

#include <optional>

#include "base/output_file.h"
#include "netgraph/graph_csv.h"
#include "netgraph/graph_renderer.h"
#include "netgraph/messages.h"
#include "netgraph/svg_canvas.h"

namespace tarn {

Status SavePicture(const Graph& graph, const Size& size, const std::string& path) {
  return SavePicture(graph, GraphView(graph), size, path);
}

Status SavePicture(const Graph& graph, const GraphView& view, const Size& size,
                   const std::string& path) {
  SvgCanvas canvas(size, graph.title);
  const std::optional<Message> refused = PaintGraph(graph, view, canvas);
  if (refused) return Status::Failure(refused->text);
  return SaveGraphFile(canvas.Document(), path);
}

Status SaveTable(const Graph& graph, const std::string& path) {
  return SaveGraphFile(GraphCsv(graph), path);
}

Status SaveGraphFile(std::string_view content, const std::string& path) {
  OutputFile file;
  const bool saved = file.OpenReplacing(path) && file.Write(content) && file.Commit();
  return saved ? Status() : Status::Failure(kGraphNotSaved);
}

}  // namespace tarn
