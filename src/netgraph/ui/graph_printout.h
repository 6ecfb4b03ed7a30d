#pragma once

#include <optional>
#include <wx/print.h>

#include "base/status.h"
#include "netgraph/graph.h"
#include "netgraph/graph_view.h"

namespace tarn {

// A graph on one page, as large as its margins let it be, in the proportions of `size`. It keeps
// what it shows: the window may go on to other data or close while a preview is open.
class GraphPrintout : public wxPrintout {
 public:
  GraphPrintout(Graph graph, const GraphView& view, const Size& size);

  bool HasPage(int page) override { return page == 1; }
  void GetPageInfo(int* first, int* last, int* from, int* to) override;
  bool OnPrintPage(int page) override;

  // What the user is told when the page could not be drawn.
  const std::optional<Message>& refused() const { return m_refused; }

 private:
  Graph m_graph;
  GraphView m_view;
  Size m_size;
  std::optional<Message> m_refused;
};

}  // namespace tarn
