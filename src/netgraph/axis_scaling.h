#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tarn {

// The grid of one axis of a graph: ends moved out to labelled steps, and ticks between them. All
// in data units unless said otherwise.
struct AxisScale {
  double first = 0;         // the end that the caller named first
  double second = 0;        // may be the lower one
  double minor = 0;         // m: from tick to tick, up to 6e-7 more than step / minor_count
  double step = 0;          // S: 1, 2 or 5 times a power of ten
  int32_t minor_count = 0;  // ticks of a step: 4 or 5; 0 of a degenerate axis
  int32_t kind = 0;         // m in units of its power of ten: 2, 5 or 10; 0 of a degenerate axis
  double minor_pixels = 0;  // p: pixels from tick to tick, 20 or more
  // What rounding took from the ends: labels are formed for the ends that the grid gave.
  double first_rest = 0;
  double second_rest = 0;

  // No range to divide: the ends, kept as they were given, are equal or not finite.
  bool IsDegenerate() const { return minor_count == 0; }
};

// The grid for data from one end to the other, in either order; the ends of the result are in the
// same order and never inside the data. An end is the data's own one where the grid is within 1 %
// of a tick of it. `pixels` is the length of the axis; it counts from 400 to 800, and a length
// beyond has the grid of the nearer limit.
AxisScale ScaleAxis(float first, float second, double pixels);

// How the ticks of a scaled axis are labelled.
struct AxisLabels {
  std::string format;          // of printf, for one double; pads with blanks
  int32_t minor_interval = 0;  // ticks from label to label; 0 of a degenerate axis
};

// As many digits as tell label from label, and no more labels than have room. Six digits after the
// first one are the most: neighbours may read the same where the step is below 5e-7 of the larger
// end, and at a step of 5e-7 itself with that end between 0.001 and 1.
AxisLabels LabelAxis(const AxisScale& scale);

// A value as a label of the axis has it: no blanks around it, zero without a sign.
std::string LabelText(const AxisLabels& labels, double value);

struct AxisTick {
  double value = 0;  // in data units, on the axis
  bool labelled = false;
  std::string text;  // its LabelText; empty when not labelled
};

// lower end + i * step / minor_count for i = 0, 1, ... up to the upper end, every minor_interval-th
// labelled from the first on: 41 ticks at most for a scale of ScaleAxis. A degenerate axis has one
// labelled tick where its ends are equal and finite, and none otherwise.
std::vector<AxisTick> AxisTicks(const AxisScale& scale, const AxisLabels& labels);

}  // namespace tarn
