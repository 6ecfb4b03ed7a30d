#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "engine/matrix.h"
#include "engine/network.h"

namespace tarn {

// What the monitors add up over the outputs of one pass. The training pass adds in double
// (products too), the pass over the test set in single precision; the squared errors and the
// errors themselves are single in both.
template <typename Sum>
struct MonitorSums {
  float squared_error = 0;  // of (target - output)^2
  Sum output_target = 0;
  Sum output = 0;
  Sum target = 0;
  Sum output_squared = 0;
  Sum target_squared = 0;
  int64_t hits = 0;  // errors below the tolerance

  // One pattern; `tolerance` is the effective one, hits are counted when it is above 0.
  void Add(std::span<const float> targets, std::span<const float> outputs, float tolerance);
  // These rows of the tables, one pattern after the other.
  void AddRows(const Matrix& targets, const Matrix& outputs, std::span<const int32_t> rows,
               float tolerance);
};

// The tolerance in the units of the normalized targets: 0.7 / (upper - lower) * Tolerance with
// the limits of the first output node, Tolerance itself when targets are not normalized; 0
// when the monitor is off.
float EffectiveTolerance(const Network& network);

// With n = count: (n Sum(ot) - Sum(o) Sum(t)) / (sqrt(b) sqrt(a)), a = n Sum(o^2) - Sum(o)^2,
// b = n Sum(t^2) - Sum(t)^2; 0 unless a and b are above 0. Computed in double.
template <typename Sum>
float Correlation(const MonitorSums<Sum>& sums, int64_t count);

// hits / n * 100, computed in double.
float PercentWithin(int64_t hits, int64_t n);

}  // namespace tarn
