#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <span>

#include "engine/training_run.h"
#include "reference/plain_reference.h"

namespace tarn {

inline bool SameBits(float a, float b) {
  return std::bit_cast<uint32_t>(a) == std::bit_cast<uint32_t>(b);
}

inline bool SameBits(const Matrix& matrix, const reference::Table& table) {
  if (matrix.rows() != table.size()) return false;
  for (size_t r = 0; r < table.size(); ++r) {
    const std::span<const float> row = matrix.Row(r);
    if (row.size() != table[r].size()) return false;
    for (size_t i = 0; i < row.size(); ++i) {
      if (!SameBits(row[i], table[r][i])) return false;
    }
  }
  return true;
}

// Computes every iteration of a run once more, plainly, when the run asks for its snapshot,
// and compares. Needs a snapshot after every iteration.
class PlainComparison : public TrainingObserver {
 public:
  PlainComparison(const Network& network, int32_t group_size)
      : m_network(network), m_plain(network) {
    if (group_size > 0) m_plain.SetGroup(static_cast<size_t>(group_size));
  }

  void ScreenUpdated() override { m_screen_updated = true; }

  bool StoreSnapshot() override {
    m_plain.RunIteration();
    CompareIteration();
    const int32_t iteration = m_network.iteration;
    const bool due = iteration == 1 || iteration == m_network.MaxIterations ||
                     iteration % m_network.UpdateRate == 0;
    EXPECT_EQ(m_screen_updated, due) << "screen update at " << iteration;
    if (due) CompareTestSet();
    m_screen_updated = false;
    return false;
  }

  void CompareActivations() const {
    for (size_t l = 0; l < m_plain.layers().size(); ++l) {
      EXPECT_TRUE(SameBits(m_network.layers[l].activations, m_plain.layers()[l].activations))
          << "activations of layer " << l;
    }
  }

  int32_t iterations() const { return m_plain.iteration(); }

 private:
  void CompareIteration() const {
    const int32_t iteration = m_plain.iteration();
    EXPECT_EQ(m_network.iteration, iteration);
    for (size_t l = 1; l < m_plain.layers().size(); ++l) {
      const Layer& layer = m_network.layers[l];
      const reference::PlainLayer& plain = m_plain.layers()[l];
      EXPECT_TRUE(SameBits(layer.weights, plain.weights))
          << "weights of layer " << l << " after iteration " << iteration;
      EXPECT_TRUE(SameBits(layer.weight_changes, plain.changes))
          << "weight changes of layer " << l << " after iteration " << iteration;
    }
    const reference::Figures& train = m_plain.train();
    EXPECT_TRUE(SameBits(m_network.Eta, m_plain.eta())) << "Eta after " << iteration;
    EXPECT_TRUE(SameBits(m_network.rms_train, train.rms)) << "RMS error after " << iteration;
    EXPECT_TRUE(SameBits(m_network.correlation_train, train.correlation))
        << "correlation after " << iteration;
    EXPECT_TRUE(SameBits(m_network.within_train, train.within))
        << "within tolerance after " << iteration;
  }

  void CompareTestSet() {
    const reference::Figures test = m_plain.TestFigures();
    const int32_t iteration = m_plain.iteration();
    EXPECT_TRUE(SameBits(m_network.rms_test, test.rms)) << "test RMS error after " << iteration;
    EXPECT_TRUE(SameBits(m_network.correlation_test, test.correlation))
        << "test correlation after " << iteration;
    EXPECT_TRUE(SameBits(m_network.within_test, test.within))
        << "test within tolerance after " << iteration;
  }

  const Network& m_network;
  reference::PlainTrainer m_plain;
  bool m_screen_updated = false;
};

}  // namespace tarn
