#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarn {

struct Colour {
  uint8_t red = 0;
  uint8_t green = 0;
  uint8_t blue = 0;

  bool operator==(const Colour&) const = default;
};

struct Point {
  double x = 0;
  double y = 0;

  bool operator==(const Point&) const = default;
};
using Polygon = std::vector<Point>;

// On a canvas y runs downwards.
struct Rect {
  double left = 0;
  double top = 0;
  double width = 0;
  double height = 0;

  double right() const { return left + width; }
  double bottom() const { return top + height; }
  bool Contains(const Point& point) const {
    return point.x >= left && point.x <= right() && point.y >= top && point.y <= bottom();
  }
};

struct Size {
  double width = 0;
  double height = 0;
};

// What a thing is: for a canvas that keeps structure; one that only paints does not care.
enum class Role {
  kPage,
  kPlotArea,
  kGrid,
  kTick,
  kXTick,  // labels of ticks
  kYTick,
  kTitle,
  kXLabel,
  kYLabel,
  kLegend,
  kBand,
  kCurve,
};

enum class Dashes { kSolid, kDashed, kDotted };

struct Pen {
  Colour colour;
  double width = 1;  // pixels
  Dashes dashes = Dashes::kSolid;
};

enum class MarkerShape { kCircle, kDiamond, kCross };

// One curve, ready to be drawn: lines that are not joined to each other, and markers.
struct CurveShape {
  std::vector<std::vector<Point>> lines;
  std::vector<Point> markers;
  MarkerShape shape = MarkerShape::kCircle;
  double radius = 0;  // of a marker, pixels
  Pen pen;
};

enum class Anchor { kStart, kMiddle, kEnd };

struct TextLine {
  Role role = Role::kTitle;
  std::string text;
  double size = 12;  // height of the font, pixels
  Point at;          // halfway up the line, at its start, middle or end
  Anchor anchor = Anchor::kMiddle;
  bool upwards = false;  // runs from bottom to top
  Colour colour = {};
};

// What a graph is drawn on: a window, a printer, a picture file, the record of a test. Lengths are
// pixels from the upper left corner.
class Canvas {
 public:
  virtual ~Canvas() = default;

  virtual Size size() const = 0;
  // How wide a line of text is; it is as high as the size of its font.
  virtual double TextWidth(std::string_view text, double size) const = 0;

  virtual void DrawRect(Role role, const Rect& rect, const Colour& fill,
                        const std::optional<Pen>& border) = 0;
  virtual void DrawLine(Role role, const Point& from, const Point& to, const Pen& pen) = 0;
  virtual void DrawText(const TextLine& text) = 0;
  // Polygons of one colour that lie side by side, painted together.
  virtual void FillPolygons(Role role, const std::vector<Polygon>& polygons,
                            const Colour& colour) = 0;
  // A curve of the graph or its sample in the legend.
  virtual void DrawCurve(Role role, const CurveShape& curve) = 0;

  // Between the two nothing is painted outside `rect`.
  virtual void BeginClip(const Rect& rect) = 0;
  virtual void EndClip() = 0;
};

}  // namespace tarn
