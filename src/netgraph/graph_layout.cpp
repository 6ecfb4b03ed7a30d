#include "netgraph/graph_layout.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "netgraph/text_block.h"

namespace tarn {
namespace {

// Lengths on a page of 800 x 600 pixels; larger and smaller pages have theirs in proportion, down
// to where letters could not be read.
constexpr double kPageWidth = 800;
constexpr double kPageHeight = 600;
constexpr double kSmallestUnit = 0.7;
constexpr double kFont = 13;
constexpr double kTitleFont = 16;
constexpr double kGap = 8;
constexpr double kTickLength = 6;
constexpr double kSampleWidth = 34;
constexpr double kColourBarWidth = 18;
// Between the entries of the legend, in heights of the font.
constexpr double kEntryDistance = 1.5;
// The left margin has room for so many characters beside the labels of the axis.
constexpr double kMarginCharacters = 3;

// Shares of the page that texts take at most.
constexpr double kTitleShare = 0.2;
constexpr double kLabelShare = 0.12;
constexpr double kLegendShare = 0.25;
constexpr double kLabelWidthShare = 0.8;  // of the width or height of the plot

// Labels of ticks keep so far apart, in heights of the font.
constexpr double kLabelDistance = 0.5;
constexpr double kLabelHeight = 1.1;

// On a page that has no room for it all: pixels.
constexpr double kSmallestPlot = 1;
constexpr double kSmallestName = 1;

// A plot that makes room for a label has other labels in turn, seldom wider ones.
constexpr int kAttempts = 4;

double Share(double value, double first, double second) {
  return first == second || !std::isfinite(second - first) ? 0.5
                                                           : (value - first) / (second - first);
}

class LayoutMaker {
 public:
  LayoutMaker(const Graph& graph, const GraphView& view, const Canvas& canvas)
      : m_graph(graph), m_view(view), m_canvas(canvas) {}

  GraphLayout Make() {
    m_layout.page = m_canvas.size();
    m_layout.unit =
        std::max(std::min(m_layout.page.width / kPageWidth, m_layout.page.height / kPageHeight),
                 kSmallestUnit);
    if (m_graph.contours) m_layout.bands = TraceBands(*m_graph.contours, OpeningRange(m_graph));
    m_plot = {Length(kGap), Length(kGap), 0, 0};
    double bottom = m_layout.page.height - Length(kGap);
    PlaceTitle();
    bottom = PlaceLegend(bottom);
    const TextBlock x_label = FitLabel(m_graph.x_label, m_layout.page.width);
    const double label_top = bottom - x_label.height();
    m_plot.height = std::max(label_top - TickRoom() - m_plot.top, kSmallestPlot);
    ScaleY();
    ScaleX(PlaceBandLegend());
    PlaceBlock(x_label, Role::kXLabel, label_top, m_plot.left + m_plot.width / 2);
    AddTickTexts();
    return std::move(m_layout);
  }

 private:
  double Length(double length) const { return length * m_layout.unit; }
  double Font() const { return Length(kFont); }
  double TickRoom() const { return Length(kTickLength) + Font() * kLineSpacing + Length(kGap) / 2; }
  double Width(const std::string& text) const { return m_canvas.TextWidth(text, Font()); }

  TextBlock FitLabel(const std::string& text, double length) const {
    const double page = std::min(m_layout.page.width, m_layout.page.height);
    return FitText(m_canvas, text, Font(), length * kLabelWidthShare, page * kLabelShare);
  }

  void AddText(Role role, std::string text, double size, const Point& at, Anchor anchor,
               bool upwards = false) {
    m_layout.texts.push_back({role, std::move(text), size, at, anchor, upwards});
  }

  // Lines one below the other, centred as near to `middle` as the page lets them.
  void PlaceBlock(const TextBlock& block, Role role, double top, double middle) {
    double y = top + block.size * kLineSpacing / 2;
    for (const std::string& line : block.lines) {
      const double half = m_canvas.TextWidth(line, block.size) / 2;
      const double x = std::clamp(middle, std::min(half, m_layout.page.width / 2),
                                  std::max(m_layout.page.width - half, m_layout.page.width / 2));
      AddText(role, line, block.size, {x, y}, Anchor::kMiddle);
      y += block.size * kLineSpacing;
    }
  }

  void PlaceTitle() {
    const Size& page = m_layout.page;
    const TextBlock title = FitText(m_canvas, m_graph.title, Length(kTitleFont),
                                    page.width - 2 * Length(kGap), page.height * kTitleShare);
    PlaceBlock(title, Role::kTitle, m_plot.top, page.width / 2);
    m_plot.top += title.height() + Length(kGap);
  }

