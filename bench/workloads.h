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
};

inline constexpr std::array<Workload, 5> kWorkloads = {
    {{2, 2, 1, 4}, {4, 8, 3, 150}, {16, 32, 8, 1000}, {64, 128, 10, 1797}, {784, 300, 10, 2000}}};

// Sigmoid layers of the given sizes with random weights and data, every pattern a training
// pattern. The learn rate is so small that the weights stay near their start, however long a
// benchmark runs. Throws std::runtime_error when memory is short.
Network MakeNetwork(const std::vector<int32_t>& nodes, int32_t patterns);
Network MakeNetwork(const Workload& workload);

}  // namespace tarn::bench
