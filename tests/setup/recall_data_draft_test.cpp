#include "setup/recall_data_draft.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "setup/setup_fixture.h"

namespace tarn {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class RecallDataDraftTest : public testing::Test {
 protected:
  RecallDataDraftTest() {
    m_draft.Load(m_network);
    m_draft.input_path = m_inputs;
  }

  SetupFiles m_files;
  const std::string m_inputs = m_files.Make("inputs.txt");
  const std::string m_targets = m_files.Make("targets.txt");
  Network m_network = MakeNetwork({2, 2, 1});
  RecallDataDraft m_draft;
};

TEST_F(RecallDataDraftTest, LoadsEveryField) {
  m_network.RecallPatName = "a";
  m_network.RecallPatCol = 2;
  m_network.RecallTargName = "b";
  m_network.RecallTargCol = 3;
  m_draft.Load(m_network);
  EXPECT_EQ(m_draft.input_path, "a");
  EXPECT_EQ(m_draft.input_column, "2");
  EXPECT_EQ(m_draft.target_path, "b");
  EXPECT_EQ(m_draft.target_column, "3");
}

TEST_F(RecallDataDraftTest, AcceptsInputsWithoutTargets) {
  m_network.RecallTargets = true;
  m_network.RecallTargName = "old";
  m_draft.input_column = "4";
  const DraftResult result = m_draft.Apply(m_network);
  EXPECT_TRUE(result.may_close);
  EXPECT_THAT(result.messages, IsEmpty());
  EXPECT_EQ(m_network.RecallPatName, m_inputs);
  EXPECT_EQ(m_network.RecallPatCol, 4);
  EXPECT_EQ(m_network.RecallTargName, "");
  EXPECT_FALSE(m_network.RecallTargets);
}

TEST_F(RecallDataDraftTest, AcceptsTargetsWithAColumn) {
  m_draft.target_path = m_targets;
  m_draft.target_column = "3";
  const DraftResult result = m_draft.Apply(m_network);
  EXPECT_TRUE(result.may_close);
  EXPECT_THAT(result.messages, IsEmpty());
  EXPECT_EQ(m_network.RecallTargName, m_targets);
  EXPECT_EQ(m_network.RecallTargCol, 3);
  EXPECT_TRUE(m_network.RecallTargets);
}

TEST_F(RecallDataDraftTest, RefusesAnInputColumnBelow1ButNotAnEmptyOne) {
  for (const char* text : {"0", "-1", "x"}) {
    m_draft.input_column = text;
    const DraftResult result = m_draft.Apply(m_network);
    EXPECT_FALSE(result.may_close);
    ASSERT_THAT(TextsOf(result.messages), ElementsAre("Invalid start column specified for inputs"));
    EXPECT_EQ(result.messages[0].caption, "Recall Data Error");
    EXPECT_EQ(result.messages[0].icon, MessageIcon::kExclamation);
    EXPECT_EQ(result.first_refused, 111);
    EXPECT_EQ(m_network.RecallPatCol, 1);
  }
  m_draft.input_column = "";
  EXPECT_TRUE(m_draft.Apply(m_network).may_close);
  EXPECT_EQ(m_network.RecallPatCol, 1);
}

TEST_F(RecallDataDraftTest, RefusesTargetsWithoutAColumn) {
  m_draft.target_path = m_targets;
  for (const char* text : {"", "0", "-2", "x"}) {
    m_draft.target_column = text;
    const DraftResult result = m_draft.Apply(m_network);
    EXPECT_FALSE(result.may_close);
    EXPECT_THAT(TextsOf(result.messages),
                ElementsAre("Invalid start column specified for targets"));
    EXPECT_EQ(result.first_refused, 112);
    EXPECT_EQ(m_network.RecallTargCol, 0);
    EXPECT_FALSE(m_network.RecallTargets);
  }
}

TEST_F(RecallDataDraftTest, KeepsAnEarlierTargetColumnWhenTheFieldHoldsNone) {
  m_network.RecallTargCol = 6;
  m_draft.target_path = m_targets;
  for (const char* text : {"", "0", "-2"}) {
    m_draft.target_column = text;
    EXPECT_TRUE(m_draft.Apply(m_network).may_close);
    EXPECT_EQ(m_network.RecallTargCol, 6);
    EXPECT_TRUE(m_network.RecallTargets);
  }
}

TEST_F(RecallDataDraftTest, ReadsThirtyNineCharactersOfAColumn) {
  m_draft.input_column = m_draft.target_column = std::string(38, '0') + "23";
  EXPECT_TRUE(m_draft.Apply(m_network).may_close);
  EXPECT_EQ(m_network.RecallPatCol, 2);
  EXPECT_EQ(m_network.RecallTargCol, 2);
}

TEST_F(RecallDataDraftTest, ReportsMissingFilesOneByOneEvenWhenTheyAreTheSame) {
  m_network.RecallPatName = "old";
  m_draft.input_path = m_draft.target_path = m_files.Missing("a.txt");
  m_draft.input_column = "0";
  m_draft.target_column = "2";
  const DraftResult result = m_draft.Apply(m_network);
  EXPECT_FALSE(result.may_close);
  EXPECT_THAT(TextsOf(result.messages),
              ElementsAre("Invalid start column specified for inputs",
                          "Input node data file not found", "Target node data file not found"));
  EXPECT_EQ(m_network.RecallPatName, "old");
  EXPECT_EQ(m_network.RecallTargName, "");
  EXPECT_EQ(m_network.RecallTargCol, 2);
}

TEST_F(RecallDataDraftTest, ClearsTheTargetsWhenOnlyTheTargetFileIsMissing) {
  m_network.RecallTargets = true;
  m_draft.target_path = m_files.Missing("a.txt");
  m_draft.target_column = "2";
  EXPECT_EQ(m_draft.Apply(m_network).first_refused, 102);
  EXPECT_EQ(m_network.RecallPatName, m_inputs);
  EXPECT_FALSE(m_network.RecallTargets);
}

TEST_F(RecallDataDraftTest, LeavesTheTargetsFlagWhenTheInputsAreMissing) {
  m_network.RecallTargets = true;
  m_draft.input_path = "";
  const DraftResult result = m_draft.Apply(m_network);
  EXPECT_FALSE(result.may_close);
  EXPECT_THAT(TextsOf(result.messages), ElementsAre("Input node data file not found"));
  EXPECT_EQ(result.first_refused, 101);
  EXPECT_TRUE(m_network.RecallTargets);
}

TEST_F(RecallDataDraftTest, TakesInputsAndTargetsFromTheHandOver) {
  m_draft.Take({m_targets, 5});
  EXPECT_TRUE(m_draft.Apply(m_network).may_close);
  EXPECT_EQ(m_network.RecallPatName, m_targets);
  EXPECT_EQ(m_network.RecallPatCol, 1);
  EXPECT_EQ(m_network.RecallTargName, m_targets);
  EXPECT_EQ(m_network.RecallTargCol, 5);
}

TEST_F(RecallDataDraftTest, TakesNoTargetsFromAHandOverWithoutAny) {
  m_draft.target_path = "old";
  m_draft.target_column = "7";
  m_draft.Take({m_targets, 0});
  EXPECT_EQ(m_draft.input_path, m_targets);
  EXPECT_EQ(m_draft.input_column, "1");
  EXPECT_EQ(m_draft.target_path, "old");
  EXPECT_EQ(m_draft.target_column, "7");
}

TEST_F(RecallDataDraftTest, TakesNoInputsFromAHandOverWithoutAPath) {
  m_draft.input_column = "3";
  m_draft.target_path = "old";
  m_draft.Take({"", 4});
  EXPECT_EQ(m_draft.input_path, m_inputs);
  EXPECT_EQ(m_draft.input_column, "3");
  EXPECT_EQ(m_draft.target_path, "");
  EXPECT_EQ(m_draft.target_column, "4");
}

}  // namespace
}  // namespace tarn
