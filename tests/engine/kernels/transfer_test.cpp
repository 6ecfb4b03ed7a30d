#include "reference/transfer.h"

#include <cmath>
#include <cstddef>
#include <gtest/gtest.h>
#include <limits>
#include <vector>

#include "engine/kernels/kernels.h"
#include "engine/kernels/targets.h"
#include "engine/small_network.h"

namespace tarn {
namespace {

constexpr float kGuard = 123.25F;

// Values of every size and kind, over and over.
std::vector<float> Arguments(size_t count) {
  const float infinity = std::numeric_limits<float>::infinity();
  const std::vector<float> special = {0.0F,   -0.0F,  1e-30F, -1e-42F, 0.3F,     -0.7F,    1.5F,
                                      -3.25F, 10.0F,  -17.0F, 88.7F,   88.8F,    -103.9F,  -104.1F,
                                      300.0F, -1e10F, 3e38F,  -3e38F,  infinity, -infinity};
  std::vector<float> x(count);
  for (size_t i = 0; i < count; ++i) {
    x[i] = special[i % special.size()] * (1.0F + 0.01F * static_cast<float>(i / special.size()));
  }
  return x;
}

TEST(TransferKernel, GivesTheBitsOfThePlainLoopAndTouchesNothingElse) {
  for (const int64_t target : KernelTargets()) {
    const ScopedTarget scoped(target);
    const size_t lanes = kernels::CurrentShape().lanes;
    for (const size_t count : {size_t{1}, size_t{3}, size_t{7}, lanes - 1, lanes, lanes + 1,
                               4 * lanes / 3, 8 * lanes + 2, size_t{45}}) {
      for (size_t offset = 0; offset < lanes; ++offset) {
        for (int32_t code = 0; code < 4; ++code) {
          std::vector<float> x = Arguments(count + offset);
          const std::span<const float> nets = std::span(x).subspan(offset);
          std::vector<float> y(count), derivative(count);
          reference::ApplyTransfer(code, nets, y, derivative);
          std::vector<float> got(offset + count + lanes, kGuard);
          std::vector<float> got_derivative = got;
          std::vector<float> got_alone = got;
          kernels::Transfer(code, nets, std::span(got).subspan(offset, count),
                            std::span(got_derivative).subspan(offset, count));
          kernels::Transfer(code, nets, std::span(got_alone).subspan(offset, count), {});
          for (size_t i = 0; i < got.size(); ++i) {
            const bool inside = i >= offset && i < offset + count;
            const float want = inside ? y[i - offset] : kGuard;
            const float want_derivative = inside ? derivative[i - offset] : kGuard;
            ASSERT_EQ(Bits(got[i]), Bits(want)) << target << ", " << code << ", " << i;
            ASSERT_EQ(Bits(got_alone[i]), Bits(want)) << target << ", " << code << ", " << i;
            ASSERT_EQ(Bits(got_derivative[i]), Bits(want_derivative)) << target << ", " << code;
          }
        }
      }
    }
  }
}

TEST(TransferKernel, LeavesTheSpansOfAnUnknownCodeAlone) {
  for (const int64_t target : KernelTargets()) {
    const ScopedTarget scoped(target);
    const std::vector<float> x(21, 0.5F);
    std::vector<float> y(21, kGuard), derivative(21, kGuard);
    for (const int32_t code : {-1, 4}) kernels::Transfer(code, x, y, derivative);
    EXPECT_EQ(y, std::vector<float>(21, kGuard));
    EXPECT_EQ(derivative, std::vector<float>(21, kGuard));
  }
}

TEST(TransferKernel, GivesANanForANanOnly) {
  for (const int64_t target : KernelTargets()) {
    const ScopedTarget scoped(target);
    const std::vector<float> x(19, std::numeric_limits<float>::quiet_NaN());
    for (int32_t code = 0; code < 4; ++code) {
      std::vector<float> y(19), derivative(19);
      kernels::Transfer(code, x, y, derivative);
      for (size_t i = 0; i < y.size(); ++i) {
        EXPECT_TRUE(std::isnan(y[i])) << target << ", " << code;
        EXPECT_TRUE(std::isnan(derivative[i])) << target << ", " << code;
      }
    }
  }
}

}  // namespace
}  // namespace tarn
