#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "engine/network.h"

namespace tarn::bench {

// A three-layer network of the benchmarks and the number of its patterns.
struct Workload {
  int32_t inputs;
  int32_t hidden;
  int32_t outputs;
  int32_t patterns;

  std::string Name() const;  // "4-8-3"
  int64_t Connections() const {
    return (int64_t{inputs} + 1) * hidden + (int64_t{hidden} + 1) * outputs;
  }
};

inline constexpr std::array<Workload, 5> kWorkloads = {
    {{2, 2, 1, 4}, {4, 8, 3, 150}, {16, 32, 8, 1000}, {64, 128, 10, 1797}, {784, 300, 10, 2000}}};

// The networks N-N-10 whose cost is measured against N.
inline constexpr std::array<int32_t, 8> kNodeCounts = {10, 20, 50, 100, 200, 500, 1000, 2000};
inline constexpr int32_t kNodesOutputs = 10;

// Sigmoid layers of the given sizes with random weights and data, every pattern a training
// pattern. The learn rate is so small that the weights stay near their start, however long a
// benchmark runs. Throws std::runtime_error when memory is short.
Network MakeNetwork(const std::vector<int32_t>& nodes, int32_t patterns);
Network MakeNetwork(const Workload& workload);

}  // namespace tarn::bench
