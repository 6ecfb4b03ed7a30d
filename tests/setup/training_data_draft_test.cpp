#include "setup/training_data_draft.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "setup/setup_fixture.h"

namespace tarn {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class TrainingDataDraftTest : public testing::Test {
 protected:
  TrainingDataDraftTest() {
    m_network.PatName = m_files.Make("inputs.txt");
    m_network.TargName = m_files.Make("targets.txt");
    m_network.PatCol = 2;
    m_network.TargCol = 3;
    m_network.testPats = 4;
    m_draft.Load(m_network);
  }

  SetupFiles m_files;
  Network m_network = MakeNetwork({2, 2, 1});
  TrainingDataDraft m_draft;
};

TEST_F(TrainingDataDraftTest, LoadsEveryField) {
  EXPECT_EQ(m_draft.input_path, m_network.PatName);
  EXPECT_EQ(m_draft.target_path, m_network.TargName);
  EXPECT_EQ(m_draft.input_column, "2");
  EXPECT_EQ(m_draft.target_column, "3");
  EXPECT_EQ(m_draft.test_cases, "4");
  EXPECT_TRUE(m_draft.normalize_inputs);
  EXPECT_TRUE(m_draft.normalize_outputs);
  EXPECT_TRUE(m_draft.check_inputs);
  EXPECT_TRUE(m_draft.check_targets);
  m_network.pat_norm = 0;
  m_network.targ_norm = -1;
  m_draft.Load(m_network);
  EXPECT_FALSE(m_draft.normalize_inputs);
  EXPECT_TRUE(m_draft.normalize_outputs);
}

TEST_F(TrainingDataDraftTest, LoadsAndStoresEveryInclusionMethod) {
  for (const int32_t code : {kTestNone, kTestBeginning, kTestEnding, kTestRandom}) {
    m_network.overMeth = code;
    m_draft.Load(m_network);
    EXPECT_EQ(m_draft.method.none, code == 0);
    EXPECT_EQ(m_draft.method.beginning, code == 1);
    EXPECT_EQ(m_draft.method.end, code == 2);
    EXPECT_EQ(m_draft.method.random, code == 3);
    m_network.overMeth = 77;
    EXPECT_TRUE(m_draft.Apply(m_network).may_close);
    EXPECT_EQ(m_network.overMeth, code);
  }
}

TEST_F(TrainingDataDraftTest, TakesTheFirstCheckedMethodAndTheEndWithoutAny) {
  m_network.overMeth = 9;
  m_draft.Load(m_network);
  (void)m_draft.Apply(m_network);
  EXPECT_EQ(m_network.overMeth, 2);
  m_draft.method = {.none = false, .beginning = true, .end = false, .random = true};
  (void)m_draft.Apply(m_network);
  EXPECT_EQ(m_network.overMeth, 3);
  m_draft.method.end = true;
  (void)m_draft.Apply(m_network);
  EXPECT_EQ(m_network.overMeth, 2);
  m_draft.method.none = true;
  (void)m_draft.Apply(m_network);
  EXPECT_EQ(m_network.overMeth, 0);
}

TEST_F(TrainingDataDraftTest, SetsNegativeTestCasesToZeroAndCloses) {
  m_draft.test_cases = "-3";
  const DraftResult result = m_draft.Apply(m_network);
  EXPECT_TRUE(result.may_close);
  ASSERT_THAT(TextsOf(result.messages), ElementsAre("Invalid number of test cases - set to ZERO"));
  EXPECT_EQ(result.messages[0].caption, "Training Data Error");
  EXPECT_EQ(result.messages[0].icon, MessageIcon::kExclamation);
  EXPECT_EQ(result.first_refused, 0);
  EXPECT_EQ(m_network.testPats, 0);
}

TEST_F(TrainingDataDraftTest, ReadsTestCasesThatAreNoNumberAs0) {
  m_draft.test_cases = "many";
  const DraftResult result = m_draft.Apply(m_network);
  EXPECT_TRUE(result.may_close);
  EXPECT_THAT(result.messages, IsEmpty());
  EXPECT_EQ(m_network.testPats, 0);
}

TEST_F(TrainingDataDraftTest, SkipsEmptyNumbers) {
  m_draft.test_cases = m_draft.input_column = m_draft.target_column = "";
  const DraftResult result = m_draft.Apply(m_network);
  EXPECT_TRUE(result.may_close);
  EXPECT_THAT(result.messages, IsEmpty());
  EXPECT_EQ(m_network.testPats, 4);
  EXPECT_EQ(m_network.PatCol, 2);
  EXPECT_EQ(m_network.TargCol, 3);
}

TEST_F(TrainingDataDraftTest, RefusesColumnsBelow1AndKeepsTheOldOnes) {
  for (const char* text : {"0", "-1", "x"}) {
    m_draft.input_column = m_draft.target_column = text;
    const DraftResult result = m_draft.Apply(m_network);
    EXPECT_FALSE(result.may_close);
    EXPECT_THAT(TextsOf(result.messages),
                ElementsAre("Invalid start column specified for inputs",
                            "Invalid start column specified for targets"));
    EXPECT_EQ(result.first_refused, 111);
    EXPECT_EQ(m_network.PatCol, 2);
    EXPECT_EQ(m_network.TargCol, 3);
  }
}

TEST_F(TrainingDataDraftTest, ReadsThirtyNineCharactersOfANumber) {
  m_draft.test_cases = m_draft.input_column = m_draft.target_column = std::string(38, '0') + "12";
  EXPECT_TRUE(m_draft.Apply(m_network).may_close);
  EXPECT_EQ(m_network.testPats, 1);
  EXPECT_EQ(m_network.PatCol, 1);
  EXPECT_EQ(m_network.TargCol, 1);
}

TEST_F(TrainingDataDraftTest, StoresTheNamesOfFilesThatOpen) {
  m_draft.input_path = m_files.Make("a.txt");
  m_draft.target_path = m_files.Make("b.txt");
  EXPECT_TRUE(m_draft.Apply(m_network).may_close);
  EXPECT_EQ(m_network.PatName, m_files.Missing("a.txt"));
  EXPECT_EQ(m_network.TargName, m_files.Missing("b.txt"));
}

TEST_F(TrainingDataDraftTest, ReportsBothFilesWhenTheyDiffer) {
  const std::string inputs = m_network.PatName;
  const std::string targets = m_network.TargName;
  m_draft.input_path = m_files.Missing("a.txt");
  m_draft.target_path = m_files.Missing("b.txt");
  const DraftResult result = m_draft.Apply(m_network);
  EXPECT_FALSE(result.may_close);
  EXPECT_THAT(TextsOf(result.messages),
              ElementsAre("Input node data file not found", "Target node data file not found"));
  EXPECT_EQ(m_network.PatName, inputs);
  EXPECT_EQ(result.first_refused, 101);
  EXPECT_EQ(m_network.TargName, targets);
}

TEST_F(TrainingDataDraftTest, ReportsOneMissingFileForBothOnce) {
  m_draft.input_path = m_draft.target_path = m_files.Missing("a.txt");
  const DraftResult result = m_draft.Apply(m_network);
  EXPECT_FALSE(result.may_close);
  EXPECT_THAT(TextsOf(result.messages), ElementsAre("Input node data file not found"));
  EXPECT_EQ(result.first_refused, 101);
}

TEST_F(TrainingDataDraftTest, ReportsAnEmptyNameAsNotFound) {
  m_draft.target_path = "";
  const DraftResult result = m_draft.Apply(m_network);
  EXPECT_FALSE(result.may_close);
  EXPECT_EQ(result.first_refused, 102);
  EXPECT_THAT(TextsOf(result.messages), ElementsAre("Target node data file not found"));
}

TEST_F(TrainingDataDraftTest, ReportsANameThatANetworkFileCannotHoldAsNotFound) {
  m_draft.input_path = m_files.Make("a\nb");
  m_draft.target_path = m_files.Missing(std::string(255, 'b'));
  const DraftResult result = m_draft.Apply(m_network);
  EXPECT_FALSE(result.may_close);
  EXPECT_THAT(TextsOf(result.messages),
              ElementsAre("Input node data file not found", "Target node data file not found"));
}

TEST_F(TrainingDataDraftTest, ShowsAllMessagesInOrderAndStoresWhatPasses) {
  m_draft.test_cases = "-1";
  m_draft.input_column = m_draft.target_column = "0";
  m_draft.normalize_inputs = false;
  m_draft.input_path = m_files.Make("a.txt");
  m_draft.target_path = m_files.Missing("b.txt");
  m_draft.method = {};
  const DraftResult result = m_draft.Apply(m_network);
  EXPECT_FALSE(result.may_close);
  EXPECT_THAT(TextsOf(result.messages), ElementsAre("Invalid number of test cases - set to ZERO",
                                                    "Invalid start column specified for inputs",
                                                    "Invalid start column specified for targets",
                                                    "Target node data file not found"));
  for (const Message& message : result.messages) {
    EXPECT_EQ(message.caption, "Training Data Error");
  }
  EXPECT_EQ(m_network.testPats, 0);
  EXPECT_EQ(m_network.pat_norm, 0);
  EXPECT_EQ(m_network.targ_norm, 1);
  EXPECT_EQ(m_network.overMeth, 2);
  EXPECT_EQ(m_network.PatName, m_files.Missing("a.txt"));
}

TEST_F(TrainingDataDraftTest, LeavesFilesThatAreNotCheckedAlone) {
  m_draft.input_path = m_draft.target_path = m_files.Missing("a.txt");
  m_draft.check_inputs = false;
  DraftResult result = m_draft.Apply(m_network);
  EXPECT_FALSE(result.may_close);
  EXPECT_THAT(TextsOf(result.messages), ElementsAre("Target node data file not found"));
  m_draft.check_targets = false;
  m_draft.input_path = "none";
  m_draft.target_path = "";
  const std::string targets = m_network.TargName;
  result = m_draft.Apply(m_network);
  EXPECT_TRUE(result.may_close);
  EXPECT_THAT(result.messages, IsEmpty());
  EXPECT_EQ(m_network.PatName, "none");
  EXPECT_EQ(m_network.TargName, targets);
}

TEST_F(TrainingDataDraftTest, TakesBothNamesFromTheHandOver) {
  const std::string path = m_files.Make("data.txt");
  m_draft.Take({path, 5});
  EXPECT_EQ(m_draft.input_column, "1");
  EXPECT_EQ(m_draft.target_column, "5");
  EXPECT_TRUE(m_draft.Apply(m_network).may_close);
  EXPECT_EQ(m_network.PatName, path);
  EXPECT_EQ(m_network.PatCol, 1);
  EXPECT_EQ(m_network.TargName, path);
  EXPECT_EQ(m_network.TargCol, 5);
}

TEST_F(TrainingDataDraftTest, TakesAHandOverWithoutTargetsAsItStands) {
  m_draft.Take({m_files.Make("data.txt"), 0});
  EXPECT_EQ(m_draft.target_column, "0");
  const DraftResult result = m_draft.Apply(m_network);
  EXPECT_THAT(TextsOf(result.messages), ElementsAre("Invalid start column specified for targets"));
  EXPECT_EQ(result.first_refused, 112);
}

}  // namespace
}  // namespace tarn
