#include "engine/pattern_sets.h"

#include <gtest/gtest.h>

#include "engine/small_network.h"

namespace tarn {
namespace {

class PatternSetsTest : public testing::Test {
 protected:
  Network m_network = MakeNetwork({1, 1, 1}, {kSigmoid}, 5);
};

TEST_F(PatternSetsTest, WithoutATestSetAreAllPatterns) {
  const std::vector<PatternSet> sets = PatternSets(m_network);
  ASSERT_EQ(sets.size(), 1U);
  EXPECT_EQ(sets[0].count, 5);
  EXPECT_FALSE(sets[0].is_test);
  EXPECT_EQ(sets[0].Pattern(4), 4U);
}

TEST_F(PatternSetsTest, AreTheTrainingSetAndTheTestSet) {
  m_network.train_list = {0, 2, 4};
  m_network.test_list = {1, 3};
  m_network.nTrain = 3;
  m_network.testPats = 2;
  const std::vector<PatternSet> sets = PatternSets(m_network);
  ASSERT_EQ(sets.size(), 2U);
  EXPECT_EQ(sets[0].count, 3);
  EXPECT_EQ(sets[0].Pattern(1), 2U);
  EXPECT_FALSE(sets[0].is_test);
  EXPECT_EQ(sets[1].count, 2);
  EXPECT_EQ(sets[1].Pattern(1), 3U);
  EXPECT_TRUE(sets[1].is_test);
}

TEST_F(PatternSetsTest, OfARecallAreAllPatterns) {
  HoldBack(m_network, 2);
  m_network.mode = Mode::kRecall;
  ASSERT_EQ(PatternSets(m_network).size(), 1U);
  EXPECT_EQ(PatternSets(m_network)[0].count, 5);
}

}  // namespace
}  // namespace tarn