  // The names of curves in rows at the foot of the page; the top of them.
  double PlaceLegend(double bottom) {
    if (!m_view.legend()) return bottom;
    std::vector<size_t> named;
    for (size_t i = 0; i < m_graph.curves.size(); ++i) {
      if (!m_graph.curves[i].name.empty()) named.push_back(i);
    }
    if (named.empty()) return bottom;
    double size = Font();
    std::vector<std::vector<size_t>> rows = LegendRows(named, size);
    while (size > kSmallestName && !RowsFit(rows, size)) {
      size *= kSmaller;
      rows = LegendRows(named, size);
    }
    double y = bottom - static_cast<double>(rows.size()) * size * kLineSpacing;
    const double top = y - Length(kGap);
    for (const std::vector<size_t>& row : rows) {
      PlaceRow(row, size, y);
      y += size * kLineSpacing;
    }
    return top;
  }

  double EntryWidth(size_t curve, double size) const {
    return SampleWidth(size) + m_canvas.TextWidth(m_graph.curves[curve].name, size);
  }
  static double SampleWidth(double size) { return size * kSampleWidth / kFont + size / 2; }
  static double EntryDistance(double size) { return kEntryDistance * size; }

  double RowWidth(const std::vector<size_t>& row, double size) const {
    double width = -EntryDistance(size);
    for (const size_t curve : row) width += EntryWidth(curve, size) + EntryDistance(size);
    return width;
  }
  double RoomOfRow() const { return m_layout.page.width - 2 * Length(kGap); }

  std::vector<std::vector<size_t>> LegendRows(const std::vector<size_t>& named, double size) const {
    std::vector<std::vector<size_t>> rows(1);
    for (const size_t curve : named) {
      rows.back().push_back(curve);
      if (rows.back().size() == 1 || RowWidth(rows.back(), size) <= RoomOfRow()) continue;
      rows.back().pop_back();
      rows.push_back({curve});
    }
    return rows;
  }

  bool RowsFit(const std::vector<std::vector<size_t>>& rows, double size) const {
    const double height = static_cast<double>(rows.size()) * size * kLineSpacing;
    if (height > m_layout.page.height * kLegendShare) return false;
    return std::ranges::all_of(rows,
                               [&](const auto& row) { return RowWidth(row, size) <= RoomOfRow(); });
  }

  void PlaceRow(const std::vector<size_t>& row, double size, double top) {
    double x = (m_layout.page.width - RowWidth(row, size)) / 2;
    const double height = size * kLineSpacing;
    for (const size_t curve : row) {
      const double sample = SampleWidth(size);
      m_layout.samples.push_back({curve, {x, top, sample - size / 2, height}});
      AddText(Role::kLegend, m_graph.curves[curve].name, size, {x + sample, top + height / 2},
              Anchor::kStart);
      m_layout.texts.back().colour = m_graph.curves[curve].colour;
      x += EntryWidth(curve, size) + EntryDistance(size);
    }
  }

  // The scale of the y axis and, from its labels, the left margin.
  void ScaleY() {
    m_layout.y_scale = ScaleAxis(m_view.range().y_min, m_view.range().y_max, m_plot.height);
    const AxisLabels labels = LabelAxis(m_layout.y_scale);
    m_layout.y_ticks = AxisTicks(m_layout.y_scale, labels);
    double widest = 0;
    for (const AxisTick& tick : m_layout.y_ticks) widest = std::max(widest, Width(tick.text));
    const TextBlock label = FitLabel(m_graph.y_label, m_plot.height);
    PlaceUpwards(label);
    m_plot.left += std::max(label.height(), kMarginCharacters * Width("0")) + Length(kGap) / 2 +
                   widest + Length(kTickLength) + Length(kGap) / 2;
  }

  void PlaceUpwards(const TextBlock& block) {
    double x = m_plot.left + block.size * kLineSpacing / 2;
    for (const std::string& line : block.lines) {
      AddText(Role::kYLabel, line, block.size, {x, m_plot.top + m_plot.height / 2}, Anchor::kMiddle,
              true);
      x += block.size * kLineSpacing;
    }
  }

  // The scale of the x axis up to `right`, or less far where a label would leave the page.
  void ScaleX(double right) {
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
      m_plot.width = std::max(right - m_plot.left, kSmallestPlot);
      m_layout.plot = m_plot;
      m_layout.x_scale = ScaleAxis(m_view.range().x_min, m_view.range().x_max, m_plot.width);
      m_layout.x_ticks = AxisTicks(m_layout.x_scale, LabelAxis(m_layout.x_scale));
      ThinLabels(m_layout.x_ticks, m_plot.width,
                 [this](const std::string& text) { return Width(text) + kLabelDistance * Font(); });
      const double beyond = BeyondThePage();
      if (beyond <= 0) return;
      right -= beyond;
    }
  }

  // How far a label of the x axis reaches into the right margin of the page or leaves it.
  double BeyondThePage() const {
    double end = 0;
    for (const AxisTick& tick : m_layout.x_ticks) {
      if (!tick.labelled) continue;
      end = std::max(end, m_layout.ToCanvas({tick.value, 0}).x + Width(tick.text) / 2);
    }
    return end - (m_layout.page.width - Length(kGap) / 2);
  }

