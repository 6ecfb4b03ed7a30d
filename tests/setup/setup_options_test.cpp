#include "setup/setup_options.h"

#include <fmt/printf.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>
#include <string>

#include "setup/setup_fixture.h"

namespace tarn {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Applies the options to a template network and gives the messages' texts.
std::vector<std::string> TextsFor(const SetupOptions& options, Network& network) {
  return TextsOf(ApplySetupOptions(options, network).messages);
}

std::string Refusal(const SetupOptions& options) {
  return CheckSetupOptions(options, MakeNetwork({2, 2, 1})).message();
}

TEST(SetupOptions, ListEveryOptionOnce) {
  std::set<std::string_view> names;
  for (const SetupOptionEntry& option : kSetupOptions) names.insert(option.name);
  EXPECT_EQ(names.size(), kSetupOptions.size());
  // One member for each: setting them all through the list leaves none empty.
  EXPECT_EQ(sizeof(SetupOptions), kSetupOptions.size() * sizeof(SetupOptions::Value));
  SetupOptions options;
  for (const SetupOptionEntry& option : kSetupOptions) {
    EXPECT_FALSE((options.*option.value).has_value()) << option.name;
    options.*option.value = "1";
  }
}

TEST(SetupOptions, ChangeNothingWhenNoneIsGiven) {
  Network network = MakeNetwork({2, 2, 1});
  network.Eta = 0;
  network.PatCol = 0;
  network.reset_weights = true;
  const SetupOutcome outcome = ApplySetupOptions({}, network);
  EXPECT_TRUE(outcome.accepted);
  EXPECT_THAT(outcome.messages, IsEmpty());
  EXPECT_TRUE(network.reset_weights);
}

TEST(SetupOptions, ReachEveryFieldOfTheNetwork) {
  const SetupFiles files;
  Network network = MakeNetwork({2, 2, 1});
  SetupOptions options;
  options.name = "iris";
  options.layers = "4,8,3";
  options.transfer = "tanh,sech";
  options.inputs = files.Make("a.txt");
  options.inputs_column = "2";
  options.targets = files.Make("b.txt");
  options.targets_column = "6";
  options.normalize_inputs = "off";
  options.normalize_targets = "OFF";
  options.test_patterns = "30";
  options.test_method = "random";
  options.eta = "0.1";
  options.eta_min = "0.002";
  options.eta_max = "0.5";
  options.momentum = "0.9";
  options.fast_prop = "1.5";
  options.tolerance = "0.25";
  options.patterns_per_update = "10";
  options.iterations = "2000";
  options.lrc_start = "50";
  options.autosave_rate = "100";
  options.update_rate = "20";
  EXPECT_TRUE(CheckSetupOptions(options, network).ok());
  const SetupOutcome outcome = ApplySetupOptions(options, network);
  EXPECT_TRUE(outcome.accepted);
  EXPECT_THAT(TextsOf(outcome.messages), IsEmpty());
  EXPECT_EQ(network.NetName, "iris");
  EXPECT_EQ(network.layers[0].nUnits, 4);
  EXPECT_EQ(network.layers[1].nUnits, 8);
  EXPECT_EQ(network.layers[2].nUnits, 3);
  EXPECT_EQ(network.layers[1].TransFunc, kTanh);
  EXPECT_EQ(network.layers[2].TransFunc, kSech);
  EXPECT_EQ(network.PatName, files.Missing("a.txt"));
  EXPECT_EQ(network.PatCol, 2);
  EXPECT_EQ(network.TargName, files.Missing("b.txt"));
  EXPECT_EQ(network.TargCol, 6);
  EXPECT_EQ(network.pat_norm, 0);
  EXPECT_EQ(network.targ_norm, 0);
  EXPECT_EQ(network.testPats, 30);
  EXPECT_EQ(network.overMeth, kTestRandom);
  EXPECT_EQ(network.Eta, 0.1F);
  EXPECT_EQ(network.EtaMin, 0.002F);
  EXPECT_EQ(network.EtaMax, 0.5F);
  EXPECT_EQ(network.Alpha, 0.9F);
  EXPECT_EQ(network.FastProp, 1.5F);
  EXPECT_EQ(network.Tolerance, 0.25F);
  EXPECT_EQ(network.WeightRate, 10);
  EXPECT_EQ(network.MaxIterations, 2000);
  EXPECT_EQ(network.LRC, 50);
  EXPECT_EQ(network.SaveRate, 100);
  EXPECT_EQ(network.UpdateRate, 20);
}

TEST(SetupOptions, GiveTheLayersTheDesignDialogsMessages) {
  const std::string count = "Set number of network layers between 3 and 10";
  const std::string input = "Invalid value for input node count";
  const std::string output = "Invalid value for output node count";
  const std::string hidden = "Hidden layer 1 has an invalid node count";
  const std::pair<const char*, std::vector<std::string>> cases[] = {
      {"4,0,3", {hidden}},
      {"4,3", {count}},
      {"4", {count}},
      {"", {count, input}},
      {"1,2,3,4,5,6,7,8,9,10,11", {count}},
      {"x,y,z", {input, output, hidden}},
      {",,", {input, output, hidden}},
      {"-1,2,3", {input}},
      {"4,2,0", {output}},
      {"4,2,y,3", {"Hidden layer 2 has an invalid node count"}}};
  for (const auto& [layers, messages] : cases) {
    Network network = MakeNetwork({2, 2, 1});
    SetupOptions options;
    options.layers = layers;
    EXPECT_TRUE(CheckSetupOptions(options, network).ok());
    const SetupOutcome outcome = ApplySetupOptions(options, network);
    EXPECT_FALSE(outcome.accepted) << layers;
    EXPECT_EQ(TextsOf(outcome.messages), messages) << layers;
    for (const Message& message : outcome.messages) {
      EXPECT_EQ(message.caption, "Network Design Error");
    }
  }
}

TEST(SetupOptions, BuildTenLayers) {
  Network network = MakeNetwork({2, 2, 1});
  SetupOptions options;
  options.layers = "1,2,3,4,5,6,7,8,9,10";
  EXPECT_THAT(TextsFor(options, network), IsEmpty());
  EXPECT_EQ(network.nLayers, 10);
  for (size_t l = 0; l < 10; ++l) EXPECT_EQ(network.layers[l].nUnits, static_cast<int32_t>(l + 1));
}

TEST(SetupOptions, GiveNewLayersSigmoidUnlessTransferFunctionsAreNamed) {
  Network network = MakeNetwork({2, 2, 1});
  network.layers[1].TransFunc = kTanh;
  network.layers[2].TransFunc = kSech;
  SetupOptions options;
  options.layers = "2,2,2,1";
  EXPECT_THAT(TextsFor(options, network), IsEmpty());
  EXPECT_EQ(network.layers[1].TransFunc, kTanh);
  EXPECT_EQ(network.layers[2].TransFunc, kSech);
  EXPECT_EQ(network.layers[3].TransFunc, kSigmoid);
  options.layers = "2,2,2,2,1";
  options.transfer = "Gaussian";
  EXPECT_THAT(TextsFor(options, network), IsEmpty());
  for (size_t l = 1; l < 5; ++l) EXPECT_EQ(network.layers[l].TransFunc, kGaussian);
}

TEST(SetupOptions, RefuseTransferFunctionsThatDoNotFitTheLayers) {
  SetupOptions options;
  options.transfer = "tanh,sech,tanh";
  EXPECT_EQ(Refusal(options),
            fmt::sprintf("--transfer takes one name, or one for each of the %d layers above the "
                         "input layer, not %d",
                         2, 3));
  options.layers = "2,3,4,1";
  EXPECT_EQ(Refusal(options), "");
  // The design dialog answers for the layer count itself.
  options.layers = "2,3";
  EXPECT_EQ(Refusal(options), "");
  options.transfer = "tanh,sin";
  EXPECT_EQ(Refusal(options), fmt::sprintf("--%s takes sigmoid, gaussian, tanh or sech, not \"%s\"",
                                           "transfer", "sin"));
}

TEST(SetupOptions, RefuseWordsThatAreNotKnown) {
  SetupOptions options;
  options.normalize_inputs = "yes";
  EXPECT_EQ(Refusal(options),
            fmt::sprintf("--%s takes on or off, not \"%s\"", "normalize-inputs", "yes"));
  options = {};
  options.test_method = "middle";
  EXPECT_EQ(Refusal(options), fmt::sprintf("--%s takes none, beginning, end or random, not \"%s\"",
                                           "test-method", "middle"));
}

TEST(SetupOptions, RefuseTextThatIsNoNumberForEveryNumericOption) {
  int numbers = 0;
  for (const SetupOptionEntry& option : kSetupOptions) {
    SetupOptions options;
    options.*option.value = "5x";
    if (option.kind == OptionKind::kInteger) {
      EXPECT_EQ(Refusal(options), fmt::sprintf("--%s takes a whole number, not \"%s\"",
                                               std::string(option.name), "5x"));
      ++numbers;
    } else if (option.kind == OptionKind::kReal) {
      EXPECT_EQ(Refusal(options),
                fmt::sprintf("--%s takes a number, not \"%s\"", std::string(option.name), "5x"));
      ++numbers;
    }
  }
  EXPECT_EQ(numbers, 14);
}

TEST(SetupOptions, ApplyNothingWhenOneIsNotUnderstood) {
  Network network = MakeNetwork({2, 2, 1});
  SetupOptions options;
  options.name = "new";
  options.eta = "fast";
  const SetupOutcome outcome = ApplySetupOptions(options, network);
  EXPECT_FALSE(outcome.accepted);
  EXPECT_THAT(TextsOf(outcome.messages), ElementsAre("--eta takes a number, not \"fast\""));
  EXPECT_EQ(network.NetName, "NO NAME");
}

TEST(SetupOptions, CheckOnlyTheDataFileThatIsGiven) {
  const SetupFiles files;
  Network network = MakeNetwork({2, 2, 1});
  network.TargName = files.Missing("gone.txt");
  SetupOptions options;
  options.inputs = files.Make("a.txt");
  EXPECT_THAT(TextsFor(options, network), IsEmpty());
  EXPECT_EQ(network.PatName, files.Missing("a.txt"));
  EXPECT_EQ(network.TargName, files.Missing("gone.txt"));

  options = {};
  options.targets = files.Missing("b.txt");
  EXPECT_THAT(TextsFor(options, network), ElementsAre("Target node data file not found"));
  options = {};
  options.inputs = files.Missing("b.txt");
  EXPECT_THAT(TextsFor(options, network), ElementsAre("Input node data file not found"));
  EXPECT_EQ(network.PatName, files.Missing("a.txt"));
}

TEST(SetupOptions, CheckNoDataFileForOtherDataOptions) {
  Network network = MakeNetwork({2, 2, 1});
  SetupOptions options;
  options.test_patterns = "3";
  options.test_method = "end";
  EXPECT_THAT(TextsFor(options, network), IsEmpty());
  EXPECT_EQ(network.testPats, 3);
  EXPECT_EQ(network.overMeth, kTestEnding);
  EXPECT_EQ(network.PatName, "none");
}

TEST(SetupOptions, TakeNoneForAFileBack) {
  Network network = MakeNetwork({2, 2, 1});
  network.PatName = "a.txt";
  network.TargName = "b.txt";
  SetupOptions options;
  options.inputs = "none";
  options.targets = "";
  EXPECT_THAT(TextsFor(options, network), IsEmpty());
  EXPECT_EQ(network.PatName, "none");
  EXPECT_EQ(network.TargName, "b.txt");
}

TEST(SetupOptions, ReportBothFilesAndColumnsAsTheDialogDoes) {
  const SetupFiles files;
  Network network = MakeNetwork({2, 2, 1});
  SetupOptions options;
  options.inputs = options.targets = files.Missing("a.txt");
  options.inputs_column = "0";
  options.test_patterns = "-1";
  const SetupOutcome outcome = ApplySetupOptions(options, network);
  EXPECT_FALSE(outcome.accepted);
  EXPECT_THAT(TextsOf(outcome.messages), ElementsAre("Invalid number of test cases - set to ZERO",
                                                     "Invalid start column specified for inputs",
                                                     "Input node data file not found"));
}

TEST(SetupOptions, AcceptMessagesThatLetTheDialogClose) {
  Network network = MakeNetwork({2, 2, 1});
  SetupOptions options;
  options.test_patterns = "-1";
  options.update_rate = "0";
  const SetupOutcome outcome = ApplySetupOptions(options, network);
  EXPECT_TRUE(outcome.accepted);
  EXPECT_THAT(TextsOf(outcome.messages), ElementsAre("Invalid number of test cases - set to ZERO",
                                                     "Screen update rate out of range; set to 1"));
  EXPECT_EQ(network.UpdateRate, 1);
}

TEST(SetupOptions, ShowTheMessagesOfAllDialogsInTheirOrder) {
  const SetupFiles files;
  Network network = MakeNetwork({2, 2, 1});
  SetupOptions options;
  options.layers = "2,0,1";
  options.inputs = files.Missing("a.txt");
  options.momentum = "2";
  options.eta = "0.25";
  const SetupOutcome outcome = ApplySetupOptions(options, network);
  EXPECT_FALSE(outcome.accepted);
  EXPECT_THAT(TextsOf(outcome.messages),
              ElementsAre("Hidden layer 1 has an invalid node count",
                          "Input node data file not found", "Momentum factor range is 0. to 1."));
  EXPECT_EQ(network.Eta, 0.25F);
}

TEST(SetupOptions, DoNotRefuseParametersThatAreNotGivenButForEta) {
  Network network = MakeNetwork({2, 2, 1});
  network.FastProp = 9;
  network.EtaMin = 0;
  network.LRC = 0;
  SetupOptions options;
  options.momentum = "0.5";
  EXPECT_THAT(TextsFor(options, network), IsEmpty());
  EXPECT_EQ(network.Alpha, 0.5F);
  EXPECT_EQ(network.FastProp, 9.0F);
  EXPECT_EQ(network.EtaMin, 0.0F);
  EXPECT_EQ(network.LRC, 0);
  network.Eta = 5;
  EXPECT_THAT(TextsFor(options, network), ElementsAre("Learn rate range is >0. to 1."));
  options.eta = "0.1";
  EXPECT_THAT(TextsFor(options, network), IsEmpty());
  options.lrc_start = "0";
  EXPECT_THAT(TextsFor(options, network), ElementsAre("Learn rate control out of range (>0)"));
}

}  // namespace
}  // namespace tarn
