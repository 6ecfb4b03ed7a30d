#include <cstdint>
#include <gtest/gtest.h>
#include <tuple>

#include "engine/small_network.h"
#include "engine/training_run.h"
#include "support/memory_files.h"
#include "support/plain_comparison.h"
#include "support/set_clock.h"

// Runs whose batches are long enough for several threads to share them, beside the plain
// statement of the arithmetic in every iteration.

namespace tarn {
namespace {

constexpr int32_t kTrainPatterns = 400;
constexpr int32_t kTestPatterns = 250;
constexpr int32_t kIterations = 200;

class ThreadedRuns : public testing::TestWithParam<std::tuple<size_t, int32_t, bool>> {
 protected:
  MemoryFiles m_files;
  ScopedFileLayer m_layer{m_files};
  SetClock m_clock{5000};
};

TEST_P(ThreadedRuns, HaveTheBitsOfThePlainLoopsInEveryIteration) {
  const auto [threads, group, removed] = GetParam();
  Network network = MakeNetwork({40, 60, 10}, {kTanh, kSigmoid}, kTrainPatterns + kTestPatterns);
  FillWithRandomData(network, 31);
  InitializeRandomWeights(network, 32);
  HoldBack(network, kTestPatterns);
  if (removed) RemoveConnections(network);
  network.Eta = 0.02F;
  network.Alpha = 0.8F;
  network.FastProp = 0.3F;
  network.Tolerance = 0.1F;
  network.LRC = 100;
  network.MaxIterations = kIterations;
  network.UpdateRate = 20;
  network.SaveRate = 1;
  PlainComparison comparison(network, group);
  TrainingRun run(network, m_clock, comparison, "/tmp/history", threads);
  run.SetGroupSize(group);
  ASSERT_TRUE(run.Start().ok());
  while (run.RunFor(1000) == RunState::kRunning && !HasFailure()) {
  }
  EXPECT_EQ(comparison.iterations(), kIterations);
  comparison.CompareActivations();
}

INSTANTIATE_TEST_SUITE_P(Groups, ThreadedRuns,
                         testing::Combine(testing::Values(1, 2, 3),
                                          testing::Values(kTrainPatterns / 2, kTrainPatterns,
                                                          kTrainPatterns + 3),
                                          testing::Bool()));

}  // namespace
}  // namespace tarn
