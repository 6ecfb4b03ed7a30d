#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace tarn {

// A table of floats, row after row in one block: weights by node, activations by pattern.
class Matrix {
 public:
  // Gives the table a new shape, all zeros. Throws std::bad_alloc when memory is short.
  void Resize(size_t rows, size_t columns) {
    m_values = std::vector<float>(rows * columns);
    m_rows = rows;
    m_columns = columns;
  }

  size_t rows() const { return m_rows; }
  size_t columns() const { return m_columns; }

  std::span<float> Row(size_t row) { return {m_values.data() + row * m_columns, m_columns}; }
  std::span<const float> Row(size_t row) const {
    return {m_values.data() + row * m_columns, m_columns};
  }
  std::span<float> All() { return m_values; }
  std::span<const float> All() const { return m_values; }

 private:
  std::vector<float> m_values;
  size_t m_rows = 0;
  size_t m_columns = 0;
};

}  // namespace tarn
