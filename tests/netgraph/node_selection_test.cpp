#include "netgraph/node_selection.h"

#include <gtest/gtest.h>

#include "netgraph/messages.h"

namespace tarn {
namespace {

Network WithNodes(int32_t inputs, int32_t outputs) {
  Network network;
  network.nLayers = 3;
  network.layers[0].nUnits = inputs;
  network.layers[1].nUnits = 1;
  network.layers[2].nUnits = outputs;
  return network;
}

TEST(NodeSelection, AsksWithItsTexts) {
  EXPECT_EQ(kAllOutputsCompared.caption, "Output/Target Comparison Plots");
  EXPECT_EQ(kAllOutputErrors.caption, "Output/Target Error Plots");
  for (const PlotQuestion& question :
       {kAllOutputsCompared, kAllOutputErrors, kAllOutputsInterrogated}) {
    EXPECT_EQ(question.text, "Plot all output nodes?");
  }
  EXPECT_EQ(kAllInputs.caption, "Input Node Plots");
  EXPECT_EQ(kAllInputs.text, "Plot all input nodes?");
  EXPECT_EQ(kContinueInputs.caption, "Tarn");
  EXPECT_EQ(kContinueInputs.text, "Continue plotting inputs?");
  EXPECT_EQ(kNetGraphCaption, "NetGraph");
}

TEST(NodeSelection, PromptsForANode) {
  const auto expect = [](const NodePrompt& prompt, const char* caption, const char* text,
                         const char* initial) {
    EXPECT_EQ(prompt.caption, caption);
    EXPECT_EQ(prompt.prompt, text);
    EXPECT_EQ(prompt.initial, initial);
  };
  expect(OutputNodePrompt(), "Select Output Node", "Output node number to plot:", "1");
  expect(InputNodePrompt(), "Select Input Node", "Input node number to plot:", "1");
  expect(FirstInputPrompt(), "Select First Input Node", "First input node to investigate:", "1");
  expect(SecondInputPrompt(0), "Select Second Input Node",
         "Second input node to investigate:", "2");
  expect(SecondInputPrompt(6), "Select Second Input Node",
         "Second input node to investigate:", "8");
}

TEST(NodeSelection, TakesTheNearestNode) {
  EXPECT_EQ(ChooseNode("1", 3), 0U);
  EXPECT_EQ(ChooseNode("3", 3), 2U);
  EXPECT_EQ(ChooseNode("4", 3), 2U);
  EXPECT_EQ(ChooseNode("99999999999", 3), 2U);
  EXPECT_EQ(ChooseNode("0", 3), 0U);
  EXPECT_EQ(ChooseNode("-7", 3), 0U);
  EXPECT_EQ(ChooseNode("2nd", 3), 1U);
  EXPECT_EQ(ChooseNode("none", 3), 0U);
}

TEST(NodeSelection, FindsNothingToCompareInAHiddenLayerOfOneNode) {
  Network network = WithNodes(2, 1);
  const std::optional<Message> message = CheckHiddenLayer(network, 1);
  ASSERT_TRUE(message);
  EXPECT_EQ(message->caption, "NetGraph Error");
  EXPECT_EQ(message->text, "Hidden layer 1 has a single node: there is nothing to compare");
  network.layers[1].nUnits = 2;
  EXPECT_FALSE(CheckHiddenLayer(network, 1));
}

TEST(ContourSelection, AsksOnlyForWhatCanBeChosen) {
  EXPECT_FALSE(AsksForInputs(WithNodes(2, 1)));
  EXPECT_TRUE(AsksForInputs(WithNodes(3, 1)));
  EXPECT_FALSE(AsksForOutput(WithNodes(2, 1)));
  EXPECT_TRUE(AsksForOutput(WithNodes(2, 2)));
}

TEST(ContourSelection, NeedsTwoInputs) {
  const std::optional<Message> message = CheckContourNetwork(WithNodes(1, 1));
  ASSERT_TRUE(message);
  EXPECT_EQ(message->caption, "Tarn Contour Plot");
  EXPECT_EQ(message->text, "Requires at least two inputs - aborting!");
  EXPECT_EQ(message->icon, MessageIcon::kExclamation);
  EXPECT_FALSE(CheckContourNetwork(WithNodes(2, 1)));
}

TEST(ContourSelection, NeedsTwoDifferentInputs) {
  const std::optional<Message> message = CheckContourNodes({2, 2, 0});
  ASSERT_TRUE(message);
  EXPECT_EQ(message->caption, "Tarn Contour Plot");
  EXPECT_EQ(message->text, "Input node selection error - aborting!");
  EXPECT_FALSE(CheckContourNodes({1, 2, 0}));
}

}  // namespace
}  // namespace tarn
