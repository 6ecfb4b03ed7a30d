#pragma once

#include <benchmark/benchmark.h>
#include <cstddef>
#include <cstdint>

#include "engine/network.h"

namespace tarn::bench {

// Reports connections x patterns per second for so many passes over all patterns.
void CountConnections(benchmark::State& state, const Network& network, int64_t passes);

// Whole iterations of the program's own training run, its WeightRate as the network says. For
// benchmarks with UseManualTime.
void MeasureTraining(benchmark::State& state, Network& network, size_t threads);

// The same in slices of kSliceMs, as a window asks for them; reports the longest in milliseconds.
inline constexpr int64_t kSliceMs = 10;
void MeasureSlices(benchmark::State& state, Network& network, size_t threads);

}  // namespace tarn::bench
