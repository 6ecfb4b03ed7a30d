#pragma once

#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

#include "base/file_layer.h"
#include "base/status.h"
#include "data/pattern_files.h"
#include "engine/network.h"
#include "support/memory_files.h"

namespace tarn {

// Files in memory, and a network in training whose data they are: inputs in "in.dat" from
// column 1 on, targets in "targ.dat" from column 1 on, two hidden nodes.
class DataTest : public testing::Test {
 protected:
  static Network MakeNetwork(int32_t inputs, int32_t outputs) {
    Network network;
    network.nLayers = 3;
    network.layers[0].nUnits = inputs;
    network.layers[1].nUnits = 2;
    network.layers[2].nUnits = outputs;
    network.PatName = "in.dat";
    network.TargName = "targ.dat";
    network.file_name = "test.net";
    return network;
  }
  // The same for recall, without targets.
  static Network MakeRecall(int32_t inputs, int32_t outputs) {
    Network network = MakeNetwork(inputs, outputs);
    network.mode = Mode::kRecall;
    network.PatName = network.TargName = "not to be read";
    network.RecallPatName = "in.dat";
    return network;
  }

  Status Count(const Network& network) { return CountPatterns(network, m_count, m_notices); }
  // Counts, allocates and reads.
  Status Load(Network& network) {
    if (Status counted = Count(network); !counted.ok()) return counted;
    network.nPats = m_count.records;
    if (Status allocated = AllocateArrays(network); !allocated.ok()) return allocated;
    return ReadPatterns(network, m_count.buffer_size);
  }

  static std::vector<float> Row(const Matrix& matrix, size_t row) {
    return {matrix.Row(row).begin(), matrix.Row(row).end()};
  }
  static std::vector<float> Inputs(const Network& network, size_t pattern) {
    return Row(network.layers[0].activations, pattern);
  }
  static std::vector<float> Targets(const Network& network, size_t pattern) {
    return Row(network.targets, pattern);
  }

  MemoryFiles m_files;
  PatternCount m_count;
  Notices m_notices;

 private:
  ScopedFileLayer m_layer{m_files};
};

}  // namespace tarn
