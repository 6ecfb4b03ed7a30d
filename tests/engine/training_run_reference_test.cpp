#include <cstdint>
#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <tuple>
#include <vector>

#include "engine/kernels/targets.h"
#include "engine/training_run_fixture.h"
#include "support/plain_comparison.h"

// Whole runs of several hundred iterations beside the plain statement of the arithmetic: every
// weight, weight change and figure of every iteration has its bits, on every instruction set.

namespace tarn {
namespace {

struct Shape {
  const char* name;
  std::vector<int32_t> nodes;
  std::vector<int32_t> codes;
  int32_t patterns;
  int32_t test_patterns = 0;
  bool removed = false;
  float fast_prop = 0;
  float alpha = 0.9F;
  float tolerance = 0;
  int32_t control_from = 1000000;
};

// For lists and messages of tests.
void PrintTo(const Shape& shape, std::ostream* out) {
  *out << shape.name;
}

std::vector<Shape> Shapes() {
  return {
      {"Smallest", {1, 1, 1}, {kTanh}, 5},
      {"ExclusiveOr", {2, 2, 1}, {kSigmoid}, 4},
      {.name = "Tolerance",
       .nodes = {4, 8, 3},
       .codes = {kGaussian, kTanh},
       .patterns = 31,
       .test_patterns = 7,
       .tolerance = 0.1F},
      {.name = "RemovedConnections",
       .nodes = {7, 19, 6},
       .codes = {kSigmoid},
       .patterns = 20,
       .removed = true,
       .fast_prop = 0.7F,
       .alpha = 0.5F},
      {.name = "LearnRateControl",
       .nodes = {5, 16, 2},
       .codes = {kSech, kSigmoid},
       .patterns = 24,
       .test_patterns = 5,
       .fast_prop = 0.2F,
       .control_from = 50},
      {.name = "Mixture",
       .nodes = {5, 17, 9, 33, 2},
       .codes = {kGaussian, kSigmoid, kSech, kTanh},
       .patterns = 15,
       .test_patterns = 2,
       .tolerance = 0.2F},
      {.name = "TenLayers",
       .nodes = {3, 2, 5, 1, 4, 18, 6, 2, 3, 2},
       .codes = {kTanh},
       .patterns = 12,
       .removed = true,
       .alpha = 0.0F},
  };
}

enum class Group : int32_t { kOne, kTwo, kSeven, kHalf, kAll, kAllAndThree };

int32_t Patterns(Group group, int32_t train_patterns) {
  switch (group) {
    case Group::kOne:
      return 1;
    case Group::kTwo:
      return 2;
    case Group::kSeven:
      return 7;
    case Group::kHalf:
      return (train_patterns + 1) / 2;
    case Group::kAll:
      return train_patterns;
    case Group::kAllAndThree:
      return train_patterns + 3;
  }
  return 0;
}

class WholeRuns : public testing::TestWithParam<std::tuple<Shape, Group>> {
 protected:
  static constexpr int32_t kIterations = 300;

  static Network Make() {
    const Shape& shape = std::get<0>(GetParam());
    Network network = MakeNetwork(shape.nodes, shape.codes, shape.patterns);
    FillWithRandomData(network, 21);
    InitializeRandomWeights(network, 22);
    network.Eta = 0.4F;
    network.Alpha = shape.alpha;
    network.FastProp = shape.fast_prop;
    network.Tolerance = shape.tolerance;
    network.LRC = shape.control_from;
    network.MaxIterations = kIterations;
    network.UpdateRate = 40;
    if (shape.test_patterns > 0) HoldBack(network, shape.test_patterns);
    if (shape.removed) RemoveConnections(network);
    return network;
  }

  static int32_t GroupSize(const Network& network) {
    return Patterns(std::get<1>(GetParam()), network.nTrain);
  }

  MemoryFiles m_files;
  ScopedFileLayer m_layer{m_files};
  SetClock m_clock{5000};
};

TEST_P(WholeRuns, HaveTheBitsOfThePlainLoopsInEveryIteration) {
  for (const int64_t target : KernelTargets()) {
    SCOPED_TRACE(hwy::TargetName(target));
    const ScopedTarget scoped(target);
    Network network = Make();
    network.SaveRate = 1;
    PlainComparison comparison(network, GroupSize(network));
    TrainingRun run(network, m_clock, comparison, "/tmp/history");
    run.SetGroupSize(GroupSize(network));
    ASSERT_TRUE(run.Start().ok());
    while (run.RunFor(1000) == RunState::kRunning && !HasFailure()) {
    }
    ASSERT_EQ(comparison.iterations(), kIterations);
    comparison.CompareActivations();

    Network undisturbed = Make();
    TrainingObserver nobody;
    TrainingRun other(undisturbed, m_clock, nobody, "/tmp/history");
    other.SetGroupSize(GroupSize(undisturbed));
    ASSERT_TRUE(other.Start().ok());
    ASSERT_EQ(other.RunFor(1000), RunState::kComplete);
    ASSERT_EQ(WeightBits(undisturbed), WeightBits(network));
  }
}

std::string NameOf(const testing::TestParamInfo<std::tuple<Shape, Group>>& instance) {
  static constexpr const char* kGroups[] = {"One", "Two", "Seven", "Half", "All", "AllAndThree"};
  const auto& [shape, group] = instance.param;
  return std::string(shape.name) + "InGroupsOf" + kGroups[static_cast<size_t>(group)];
}

INSTANTIATE_TEST_SUITE_P(Shapes, WholeRuns,
                         testing::Combine(testing::ValuesIn(Shapes()),
                                          testing::Values(Group::kOne, Group::kTwo, Group::kSeven,
                                                          Group::kHalf, Group::kAll,
                                                          Group::kAllAndThree)),
                         NameOf);

}  // namespace
}  // namespace tarn
