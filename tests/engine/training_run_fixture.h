#pragma once

#include <algorithm>
#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

#include "engine/monitors.h"
#include "engine/small_network.h"
#include "engine/training_run.h"
#include "reference/plain_loops.h"
#include "support/memory_files.h"
#include "support/set_clock.h"

namespace tarn {

// Writes down what the run tells, in order.
class RecordingObserver : public TrainingObserver {
 public:
  void ShowStatus(std::string_view text) override { events.emplace_back(text); }
  void ScreenUpdated() override {
    events.emplace_back("screen");
    if (on_screen) on_screen();
  }
  void LearnRateControlStarted() override {
    events.emplace_back("control");
    if (on_control) on_control();
  }
  bool CanStoreSnapshot() override { return can_store; }
  bool StoreSnapshot() override {
    events.emplace_back("snapshot");
    if (on_snapshot) on_snapshot();
    return stores;
  }
  void HistoryFailed() override { events.emplace_back("history failed"); }

  int Count(std::string_view event) const {
    return static_cast<int>(std::count(events.begin(), events.end(), event));
  }

  std::vector<std::string> events;
  std::function<void()> on_screen;
  std::function<void()> on_control;
  std::function<void()> on_snapshot;
  bool can_store = true;
  bool stores = true;
};

// The rules of a training run, group by group and without slices.
class PlainRun {
 public:
  explicit PlainRun(Network& network, int32_t cursor = 0) : m_network(network), m_cursor(cursor) {}

  // True when the group has ended a pass over the training list.
  bool Group(int32_t patterns) {
    reference::ClearGradients(m_network, m_gradients);
    bool complete = false;
    for (int32_t k = 0; k < patterns; ++k) {
      if (m_cursor == m_network.nTrain) m_cursor = 0;
      const int32_t pattern = m_network.train_list[static_cast<size_t>(m_cursor)];
      const auto row = static_cast<size_t>(pattern);
      reference::ForwardWithDerivatives(m_network, pattern);
      reference::Backpropagate(m_network, pattern);
      reference::AccumulateGradients(m_network, m_gradients, pattern);
      m_sums.Add(m_network.targets.Row(row), OutputLayer(m_network).activations.Row(row), 0);
      if (m_cursor == m_network.nTrain - 1) {
        pass = m_sums;
        m_sums = {};
        complete = true;
      }
      ++m_cursor;
    }
    reference::UpdateWeights(m_network, m_gradients);
    return complete;
  }

  float Rms() const {
    const auto n = static_cast<float>(m_network.nTrain * OutputLayer(m_network).nUnits);
    return std::sqrt(pass.squared_error / n);
  }

  MonitorSums<double> pass;  // of the last whole pass

 private:
  Network& m_network;
  reference::GradientSums m_gradients;
  int32_t m_cursor;
  MonitorSums<double> m_sums;
};

inline std::vector<uint32_t> WeightBits(const Network& network) {
  std::vector<uint32_t> bits;
  for (const Layer& layer : network.layers) {
    for (const float weight : layer.weights.All()) bits.push_back(Bits(weight));
  }
  return bits;
}

class TrainingRunFixture : public testing::Test {
 protected:
  static constexpr const char* kHistory = "/tmp/history";

  static Network Make(const std::vector<int32_t>& nodes, int32_t patterns) {
    Network network = MakeNetwork(nodes, {kSigmoid, kTanh}, patterns);
    FillWithRandomData(network, 7);
    InitializeRandomWeights(network, 1);
    network.Eta = 0.3F;
    network.Alpha = 0.5F;
    network.MaxIterations = 10;
    return network;
  }

  static RunState RunOut(TrainingRun& run) {
    while (run.RunFor(1000) == RunState::kRunning) {
    }
    return run.state();
  }

  MemoryFiles m_files;
  ScopedFileLayer m_layer{m_files};
  SetClock m_clock{5000};
  RecordingObserver m_observer;
};

// A network so wide that with a standing clock RunFor(0) does exactly one piece of work: what
// lies between two points where a slice may end. A pattern in a group of its own takes three:
// its forward pass, its backward pass, the update; a counted iteration and its screen update
// are a fourth.
class SteppedRun : public TrainingRunFixture {
 protected:
  static constexpr int32_t kPatterns = 3;

  SteppedRun() : m_network(Make({400, 250, 1}, kPatterns)), m_plain(m_network) {
    m_network.WeightRate = m_plain.WeightRate = 1;
  }

  static void Step(TrainingRun& run, int pieces) {
    for (int i = 0; i < pieces; ++i) run.RunFor(0);
  }

  Network m_network;
  Network m_plain;  // the same, to be trained plainly
};

}  // namespace tarn
