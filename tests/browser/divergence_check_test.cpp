#include "browser/divergence_check.h"

#include <cmath>

#include "browser/report_test.h"

namespace tarn {
namespace {

using DivergenceCheck = ReportTest;

Network WithOutputs(const std::vector<std::vector<float>>& outputs) {
  const auto nodes = static_cast<int32_t>(outputs.front().size());
  Network network = MakeNetwork({1, 1, nodes}, {kSigmoid}, static_cast<int32_t>(outputs.size()));
  for (size_t p = 0; p < outputs.size(); ++p) {
    std::ranges::copy(outputs[p], OutputLayer(network).activations.Row(p).begin());
  }
  return network;
}

TEST_F(DivergenceCheck, FindsNodesPinnedAtOneEnd) {
  const Network network = WithOutputs({{0.00005F, 0.5F, 0.99995F, 0.00005F, 0.0F, 1.0F},
                                       {0.00005F, 0.0F, 0.99995F, 0.99995F, 0.00005F, 0.99999F}});
  EXPECT_EQ(DivergedNodes(network), (std::vector<int32_t>{1, 3, 5, 6}));
  const Message message = DivergenceMessage(network);
  EXPECT_EQ(message.text, "Diverged Output Nodes - 1,3,5,6");
  EXPECT_EQ(message.caption, "Training Divergences Found");
  EXPECT_EQ(message.icon, MessageIcon::kExclamation);
}

TEST_F(DivergenceCheck, TellsThatThereIsNone) {
  const Message message = DivergenceMessage(WithOutputs({{0.2F, 0.7F}}));
  EXPECT_EQ(message.text, "Network Training OK - No Divergences Found");
  EXPECT_EQ(message.caption, "No Training Divergences Found");
  EXPECT_EQ(message.icon, MessageIcon::kNone);
}

TEST_F(DivergenceCheck, OnePatternOffTheEndIsEnough) {
  std::vector<std::vector<float>> outputs(100, {0.00005F});
  EXPECT_EQ(DivergedNodes(WithOutputs(outputs)), std::vector<int32_t>{1});
  outputs[57] = {0.3F};
  EXPECT_TRUE(DivergedNodes(WithOutputs(outputs)).empty());
}

TEST_F(DivergenceCheck, TheLimitsThemselvesAreNotBeyond) {
  const float low = 0.0001F;
  const float high = 1.0F - 0.0001F;
  const Network network =
      WithOutputs({{low, std::nextafter(low, 0.0F), high, std::nextafter(high, 1.0F), NAN}});
  EXPECT_EQ(DivergedNodes(network), (std::vector<int32_t>{2, 4}));
}

TEST_F(DivergenceCheck, LooksAtTestPatternsToo) {
  Network network = WithOutputs({{0.0F}, {0.0F}, {0.5F}});
  HoldBack(network, 1);
  EXPECT_TRUE(DivergedNodes(network).empty());
}

TEST_F(DivergenceCheck, ListsNodesUntilTheTextPassesSixtyCharacters) {
  const Network network = WithOutputs({std::vector<float>(40, 1.0F)});
  EXPECT_EQ(DivergedNodes(network).size(), 40U);
  // 24 characters, nine numbers of two and then of three with their commas.
  const std::string text = DivergenceMessage(network).text;
  EXPECT_EQ(text, "Diverged Output Nodes - 1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16");
  EXPECT_GT(text.size(), 60U);
  EXPECT_LE(text.substr(0, text.rfind(',')).size(), 60U);
}

}  // namespace
}  // namespace tarn
