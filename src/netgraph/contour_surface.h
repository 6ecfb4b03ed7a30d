#pragma once

#include <cstddef>
#include <vector>

namespace tarn {

// Points of the grid along either input.
inline constexpr size_t kContourSteps = 40;

// An output over a grid of two inputs.
struct ContourSurface {
  // Numbers of the first and the second input node, from 1, then the outputs row by row: row r is
  // the second input's step, column c the first's; kContourSteps of each.
  std::vector<float> values = std::vector<float>(2 + kContourSteps * kContourSteps);

  float& At(size_t row, size_t column) { return values[2 + kContourSteps * row + column]; }
  float At(size_t row, size_t column) const { return values[2 + kContourSteps * row + column]; }
};

}  // namespace tarn
