#include "netgraph/graph_file.h"

#include <optional>

#include "base/output_file.h"
#include "netgraph/graph_csv.h"
#include "netgraph/graph_renderer.h"
#include "netgraph/messages.h"
#include "netgraph/svg_canvas.h"

namespace tarn {
namespace {

Status Save(std::string_view written, const std::string& path, OutputFile::Content content) {
  OutputFile file;
  const bool saved = file.OpenReplacing(path, content) && file.Write(written) && file.Commit();
  return saved ? Status() : Status::Failure(kGraphNotSaved);
}

}  // namespace

Status SavePicture(const Graph& graph, const Size& size, const std::string& path) {
  return SavePicture(graph, GraphView(graph), size, path);
}

Status SavePicture(const Graph& graph, const GraphView& view, const Size& size,
                   const std::string& path) {
  SvgCanvas canvas(size, graph.title);
  const std::optional<Message> refused = PaintGraph(graph, view, canvas);
  if (refused) return Status::Failure(refused->text);
  return Save(canvas.Document(), path, OutputFile::Content::kText);
}

Status SaveTable(const Graph& graph, const std::string& path) {
  return Save(GraphCsv(graph), path, OutputFile::Content::kText);
}

Status SaveGraphBytes(std::string_view bytes, const std::string& path) {
  return Save(bytes, path, OutputFile::Content::kBytes);
}

}  // namespace tarn
