#include "netgraph/svg_canvas.h"

#include <fmt/format.h>

#include "base/utf8.h"
#include "netgraph/text_metrics.h"

namespace tarn {
namespace {

// From the middle of a line of text down to its base line, in heights of the font.
constexpr double kBaseLine = 0.36;
// Polygons side by side are widened by a hair, or the page would shine through between them.
constexpr double kSeam = 0.6;

std::string_view ClassOf(Role role) {
  switch (role) {
    case Role::kPage:
      return "page";
    case Role::kPlotArea:
      return "plot-area";
    case Role::kGrid:
      return "grid";
    case Role::kTick:
      return "tick";
    case Role::kXTick:
      return "x-tick";
    case Role::kYTick:
      return "y-tick";
    case Role::kTitle:
      return "title";
    case Role::kXLabel:
      return "x-label";
    case Role::kYLabel:
      return "y-label";
    case Role::kLegend:
      return "legend";
    case Role::kBand:
      return "band";
    case Role::kCurve:
      return "curve";
  }
  return "";
}

// To a hundredth of a pixel, without zeros at the end.
std::string Number(double value) {
  std::string text = fmt::format("{:.2f}", value);
  text.erase(text.find_last_not_of('0') + 1);
  if (text.back() == '.') text.pop_back();
  return text == "-0" ? "0" : text;
}

std::string At(const Point& point) {
  return Number(point.x) + " " + Number(point.y);
}

std::string ColourText(const Colour& colour) {
  return fmt::format("#{:02x}{:02x}{:02x}", colour.red, colour.green, colour.blue);
}

// As text of an XML file: markup escaped, what XML does not know replaced.
std::string Escaped(std::string_view text) {
  std::string escaped;
  while (!text.empty()) {
    const std::string_view bytes = text.substr(0, CharacterLength(text));
    const char32_t character = TakeCharacter(text);
    const bool control = character < U' ' && character != U'\t';
    if (character == U'&') {
      escaped += "&amp;";
    } else if (character == U'<') {
      escaped += "&lt;";
    } else if (character == U'>') {
      escaped += "&gt;";
    } else if (control || character == kReplacementCharacter || character >= 0xFFFE) {
      escaped += character > 0xFFFF ? bytes : "\uFFFD";
    } else {
      escaped += bytes;
    }
  }
  return escaped;
}

// Lengths of dashes and gaps, in widths of the pen.
std::string DashArray(const Pen& pen) {
  const bool dotted = pen.dashes == Dashes::kDotted;
  return Number((dotted ? 1.0 : 4.0) * pen.width) + " " + Number((dotted ? 1.6 : 2.0) * pen.width);
}

std::string Stroke(const Pen& pen) {
  std::string text =
      fmt::format(R"( stroke="{}" stroke-width="{}")", ColourText(pen.colour), Number(pen.width));
  if (pen.dashes != Dashes::kSolid) {
    text += fmt::format(R"( stroke-dasharray="{}")", DashArray(pen));
  }
  return text;
}

void AppendLine(std::string& path, const std::vector<Point>& points) {
  path += "M" + At(points.front());
  for (size_t i = 1; i < points.size(); ++i) path += "L" + At(points[i]);
}

void AppendMarker(std::string& path, MarkerShape shape, const Point& centre, double radius) {
  const std::string r = Number(radius);
  const std::string side = Number(2 * radius);
  switch (shape) {
    case MarkerShape::kCircle:
      path += fmt::format("M{}a{} {} 0 1 0 {} 0a{} {} 0 1 0 -{} 0z",
                          At({centre.x - radius, centre.y}), r, r, side, r, r, side);
      return;
    case MarkerShape::kDiamond:
      path += fmt::format("M{}l{} {}l-{} {}l-{} -{}z", At({centre.x, centre.y - radius}), r, r, r,
                          r, r, r);
      return;
    case MarkerShape::kCross:
      path += fmt::format("M{}h{}M{}v{}", At({centre.x - radius, centre.y}), side,
                          At({centre.x, centre.y - radius}), side);
      return;
  }
}

}  // namespace

SvgCanvas::SvgCanvas(const Size& size, std::string_view title)
    : m_size(size), m_body(fmt::format("<title>{}</title>\n", Escaped(title))) {}

std::string SvgCanvas::Document() const {
  return fmt::format(
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
      "<svg xmlns=\"http://www.w3.org/2000/svg\" version=\"1.1\" width=\"{0}\" height=\"{1}\" "
      "viewBox=\"0 0 {0} {1}\" font-family=\"{2}\">\n{3}</svg>\n",
      Number(m_size.width), Number(m_size.height), kPictureFonts, m_body);
}

double SvgCanvas::TextWidth(std::string_view text, double size) const {
  return PictureTextWidth(text, size);
}

void SvgCanvas::DrawRect(Role role, const Rect& rect, const Colour& fill,
                         const std::optional<Pen>& border) {
  m_body += fmt::format(R"(<rect class="{}" x="{}" y="{}" width="{}" height="{}" fill="{}"{}/>)"
                        "\n",
                        ClassOf(role), Number(rect.left), Number(rect.top), Number(rect.width),
                        Number(rect.height), ColourText(fill), border ? Stroke(*border) : "");
}

void SvgCanvas::DrawLine(Role role, const Point& from, const Point& to, const Pen& pen) {
  m_body += fmt::format(R"(<line class="{}" x1="{}" y1="{}" x2="{}" y2="{}"{}/>)"
                        "\n",
                        ClassOf(role), Number(from.x), Number(from.y), Number(to.x), Number(to.y),
                        Stroke(pen));
}

void SvgCanvas::DrawText(const TextLine& text) {
  static constexpr std::string_view kAnchors[] = {"start", "middle", "end"};
  const double down = kBaseLine * text.size;
  const Point base =
      text.upwards ? Point{text.at.x + down, text.at.y} : Point{text.at.x, text.at.y + down};
  const std::string turned =
      text.upwards ? fmt::format(R"x( transform="rotate(-90 {})")x", At(base)) : "";
  const std::string fill =
      text.colour == Colour() ? "" : fmt::format(R"( fill="{}")", ColourText(text.colour));
  m_body +=
      fmt::format(R"(<text class="{}" x="{}" y="{}" font-size="{}" text-anchor="{}"{}{}>{}</text>)"
                  "\n",
                  ClassOf(text.role), Number(base.x), Number(base.y), Number(text.size),
                  kAnchors[static_cast<size_t>(text.anchor)], turned, fill, Escaped(text.text));
}

void SvgCanvas::FillPolygons(Role role, const std::vector<Polygon>& polygons,
                             const Colour& colour) {
  std::string path;
  for (const Polygon& polygon : polygons) {
    AppendLine(path, polygon);
    path += "z";
  }
  m_body +=
      fmt::format(R"(<path class="{}" d="{}" fill="{}"{} stroke-linejoin="round"/>)"
                  "\n",
                  ClassOf(role), path, ColourText(colour), Stroke({colour, kSeam, Dashes::kSolid}));
}

void SvgCanvas::DrawCurve(Role role, const CurveShape& curve) {
  std::string path;
  for (const std::vector<Point>& line : curve.lines) AppendLine(path, line);
  for (const Point& marker : curve.markers) AppendMarker(path, curve.shape, marker, curve.radius);
  m_body += fmt::format(R"(<path class="{}" d="{}" fill="none"{} stroke-linejoin="round"/>)"
                        "\n",
                        ClassOf(role), path, Stroke(curve.pen));
}

void SvgCanvas::BeginClip(const Rect& rect) {
  ++m_clips;
  m_body += fmt::format(
      R"(<clipPath id="clip{0}"><rect x="{1}" y="{2}" width="{3}" height="{4}"/></clipPath>)"
      "\n"
      R"x(<g clip-path="url(#clip{0})">)x"
      "\n",
      m_clips, Number(rect.left), Number(rect.top), Number(rect.width), Number(rect.height));
}

void SvgCanvas::EndClip() {
  m_body += "</g>\n";
}

}  // namespace tarn
