#pragma once

#include <algorithm>
#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "engine/small_network.h"
#include "netgraph/analysis.h"
#include "reference/plain_loops.h"
#include "support/set_clock.h"

namespace tarn {

// Analyses of a small network of random weights and patterns.
class AnalysisTest : public testing::Test {
 protected:
  AnalysisTest() {
    InitializeRandomWeights(m_network, 3);
    for (size_t l = 1; l < 4; ++l) {
      for (float& weight : m_network.layers[l].weights.All()) weight *= 5;
    }
    FillWithRandomData(m_network, 4);
  }

  static void Complete(Analysis& analysis) {
    const SetClock clock;
    ASSERT_TRUE(analysis.RunFor(1, clock));
  }

  // The texts that are shown when every slice is as short as can be.
  static std::vector<std::string> Progress(Analysis& analysis) {
    const SetClock clock;
    std::vector<std::string> texts;
    for (bool done = false; !done;) {
      done = analysis.RunFor(0, clock);
      if (texts.empty() || texts.back() != analysis.progress()) {
        texts.push_back(analysis.progress());
      }
    }
    return texts;
  }

  // The outputs of an input vector by the plain loops.
  std::vector<float> Outputs(const std::vector<float>& inputs) {
    Network plain = m_network;
    std::ranges::copy(inputs, plain.layers[0].activations.Row(0).begin());
    reference::Forward(plain, 0);
    const auto outputs = OutputLayer(plain).activations.Row(0);
    return {outputs.begin(), outputs.end()};
  }
  std::vector<float> Inputs(size_t pattern) const {
    const auto inputs = m_network.layers[0].activations.Row(pattern);
    return {inputs.begin(), inputs.end()};
  }

  Network m_network = MakeNetwork({3, 5, 4, 2}, {kTanh, kGaussian, kSigmoid}, 20);
};

}  // namespace tarn
