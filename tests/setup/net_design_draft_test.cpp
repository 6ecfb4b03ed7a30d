#include "setup/net_design_draft.h"

#include <fmt/printf.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "setup/setup_fixture.h"

namespace tarn {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kLayerCountText[] = "Set number of network layers between 3 and 10";

NetDesignDraft Loaded(const Network& network) {
  NetDesignDraft draft;
  draft.Load(network);
  return draft;
}

TEST(NetDesignDraft, LoadsEveryFieldAndLeavesMissingRowsEmpty) {
  Network network = MakeNetwork({4, 8, 6, 3});
  network.NetName = "iris";
  const NetDesignDraft draft = Loaded(network);
  EXPECT_EQ(draft.name, "iris");
  EXPECT_EQ(draft.layer_count, "4");
  EXPECT_EQ(draft.input_nodes, "4");
  EXPECT_EQ(draft.output_nodes, "3");
  EXPECT_THAT(draft.hidden_nodes, ElementsAre("8", "6", "", "", "", "", "", ""));
}

TEST(NetDesignDraft, LoadsCodesAndEditFlagsOfExistingLayersAndClearsTheRest) {
  Network network = MakeNetwork({4, 8, 3});
  for (Layer& layer : network.layers) layer.TransFunc = kSech;
  network.connections_edited.fill(true);
  NetDesignDraft draft;
  draft.transfer.fill(kTanh);
  draft.Load(network);
  EXPECT_THAT(draft.transfer, ElementsAre(0, 3, 3, 0, 0, 0, 0, 0, 0, 0));
  EXPECT_THAT(draft.connections_edited,
              ElementsAre(false, true, true, false, false, false, false, false, false, false));
}

TEST(NetDesignDraft, AppliesUnchangedWithoutAMessage) {
  Network network = MakeNetwork({4, 8, 6, 3});
  network.layers[2].TransFunc = kGaussian;
  network.connections_edited[2] = true;
  const DraftResult result = Loaded(network).Apply(network);
  EXPECT_TRUE(result.may_close);
  EXPECT_THAT(result.messages, IsEmpty());
  EXPECT_EQ(result.first_refused, 0);
  EXPECT_EQ(network.nLayers, 4);
  EXPECT_EQ(network.layers[0].nUnits, 4);
  EXPECT_EQ(network.layers[1].nUnits, 8);
  EXPECT_EQ(network.layers[2].nUnits, 6);
  EXPECT_EQ(network.layers[3].nUnits, 3);
  EXPECT_EQ(network.layers[2].TransFunc, kGaussian);
  EXPECT_TRUE(network.connections_edited[2]);
}

TEST(NetDesignDraft, ForcesALayerCountOutOfRangeToThreeAndStaysOpen) {
  for (const char* text : {"2", "11", "0", "-3", "abc", "99999999999", " "}) {
    Network network = MakeNetwork({4, 8, 6, 5, 3});
    NetDesignDraft draft = Loaded(network);
    draft.layer_count = text;
    const DraftResult result = draft.Apply(network);
    EXPECT_FALSE(result.may_close);
    ASSERT_THAT(TextsOf(result.messages),
                ElementsAre("Set number of network layers between 3 and 10"));
    EXPECT_EQ(result.messages[0].caption, "Network Design Error");
    EXPECT_EQ(result.messages[0].icon, MessageIcon::kExclamation);
    EXPECT_EQ(result.first_refused, 101);
    EXPECT_EQ(network.nLayers, 3);
    EXPECT_EQ(network.layers[2].nUnits, 3);
  }
}

TEST(NetDesignDraft, AcceptsThreeToTenLayers) {
  Network network = MakeNetwork({4, 8, 6, 3});
  NetDesignDraft draft = Loaded(network);
  draft.layer_count = "3";
  EXPECT_TRUE(draft.Apply(network).may_close);
  EXPECT_EQ(network.nLayers, 3);
  EXPECT_EQ(network.layers[1].nUnits, 8);
  EXPECT_EQ(network.layers[2].nUnits, 3);

  draft.layer_count = "10 layers";
  draft.hidden_nodes.fill("2");
  EXPECT_TRUE(draft.Apply(network).may_close);
  EXPECT_EQ(network.nLayers, 10);
  for (size_t l = 1; l <= 8; ++l) EXPECT_EQ(network.layers[l].nUnits, 2);
  EXPECT_EQ(network.layers[9].nUnits, 3);
}

TEST(NetDesignDraft, RefusesNodeCountsBelowOneAndKeepsTheOldOnes) {
  for (const char* text : {"0", "-4", "abc"}) {
    Network network = MakeNetwork({4, 8, 3});
    NetDesignDraft draft = Loaded(network);
    draft.input_nodes = draft.output_nodes = draft.hidden_nodes[0] = text;
    const DraftResult result = draft.Apply(network);
    EXPECT_FALSE(result.may_close);
    EXPECT_THAT(
        TextsOf(result.messages),
        ElementsAre("Invalid value for input node count", "Invalid value for output node count",
                    fmt::sprintf("Hidden layer %d has an invalid node count", 1)));
    EXPECT_EQ(network.layers[0].nUnits, 4);
    EXPECT_EQ(network.layers[1].nUnits, 8);
    EXPECT_EQ(network.layers[2].nUnits, 3);
  }
}

TEST(NetDesignDraft, NamesTheFirstFieldThatWasRefused) {
  NetDesignDraft draft = Loaded(MakeNetwork({1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
  const auto refused = [&draft](std::string& field) {
    Network network = MakeNetwork({1, 2, 3, 4, 5, 6, 7, 8, 9, 10});
    field = "0";
    return draft.Apply(network).first_refused;
  };
  // From the last to the first: those behind stay refused.
  for (int row = 8; row >= 1; --row) {
    EXPECT_EQ(refused(draft.hidden_nodes[static_cast<size_t>(row - 1)]), 102 + row);
  }
  EXPECT_EQ(refused(draft.output_nodes), 111);
  EXPECT_EQ(refused(draft.input_nodes), 102);
  EXPECT_EQ(refused(draft.layer_count), 101);
}

TEST(NetDesignDraft, KeepsTheOldValuesOfEmptyFieldsSilently) {
  Network network = MakeNetwork({4, 8, 3});
  NetDesignDraft draft = Loaded(network);
  draft.name = draft.layer_count = draft.input_nodes = draft.output_nodes = "";
  draft.hidden_nodes[0] = "";
  const DraftResult result = draft.Apply(network);
  EXPECT_TRUE(result.may_close);
  EXPECT_THAT(result.messages, IsEmpty());
  EXPECT_EQ(network.NetName, "NO NAME");
  EXPECT_EQ(network.nLayers, 3);
  EXPECT_EQ(network.layers[0].nUnits, 4);
  EXPECT_EQ(network.layers[1].nUnits, 8);
  EXPECT_EQ(network.layers[2].nUnits, 3);
}

TEST(NetDesignDraft, AsksForTheNodesOfNewHiddenLayersEachTime) {
  Network network = MakeNetwork({4, 8, 3});
  NetDesignDraft draft = Loaded(network);
  draft.layer_count = "5";
  for (int attempt = 0; attempt < 2; ++attempt) {
    const DraftResult result = draft.Apply(network);
    EXPECT_FALSE(result.may_close);
    EXPECT_THAT(TextsOf(result.messages), ElementsAre("Hidden layer 2 has an invalid node count",
                                                      "Hidden layer 3 has an invalid node count"));
    EXPECT_EQ(network.nLayers, 5);
    EXPECT_EQ(network.layers[4].nUnits, 3);
  }
  draft.hidden_nodes[1] = "7";
  draft.hidden_nodes[2] = "6";
  EXPECT_TRUE(draft.Apply(network).may_close);
  EXPECT_EQ(network.layers[2].nUnits, 7);
  EXPECT_EQ(network.layers[3].nUnits, 6);
}

TEST(NetDesignDraft, TakesAnEmptyOutputCountAlongToTheNewOutputLayer) {
  Network network = MakeNetwork({4, 8, 6, 5, 3});
  NetDesignDraft draft = Loaded(network);
  draft.output_nodes = "";
  draft.layer_count = "11";
  EXPECT_FALSE(draft.Apply(network).may_close);
  EXPECT_EQ(network.layers[2].nUnits, 3);
  draft.layer_count = "4";
  EXPECT_TRUE(draft.Apply(network).may_close);
  EXPECT_EQ(network.layers[2].nUnits, 6);
  EXPECT_EQ(network.layers[3].nUnits, 3);
}

TEST(NetDesignDraft, StoresWhatPassesAlthoughAnotherFieldFails) {
  Network network = MakeNetwork({4, 8, 3});
  network.connections_edited[1] = false;
  NetDesignDraft draft = Loaded(network);
  draft.name = "new";
  draft.input_nodes = "0";
  draft.output_nodes = "9";
  draft.hidden_nodes[0] = "12x";
  draft.transfer[1] = kTanh;
  draft.connections_edited[1] = true;
  EXPECT_FALSE(draft.Apply(network).may_close);
  EXPECT_EQ(network.NetName, "new");
  EXPECT_EQ(network.layers[0].nUnits, 4);
  EXPECT_EQ(network.layers[1].nUnits, 12);
  EXPECT_EQ(network.layers[2].nUnits, 9);
  EXPECT_EQ(network.layers[1].TransFunc, kTanh);
  EXPECT_FALSE(network.connections_edited[1]);
}

TEST(NetDesignDraft, ShowsTheMessagesOfAllFieldsInOrder) {
  Network network = MakeNetwork({4, 8, 6, 3});
  NetDesignDraft draft = Loaded(network);
  draft.layer_count = "1";
  draft.input_nodes = draft.output_nodes = draft.hidden_nodes[0] = draft.hidden_nodes[1] = "0";
  EXPECT_THAT(TextsOf(draft.Apply(network).messages),
              ElementsAre(kLayerCountText, "Invalid value for input node count",
                          "Invalid value for output node count",
                          "Hidden layer 1 has an invalid node count"));
}

TEST(NetDesignDraft, StartsNewLayersWithSigmoidAndKeepsTheCodesOfOldOnes) {
  Network network = MakeNetwork({4, 8, 3});
  network.layers[1].TransFunc = kTanh;
  network.layers[2].TransFunc = kSech;
  NetDesignDraft draft = Loaded(network);
  draft.layer_count = "4";
  draft.hidden_nodes[1] = "5";
  EXPECT_TRUE(draft.Apply(network).may_close);
  EXPECT_EQ(network.layers[1].TransFunc, kTanh);
  EXPECT_EQ(network.layers[2].TransFunc, kSech);
  EXPECT_EQ(network.layers[3].TransFunc, kSigmoid);
}

TEST(NetDesignDraft, StoresOnlyTheFlagsOfLayersThatExist) {
  Network network = MakeNetwork({4, 8, 3});
  NetDesignDraft draft = Loaded(network);
  draft.connections_edited.fill(true);
  EXPECT_TRUE(draft.Apply(network).may_close);
  EXPECT_THAT(network.connections_edited,
              ElementsAre(false, true, true, false, false, false, false, false, false, false));
}

TEST(NetDesignDraft, CutsTheNameAtSeventyNineCharactersAndAtALineBreak) {
  Network network = MakeNetwork({4, 8, 3});
  NetDesignDraft draft = Loaded(network);
  draft.name = std::string(80, 'n');
  (void)draft.Apply(network);
  EXPECT_EQ(network.NetName, std::string(79, 'n'));
  draft.name = std::string(78, 'n') + "äö";
  (void)draft.Apply(network);
  EXPECT_EQ(network.NetName, std::string(78, 'n') + "ä");
  draft.name = "one\ntwo";
  (void)draft.Apply(network);
  EXPECT_EQ(network.NetName, "one");
  draft.name = "\ntwo";
  (void)draft.Apply(network);
  EXPECT_EQ(network.NetName, "one");
}

TEST(NetDesignDraft, ReadsSeventyNineCharactersOfANumber) {
  Network network = MakeNetwork({4, 8, 3});
  NetDesignDraft draft = Loaded(network);
  draft.input_nodes = std::string(78, '0') + "51";
  EXPECT_TRUE(draft.Apply(network).may_close);
  EXPECT_EQ(network.layers[0].nUnits, 5);
}

TEST(NetDesignDraft, SurvivesANetworkWithoutAUsableLayerCount) {
  for (const int32_t layers : {-5, 0, 1, 2, 11, 2000000000}) {
    Network network = MakeNetwork({4, 8, 3});
    network.nLayers = layers;
    NetDesignDraft draft = Loaded(network);
    draft.layer_count = "";
    EXPECT_FALSE(draft.Apply(network).may_close);
    EXPECT_EQ(network.nLayers, 3);
  }
}

TEST(OutputTransferFunctions, OpensForTheLayerCountTypedSoFar) {
  NetDesignDraft draft = Loaded(MakeNetwork({4, 8, 3}));
  EXPECT_EQ(draft.TransferFunctionsOfOutput().layer, 2);
  draft.layer_count = "10";
  EXPECT_EQ(draft.TransferFunctionsOfOutput().layer, 9);
  EXPECT_THAT(draft.TransferFunctionsOfOutput().messages, IsEmpty());
}

TEST(OutputTransferFunctions, OpensNothingForALayerCountOutOfRange) {
  NetDesignDraft draft = Loaded(MakeNetwork({4, 8, 3}));
  for (const char* text : {"2", "11", "x", ""}) {
    draft.layer_count = text;
    const LayerRequest request = draft.TransferFunctionsOfOutput();
    EXPECT_EQ(request.layer, 0);
    ASSERT_THAT(TextsOf(request.messages), ElementsAre(kLayerCountText));
    EXPECT_EQ(request.messages[0].caption, "Network Design Error");
  }
}

TEST(ConnectionsButton, OpensForExistingHiddenLayersOnly) {
  const Network network = MakeNetwork({4, 8, 6, 5, 3});
  const NetDesignDraft draft = Loaded(network);
  for (int32_t row = 1; row <= 3; ++row) {
    const ConnectionsRequest request = draft.ConnectionsOfHidden(row, network);
    EXPECT_EQ(request.receiving_layer, row);
    EXPECT_THAT(request.messages, IsEmpty());
  }
  for (int32_t row = 4; row <= 8; ++row) {
    const ConnectionsRequest request = draft.ConnectionsOfHidden(row, network);
    EXPECT_EQ(request.receiving_layer, 0);
    ASSERT_THAT(TextsOf(request.messages), ElementsAre("Insufficient layers for this option"));
    EXPECT_EQ(request.messages[0].caption, "Error");
    EXPECT_EQ(request.messages[0].icon, MessageIcon::kExclamation);
  }
}

TEST(ConnectionsButton, OfTheOutputRowOpensForTheLastLayer) {
  const Network network = MakeNetwork({4, 8, 6, 3});
  const ConnectionsRequest request = Loaded(network).ConnectionsOfOutput(network);
  EXPECT_EQ(request.receiving_layer, 3);
  EXPECT_THAT(request.messages, IsEmpty());
}

TEST(ConnectionsButton, GivesTheDesignTypedSoFarAndLeavesTheNetworkAlone) {
  Network network = MakeNetwork({4, 8, 3});
  network.file_name = "a.net";
  NetDesignDraft draft = Loaded(network);
  draft.layer_count = "4";
  draft.input_nodes = "7";
  draft.hidden_nodes[0] = "";
  draft.hidden_nodes[1] = "9";
  draft.connections_edited[3] = true;
  const ConnectionsRequest request = draft.ConnectionsOfOutput(network);
  EXPECT_EQ(request.receiving_layer, 3);
  EXPECT_EQ(request.design.nLayers, 4);
  EXPECT_EQ(request.design.layers[0].nUnits, 7);
  EXPECT_EQ(request.design.layers[1].nUnits, 8);
  EXPECT_EQ(request.design.layers[2].nUnits, 9);
  EXPECT_EQ(request.design.layers[3].nUnits, 3);
  EXPECT_EQ(request.design.file_name, "a.net");
  EXPECT_TRUE(request.design.connections_edited[3]);
  EXPECT_EQ(network.nLayers, 3);
  EXPECT_EQ(network.layers[0].nUnits, 4);
}

TEST(ConnectionsButton, OpensNothingWhenTheFieldCheckFails) {
  Network network = MakeNetwork({4, 8, 3});
  NetDesignDraft draft = Loaded(network);
  draft.layer_count = "11";
  draft.input_nodes = "0";
  for (const ConnectionsRequest& request :
       {draft.ConnectionsOfOutput(network), draft.ConnectionsOfHidden(1, network),
        draft.ConnectionsOfHidden(8, network)}) {
    EXPECT_EQ(request.receiving_layer, 0);
    EXPECT_THAT(TextsOf(request.messages),
                ElementsAre(kLayerCountText, "Invalid value for input node count"));
  }
  EXPECT_EQ(network.nLayers, 3);
}

TEST(ViewButton, ShowsTheDesignTypedSoFarAndLeavesTheNetworkAlone) {
  Network network = MakeNetwork({4, 8, 3});
  network.file_name = "a.net";
  NetDesignDraft draft = Loaded(network);
  draft.input_nodes = "7";
  draft.transfer[1] = kSech;
  draft.connections_edited[2] = true;
  const DesignRequest request = draft.DesignToView(network);
  EXPECT_THAT(request.messages, IsEmpty());
  EXPECT_EQ(request.design.nLayers, 3);
  EXPECT_EQ(request.design.layers[0].nUnits, 7);
  EXPECT_EQ(request.design.layers[1].TransFunc, kSech);
  EXPECT_EQ(request.design.file_name, "a.net");
  EXPECT_TRUE(request.design.connections_edited[2]);
  EXPECT_EQ(network.layers[0].nUnits, 4);
}

TEST(ViewButton, TellsWhyThereIsNothingToDraw) {
  const Network network = MakeNetwork({4, 8, 3});
  NetDesignDraft draft = Loaded(network);
  draft.layer_count = "x";
  draft.hidden_nodes[0] = "-2";
  EXPECT_THAT(TextsOf(draft.DesignToView(network).messages),
              ElementsAre(kLayerCountText, "Hidden layer 1 has an invalid node count"));
}

TEST(ViewButton, NeverGivesADesignThatHasNoShape) {
  Network network = MakeNetwork({4, 8, 3});
  network.layers[0].nUnits = 0;
  NetDesignDraft draft = Loaded(network);
  draft.input_nodes.clear();
  EXPECT_THAT(TextsOf(draft.DesignToView(network).messages),
              ElementsAre("Invalid value for input node count"));
}

}  // namespace
}  // namespace tarn
