#include "data/data_source.h"

#include <gtest/gtest.h>
#include <limits>

namespace tarn {
namespace {

Network MakeNetwork() {
  Network network;
  network.PatName = "train.in";
  network.PatCol = 2;
  network.TargName = "train.targ";
  network.TargCol = 3;
  network.RecallPatName = "recall.in";
  network.RecallPatCol = 4;
  network.RecallTargName = "recall.targ";
  network.RecallTargCol = 5;
  return network;
}

TEST(DataSource, IsTheTrainingDataInTraining) {
  const DataSource source = SourceOf(MakeNetwork());
  EXPECT_EQ(source.input_name, "train.in");
  EXPECT_EQ(source.input_column, 2);
  EXPECT_EQ(source.target_name, "train.targ");
  EXPECT_EQ(source.target_column, 3);
  EXPECT_TRUE(source.targets);
}

TEST(DataSource, IsTheRecallDataInRecall) {
  Network network = MakeNetwork();
  network.mode = Mode::kRecall;
  network.RecallTargets = true;
  const DataSource source = SourceOf(network);
  EXPECT_EQ(source.input_name, "recall.in");
  EXPECT_EQ(source.input_column, 4);
  EXPECT_EQ(source.target_name, "recall.targ");
  EXPECT_EQ(source.target_column, 5);
  EXPECT_TRUE(source.targets);
}

TEST(DataSource, HasNoTargetsInRecallWhenTheyAreNotSet) {
  Network network = MakeNetwork();
  network.mode = Mode::kRecall;
  EXPECT_FALSE(SourceOf(network).targets);
}

TEST(DataSource, TellsWhetherInputsAndTargetsStandInOneFile) {
  Network network = MakeNetwork();
  EXPECT_FALSE(SourceOf(network).SameFile());
  network.TargName = network.PatName;
  EXPECT_TRUE(SourceOf(network).SameFile());
  network.mode = Mode::kRecall;
  network.RecallTargName = network.RecallPatName;
  EXPECT_FALSE(SourceOf(network).SameFile());
}

TEST(DataSource, AnswersForAnInputColumnBelowOne) {
  for (int32_t column : {0, -1, std::numeric_limits<int32_t>::min()}) {
    Network network = MakeNetwork();
    network.PatCol = column;
    EXPECT_EQ(CheckColumns(SourceOf(network)).message(),
              "Invalid start column specified for inputs");
  }
}

TEST(DataSource, AnswersForATargetColumnBelowOne) {
  for (int32_t column : {0, -1, std::numeric_limits<int32_t>::min()}) {
    Network network = MakeNetwork();
    network.TargCol = column;
    EXPECT_EQ(CheckColumns(SourceOf(network)).message(),
              "Invalid start column specified for targets");
  }
}

TEST(DataSource, TakesAnyTargetColumnWhenThereAreNoTargets) {
  Network network = MakeNetwork();
  network.mode = Mode::kRecall;
  network.RecallTargCol = 0;
  EXPECT_TRUE(CheckColumns(SourceOf(network)).ok());
  network.RecallTargets = true;
  EXPECT_EQ(CheckColumns(SourceOf(network)).message(),
            "Invalid start column specified for targets");
}

}  // namespace
}  // namespace tarn
