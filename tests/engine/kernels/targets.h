#pragma once

#include <cstdint>
#include <gtest/gtest.h>
#include <hwy/highway.h>
#include <hwy/targets.h>
#include <string>
#include <vector>

#include "engine/kernels/kernels.h"

namespace tarn {

// Every instruction set that the kernels have and this machine has, from the widest to the scalar
// or emulated one.
inline std::vector<int64_t> KernelTargets() {
  constexpr int64_t kAnyMachine = HWY_SCALAR | HWY_EMU128;
  hwy::SetSupportedTargetsForTest(0);
  std::vector<int64_t> targets;
  for (int64_t left = (hwy::SupportedTargets() | kAnyMachine) & kernels::CompiledTargets();
       left != 0; left &= left - 1) {
    targets.push_back(left & -left);
  }
  EXPECT_FALSE(targets.empty());
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
