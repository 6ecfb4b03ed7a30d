#pragma once

#include <string>
#include <string_view>

#include "netgraph/canvas.h"

namespace tarn {

// A picture in Scalable Vector Graphics, version 1.1: text stays text, every thing has the class of
// its role, a curve is one path.
class SvgCanvas : public Canvas {
 public:
  // Pixels; `title` names the picture for a screen reader.
  SvgCanvas(const Size& size, std::string_view title);

  // The whole file.
  std::string Document() const;

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
  Size m_size;
  std::string m_body;
  int m_clips = 0;
};

}  // namespace tarn
