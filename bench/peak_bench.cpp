// What one thread can do at most, on the widest instruction set:
//   peak/multiply-plus-add   multiplications and additions in registers, each rounded by itself
//                            as in training, in pairs a second
//   peak/sweep/N             N weights and weight changes read and written, as every update does

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstddef>
#include <cstdint>
#include <hwy/aligned_allocator.h>
#include <set>
#include <string>

#include "workloads.h"

// The chains are arrays of vectors, as the tiles of the kernels.
#define HWY_DISABLED_TARGETS (HWY_SVE | HWY_SVE2 | HWY_SVE_256 | HWY_SVE2_128 | HWY_RVV)

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "peak_bench.cpp"
#include <hwy/foreach_target.h>
// The include above comes first.
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace tarn::bench::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

// Returns the pairs that it has computed; the values stay near 1.
size_t Pairs(size_t rounds, float* sum) {
  const hn::ScalableTag<float> d;
  constexpr size_t kChains = 12;  // hide the latency of both operations
  hn::Vec<hn::ScalableTag<float>> x[kChains];
  for (size_t k = 0; k < kChains; ++k) x[k] = hn::Set(d, 1.0F + static_cast<float>(k));
  const auto factor = hn::Set(d, 0.5F);
  const auto term = hn::Set(d, 0.5F);
  for (size_t r = 0; r < rounds; ++r) {
#pragma GCC unroll 12
    for (size_t k = 0; k < kChains; ++k) x[k] = hn::Add(hn::Mul(x[k], factor), term);
  }
  auto all = x[0];
  for (size_t k = 1; k < kChains; ++k) all = hn::Add(all, x[k]);
  *sum = hn::GetLane(all);
  return rounds * kChains * hn::Lanes(d);
}

void Sweep(float* HWY_RESTRICT weights, float* HWY_RESTRICT changes, size_t count) {
  const hn::ScalableTag<float> d;
  const auto alpha = hn::Set(d, -1.0F);
  for (size_t i = 0; i < count; i += hn::Lanes(d)) {
    const auto change = hn::Mul(alpha, hn::Load(d, changes + i));
    hn::Store(change, d, changes + i);
    hn::Store(hn::Add(hn::Load(d, weights + i), change), d, weights + i);
  }
}

}  // namespace tarn::bench::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace tarn::bench {
namespace {

HWY_EXPORT(Pairs);
HWY_EXPORT(Sweep);

void Peak(benchmark::State& state) {
  constexpr size_t kRounds = 100000;
  size_t pairs = 0;
  for (auto _ : state) {
    float sum = 0;
    pairs += HWY_DYNAMIC_DISPATCH(Pairs)(kRounds, &sum);
    benchmark::DoNotOptimize(sum);
  }
  state.counters["connections"] =
      benchmark::Counter(static_cast<double>(pairs), benchmark::Counter::kIsRate);
}

void SweepPeak(benchmark::State& state, int64_t weights) {
  const auto count = static_cast<size_t>(weights);
  const auto make = [&] {
    constexpr size_t kVector = 64;  // of any machine; the last one is whole
    auto floats = hwy::AllocateAligned<float>(count + kVector);
    std::fill_n(floats.get(), count + kVector, 1.0F);
    return floats;
  };
  const auto first = make();
  const auto second = make();
  for (auto _ : state) {
    HWY_DYNAMIC_DISPATCH(Sweep)(first.get(), second.get(), count);
    benchmark::ClobberMemory();
  }
  state.counters["connections"] = benchmark::Counter(
      static_cast<double>(state.iterations() * weights), benchmark::Counter::kIsRate);
}

bool Register() {
  benchmark::RegisterBenchmark("peak/multiply-plus-add", Peak)->UseRealTime();
  std::set<int64_t> sizes;
  for (const Workload& workload : kWorkloads) sizes.insert(workload.Connections());
  for (const int32_t n : kNodeCounts) sizes.insert(Workload{n, n, kNodesOutputs, 0}.Connections());
  for (const int64_t weights : sizes) {
    const std::string name = "peak/sweep/" + std::to_string(weights);
    benchmark::RegisterBenchmark(name.c_str(), [=](auto& state) {
      SweepPeak(state, weights);
    })->UseRealTime();
  }
  return true;
}

const bool kRegistered = Register();

}  // namespace
}  // namespace tarn::bench
#endif  // HWY_ONCE
