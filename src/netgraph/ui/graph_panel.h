#pragma once

#include <functional>
#include <optional>
#include <string>
#include <wx/bitmap.h>
#include <wx/window.h>

#include "app/dialogs.h"
#include "netgraph/graph.h"
#include "netgraph/graph_layout.h"
#include "netgraph/graph_view.h"

namespace tarn {

// The painted part of a graph window. It draws the graph once for each size and view, and paints
// what it has drawn; in zoom mode a rectangle can be dragged over it.
class GraphPanel : public wxWindow {
 public:
  // What the window around it does.
  struct Listener {
    std::function<void(const Message&)> cannot_draw;  // called once, within the painting
    std::function<void()> zoom_mode_changed;
    std::function<void(const std::string&)> read_out;  // what is under the pointer
  };

  // The dialogs are not owned and outlive the panel.
  GraphPanel(wxWindow* parent, Graph graph, Dialogs& dialogs, Listener listener);
  ~GraphPanel() override;
  GraphPanel(const GraphPanel&) = delete;
  GraphPanel& operator=(const GraphPanel&) = delete;

  const Graph& graph() const { return m_graph; }
  const GraphView& view() const { return m_view; }
  // The place of the plot within the client, as it was drawn last.
  wxRect PlotArea() const;
  // The client as it is painted, in the dots of the display; not valid where it cannot be drawn.
  wxBitmap Picture();
  // In pixels that a graph is laid out in, the same whatever the display's resolution.
  Size PageSize() const;

  void Replace(Graph graph);
  void ToggleLegend();
  void BeginZoom();
  // Without a word; nothing where zoom mode is not on.
  void EndZoom();
  void ResetZoom();
  bool IsZooming() const { return m_zooming; }

 private:
  void Redraw();
  bool Draw();
  std::optional<Message> Drawing(const std::function<std::optional<Message>()>& draw);
  void OnPaint(wxPaintEvent& event);
  void OnPress(wxMouseEvent& event);
  void OnMotion(wxMouseEvent& event);
  void OnRelease(wxMouseEvent& event);
  void PaintBand(wxDC& dc) const;
  void ShowReadOut() const;
  // What a pixel of the layout is in those of the client.
  double Unit() const;
  // A place of the client on the page.
  Point OnPage(const wxPoint& place) const;

  Graph m_graph;
  GraphView m_view;
  Dialogs& m_dialogs;
  Listener m_listener;
  wxBitmap m_drawn;  // the graph by itself
  GraphLayout m_layout;
  bool m_is_drawn = false;
  bool m_cannot_draw = false;
  bool m_zooming = false;
  std::optional<wxPoint> m_pointer;  // while it is over the graph

  // From where to where a rectangle is dragged, on the page.
  struct Band {
    Point from;
    Point to;
  };
  std::optional<Band> m_band;
  std::optional<Graph> m_next;  // that came meanwhile
};

}  // namespace tarn
