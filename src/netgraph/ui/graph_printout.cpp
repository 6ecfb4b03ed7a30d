#include "netgraph/ui/graph_printout.h"

#include <cmath>
#include <memory>
#include <utility>
#include <wx/dc.h>
#include <wx/graphics.h>

#include "netgraph/graph_renderer.h"
#include "netgraph/ui/dc_canvas.h"
#include "resources/printing.h"

namespace tarn {

GraphPrintout::GraphPrintout(Graph graph, const GraphView& view, const Size& size)
    : wxPrintout(kPrintTitle), m_graph(std::move(graph)), m_view(view), m_size(size) {}

void GraphPrintout::GetPageInfo(int* first, int* last, int* from, int* to) {
  *first = *last = *from = *to = 1;
}

bool GraphPrintout::OnPrintPage(int) {
  wxDC& dc = *GetDC();
  FitThisSizeToPageMargins(
      {static_cast<int>(std::lround(m_size.width)), static_cast<int>(std::lround(m_size.height))},
      PageSettings());
  const std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::CreateFromUnknownDC(dc));
  if (context == nullptr) return false;
  double dots = 1;
  dc.GetUserScale(&dots, nullptr);
  DcCanvas canvas(*context, m_size, dots);
  m_refused = PaintGraph(m_graph, m_view, canvas);
  return !m_refused;
}

}  // namespace tarn
