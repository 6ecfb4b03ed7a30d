#include <array>
#include <atomic>
#include <bit>
#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

#include "engine/kernels/kernels.h"
#include "engine/kernels/targets.h"
#include "reference/transfer.h"

// Every float there is, through every transfer function of every instruction set: outputs and
// derivatives are those of the plain loop.

namespace tarn {
namespace {

constexpr uint32_t kChunkBits = 16;
constexpr uint32_t kChunk = 1U << kChunkBits;
constexpr uint32_t kChunks = 1U << (32 - kChunkBits);

using Floats = std::array<float, kChunk>;

bool Same(float a, float b) {
  return std::bit_cast<uint32_t>(a) == std::bit_cast<uint32_t>(b) ||
         (std::isnan(a) && std::isnan(b));
}

uint64_t Differences(const Floats& a, const Floats& b) {
  uint64_t count = 0;
  for (size_t i = 0; i < a.size(); ++i) count += Same(a[i], b[i]) ? 0 : 1;
  return count;
}

struct Counts {
  std::atomic<uint64_t> outputs = 0;
  std::atomic<uint64_t> derivatives = 0;
};

// All threads use one target at a time: it is a setting of the program.
void Compare(int32_t code, Counts& counts) {
  std::atomic<uint32_t> next = 0;
  const auto work = [&] {
    std::vector<Floats> tables(5);
    auto& [x, y, derivative, got, got_derivative] =
        *std::bit_cast<std::array<Floats, 5>*>(tables.data());
    for (uint32_t chunk = next++; chunk < kChunks; chunk = next++) {
      for (uint32_t i = 0; i < kChunk; ++i) {
        x[i] = std::bit_cast<float>((chunk << kChunkBits) + i);
      }
      reference::ApplyTransfer(code, x, y, derivative);
      kernels::Transfer(code, x, got, got_derivative);
      counts.outputs += Differences(y, got);
      counts.derivatives += Differences(derivative, got_derivative);
    }
  };
  std::thread other(work);
  work();
  other.join();
}

class TransferExhaustive : public testing::TestWithParam<int32_t> {};

TEST_P(TransferExhaustive, EveryTargetGivesThePlainFloatsForEveryArgument) {
  for (const int64_t target : KernelTargets()) {
    const ScopedTarget scoped(target);
    Counts counts;
    Compare(GetParam(), counts);
    EXPECT_EQ(counts.outputs, 0U) << hwy::TargetName(target);
    EXPECT_EQ(counts.derivatives, 0U) << hwy::TargetName(target);
  }
}

INSTANTIATE_TEST_SUITE_P(Codes, TransferExhaustive, testing::Values(0, 1, 2, 3));

}  // namespace
}  // namespace tarn
