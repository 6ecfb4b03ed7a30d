#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>
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
  if (std::memcmp(a.data(), b.data(), sizeof(a)) == 0) return 0;
  uint64_t count = 0;
  for (size_t i = 0; i < a.size(); ++i) count += Same(a[i], b[i]) ? 0 : 1;
  return count;
}

struct Difference {
  uint64_t outputs = 0;
  uint64_t derivatives = 0;
};

class TransferExhaustive : public testing::TestWithParam<int32_t> {};

TEST_P(TransferExhaustive, EveryTargetGivesThePlainFloatsForEveryArgument) {
  const std::vector<int64_t> targets = KernelTargets();
  std::vector<Difference> differences(targets.size());
  std::vector<Floats> tables(5);
  Floats& x = tables[0];
  Floats& y = tables[1];
  Floats& derivative = tables[2];
  Floats& got = tables[3];
  Floats& got_derivative = tables[4];
  for (uint32_t chunk = 0; chunk < kChunks; ++chunk) {
    for (uint32_t i = 0; i < kChunk; ++i) x[i] = std::bit_cast<float>((chunk << kChunkBits) + i);
    reference::ApplyTransfer(GetParam(), x, y, derivative);
    for (size_t t = 0; t < targets.size(); ++t) {
      const ScopedTarget scoped(targets[t]);
      kernels::Transfer(GetParam(), x, got, got_derivative);
      differences[t].outputs += Differences(y, got);
      differences[t].derivatives += Differences(derivative, got_derivative);
    }
  }
  for (size_t t = 0; t < targets.size(); ++t) {
    EXPECT_EQ(differences[t].outputs, 0U) << hwy::TargetName(targets[t]);
    EXPECT_EQ(differences[t].derivatives, 0U) << hwy::TargetName(targets[t]);
  }
}

INSTANTIATE_TEST_SUITE_P(Codes, TransferExhaustive, testing::Values(0, 1, 2, 3));

}  // namespace
}  // namespace tarn
