#pragma once

#include <cstddef>
#include <new>
#include <span>
#include <vector>

namespace tarn {

// A table of floats, row after row in one block: weights by node, activations by pattern.
class Matrix {
 public:
  // So many floats past the last one belong to the table, too: kernels read whole vectors.
  static constexpr size_t kRoom = 16;

  // Gives the table a new shape, all zeros. Throws std::bad_alloc when memory is short.
  void Resize(size_t rows, size_t columns) {
    if (columns != 0 && rows > (m_values.max_size() - kRoom) / columns) throw std::bad_alloc();
    m_values = std::vector<float>(rows * columns + kRoom);
    m_rows = rows;
    m_columns = columns;
  }

  size_t rows() const { return m_rows; }
  size_t columns() const { return m_columns; }

  std::span<float> Row(size_t row) { return {m_values.data() + row * m_columns, m_columns}; }
  std::span<const float> Row(size_t row) const {
    return {m_values.data() + row * m_columns, m_columns};
  }
  std::span<float> All() { return {m_values.data(), m_rows * m_columns}; }
  std::span<const float> All() const { return {m_values.data(), m_rows * m_columns}; }

 private:
  std::vector<float> m_values;
  size_t m_rows = 0;
  size_t m_columns = 0;
};

}  // namespace tarn
