#pragma once

#include <cstdint>
#include <hwy/highway.h>
#include <hwy/targets.h>
#include <string>
#include <vector>

namespace tarn {

// Every instruction set that this machine has, from the widest to the scalar one.
inline std::vector<int64_t> KernelTargets() {
  constexpr int64_t kBuilt = HWY_SCALAR | HWY_SSSE3 | HWY_SSE4 | HWY_AVX2 | HWY_AVX3;
  hwy::SetSupportedTargetsForTest(0);
  std::vector<int64_t> targets;
  for (int64_t left = (hwy::SupportedTargets() | HWY_BASELINE_SCALAR) & kBuilt; left != 0;
       left &= left - 1) {
    targets.push_back(left & -left);
  }
  return targets;
}

// Makes the kernels use one of them while it lives.
class ScopedTarget {
 public:
  explicit ScopedTarget(int64_t target) {
    hwy::SetSupportedTargetsForTest(target);
    hwy::GetChosenTarget().Update(hwy::SupportedTargets());
  }
  ~ScopedTarget() {
    hwy::SetSupportedTargetsForTest(0);
    hwy::GetChosenTarget().Update(hwy::SupportedTargets());
  }
  ScopedTarget(const ScopedTarget&) = delete;
  ScopedTarget& operator=(const ScopedTarget&) = delete;
};

}  // namespace tarn
