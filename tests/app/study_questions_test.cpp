#include "app/study_questions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "support/fake_dialogs.h"

namespace tarn {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// A network of so many input and output nodes; the questions need no more of it.
class StudyQuestions : public testing::Test {
 protected:
  Network& Shape(int32_t inputs, int32_t outputs) {
    m_network.nLayers = 3;
    m_network.layers[0].nUnits = inputs;
    m_network.layers[1].nUnits = 2;
    m_network.layers[2].nUnits = outputs;
    return m_network;
  }

  FakeDialogs m_dialogs;
  Network m_network;
};

TEST_F(StudyQuestions, BringANumberIntoTheRangeOfTheNodes) {
  m_dialogs.values = {"0", "-7", "3", "99", "x", "2nd"};
  for (const size_t node : {0U, 0U, 2U, 4U, 0U, 1U}) {
    EXPECT_EQ(AskForNode(m_dialogs, OutputNodePrompt(), 5), node);
  }
}

TEST_F(StudyQuestions, TakeAllOutputsOrOne) {
  m_dialogs.answers = {Answer::kYes, Answer::kNo, Answer::kNo};
  m_dialogs.values = {"2", std::nullopt};
  Shape(2, 3);
  EXPECT_THAT(*AskForOutputs(m_dialogs, kAllOutputErrors, m_network), ElementsAre(0, 1, 2));
  EXPECT_THAT(*AskForOutputs(m_dialogs, kAllOutputErrors, m_network), ElementsAre(1));
  EXPECT_EQ(AskForOutputs(m_dialogs, kAllOutputErrors, m_network), std::nullopt);
}

TEST_F(StudyQuestions, RefuseContoursOfOneInput) {
  EXPECT_EQ(AskForContourNodes(m_dialogs, Shape(1, 1)), std::nullopt);
  EXPECT_THAT(m_dialogs.told,
              ElementsAre("Tarn Contour Plot|Requires at least two inputs - aborting!"));
  EXPECT_THAT(m_dialogs.icons, ElementsAre(MessageIcon::kExclamation));
}

TEST_F(StudyQuestions, AskForTheOutputAloneOfTwoInputs) {
  m_dialogs.values = {"3"};
  const auto nodes = AskForContourNodes(m_dialogs, Shape(2, 4));
  ASSERT_TRUE(nodes);
  EXPECT_EQ(nodes->first_input, 0U);
  EXPECT_EQ(nodes->second_input, 1U);
  EXPECT_EQ(nodes->output, 2U);
  EXPECT_THAT(m_dialogs.entries, ElementsAre("Select Output Node|Output node number to plot:|1"));
}

TEST_F(StudyQuestions, AskForBothInputsAndOfferTheNextOne) {
  m_dialogs.values = {"2", "9"};
  const auto nodes = AskForContourNodes(m_dialogs, Shape(4, 1));
  ASSERT_TRUE(nodes);
  EXPECT_EQ(nodes->first_input, 1U);
  EXPECT_EQ(nodes->second_input, 3U);
  EXPECT_EQ(nodes->output, 0U);
  EXPECT_THAT(m_dialogs.entries,
              ElementsAre("Select First Input Node|First input node to investigate:|1",
                          "Select Second Input Node|Second input node to investigate:|3"));
}

TEST_F(StudyQuestions, RefuseTheSameInputTwice) {
  m_dialogs.values = {"3", "3"};
  EXPECT_EQ(AskForContourNodes(m_dialogs, Shape(4, 2)), std::nullopt);
  EXPECT_THAT(m_dialogs.told,
              ElementsAre("Tarn Contour Plot|Input node selection error - aborting!"));
}

TEST_F(StudyQuestions, EndSilentlyWithAnEmptyAnswerOrNone) {
  Shape(4, 2);
  m_dialogs.values = {""};
  EXPECT_EQ(AskForContourNodes(m_dialogs, m_network), std::nullopt);
  m_dialogs.values = {"1", ""};
  EXPECT_EQ(AskForContourNodes(m_dialogs, m_network), std::nullopt);
  m_dialogs.values = {std::nullopt};
  EXPECT_EQ(AskForContourNodes(m_dialogs, m_network), std::nullopt);
  m_dialogs.values = {"1", "2", std::nullopt};
  EXPECT_EQ(AskForContourNodes(m_dialogs, m_network), std::nullopt);
  EXPECT_THAT(m_dialogs.told, IsEmpty());
}

TEST_F(StudyQuestions, OfferTheNetworksTolerance) {
  m_network.Tolerance = 0.1F;
  m_dialogs.values = {"0.1", "2.5", "x", std::nullopt};
  EXPECT_EQ(AskForTolerance(m_dialogs, m_network), 0.1F);
  EXPECT_EQ(AskForTolerance(m_dialogs, m_network), 2.5F);
  EXPECT_EQ(AskForTolerance(m_dialogs, m_network), 0.0F);
  EXPECT_EQ(AskForTolerance(m_dialogs, m_network), std::nullopt);
  EXPECT_EQ(m_dialogs.entries[0], "Select Tolerance|Tolerance Value:|0.1");
}

TEST_F(StudyQuestions, TakeTheToleranceOfferedAsItIs) {
  m_network.Tolerance = 0.12345678F;
  m_dialogs.values = {"0.123457"};
  EXPECT_EQ(AskForTolerance(m_dialogs, m_network), 0.12345678F);
}

TEST_F(StudyQuestions, TakeThresholdsThatAreEntered) {
  m_dialogs.values = {"0.75", "-1e2", "", "0", "", ""};
  const auto both = AskForThresholds(m_dialogs);
  ASSERT_TRUE(both);
  EXPECT_EQ(both->upper, 0.75F);
  EXPECT_EQ(both->lower, -100.0F);
  const auto lower = AskForThresholds(m_dialogs);
  ASSERT_TRUE(lower);
  EXPECT_EQ(lower->upper, std::nullopt);
  EXPECT_EQ(lower->lower, 0.0F);
  const auto neither = AskForThresholds(m_dialogs);
  ASSERT_TRUE(neither);
  EXPECT_FALSE(neither->Given());
}

}  // namespace
}  // namespace tarn
