#include "netgraph/ui/graph_panel.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <memory>
#include <new>
#include <utility>
#include <wx/cursor.h>
#include <wx/dcbuffer.h>
#include <wx/graphics.h>

#include "netgraph/graph_renderer.h"
#include "netgraph/read_out.h"
#include "netgraph/ui/graph_bitmap.h"

namespace tarn {
namespace {

constexpr int kBitsPerPixel = 24;
constexpr wxColourBase::ChannelType kBandShade = 40;  // how much it covers, of 255

wxColour BandColour(wxColourBase::ChannelType alpha) {
  return {40, 70, 160, alpha};
}

// Contours, and more points than are drawn in a moment.
bool TakesTime(const Graph& graph) {
  constexpr size_t kManyPoints = 100000;
  size_t points = 0;
  for (const CURVE_DEF& curve : graph.curves) points += curve.x.size();
  return graph.contours || points > kManyPoints;
}

}  // namespace

GraphPanel::GraphPanel(wxWindow* parent, Graph graph, Dialogs& dialogs, Listener listener)
    : m_graph(std::move(graph)),
      m_view(m_graph),
      m_dialogs(dialogs),
      m_listener(std::move(listener)) {
  // Nothing is erased before it is painted.
  SetBackgroundStyle(wxBG_STYLE_PAINT);
  Create(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize,
         wxFULL_REPAINT_ON_RESIZE | wxWANTS_CHARS);
  Bind(wxEVT_PAINT, &GraphPanel::OnPaint, this);
  Bind(wxEVT_LEFT_DOWN, &GraphPanel::OnPress, this);
  Bind(wxEVT_MOTION, &GraphPanel::OnMotion, this);
  Bind(wxEVT_LEFT_UP, &GraphPanel::OnRelease, this);
  Bind(wxEVT_LEAVE_WINDOW, [this](wxMouseEvent&) {
    m_pointer.reset();
    m_listener.read_out("");
  });
  Bind(wxEVT_MOUSE_CAPTURE_LOST, [this](wxMouseCaptureLostEvent&) { EndZoom(); });
}

GraphPanel::~GraphPanel() {
  if (HasCapture()) ReleaseMouse();
}

wxRect GraphPanel::PlotArea() const {
  const Rect& plot = m_layout.plot;
  const auto pixels = [](double length) { return static_cast<int>(std::lround(length)); };
  const wxPoint corner(pixels(plot.left * Unit()), pixels(plot.top * Unit()));
  return {corner, wxPoint(pixels(plot.right() * Unit()), pixels(plot.bottom() * Unit()))};
}

wxBitmap GraphPanel::Picture() {
  return Draw() ? m_drawn : wxNullBitmap;
}

Size GraphPanel::PageSize() const {
  const wxSize client = GetClientSize();
  return {client.x / Unit(), client.y / Unit()};
}

void GraphPanel::Replace(Graph graph) {
  // A rectangle that is being dragged is one of what is on the screen.
  if (m_band) {
    m_next = std::move(graph);
    return;
  }
  m_graph = std::move(graph);
  m_view.Follow(m_graph);
  Redraw();
}

void GraphPanel::ToggleLegend() {
  m_view.ToggleLegend();
  Redraw();
}

void GraphPanel::BeginZoom() {
  m_zooming = true;
  SetCursor(wxCursor(wxCURSOR_CROSS));
  m_listener.zoom_mode_changed();
}

void GraphPanel::EndZoom() {
  if (!m_zooming) return;
  m_zooming = false;
  m_band.reset();
  if (HasCapture()) ReleaseMouse();
  SetCursor(wxNullCursor);
  Refresh(false);
  m_listener.zoom_mode_changed();
  if (m_next) Replace(std::move(*std::exchange(m_next, std::nullopt)));
}

void GraphPanel::ResetZoom() {
  EndZoom();
  m_view.ResetZoom();
  Redraw();
}

void GraphPanel::Redraw() {
  m_is_drawn = false;
  Refresh(false);
}

// Draws the graph anew where what is drawn is not what the window shows.
bool GraphPanel::Draw() {
  const wxSize size = GetClientSize();
  const double scale = GetContentScaleFactor() / Unit();
  if (m_cannot_draw || size.x < 1 || size.y < 1) return false;
  const bool fits =
      m_drawn.IsOk() && m_drawn.GetLogicalSize() == size && m_drawn.GetScaleFactor() == scale;
  if (m_is_drawn && fits) return true;
  const auto draw = [&] {
    if (!fits && !m_drawn.CreateScaled(size.x, size.y, kBitsPerPixel, scale))
      throw std::bad_alloc();
    return DrawOnBitmap(m_graph, m_view, Unit(), m_drawn, m_layout);
  };
  const std::optional<Message> refused = Drawing(draw);
  m_is_drawn = !refused;
  m_cannot_draw = refused.has_value();
  if (refused) {
    m_listener.cannot_draw(*refused);
  } else {
    // The pointer stays where it is, over other data.
    ShowReadOut();
  }
  return m_is_drawn;
}

// What the user is told where memory is too short for contours, at whatever it is.
std::optional<Message> GraphPanel::Drawing(const std::function<std::optional<Message>()>& draw) {
  try {
    return TakesTime(m_graph) ? WhileBusy(m_dialogs, draw) : draw();
  } catch (const std::bad_alloc&) {
    if (!m_graph.contours) throw;
    return ContourMemoryMessage();
  }
}

void GraphPanel::OnPaint(wxPaintEvent&) {
  wxAutoBufferedPaintDC dc(this);
  if (!Draw()) {
    dc.SetBackground(*wxWHITE_BRUSH);
    dc.Clear();
    return;
  }
  dc.DrawBitmap(m_drawn, 0, 0);
  if (m_band) PaintBand(dc);
}

void GraphPanel::PaintBand(wxDC& dc) const {
  const std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::CreateFromUnknownDC(dc));
  if (context == nullptr) return;
  context->SetPen(context->CreatePen(wxGraphicsPenInfo(BandColour(wxALPHA_OPAQUE))));
  context->SetBrush(context->CreateBrush(wxBrush(BandColour(kBandShade))));
  const Point& from = m_band->from;
  const Point& to = m_band->to;
  context->Scale(Unit(), Unit());
  context->DrawRectangle(std::min(from.x, to.x), std::min(from.y, to.y), std::abs(to.x - from.x),
                         std::abs(to.y - from.y));
}

