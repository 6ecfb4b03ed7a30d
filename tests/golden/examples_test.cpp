#include <gtest/gtest.h>

#include "engine/network.h"
#include "golden/scenario_run.h"
#include "scenarios/scenario.h"
#include "support/set_clock.h"

// What the examples promise their reader. Seeds start the weights; the test set of iris is
// stored in its network file.

namespace tarn {
namespace {

struct Promise {
  float within_train = 0;  // per cent of the outputs
  float correlation_train = 0;
  float correlation_test = 0;  // 0: no test set
};

void ExpectPromiseKept(const char* example, uint32_t seed, const Promise& promise) {
  Scenario scenario = GoldenScenario(example);
  scenario.iterations = 0;  // the network's own
  scenario.seed = seed;
  const SetClock clock;
  ScenarioRun training(scenario, clock);
  EXPECT_TRUE(training.run().Start().ok());
  EXPECT_EQ(training.run().RunFor(kNoLimitMs), RunState::kComplete);
  const Network& network = training.network();
  EXPECT_GE(network.within_train, promise.within_train) << example << " with seed " << seed;
  EXPECT_GT(network.correlation_train, promise.correlation_train) << example << " " << seed;
  if (promise.correlation_test > 0) {
    EXPECT_GT(network.correlation_test, promise.correlation_test) << example << " " << seed;
  }
}

constexpr uint32_t kSeeds = 10;

TEST(Examples, IrisTellsItsFlowersApartFromEverySeed) {
  for (uint32_t seed = 1; seed <= kSeeds; ++seed) {
    ExpectPromiseKept("iris", seed, {97.0F, 0.95F, 0.95F});
  }
}

TEST(Examples, XorIsLearnedFromEverySeed) {
  for (uint32_t seed = 1; seed <= kSeeds; ++seed) {
    ExpectPromiseKept("xor", seed, {100.0F, 0.99F, 0.0F});
  }
}

TEST(Examples, SurfaceIsRecoveredFromItsNoise) {
  ExpectPromiseKept("surface", 1, {90.0F, 0.98F, 0.98F});
}

}  // namespace
}  // namespace tarn
