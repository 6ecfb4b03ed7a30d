// The arithmetic peak of one thread: multiplications and additions in registers, each rounded by
// itself as in training, on the widest instruction set: peak/multiply-plus-add, in pairs a second.

#include <benchmark/benchmark.h>
#include <cstddef>

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

}  // namespace tarn::bench::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace tarn::bench {
namespace {

HWY_EXPORT(Pairs);

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

BENCHMARK(Peak)->Name("peak/multiply-plus-add")->UseRealTime();

}  // namespace
}  // namespace tarn::bench
#endif  // HWY_ONCE
