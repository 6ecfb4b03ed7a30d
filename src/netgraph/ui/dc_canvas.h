#pragma once

#include <map>
#include <string_view>
#include <tuple>
#include <wx/graphics.h>
#include <wx/pen.h>

#include "netgraph/canvas.h"

namespace tarn {

// Draws on what a graphics context is of: a window, a bitmap, a page of a printer. Text is measured
// in the font that it is drawn in, the one that the system's windows have.
class DcCanvas : public Canvas {
 public:
  // The context is not owned; one of its units is a pixel of the canvas. `dots` is how many dots of
  // the device that is: straight lines are put on them, or they would be blurred.
  DcCanvas(wxGraphicsContext& context, const Size& size, double dots = 1);

  Size size() const override { return m_size; }
  double TextWidth(std::string_view text, double size) const override;
  void DrawRect(Role role, const Rect& rect, const Colour& fill,
                const std::optional<Pen>& border) override;
  void DrawLine(Role role, const Point& from, const Point& to, const Pen& pen) override;
  void DrawText(const TextLine& text) override;
  void FillPolygons(Role role, const std::vector<Polygon>& polygons, const Colour& colour) override;
  void DrawCurve(Role role, const CurveShape& curve) override;
  void BeginClip(const Rect& rect) override;
  void EndClip() override;

 private:
  // The font of that height and colour becomes the one of the context.
  void UseFont(double size, const Colour& colour) const;
  void UsePen(const Pen& pen, wxPenCap cap = wxCAP_BUTT);
  double OnDots(double length, double width) const;

  using FontKey = std::tuple<double, uint8_t, uint8_t, uint8_t>;

  wxGraphicsContext& m_context;
  Size m_size;
  double m_dots;
  mutable std::map<FontKey, wxGraphicsFont> m_fonts;
};

}  // namespace tarn
