#include "setup/option_prompts.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "setup/messages.h"

namespace tarn {
namespace {

constexpr int32_t kLearnRate = 106;
constexpr int32_t kMomentum = 109;
constexpr int32_t kFastProp = 110;
constexpr int32_t kIterations = 111;
constexpr int32_t kAutoSave = 113;
constexpr int32_t kScreenUpdate = 114;
constexpr int32_t kPatterns = 142;
constexpr int32_t kTolerance = 147;

class OptionPromptsTest : public testing::Test {
 protected:
  OptionPromptsTest() {
    m_network.Eta = 0.5F;
    m_network.MaxIterations = 1000;
    m_network.WeightRate = 7;
  }

  std::string Text(int32_t command) { return OptionText(*FindOptionPrompt(command), m_network); }
  // What the user is told; empty when the value is stored.
  std::string Apply(int32_t command, const std::string& text) {
    const std::optional<Message> message = ApplyOption(*FindOptionPrompt(command), text, m_network);
    return message ? message->text : "";
  }

  Network m_network;
};

TEST_F(OptionPromptsTest, AskWithTheirTexts) {
  struct Expected {
    int32_t command;
    const char* caption;
    const char* prompt;
    const char* message;
  };
  const std::vector<Expected> all = {
      {106, "Set Learn Rate", "Eta (between 0. and 1.):", "Learn Rate Eta Invalid"},
      {107, "Set LRC Min Learn Rate", "Eta Min (between 0. and 1.):", "LRC Min Eta Invalid"},
      {108, "Set LRC Max Learn Rate", "Eta Max (between 0. and 1.):", "LRC Max Eta Invalid"},
      {109, "Set Momentum Factor", "Alpha (between 0. and 1.):", "Momentum Factor Invalid"},
      {110, "Set Fast-Prop Coefficient",
       "Coefficient (between 0. and 3.):", "Fast-Prop Coef Invalid"},
      {142, "Set Patterns per Iteration",
       "Process ? Patterns per Iteration:", "Pats per Iterations Invalid"},
      {111, "Set Max Iterations", "Maximum Iterations:", "Iteration Value Invalid"},
      {113, "Set AutoSave Rate", "AutoSave Iteration Interval:", "AutoSave Rate Invalid"},
      {114, "Set Screen Update Rate",
       "Screen Update Iteration Interval:", "Screen Update Rate Invalid"},
      {147, "Set Tolerance", "Tolerance Monitor Value:", "Tolerance Value Invalid"}};
  ASSERT_EQ(OptionPrompts().size(), all.size());
  for (size_t i = 0; i < all.size(); ++i) {
    const OptionPrompt& prompt = OptionPrompts()[i];
    EXPECT_EQ(prompt.command, all[i].command);
    EXPECT_EQ(prompt.caption, all[i].caption);
    EXPECT_EQ(prompt.prompt, all[i].prompt);
    EXPECT_EQ(prompt.message, all[i].message);
    EXPECT_EQ(prompt.message_caption,
              prompt.command == kTolerance ? "Tolerance Monitors" : "Training Parameter Error");
    EXPECT_EQ(Apply(prompt.command, "nothing"), all[i].message);
  }
}

TEST_F(OptionPromptsTest, OfferTheValueAtHand) {
  EXPECT_EQ(Text(kLearnRate), "0.500000");
  EXPECT_EQ(Text(kIterations), "1000");
  EXPECT_EQ(Text(kPatterns), "7");
  EXPECT_EQ(Text(kTolerance), "0.000000");
}

TEST_F(OptionPromptsTest, StoreWhatIsInRange) {
  EXPECT_EQ(Apply(kLearnRate, "0"), "");
  EXPECT_EQ(m_network.Eta, 0.0F);
  EXPECT_EQ(Apply(kLearnRate, " 1 "), "");
  EXPECT_EQ(m_network.Eta, 1.0F);
  EXPECT_EQ(Apply(kMomentum, "0.25"), "");
  EXPECT_EQ(m_network.Alpha, 0.25F);
  EXPECT_EQ(Apply(kFastProp, "3"), "");
  EXPECT_EQ(m_network.FastProp, 3.0F);
  EXPECT_EQ(Apply(kPatterns, "0"), "");
  EXPECT_EQ(m_network.WeightRate, 0);
  EXPECT_EQ(Apply(kIterations, "2147483647"), "");
  EXPECT_EQ(m_network.MaxIterations, 2147483647);
  EXPECT_EQ(Apply(kAutoSave, "0"), "");
  EXPECT_EQ(Apply(kScreenUpdate, "1"), "");
  EXPECT_EQ(Apply(kTolerance, "12.5"), "");
  EXPECT_EQ(m_network.Tolerance, 12.5F);
}

TEST_F(OptionPromptsTest, RefuseWhatIsOutOfRangeAndKeepTheOldValue) {
  for (const char* text : {"-0.001", "1.001", "", "half", "0.5x", "1e99"}) {
    EXPECT_EQ(Apply(kLearnRate, text), kLearnRateInvalid) << text;
    EXPECT_EQ(m_network.Eta, 0.5F);
  }
  EXPECT_EQ(Apply(kFastProp, "3.1"), kFastPropInvalid);
  for (const char* text : {"0", "-1", "1.5", "99999999999"}) {
    EXPECT_EQ(Apply(kIterations, text), kIterationsInvalid) << text;
    EXPECT_EQ(m_network.MaxIterations, 1000);
  }
  EXPECT_EQ(Apply(kPatterns, "-1"), kPatternsInvalid);
  EXPECT_EQ(m_network.WeightRate, 7);
  EXPECT_EQ(Apply(kScreenUpdate, "0"), kScreenUpdateInvalid);
  EXPECT_EQ(Apply(kAutoSave, "-1"), kAutoSaveInvalid);
  EXPECT_EQ(Apply(kTolerance, "-1"), kToleranceInvalid);
}

}  // namespace
}  // namespace tarn
