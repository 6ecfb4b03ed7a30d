#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vector>

#include "golden/golden_files.h"
#include "golden/scenario_run.h"
#include "netfile/autosave_store.h"
#include "scenarios/scenario.h"

namespace tarn {
namespace {

class GoldenRun : public testing::TestWithParam<Scenario> {};

TEST_P(GoldenRun, LeavesTheFilesAndTheBitsThatAreKept) {
  const std::string& name = GetParam().name;
  const Results results = TrainInOneGo(GetParam());
  ExpectGoldenFile(name + ".net", results.network);
  ExpectGoldenFile(name + ".err", results.error_history);
  ExpectGoldenFile(name + ".out", results.outputs);
  if (results.store) ExpectGoldenFile(name + ".store", *results.store);
  ExpectGoldenHash(name + ".weights", results.weights_hash);
  ExpectGoldenHash(name + ".history", results.history_hash);
}

// Slices of no length: each ends at the first place where the run looks at the clock.
TEST_P(GoldenRun, IsTheSameInSlices) {
  const TickingClock clock;
  ScenarioRun training(GetParam(), clock);
  EXPECT_TRUE(training.run().Start().ok());
  int slices = 1;
  while (training.run().RunFor(0) == RunState::kRunning) ++slices;
  EXPECT_EQ(training.run().state(), RunState::kComplete);
  EXPECT_GT(slices, 1);
  EXPECT_EQ(training.Collect(), TrainInOneGo(GetParam()));
}

TEST_P(GoldenRun, IsTheSameWhenHaltedAfterEverySlice) {
  const TickingClock clock;
  ScenarioRun training(GetParam(), clock);
  TrainingRun& run = training.run();
  EXPECT_TRUE(run.Start().ok());
  while (run.RunFor(0) == RunState::kRunning) {
    run.Halt();
    const uint64_t halted = WeightsHash(training.network());
    EXPECT_EQ(run.RunFor(kNoLimitMs), RunState::kHalted);
    EXPECT_EQ(WeightsHash(training.network()), halted);
    run.Resume();
  }
  EXPECT_EQ(training.Collect(), TrainInOneGo(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Scenarios, GoldenRun, testing::ValuesIn(GoldenScenarios()),
                         [](const auto& instance) { return instance.param.name; });

TEST(GoldenScenarios, LeaveOneSetOfFilesEachAndNothingElseIsKept) {
  std::set<std::string> files;
  std::set<std::string> hashes;
  for (const Scenario& scenario : GoldenScenarios()) {
    EXPECT_TRUE(hashes.insert(scenario.name + ".weights").second) << scenario.name;
    hashes.insert(scenario.name + ".history");
    for (const char* kind : {".net", ".err", ".out"}) files.insert(scenario.name + kind);
    if (GoldenFileNames().count(scenario.name + ".store") > 0) {
      files.insert(scenario.name + ".store");
    }
  }
  for (const char* name : {"recall_targets", "recall_inputs_alone", "recall_removed"}) {
    files.insert(std::string(name) + ".out");
    hashes.insert(std::string(name) + ".activations");
  }
  for (const char* name : {"iris", "removed", "deep", "recall", "unnamed_recall", "mixed_removed",
                           "after_run", "boundaries", "limits", "limits_named", "limits_recall",
                           "long_names", "one_pattern", "constant", "diverged"}) {
    for (const char* kind :
         {"information", "weights", "outputs", "statistics", "tolerance", "threshold"}) {
      files.insert(std::string("report_") + name + "_" + kind + ".txt");
    }
  }
  for (const char* name :
       {"inputs_alone_outputs", "unnamed_alone_outputs", "upper_threshold", "lower_threshold",
        "limits_alone_outputs", "long_names_alone_outputs", "diverged_divergence"}) {
    files.insert(std::string("report_") + name + ".txt");
  }
  const std::vector<std::string> of_patterns = {"scatter", "outputs", "error", "inputs"};
  const std::vector<std::string> of_analyses = {"interrogator", "hidden", "contour"};
  const std::vector<std::string> of_histories = {"rms",           "test_rms",  "learn_rate",
                                                 "correlation",   "tolerance", "test_correlation",
                                                 "test_tolerance"};
  const auto add_graphs = [&files](const std::string& name, const std::vector<std::string>& kinds) {
    for (const std::string& kind : kinds) {
      for (const char* ending : {".csv", ".svg"}) files.insert("graph_" + name + kind + ending);
    }
  };
  for (const std::string example : {"iris_", "surface_"}) {
    add_graphs(example, of_histories);
    for (const char* mode : {"test_", "training_", "recall_"}) {
      add_graphs(example + mode, of_patterns);
      add_graphs(example + mode, of_analyses);
    }
  }
  add_graphs("alone_", {"outputs"});
  hashes.insert({"wide.history", "wide.weights"});
  EXPECT_EQ(GoldenFileNames(), files);
  EXPECT_EQ(GoldenHashNames(), hashes);
}

TEST(GoldenScenarios, LoadWithoutANotice) {
  for (const Scenario& scenario : GoldenScenarios()) {
    const LoadedScenario loaded(scenario);
    EXPECT_EQ(loaded.notices(), Notices()) << scenario.name;
  }
}

// A snapshot of the last iteration is the network that is saved at the end.
TEST(AutoSaveRun, RestoresTheLastSnapshotAsTheSavedNetwork) {
  const SetClock clock;
  ScenarioRun training(GoldenScenario("autosave"), clock);
  EXPECT_TRUE(training.run().Start().ok());
  ASSERT_EQ(training.run().RunFor(kNoLimitMs), RunState::kComplete);
  const std::string restored = training.loaded() / "restored.net";
  const RestoreResult result = RestoreSnapshot(training.loaded() / "store", restored, "15");
  ASSERT_TRUE(result.status.ok()) << result.status.message();
  EXPECT_EQ(result.iteration, 15);
  EXPECT_EQ(ReadFile(restored), training.Collect().network);
}

}  // namespace
}  // namespace tarn
