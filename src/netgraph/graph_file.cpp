#include "netgraph/graph_file.h"

#include <optional>

#include "base/output_file.h"
#include "netgraph/graph_csv.h"
#include "netgraph/graph_renderer.h"
#include "netgraph/messages.h"
#include "netgraph/svg_canvas.h"

namespace tarn {
namespace {

Status Save(const std::string& text, const std::string& path) {
  OutputFile file;
  const bool saved = file.OpenReplacing(path) && file.Write(text) && file.Commit();
  return saved ? Status() : Status::Failure(kGraphNotSaved);
}

}  // namespace

Status SavePicture(const Graph& graph, const Size& size, const std::string& path) {
  SvgCanvas canvas(size, graph.title);
  const std::optional<Message> refused = PaintGraph(graph, GraphView(graph), canvas);
  if (refused) return Status::Failure(refused->text);
  return Save(canvas.Document(), path);
}

Status SaveTable(const Graph& graph, const std::string& path) {
  return Save(GraphCsv(graph), path);
}

}  // namespace tarn
