#include "netgraph/ui/graph_bitmap.h"

#include <cmath>
#include <memory>
#include <new>
#include <string_view>
#include <wx/dcmemory.h>
#include <wx/graphics.h>
#include <wx/image.h>
#include <wx/mstream.h>

#include "netgraph/graph_file.h"
#include "netgraph/graph_renderer.h"
#include "netgraph/messages.h"
#include "netgraph/ui/dc_canvas.h"

namespace tarn {
namespace {

constexpr int kBitsPerPixel = 24;

}  // namespace

std::optional<Message> DrawOnBitmap(const Graph& graph, const GraphView& view, double unit,
                                    wxBitmap& bitmap, GraphLayout& layout) {
  const wxSize pixels = bitmap.GetLogicalSize();
  wxMemoryDC dc(bitmap);
  const std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::Create(dc));
  if (context == nullptr) throw std::bad_alloc();
  context->Scale(unit, unit);
  DcCanvas canvas(*context, {pixels.x / unit, pixels.y / unit}, unit * bitmap.GetScaleFactor());
  return PaintGraph(graph, view, canvas, layout);
}

Raster RasterOf(const wxBitmap& bitmap) {
  const wxImage image = bitmap.ConvertToImage();
  if (!image.IsOk()) throw std::bad_alloc();
  const size_t bytes =
      3 * static_cast<size_t>(image.GetWidth()) * static_cast<size_t>(image.GetHeight());
  return {image.GetWidth(), image.GetHeight(), {image.GetData(), image.GetData() + bytes}};
}

Status SavePng(const Graph& graph, const GraphView& view, const Size& size,
               const std::string& path) {
  wxBitmap bitmap(static_cast<int>(std::lround(size.width)),
                  static_cast<int>(std::lround(size.height)), kBitsPerPixel);
  if (!bitmap.IsOk()) return Status::Failure(kGraphNotSaved);
  GraphLayout layout;
  const std::optional<Message> refused = DrawOnBitmap(graph, view, 1, bitmap, layout);
  if (refused) return Status::Failure(refused->text);
  wxMemoryOutputStream file;
  if (!bitmap.ConvertToImage().SaveFile(file, wxBITMAP_TYPE_PNG)) {
    return Status::Failure(kGraphNotSaved);
  }
  const wxStreamBuffer& written = *file.GetOutputStreamBuffer();
  return SaveGraphBytes(
      {static_cast<const char*>(written.GetBufferStart()), static_cast<size_t>(file.GetLength())},
      path);
}

}  // namespace tarn
