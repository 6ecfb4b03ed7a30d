#include "netgraph/ui/dc_canvas.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <span>
#include <wx/brush.h>
#include <wx/font.h>
#include <wx/settings.h>

#include "resources/controls.h"
#include "resources/fonts.h"

namespace tarn {
namespace {

// From the middle of a line of text down to its base line, in heights of the font.
constexpr double kBaseLine = 0.36;
// Polygons side by side are widened by half a pixel, or the page would shine through between them.
constexpr double kSeam = 1;
// A stroke that crosses itself costs more than its pieces: 100,000 random values on 1600 x 1000
// pixels are drawn in 45 ms, as one stroke in 450 ms.
constexpr size_t kPointsAtOnce = 32;
// Dashes begin anew with each piece.
constexpr size_t kDashedAtOnce = 256;

// Dash and gap, in widths of the pen.
constexpr wxDash kDashPattern[] = {4, 2};
constexpr wxDash kDotPattern[] = {1, 2};

wxColour ColourOf(const Colour& colour) {
  return {colour.red, colour.green, colour.blue};
}

// `size` in units of the context.
wxGraphicsFont FontFor(const wxGraphicsContext& context, double size, const wxColour& colour) {
  wxFont font = wxSystemSettings::GetFont(wxSYS_DEFAULT_GUI_FONT);
#ifdef __WXMSW__
  return context.CreateFont(size, DrawableFont(font).GetFaceName(), wxFONTFLAG_DEFAULT, colour);
#else
  // Text is set for 96 dots to the inch there, on every device and scale; fonts asked for in pixels
  // come out smaller.
  constexpr double kPointsPerUnit = 72.0 / 96.0;
  font.SetFractionalPointSize(size * kPointsPerUnit);
  return context.CreateFont(font, colour);
#endif
}

void AddMarker(wxGraphicsPath& path, MarkerShape shape, const Point& centre, double radius) {
  switch (shape) {
    case MarkerShape::kCircle:
      path.AddCircle(centre.x, centre.y, radius);
      return;
    case MarkerShape::kDiamond:
      path.MoveToPoint(centre.x, centre.y - radius);
      path.AddLineToPoint(centre.x + radius, centre.y);
      path.AddLineToPoint(centre.x, centre.y + radius);
      path.AddLineToPoint(centre.x - radius, centre.y);
      path.CloseSubpath();
      return;
    case MarkerShape::kCross:
      path.MoveToPoint(centre.x - radius, centre.y);
      path.AddLineToPoint(centre.x + radius, centre.y);
      path.MoveToPoint(centre.x, centre.y - radius);
      path.AddLineToPoint(centre.x, centre.y + radius);
      return;
  }
}

void AddLine(wxGraphicsPath& path, std::span<const Point> points) {
  path.MoveToPoint(points.front().x, points.front().y);
  for (size_t i = 1; i < points.size(); ++i) path.AddLineToPoint(points[i].x, points[i].y);
}

}  // namespace

DcCanvas::DcCanvas(wxGraphicsContext& context, const Size& size, double dots)
    : m_context(context), m_size(size), m_dots(dots) {
  m_context.SetAntialiasMode(wxANTIALIAS_DEFAULT);
  // Lines go where they are told to.
  m_context.DisableOffset();
}

double DcCanvas::TextWidth(std::string_view text, double size) const {
  UseFont(size, {});
  wxDouble width = 0;
  m_context.GetTextExtent(Wide(text), &width, nullptr);
  return width;
}

void DcCanvas::DrawRect(Role, const Rect& rect, const Colour& fill,
                        const std::optional<Pen>& border) {
  if (border) {
    UsePen(*border);
  } else {
    m_context.SetPen(wxNullGraphicsPen);
  }
  m_context.SetBrush(m_context.CreateBrush(wxBrush(ColourOf(fill))));
  m_context.DrawRectangle(rect.left, rect.top, rect.width, rect.height);
}

void DcCanvas::DrawLine(Role, const Point& from, const Point& to, const Pen& pen) {
  Pen whole = pen;
  Point first = from;
  Point last = to;
  if (from.x == to.x || from.y == to.y) {
    whole.width = std::max(std::round(pen.width * m_dots), 1.0) / m_dots;
  }
  if (from.x == to.x) first.x = last.x = OnDots(from.x, whole.width);
  if (from.y == to.y) first.y = last.y = OnDots(from.y, whole.width);
  UsePen(whole);
  m_context.StrokeLine(first.x, first.y, last.x, last.y);
}

void DcCanvas::DrawText(const TextLine& text) {
  UseFont(text.size, text.colour);
  const wxString line = Wide(text.text);
  wxDouble width = 0;
  wxDouble height = 0;
  wxDouble descent = 0;
  m_context.GetTextExtent(line, &width, &height, &descent);
  double before = 0;  // what of the line lies before its anchor
  if (text.anchor == Anchor::kMiddle) before = width / 2;
  if (text.anchor == Anchor::kEnd) before = width;
  const double above = height - descent - kBaseLine * text.size;
  if (text.upwards) {
    m_context.DrawText(line, text.at.x - above, text.at.y + before, std::numbers::pi / 2);
  } else {
    m_context.DrawText(line, text.at.x - before, text.at.y - above);
  }
}

void DcCanvas::FillPolygons(Role, const std::vector<Polygon>& polygons, const Colour& colour) {
  wxGraphicsPath path = m_context.CreatePath();
  for (const Polygon& polygon : polygons) {
    AddLine(path, polygon);
    path.CloseSubpath();
  }
  UsePen({colour, kSeam, Dashes::kSolid});
  m_context.SetBrush(m_context.CreateBrush(wxBrush(ColourOf(colour))));
  m_context.DrawPath(path, wxWINDING_RULE);
}

void DcCanvas::DrawCurve(Role, const CurveShape& curve) {
  UsePen(curve.pen, wxCAP_ROUND);
  const size_t most = curve.pen.dashes == Dashes::kSolid ? kPointsAtOnce : kDashedAtOnce;
  for (const std::vector<Point>& line : curve.lines) {
    for (size_t first = 0; first + 1 < line.size();) {
      const size_t count = std::min(most, line.size() - first);
      wxGraphicsPath path = m_context.CreatePath();
      AddLine(path, std::span(line).subspan(first, count));
      m_context.StrokePath(path);
      first += count - 1;
    }
  }
  for (size_t first = 0; first < curve.markers.size(); first += kPointsAtOnce) {
    const size_t count = std::min(kPointsAtOnce, curve.markers.size() - first);
    wxGraphicsPath path = m_context.CreatePath();
    for (const Point& marker : std::span(curve.markers).subspan(first, count)) {
      AddMarker(path, curve.shape, marker, curve.radius);
    }
    m_context.StrokePath(path);
  }
}

void DcCanvas::BeginClip(const Rect& rect) {
  m_context.PushState();
  m_context.Clip(rect.left, rect.top, rect.width, rect.height);
}

void DcCanvas::EndClip() {
  m_context.PopState();
}

void DcCanvas::UseFont(double size, const Colour& colour) const {
  const FontKey key = {size, colour.red, colour.green, colour.blue};
  auto found = m_fonts.find(key);
  if (found == m_fonts.end()) {
    const wxGraphicsFont font = FontFor(m_context, size, ColourOf(colour));
    found = m_fonts.emplace(key, font).first;
  }
  m_context.SetFont(found->second);
}

void DcCanvas::UsePen(const Pen& pen, wxPenCap cap) {
  wxGraphicsPenInfo info(ColourOf(pen.colour), pen.width);
  info.Cap(pen.dashes == Dashes::kSolid ? cap : wxCAP_BUTT).Join(wxJOIN_ROUND);
  if (pen.dashes != Dashes::kSolid) {
    info.Style(wxPENSTYLE_USER_DASH);
    info.Dashes(2, pen.dashes == Dashes::kDotted ? kDotPattern : kDashPattern);
  }
  m_context.SetPen(m_context.CreatePen(info));
}

// The middle of a line of so many dots, or of one dot, moved to where it covers whole dots.
double DcCanvas::OnDots(double length, double width) const {
  const bool odd = std::lround(width * m_dots) % 2 != 0;
  const double dots = length * m_dots;
  return (odd ? std::floor(dots) + 0.5 : std::round(dots)) / m_dots;
}

}  // namespace tarn
