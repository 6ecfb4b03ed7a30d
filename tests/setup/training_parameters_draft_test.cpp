#include "setup/training_parameters_draft.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <string>

#include "setup/setup_fixture.h"

namespace tarn {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// A draft of empty fields but for ETA, which may not be empty.
TrainingParametersDraft OnlyEta() {
  TrainingParametersDraft draft;
  draft.eta = "0.5";
  return draft;
}

// Applies one field and expects this one message, and the edit that keeps the dialog open; 0: it
// closes.
void ExpectMessage(Network& network, std::string TrainingParametersDraft::*field,
                   const std::string& text, const std::string& message, int refused) {
  TrainingParametersDraft draft = OnlyEta();
  draft.*field = text;
  const DraftResult result = draft.Apply(network);
  ASSERT_THAT(TextsOf(result.messages), ElementsAre(message)) << text;
  EXPECT_EQ(result.messages[0].caption, "Training Parameter Error");
  EXPECT_EQ(result.messages[0].icon, MessageIcon::kExclamation);
  EXPECT_EQ(result.first_refused, refused);
  EXPECT_EQ(result.may_close, refused == 0);
}

void ExpectAccepted(Network& network, std::string TrainingParametersDraft::*field,
                    const std::string& text) {
  TrainingParametersDraft draft = OnlyEta();
  draft.*field = text;
  const DraftResult result = draft.Apply(network);
  EXPECT_THAT(TextsOf(result.messages), IsEmpty()) << text;
  EXPECT_TRUE(result.may_close);
}

TEST(TrainingParametersDraft, LoadsEveryFieldInItsFormat) {
  Network network = MakeNetwork({2, 2, 1});
  network.Tolerance = 0.1F;
  network.FastProp = 1.5F;
  network.WeightRate = 7;
  network.reset_weights = true;
  TrainingParametersDraft draft;
  draft.Load(network);
  EXPECT_EQ(draft.max_iterations, "10000");
  EXPECT_EQ(draft.lrc_start, "100");
  EXPECT_EQ(draft.autosave_rate, "500");
  EXPECT_EQ(draft.update_rate, "5");
  EXPECT_EQ(draft.eta, "0.010000");
  EXPECT_EQ(draft.eta_min, "0.001000");
  EXPECT_EQ(draft.eta_max, "0.300000");
  EXPECT_EQ(draft.momentum, "0.800000");
  EXPECT_EQ(draft.fast_prop, "1.500000");
  EXPECT_EQ(draft.patterns_per_update, "7");
  EXPECT_EQ(draft.tolerance, "0.100000");
  EXPECT_FALSE(draft.reset_weights);
}

TEST(TrainingParametersDraft, AppliesUnchangedWithoutAMessage) {
  Network network = MakeNetwork({2, 2, 1});
  TrainingParametersDraft draft;
  draft.Load(network);
  const DraftResult result = draft.Apply(network);
  EXPECT_TRUE(result.may_close);
  EXPECT_THAT(result.messages, IsEmpty());
  EXPECT_EQ(network.Eta, 0.01F);
  EXPECT_EQ(network.EtaMin, 0.001F);
  EXPECT_EQ(network.EtaMax, 0.3F);
  EXPECT_EQ(network.Alpha, 0.8F);
  EXPECT_EQ(network.MaxIterations, 10000);
}

TEST(TrainingParametersDraft, TakesFastPropFrom0To3) {
  Network network = MakeNetwork({2, 2, 1});
  ExpectAccepted(network, &TrainingParametersDraft::fast_prop, "3");
  EXPECT_EQ(network.FastProp, 3.0F);
  // In single precision this is 3.
  ExpectAccepted(network, &TrainingParametersDraft::fast_prop, "3.00000001");
  EXPECT_EQ(network.FastProp, 3.0F);
  for (const char* text : {"3.01", "-0.1", "1e30"}) {
    ExpectMessage(network, &TrainingParametersDraft::fast_prop, text,
                  "Fast-Prop coefficient range is 0. to 3.", 109);
    EXPECT_EQ(network.FastProp, 3.0F);
  }
  ExpectAccepted(network, &TrainingParametersDraft::fast_prop, "none");
  EXPECT_EQ(network.FastProp, 0.0F);
}

TEST(TrainingParametersDraft, IgnoresNegativePatternsPerUpdateSilently) {
  Network network = MakeNetwork({2, 2, 1});
  network.WeightRate = 4;
  ExpectAccepted(network, &TrainingParametersDraft::patterns_per_update, "-2");
  EXPECT_EQ(network.WeightRate, 4);
  ExpectAccepted(network, &TrainingParametersDraft::patterns_per_update, "0");
  EXPECT_EQ(network.WeightRate, 0);
  ExpectAccepted(network, &TrainingParametersDraft::patterns_per_update, "9");
  EXPECT_EQ(network.WeightRate, 9);
}

TEST(TrainingParametersDraft, TakesMomentumFrom0To1) {
  Network network = MakeNetwork({2, 2, 1});
  ExpectAccepted(network, &TrainingParametersDraft::momentum, "0");
  EXPECT_EQ(network.Alpha, 0.0F);
  ExpectAccepted(network, &TrainingParametersDraft::momentum, "1");
  EXPECT_EQ(network.Alpha, 1.0F);
  for (const char* text : {"-0.1", "1.1"}) {
    ExpectMessage(network, &TrainingParametersDraft::momentum, text,
                  "Momentum factor range is 0. to 1.", 108);
    EXPECT_EQ(network.Alpha, 1.0F);
  }
}

TEST(TrainingParametersDraft, TakesLearnRatesAbove0To1) {
  struct Rate {
    std::string TrainingParametersDraft::*field;
    float Network::*value;
    const char* message;
    int edit;
  };
  const Rate rates[] = {
      {&TrainingParametersDraft::eta_max, &Network::EtaMax, "Learn rate maximum range is >0. to 1.",
       107},
      {&TrainingParametersDraft::eta_min, &Network::EtaMin, "Learn rate minimum range is >0. to 1.",
       106},
      {&TrainingParametersDraft::eta, &Network::Eta, "Learn rate range is >0. to 1.", 105}};
  for (const Rate& rate : rates) {
    Network network = MakeNetwork({2, 2, 1});
    ExpectAccepted(network, rate.field, "0.000001");
    ExpectAccepted(network, rate.field, "1");
    EXPECT_EQ(network.*rate.value, 1.0F);
    for (const char* text : {"0", "-0.5", "1.0001", "x"}) {
      ExpectMessage(network, rate.field, text, rate.message, rate.edit);
      EXPECT_EQ(network.*rate.value, 1.0F);
    }
  }
}

TEST(TrainingParametersDraft, ConvertsEtaEvenWhenEmpty) {
  Network network = MakeNetwork({2, 2, 1});
  ExpectMessage(network, &TrainingParametersDraft::eta, "", "Learn rate range is >0. to 1.", 105);
  EXPECT_EQ(network.Eta, 0.01F);
}

TEST(TrainingParametersDraft, SetsAScreenUpdateRateOutOfRangeTo1AndCloses) {
  for (const char* text : {"0", "-1", "x"}) {
    Network network = MakeNetwork({2, 2, 1});
    ExpectMessage(network, &TrainingParametersDraft::update_rate, text,
                  "Screen update rate out of range; set to 1", 0);
    EXPECT_EQ(network.UpdateRate, 1);
  }
  Network network = MakeNetwork({2, 2, 1});
  ExpectAccepted(network, &TrainingParametersDraft::update_rate, "2");
  EXPECT_EQ(network.UpdateRate, 2);
}

TEST(TrainingParametersDraft, TurnsAutoSaveOffForANegativeRateAndCloses) {
  Network network = MakeNetwork({2, 2, 1});
  ExpectMessage(network, &TrainingParametersDraft::autosave_rate, "-5",
                "AutoSave rate out of range; feature disabled", 0);
  EXPECT_EQ(network.SaveRate, 0);
  ExpectAccepted(network, &TrainingParametersDraft::autosave_rate, "50");
  EXPECT_EQ(network.SaveRate, 50);
  ExpectAccepted(network, &TrainingParametersDraft::autosave_rate, "0");
  EXPECT_EQ(network.SaveRate, 0);
}

TEST(TrainingParametersDraft, WantsALearnRateControlStartAbove0) {
  Network network = MakeNetwork({2, 2, 1});
  for (const char* text : {"0", "-1"}) {
    ExpectMessage(network, &TrainingParametersDraft::lrc_start, text,
                  "Learn rate control out of range (>0)", 102);
    EXPECT_EQ(network.LRC, 100);
  }
  ExpectAccepted(network, &TrainingParametersDraft::lrc_start, "1");
  EXPECT_EQ(network.LRC, 1);
}

TEST(TrainingParametersDraft, WantsMaximumIterationsAbove0) {
  Network network = MakeNetwork({2, 2, 1});
  for (const char* text : {"0", "-1"}) {
    ExpectMessage(network, &TrainingParametersDraft::max_iterations, text,
                  "Maximum iterations out of range (>0)", 101);
    EXPECT_EQ(network.MaxIterations, 10000);
  }
  ExpectAccepted(network, &TrainingParametersDraft::max_iterations, "99999999999");
  EXPECT_EQ(network.MaxIterations, std::numeric_limits<int32_t>::max());
}

TEST(TrainingParametersDraft, StoresAToleranceBelow0As0Silently) {
  Network network = MakeNetwork({2, 2, 1});
  ExpectAccepted(network, &TrainingParametersDraft::tolerance, "0.25");
  EXPECT_EQ(network.Tolerance, 0.25F);
  ExpectAccepted(network, &TrainingParametersDraft::tolerance, "");
  EXPECT_EQ(network.Tolerance, 0.25F);
  ExpectAccepted(network, &TrainingParametersDraft::tolerance, "-1");
  EXPECT_EQ(network.Tolerance, 0.0F);
}

TEST(TrainingParametersDraft, StoresTheResetBoxBothWays) {
  Network network = MakeNetwork({2, 2, 1});
  TrainingParametersDraft draft = OnlyEta();
  draft.reset_weights = true;
  (void)draft.Apply(network);
  EXPECT_TRUE(network.reset_weights);
  draft.reset_weights = false;
  (void)draft.Apply(network);
  EXPECT_FALSE(network.reset_weights);
}

TEST(TrainingParametersDraft, SkipsEmptyFields) {
  Network network = MakeNetwork({2, 2, 1});
  network.FastProp = 2;
  network.WeightRate = 3;
  const DraftResult result = OnlyEta().Apply(network);
  EXPECT_TRUE(result.may_close);
  EXPECT_THAT(result.messages, IsEmpty());
  EXPECT_EQ(network.FastProp, 2.0F);
  EXPECT_EQ(network.WeightRate, 3);
  EXPECT_EQ(network.Alpha, 0.8F);
  EXPECT_EQ(network.EtaMax, 0.3F);
  EXPECT_EQ(network.EtaMin, 0.001F);
  EXPECT_EQ(network.Eta, 0.5F);
  EXPECT_EQ(network.UpdateRate, 5);
  EXPECT_EQ(network.SaveRate, 500);
  EXPECT_EQ(network.LRC, 100);
  EXPECT_EQ(network.MaxIterations, 10000);
}

TEST(TrainingParametersDraft, ShowsAllMessagesInOrderAndStoresWhatPasses) {
  Network network = MakeNetwork({2, 2, 1});
  TrainingParametersDraft draft;
  draft.max_iterations = draft.lrc_start = draft.update_rate = "0";
  draft.autosave_rate = draft.patterns_per_update = draft.tolerance = "-1";
  draft.eta_min = draft.eta_max = draft.momentum = "2";
  draft.fast_prop = "4";
  draft.reset_weights = true;
  const DraftResult result = draft.Apply(network);
  EXPECT_FALSE(result.may_close);
  EXPECT_EQ(result.first_refused, 109);
  EXPECT_THAT(
      TextsOf(result.messages),
      ElementsAre("Fast-Prop coefficient range is 0. to 3.", "Momentum factor range is 0. to 1.",
                  "Learn rate maximum range is >0. to 1.", "Learn rate minimum range is >0. to 1.",
                  "Learn rate range is >0. to 1.", "Screen update rate out of range; set to 1",
                  "AutoSave rate out of range; feature disabled",
                  "Learn rate control out of range (>0)", "Maximum iterations out of range (>0)"));
  for (const Message& message : result.messages) {
    EXPECT_EQ(message.caption, "Training Parameter Error");
  }
  EXPECT_EQ(network.UpdateRate, 1);
  EXPECT_EQ(network.SaveRate, 0);
  EXPECT_TRUE(network.reset_weights);
}

TEST(TrainingParametersDraft, ReadsThirtyNineCharactersOfAField) {
  Network network = MakeNetwork({2, 2, 1});
  ExpectAccepted(network, &TrainingParametersDraft::lrc_start, std::string(38, '0') + "45");
  EXPECT_EQ(network.LRC, 4);
}

TEST(TrainingParametersDraft, EmptiesFieldsOutOfRangeButNotEta) {
  Network network = MakeNetwork({2, 2, 1});
  network.FastProp = 5;
  network.Alpha = -1;
  network.EtaMin = 1e-9F;  // shown as 0.000000
  network.Eta = 0;
  network.UpdateRate = 0;
  network.SaveRate = -1;
  network.LRC = 0;
  TrainingParametersDraft draft;
  draft.Load(network);
  draft.EmptyFieldsOutOfRange();
  EXPECT_EQ(draft.fast_prop, "");
  EXPECT_EQ(draft.momentum, "");
  EXPECT_EQ(draft.eta_min, "");
  EXPECT_EQ(draft.eta_max, "0.300000");
  EXPECT_EQ(draft.eta, "0.000000");
  EXPECT_EQ(draft.update_rate, "");
  EXPECT_EQ(draft.autosave_rate, "");
  EXPECT_EQ(draft.lrc_start, "");
  EXPECT_EQ(draft.max_iterations, "10000");
  EXPECT_THAT(TextsOf(draft.Apply(network).messages), ElementsAre("Learn rate range is >0. to 1."));
  EXPECT_EQ(network.EtaMin, 1e-9F);
}

}  // namespace
}  // namespace tarn
