#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "netgraph/graph.h"

namespace tarn {

// From the smallest to the largest page that is to be legible, the flat and the narrow ones too.
inline constexpr std::array<Size, 6> kPageSizes = {
    {{300, 200}, {300, 6000}, {8000, 200}, {640, 480}, {800, 600}, {8000, 6000}}};

// From one value to another, in this order.
struct Span {
  float first = 0;
  float last = 0;
};

inline std::vector<Span> AllSpans() {
  using Limits = std::numeric_limits<float>;
  return {{0, 1},
          {1, 0},
          {-1, 1},
          {0.13f, 0.87f},
          {-5, -3},
          {3.5f, 3.5f},
          {0, 0},
          {1e-30f, 3e-30f},
          {-1e-6f, 1e-6f},
          {-2e6f, 0},
          {0, 2e6f},
          {1000000, 1000008},
          {-1000008, -1000000},
          {1, std::nextafter(1.0f, 2.0f)},
          {-16777216, -16777214},
          {100000, 100000.2f},
          {-1e30f, 1e30f},
          {-Limits::max(), Limits::max()},
          {0, Limits::denorm_min()},
          {-999999, 999999},
          {-1.5e-12f, -1.1e-12f},
          {0, 10000}};
}

// Words of different lengths, `length` characters in all.
inline std::string Words(size_t length) {
  constexpr std::string_view kText = "Output of the second hidden layer against what was wanted, ";
  std::string words;
  while (words.size() < length) words += kText;
  words.resize(length, 'x');
  if (words.ends_with(' ')) words.back() = 'x';
  return words;
}

inline std::string OneWord(size_t length) {
  return std::string(length, 'W');
}

inline float Between(const Span& span, double share) {
  return static_cast<float>(span.first + share * (double{span.last} - span.first));
}

// Waves up and down between the ends of `y` while it runs from end to end of `x`.
inline CURVE_DEF WaveCurve(const Span& x, const Span& y, size_t points = 60) {
  CURVE_DEF curve;
  for (size_t i = 0; i < points; ++i) {
    const double share = points < 2 ? 0 : static_cast<double>(i) / static_cast<double>(points - 1);
    curve.x.push_back(Between(x, share));
    curve.y.push_back(Between(y, (1 - std::cos(9.0 * 3.141592653589793 * share)) / 2));
  }
  return curve;
}

inline CURVE_DEF PointsCurve(std::vector<float> x, std::vector<float> y) {
  CURVE_DEF curve;
  curve.x = std::move(x);
  curve.y = std::move(y);
  return curve;
}

inline Graph GraphOf(std::vector<CURVE_DEF> curves) {
  Graph graph;
  graph.curves = std::move(curves);
  return graph;
}

// A surface of hills between two values, over the given range.
inline Graph ContourGraph(const Span& x, const Span& y, const Span& values) {
  Graph graph;
  graph.range = {x.first, x.last, y.first, y.last};
  graph.contours.emplace();
  for (size_t row = 0; row < kContourSteps; ++row) {
    for (size_t column = 0; column < kContourSteps; ++column) {
      const double hill =
          std::sin(0.2 * static_cast<double>(row)) * std::cos(0.15 * static_cast<double>(column));
      graph.contours->At(row, column) = Between(values, (1 + hill) / 2);
    }
  }
  return graph;
}

}  // namespace tarn
