#include "netgraph/axis_scaling.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <fmt/printf.h>
#include <limits>

namespace tarn {
namespace {

constexpr double kShortestAxis = 400;  // pixels
constexpr double kLongestAxis = 800;
constexpr double kLeastTickPixels = 20;
constexpr double kTooWide = 2 * kLeastTickPixels;  // a finer grid may fit
constexpr double kTargetShare = 0.5;               // of the least tick: where the search starts

// Powers of ten and quotients come out a rounding error low or high: each is pushed to the side
// where an end that lies on the grid counts as on it.
constexpr double kBaseNudge = 1.00000000001;
constexpr double kMinorNudge = 1.0000003;
constexpr double kSmallMinorNudge = 1.0000006;  // of a tick below 1
constexpr double kLowNudge = 1.0000006;
constexpr double kHighNudge = 1.000003;
constexpr double kSnap =
    0.01;  // of a tick: an end as near as this to its data end is moved onto it

struct StepKind {
  int32_t units;                    // of the base, from tick to tick
  int32_t minor_count;              // ticks of a step
  std::array<int32_t, 5> thinning;  // steps from label to label, the first that has room
};

constexpr StepKind kFine = {2, 5, {1, 2, 4, 5, 8}};
constexpr StepKind kMiddle = {5, 4, {1, 2, 4, 5, 10}};
constexpr StepKind kCoarse = {10, 5, {1, 2, 4, 8, 10}};
constexpr int32_t kFirstMiddle = 2;  // ticks of the target that make the middle kind
constexpr int32_t kFirstCoarse = 5;

constexpr int32_t kMostExponentDigits = 6;
constexpr int32_t kMostFixedDigits = 7;
constexpr double kLargestFixed = 999999;
constexpr int32_t kDigitPixels = 8;
constexpr int32_t kFixedPixels = 8;  // a character more than the digits
constexpr int32_t kExponentPixels = 64;
constexpr const char* kDegenerateFormat = "%.6g";

constexpr double kLastTickSlack = 2 * kSnap;  // of a tick: both ends may have moved by kSnap
constexpr double kZeroSlack = 1e-5;  // of a tick: float ends, 40 ticks away, are off by 3e-6

// log10 without its fraction: 0 for 0.2 as for 2.
int32_t Magnitude(double value) {
  return static_cast<int32_t>(std::trunc(std::log10(value)));
}

struct Range {
  double lo;
  double hi;
};

struct Grid {
  const StepKind* kind;
  double minor;
  double step;
};

struct Search {
  double base = 0;
  int32_t k = 0;  // ticks of the target in units of the base, rounded up
  bool grown = false;
};

double LengthThatCounts(double pixels) {
  return pixels >= kShortestAxis ? std::min(pixels, kLongestAxis) : kShortestAxis;
}

Search StartOfSearch(const Range& data, double length) {
  const double target = (data.hi - data.lo) / length * kLeastTickPixels * kTargetShare;
  const double magnitude = std::log10(target);
  const double exponent = std::trunc(magnitude) - (magnitude < 0 ? 1 : 0);
  const double base = std::pow(10.0, exponent) * kBaseNudge;
  return {base, static_cast<int32_t>(target / base) + 1};
}

// The next coarser spacing; after the coarse kind the fine one of the next power of ten.
void Grow(Search& search) {
  search.grown = true;
  if (++search.k <= kFirstCoarse) return;
  search.k = 1;
  search.base *= 10;
}

const StepKind& KindOf(int32_t k) {
  if (k < kFirstMiddle) return kFine;
  return k < kFirstCoarse ? kMiddle : kCoarse;
}

Grid GridOf(const Search& search) {
  const StepKind& kind = KindOf(search.k);
  const double minor = kind.units * search.base;
  return {&kind, minor * (minor < 1 ? kSmallMinorNudge : kMinorNudge), minor * kind.minor_count};
}

// The nudge puts a positive end up to 6e-7 of its value too high: the loop takes back some 160
// steps at most, those of neighbouring floats. A negative end stays as much too low.
double LowEnd(double lo, const Grid& grid) {
  double end = std::trunc(lo / grid.step * kLowNudge) * grid.step;
  while (end > lo) {
    if (end - kSnap * grid.minor <= lo) return lo;
    end -= grid.step;
  }
  return end;
}

double HighEnd(double hi, double low_end, const Grid& grid) {
  double end = std::trunc((hi - low_end) / grid.step * kHighNudge) * grid.step + low_end;
  while (end < hi) {
    if (end + kSnap * grid.minor >= hi) return hi;
    end += grid.step;
  }
  return end;
}

// Data ends are floats: the grid's own 1.00000000001 is 1. Rounding keeps order, so that an end
// stays outside the data; where floats are too far apart for that the end stays as it is.
double NearestFloat(double end, double tolerance) {
  if (std::abs(end) > std::numeric_limits<float>::max()) return end;
  const double rounded = static_cast<float>(end);
  return std::abs(rounded - end) <= tolerance ? rounded : end;
}

// Also an end that should be 0 is.
Range Rounded(const Range& axis, const Range& data, const Grid& grid) {
  const double tolerance = kSnap * grid.minor;
  const double zero = kZeroSlack * grid.minor;
  Range rounded = {NearestFloat(axis.lo, tolerance), NearestFloat(axis.hi, tolerance)};
  if (std::abs(rounded.lo) < zero && data.lo >= 0) rounded.lo = 0;
  if (std::abs(rounded.hi) < zero && data.hi <= 0) rounded.hi = 0;
  return rounded;
}

// The search ends. It goes down from a tick of 40 pixels only, and the fine kind of the first base
// is half of that; growing, the tick passes any length that the steps add to the data.
AxisScale ScaleRange(const Range& data, double length) {
  Search search = StartOfSearch(data, length);
  for (;;) {
    const Grid grid = GridOf(search);
    const double lo = LowEnd(data.lo, grid);
    const Range axis = {lo, HighEnd(data.hi, lo, grid)};
    const double pixels = grid.minor / ((axis.hi - axis.lo) / length);
    if (pixels < kLeastTickPixels) {
      Grow(search);
    } else if (pixels >= kTooWide && !search.grown) {
      --search.k;
    } else {
      const auto [first, second] = Rounded(axis, data, grid);
      const StepKind& kind = *grid.kind;
      return {first,      second, grid.minor,      grid.step,       kind.minor_count,
              kind.units, pixels, axis.lo - first, axis.hi - second};
    }
  }
}

const StepKind& KindOf(const AxisScale& scale) {
  if (scale.kind == kFine.units) return kFine;
  return scale.kind == kMiddle.units ? kMiddle : kCoarse;
}

// M, the largest value to be labelled. A tick more than the second end: it may round up.
double LargestValue(const AxisScale& scale) {
  const double first = std::abs(scale.first + scale.first_rest);
  const double second = std::abs(scale.second + scale.second_rest);
  return first > second ? first : second + scale.minor;
}

int32_t FixedDigits(double largest, double label_step, int32_t significant) {
  if (largest < 1) return 2 - Magnitude(label_step);
  return label_step < 1 ? significant + 1 : Magnitude(largest) + 1;
}

// Of a label in fixed form; of one in exponent form the negative number, which is less than 0.
int32_t Digits(double largest, double label_step) {
  const int32_t significant = std::max(Magnitude(largest) + 1 - Magnitude(label_step), 1);
  const double smallest_fixed = std::pow(10.0, significant - kMostFixedDigits);
  if (largest > kLargestFixed || largest < smallest_fixed) {
    return -std::min(significant, kMostExponentDigits);
  }
  return std::min(FixedDigits(largest, label_step, significant), kMostFixedDigits);
}

int32_t LabelPixels(int32_t digits) {
  return digits < 1 ? kExponentPixels - kDigitPixels * digits
                    : kDigitPixels * digits + kFixedPixels;
}

// Room for the sign, the digit before the point, the point, the digits after it and the exponent.
std::string ExponentFormat(double largest, int32_t digits) {
  const std::string text = fmt::sprintf("%.10e", largest);
  const long exponent_width = static_cast<long>(text.size() - text.find('e'));
  const long width = 2 - digits;
  return fmt::sprintf("%%-%ld.%lde", exponent_width + width + 1, width - 2);
}

std::string FixedFormat(double largest, int32_t digits) {
  const std::string text = fmt::sprintf("%.10f", largest);
  const long up_to_point = static_cast<long>(text.find('.') + 1);
  const long width = digits + 2;
  if (up_to_point >= width) return fmt::sprintf("%%%ld.0f", up_to_point);
  return fmt::sprintf("%%%ld.%ldf", width, width - up_to_point - 1);
}

std::string Trimmed(const std::string& text) {
  const size_t begin = text.find_first_not_of(' ');
  if (begin == std::string::npos) return "";
  return text.substr(begin, text.find_last_not_of(' ') + 1 - begin);
}

// All digits 0, the exponent's too: a zero, whatever its sign.
bool ReadsZero(const std::string& text) {
  return text.find_first_of("123456789") == std::string::npos;
}

std::vector<AxisTick> TicksOfDegenerateAxis(const AxisScale& scale, const AxisLabels& labels) {
  if (!std::isfinite(scale.first) || scale.first != scale.second) return {};
  return {{scale.first, true, LabelText(labels, scale.first)}};
}

}  // namespace

AxisScale ScaleAxis(float first, float second, double pixels) {
  const bool finite = std::isfinite(first) && std::isfinite(second);
  if (!finite || first == second) return {first, second};
  const Range data = {std::min(first, second), std::max(first, second)};
  AxisScale scale = ScaleRange(data, LengthThatCounts(pixels));
  if (first < second) return scale;
  std::swap(scale.first, scale.second);
  std::swap(scale.first_rest, scale.second_rest);
  return scale;
}

AxisLabels LabelAxis(const AxisScale& scale) {
  if (scale.IsDegenerate()) return {kDegenerateFormat, 0};
  const double largest = LargestValue(scale);
  int32_t interval = 0;
  int32_t digits = 0;
  for (const int32_t factor : KindOf(scale).thinning) {
    interval = factor * scale.minor_count;
    digits = Digits(largest, interval * scale.minor + scale.minor);
    if (std::trunc(scale.minor_pixels) * interval >= LabelPixels(digits)) break;
  }
  const bool fixed = digits >= 1;
  return {fixed ? FixedFormat(largest, digits) : ExponentFormat(largest, digits), interval};
}

std::string LabelText(const AxisLabels& labels, double value) {
  const std::string text = fmt::sprintf(labels.format, value);
  return Trimmed(ReadsZero(text) ? fmt::sprintf(labels.format, 0.0) : text);
}

std::vector<AxisTick> AxisTicks(const AxisScale& scale, const AxisLabels& labels) {
  if (scale.IsDegenerate()) return TicksOfDegenerateAxis(scale, labels);
  const auto [lower, upper] = std::minmax(scale.first, scale.second);
  const double spacing = scale.step / scale.minor_count;
  const int32_t last = static_cast<int32_t>((upper - lower) / spacing + kLastTickSlack);
  std::vector<AxisTick> ticks;
  for (int32_t i = 0; i <= last; ++i) {
    const double place = std::min(lower + i * spacing, upper);
    AxisTick tick;
    tick.value = std::abs(place) < kZeroSlack * scale.minor ? 0.0 : place;
    tick.labelled = labels.minor_interval > 0 && i % labels.minor_interval == 0;
    if (tick.labelled) tick.text = LabelText(labels, tick.value);
    ticks.push_back(std::move(tick));
  }
  return ticks;
}

}  // namespace tarn
