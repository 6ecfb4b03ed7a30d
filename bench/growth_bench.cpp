#include <array>
#include <benchmark/benchmark.h>
#include <cstdint>
#include <fmt/format.h>
#include <string>
#include <vector>

#include "measure.h"
#include "workloads.h"

// How the cost of an iteration grows, on one thread:
//   growth/patterns/GROUP/N   16-32-8 with N patterns
//   growth/nodes/GROUP/N      N-N-10 with 300 patterns
//   growth/layers/GROUP/N     N layers of 64 nodes, 1000 patterns
// GROUP: the patterns of a weight update, 1 or all.

namespace tarn::bench {
namespace {

constexpr std::array<int32_t, 5> kPatternCounts = {100, 1000, 10000, 100000, 1000000};

void Add(const char* what, int32_t n, const std::vector<int32_t>& nodes, int32_t patterns) {
  for (const bool all : {false, true}) {
    const std::string name = fmt::format("growth/{}/{}/{}", what, all ? "all" : "1", n);
    benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
      Network network = MakeNetwork(nodes, patterns);
      network.WeightRate = all ? 0 : 1;
      MeasureTraining(state, network, 1);
    })->UseManualTime();
  }
}

bool Register() {
  for (const int32_t n : kPatternCounts) Add("patterns", n, {16, 32, 8}, n);
  for (const int32_t n : kNodeCounts) Add("nodes", n, {n, n, kNodesOutputs}, 300);
  for (int32_t n = 3; n <= kMaxLayers; ++n) {
    Add("layers", n, std::vector<int32_t>(static_cast<size_t>(n), 64), 1000);
  }
  return true;
}

const bool kRegistered = Register();

}  // namespace
}  // namespace tarn::bench
