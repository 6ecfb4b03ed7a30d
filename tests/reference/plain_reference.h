#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "engine/network.h"

// A second, plain statement of the training arithmetic in nested vectors and loops, written for
// being read and not for speed. The engine is held against it bit for bit; it shares with the
// engine only the network record that it starts from, and with the plain loops the exponential.

namespace tarn::reference {

using Row = std::vector<float>;
using Table = std::vector<Row>;

struct PlainLayer {
  int32_t code = 0;
  Table weights;  // node, then source node; the bias last
  Table changes;
  Table masks;
  Table gradients;    // likewise, the bias last
  Table activations;  // pattern, then node
  Row derivatives;
  Row deltas;
};

struct Figures {
  float mean_squared_error = 0;
  float rms = 0;
  float correlation = 0;
  float within = 0;
};

class PlainTrainer {
 public:
  // Copies weights, changes, masks, pattern data, lists and parameters; the counter goes on
  // from network.iteration. Needs at least one training pattern.
  explicit PlainTrainer(const Network& network);

  // Patterns per update in place of the network's; may be more than the list has.
  void SetGroup(size_t patterns) { m_group = patterns; }
  // Whole weight-update groups until one of them has completed a pass over the training list.
  void RunIteration();
  // The test set's figures, as a screen update computes them. No test patterns: all 0.
  Figures TestFigures();

  const std::vector<PlainLayer>& layers() const { return m_layers; }
  const Figures& train() const { return m_train; }
  float eta() const { return m_eta; }
  int32_t iteration() const { return m_iteration; }

 private:
  bool RunGroup();
  void Forward(size_t pattern);
  void Deltas(size_t pattern);
  void Gradients(size_t pattern);
  void Update();
  void Monitor(size_t pattern);
  void KeepFigures();
  void ControlLearnRate();

  std::vector<PlainLayer> m_layers;
  Table m_targets;
  std::vector<size_t> m_train_list;
  std::vector<size_t> m_test_list;
  size_t m_group = 0;
  size_t m_cursor = 0;
  float m_eta = 0;
  float m_eta_min = 0;
  float m_eta_max = 0;
  float m_alpha = 0;
  float m_fast_prop = 0;
  float m_tolerance = 0;  // in the units of the targets; 0: not monitored
  bool m_fully_connected = true;
  int32_t m_control_from = 0;
  int32_t m_iteration = 0;

  float m_squared_error = 0;
  double m_sum_output = 0;
  double m_sum_target = 0;
  double m_sum_product = 0;
  double m_sum_output_squares = 0;
  double m_sum_target_squares = 0;
  int64_t m_hits = 0;
  Figures m_train;
  float m_current_error = 0;
};

}  // namespace tarn::reference