void GraphPanel::OnPress(wxMouseEvent& event) {
  SetFocus();
  if (!m_zooming || !m_is_drawn) {
    event.Skip();
    return;
  }
  const Point place = m_layout.NearestInPlot(OnPage(event.GetPosition()));
  m_band = {place, place};
  if (!HasCapture()) CaptureMouse();
}

void GraphPanel::OnMotion(wxMouseEvent& event) {
  m_pointer = event.GetPosition();
  if (!m_is_drawn) return;
  ShowReadOut();
  if (!m_band) return;
  m_band->to = m_layout.NearestInPlot(OnPage(event.GetPosition()));
  Refresh(false);
}

void GraphPanel::OnRelease(wxMouseEvent& event) {
  if (!m_band) {
    event.Skip();
    return;
  }
  const Point from = m_band->from;
  const Point to = m_layout.NearestInPlot(OnPage(event.GetPosition()));
  const std::optional<Message> refused = m_view.ZoomTo(m_layout, from, to);
  EndZoom();
  if (refused) {
    m_dialogs.Tell(*refused);
  } else {
    Redraw();
  }
}

void GraphPanel::ShowReadOut() const {
  if (m_pointer) m_listener.read_out(ReadOut(m_graph, m_layout, OnPage(*m_pointer)));
}

double GraphPanel::Unit() const {
  constexpr int kExact = 1000;
  return static_cast<double>(FromDIP(kExact)) / kExact;
}

Point GraphPanel::OnPage(const wxPoint& place) const {
  return {place.x / Unit(), place.y / Unit()};
}

}  // namespace tarn