  // The colours of the bands with their bounds, right of the plot; the right end of the plot.
  double PlaceBandLegend() {
    const double right = m_layout.page.width - Length(2 * kGap) - Width("0.00") / 2;
    if (!m_view.legend() || !m_layout.bands || m_layout.bands->count() == 0) return right;
    const ContourBands& bands = *m_layout.bands;
    double widest = 0;
    for (const std::string& text : bands.bound_texts) widest = std::max(widest, Width(text));
    const double text_left = m_layout.page.width - Length(kGap) - widest;
    const double bar_left = text_left - Length(kGap) / 2 - Length(kColourBarWidth);
    const double height = m_plot.height / static_cast<double>(bands.count());
    for (size_t level = 0; level < bands.count(); ++level) {
      const double top = m_plot.bottom() - static_cast<double>(level + 1) * height;
      m_layout.band_legend.push_back({level, {bar_left, top, Length(kColourBarWidth), height}});
    }
    const size_t stride = Stride(height, Font() * kLabelHeight);
    for (size_t i = 0; i < bands.bounds.size(); i += stride) {
      const double y = m_plot.bottom() - static_cast<double>(i) * height;
      AddText(Role::kLegend, bands.bound_texts[i], Font(), {text_left, y}, Anchor::kStart);
    }
    return bar_left - Length(2 * kGap);
  }

  // Every how manieth label has room.
  static size_t Stride(double distance, double needed) {
    return distance > 0 ? static_cast<size_t>(std::max(std::ceil(needed / distance), 1.0)) : 1;
  }

  // Keeps every n-th label of an axis where all would touch each other.
  template <typename Extent>
  void ThinLabels(std::vector<AxisTick>& ticks, double length, const Extent& extent) {
    std::vector<AxisTick*> labelled;
    double needed = 0;
    for (AxisTick& tick : ticks) {
      if (!tick.labelled) continue;
      labelled.push_back(&tick);
      needed = std::max(needed, extent(tick.text));
    }
    if (labelled.size() < 2 || ticks.size() < 2) return;
    const double range = ticks.back().value - ticks.front().value;
    const double step = labelled[1]->value - labelled[0]->value;
    const size_t stride = Stride(length * step / range, needed);
    for (size_t i = 0; i < labelled.size(); ++i) {
      if (i % stride == 0) continue;
      labelled[i]->labelled = false;
      labelled[i]->text.clear();
    }
  }

  void AddTickTexts() {
    ThinLabels(m_layout.y_ticks, m_plot.height,
               [this](const std::string&) { return kLabelHeight * Font(); });
    const double below = m_plot.bottom() + Length(kTickLength) + Font() * kLineSpacing / 2;
    for (const AxisTick& tick : m_layout.x_ticks) {
      if (!tick.labelled) continue;
      const double half = Width(tick.text) / 2;
      const double x = std::clamp(m_layout.ToCanvas({tick.value, 0}).x, half,
                                  std::max(half, m_layout.page.width - half));
      AddText(Role::kXTick, tick.text, Font(), {x, below}, Anchor::kMiddle);
    }
    const double left = m_plot.left - Length(kTickLength) - Length(kGap) / 2;
    for (const AxisTick& tick : m_layout.y_ticks) {
      if (!tick.labelled) continue;
      AddText(Role::kYTick, tick.text, Font(), {left, m_layout.ToCanvas({0, tick.value}).y},
              Anchor::kEnd);
    }
  }

  const Graph& m_graph;
  const GraphView& m_view;
  const Canvas& m_canvas;
  Rect m_plot;  // as far as it is known
  GraphLayout m_layout;
};

}  // namespace

Point GraphLayout::ToCanvas(const Point& data) const {
  return {plot.left + Share(data.x, x_scale.first, x_scale.second) * plot.width,
          // From the top: both ends of the axis are on the plot's sides to the last bit.
          plot.top + (1 - Share(data.y, y_scale.first, y_scale.second)) * plot.height};
}

Point GraphLayout::ToData(const Point& on_canvas) const {
  const double across = (on_canvas.x - plot.left) / plot.width;
  const double up = (plot.bottom() - on_canvas.y) / plot.height;
  return {x_scale.first + across * (x_scale.second - x_scale.first),
          y_scale.first + up * (y_scale.second - y_scale.first)};
}

Point GraphLayout::NearestInPlot(const Point& on_canvas) const {
  return {std::clamp(on_canvas.x, plot.left, plot.right()),
          std::clamp(on_canvas.y, plot.top, plot.bottom())};
}

GraphLayout LayoutGraph(const Graph& graph, const GraphView& view, const Canvas& canvas) {
  return LayoutMaker(graph, view, canvas).Make();
}

}  // namespace tarn
