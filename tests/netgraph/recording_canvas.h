#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "netgraph/canvas.h"
#include "netgraph/text_metrics.h"

namespace tarn {

enum class CallKind { kRect, kLine, kText, kPolygons, kCurve, kBeginClip, kEndClip };

// What a canvas was told to draw; the fields that the kind of call has.
struct CanvasCall {
  CallKind kind = CallKind::kRect;
  Role role = Role::kPage;
  std::optional<Rect> clip;  // in force
  Rect rect;
  Colour colour;
  std::optional<Pen> pen;
  Point from;
  Point to;
  TextLine text;
  std::vector<Polygon> polygons;
  CurveShape curve;
};

// Keeps all that is drawn on it. Text is as wide as in a picture file.
class RecordingCanvas : public Canvas {
 public:
  explicit RecordingCanvas(const Size& size) : m_size(size) {}

  const std::vector<CanvasCall>& calls() const { return m_calls; }
  size_t open_clips() const { return m_clips.size(); }

  std::vector<CanvasCall> CallsOf(CallKind kind, Role role) const {
    std::vector<CanvasCall> found;
    for (const CanvasCall& call : m_calls) {
      if (call.kind == kind && call.role == role) found.push_back(call);
    }
    return found;
  }
  std::vector<CurveShape> Curves(Role role) const {
    std::vector<CurveShape> curves;
    for (const CanvasCall& call : CallsOf(CallKind::kCurve, role)) curves.push_back(call.curve);
    return curves;
  }
  std::vector<TextLine> Texts() const {
    std::vector<TextLine> texts;
    for (const CanvasCall& call : m_calls) {
      if (call.kind == CallKind::kText) texts.push_back(call.text);
    }
    return texts;
  }

  Size size() const override { return m_size; }
  double TextWidth(std::string_view text, double size) const override {
    return PictureTextWidth(text, size);
  }
  void DrawRect(Role role, const Rect& rect, const Colour& fill,
                const std::optional<Pen>& border) override {
    CanvasCall& call = Add(CallKind::kRect, role);
    call.rect = rect;
    call.colour = fill;
    call.pen = border;
  }
  void DrawLine(Role role, const Point& from, const Point& to, const Pen& pen) override {
    CanvasCall& call = Add(CallKind::kLine, role);
    call.from = from;
    call.to = to;
    call.pen = pen;
  }
  void DrawText(const TextLine& text) override { Add(CallKind::kText, text.role).text = text; }
  void FillPolygons(Role role, const std::vector<Polygon>& polygons,
                    const Colour& colour) override {
    CanvasCall& call = Add(CallKind::kPolygons, role);
    call.polygons = polygons;
    call.colour = colour;
  }
  void DrawCurve(Role role, const CurveShape& curve) override {
    Add(CallKind::kCurve, role).curve = curve;
  }
  void BeginClip(const Rect& rect) override {
    Add(CallKind::kBeginClip, Role::kPlotArea).rect = rect;
    m_clips.push_back(rect);
  }
  void EndClip() override {
    Add(CallKind::kEndClip, Role::kPlotArea);
    if (!m_clips.empty()) m_clips.pop_back();
  }

 private:
  CanvasCall& Add(CallKind kind, Role role) {
    CanvasCall call;
    call.kind = kind;
    call.role = role;
    if (!m_clips.empty()) call.clip = m_clips.back();
    m_calls.push_back(std::move(call));
    return m_calls.back();
  }

  Size m_size;
  std::vector<CanvasCall> m_calls;
  std::vector<Rect> m_clips;
};

// The place that a line of text takes: as wide as the text, as high as its font.
inline Rect BoxOf(const TextLine& text) {
  const double length = PictureTextWidth(text.text, text.size);
  const double before = text.anchor == Anchor::kStart ? 0
                        : text.anchor == Anchor::kEnd ? length
                                                      : length / 2;
  const double half = text.size / 2;
  if (!text.upwards) return {text.at.x - before, text.at.y - half, length, text.size};
  return {text.at.x - half, text.at.y + before - length, text.size, length};
}

// Both ask for more than a rounding error.
inline constexpr double kRounding = 1e-6;  // pixels

inline bool Overlap(const Rect& a, const Rect& b) {
  return a.left < b.right() - kRounding && b.left < a.right() - kRounding &&
         a.top < b.bottom() - kRounding && b.top < a.bottom() - kRounding;
}

inline bool IsWithin(const Rect& inner, const Rect& outer) {
  return inner.left >= outer.left - kRounding && inner.top >= outer.top - kRounding &&
         inner.right() <= outer.right() + kRounding && inner.bottom() <= outer.bottom() + kRounding;
}

}  // namespace tarn
