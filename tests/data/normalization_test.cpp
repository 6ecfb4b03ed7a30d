#include "data/normalization.h"

#include <algorithm>
#include <bit>
#include <limits>

#include "data_test.h"
#include "support/comma_locale.h"

namespace tarn {
namespace {

using testing::ElementsAre;
using testing::FloatNear;

using Table = std::vector<std::vector<float>>;

class NormalizationTest : public DataTest {
 protected:
  // A network in training that holds these inputs and targets, both not normalized.
  static Network MakeLoaded(const Table& inputs, const Table& targets) {
    Network network = MakeNetwork(static_cast<int32_t>(inputs[0].size()),
                                  static_cast<int32_t>(targets[0].size()));
    network.RecallTargets = true;
    network.nPats = static_cast<int32_t>(inputs.size());
    EXPECT_TRUE(AllocateArrays(network).ok());
    Fill(network.layers[0].activations, inputs);
    Fill(network.targets, targets);
    return network;
  }
  // One input and one output node.
  static Network MakeColumns(const std::vector<float>& inputs, const std::vector<float>& targets) {
    Table input_rows;
    Table target_rows;
    for (float x : inputs) input_rows.push_back({x});
    for (float t : targets) target_rows.push_back({t});
    return MakeLoaded(input_rows, target_rows);
  }
  static std::vector<float> InputColumn(const Network& network) {
    const auto all = network.layers[0].activations.All();
    return {all.begin(), all.end()};
  }
  static std::vector<float> TargetColumn(const Network& network) {
    return {network.targets.All().begin(), network.targets.All().end()};
  }

 private:
  static void Fill(Matrix& matrix, const Table& rows) {
    for (size_t p = 0; p < rows.size(); ++p) std::ranges::copy(rows[p], matrix.Row(p).begin());
  }
};

// The two formulas, written out again.
float ScaledInput(float x, float lower, float upper) {
  const long double span = static_cast<long double>(upper) - lower;
  const long double part = (static_cast<long double>(x) - lower) / span;
  return static_cast<float>(part * std::bit_cast<float>(0x3F333334U) +
                            std::bit_cast<float>(0x3E19999AU));
}
float ScaledTarget(float t, float lower, float upper) {
  const long double span = static_cast<long double>(upper) - lower;
  const long double part = (static_cast<long double>(t) - lower) / span;
  return static_cast<float>(part * 0.7 + 0.15);
}

TEST_F(NormalizationTest, ScalesInputsIntoTheBandByNode) {
  Network network = MakeLoaded({{1, 10}, {2, 30}, {5, 20}}, {{0}, {1}, {0}});
  network.pat_norm = 1;
  ASSERT_TRUE(Normalize(network).ok());
  EXPECT_THAT(network.input_limits.lower, ElementsAre(1, 10));
  EXPECT_THAT(network.input_limits.upper, ElementsAre(5, 30));
  EXPECT_THAT(Inputs(network, 0), ElementsAre(0.15F, 0.15F));
  EXPECT_THAT(Inputs(network, 1), ElementsAre(ScaledInput(2, 1, 5), 0.85F));
  EXPECT_THAT(Inputs(network, 2), ElementsAre(0.85F, ScaledInput(20, 10, 30)));
  EXPECT_EQ(network.targ_norm, 0);
}

TEST_F(NormalizationTest, ScalesTargetsIntoTheBandByNode) {
  Network network = MakeLoaded({{0}, {1}, {0}}, {{1, 10}, {2, 30}, {5, 20}});
  network.targ_norm = 1;
  ASSERT_TRUE(Normalize(network).ok());
  EXPECT_THAT(network.target_limits.lower, ElementsAre(1, 10));
  EXPECT_THAT(network.target_limits.upper, ElementsAre(5, 30));
  EXPECT_THAT(Targets(network, 1), ElementsAre(ScaledTarget(2, 1, 5), 0.85F));
  EXPECT_EQ(network.pat_norm, 0);
}

TEST_F(NormalizationTest, GivesTheExactBits) {
  // Worked out in exact fractions, rounded to 64 bits after each operation. With rounding to
  // double the target bits would be one less or more.
  const std::vector<float> values = {-3, 7, std::bit_cast<float>(0xBF041893U), 1.234F};
  Network network = MakeColumns(values, values);
  network.pat_norm = network.targ_norm = 1;
  ASSERT_TRUE(Normalize(network).ok());
  const std::vector<float> inputs = InputColumn(network);
  const std::vector<float> targets = TargetColumn(network);
  EXPECT_EQ(std::bit_cast<uint32_t>(inputs[0]), 0x3E19999AU);
  EXPECT_EQ(std::bit_cast<uint32_t>(inputs[1]), 0x3F59999AU);
  EXPECT_EQ(std::bit_cast<uint32_t>(inputs[2]), 0x3EA5D39AU);
  EXPECT_EQ(std::bit_cast<uint32_t>(inputs[3]), 0x3EE48BECU);
  EXPECT_EQ(std::bit_cast<uint32_t>(targets[0]), 0x3E19999AU);
  EXPECT_EQ(std::bit_cast<uint32_t>(targets[1]), 0x3F59999AU);
  EXPECT_EQ(std::bit_cast<uint32_t>(targets[2]), 0x3EA5D399U);
  EXPECT_EQ(std::bit_cast<uint32_t>(targets[3]), 0x3EE48BEBU);
}

TEST_F(NormalizationTest, WidensAConstantColumnByOne) {
  Network network = MakeColumns({5, 5, 5}, {0, 1, 0});
  network.pat_norm = 1;
  ASSERT_TRUE(Normalize(network).ok());
  EXPECT_THAT(network.input_limits.lower, ElementsAre(5));
  EXPECT_THAT(network.input_limits.upper, ElementsAre(6));
  EXPECT_THAT(InputColumn(network), ElementsAre(0.15F, 0.15F, 0.15F));
}

TEST_F(NormalizationTest, KeepsUpperAboveLowerForConstantsThatOneDoesNotMove) {
  constexpr float kLargest = std::numeric_limits<float>::max();
  for (float x : {2e7F, -2e7F, 1e30F, -1e30F, 3e38F, -kLargest}) {
    Network network = MakeColumns({x, x}, {x, x});
    network.pat_norm = network.targ_norm = 1;
    ASSERT_TRUE(Normalize(network).ok());
    EXPECT_TRUE(network.input_limits.Measured(0)) << x;
    EXPECT_TRUE(network.target_limits.Measured(0)) << x;
    EXPECT_THAT(InputColumn(network),
                testing::Each(testing::AllOf(testing::Ge(0.15F), testing::Le(0.85F))));
  }
  Network network = MakeColumns({2e7F, 2e7F}, {0, 1});
  network.pat_norm = 1;
  ASSERT_TRUE(Normalize(network).ok());
  EXPECT_EQ(network.input_limits.upper[0], 20'000'002.0F);
}

TEST_F(NormalizationTest, ComparesWithLimitsThatStartAtTenToThe30) {
  Network network = MakeColumns({2e30F, 3e30F}, {-2e30F, -3e30F});
  ASSERT_TRUE(Normalize(network).ok());
  EXPECT_EQ(network.input_limits.lower[0], 1e30F);
  EXPECT_EQ(network.input_limits.upper[0], 3e30F);
  EXPECT_EQ(network.target_limits.lower[0], -3e30F);
  EXPECT_EQ(network.target_limits.upper[0], -1e30F);
}

TEST_F(NormalizationTest, UsesDataWithinZeroToOneAsTheyStand) {
  Network network = MakeColumns({0, 0.5F, 1}, {1, 0.25F, 0});
  ASSERT_TRUE(Normalize(network).ok());
  EXPECT_EQ(network.pat_norm, 0);
  EXPECT_EQ(network.targ_norm, 0);
  EXPECT_THAT(InputColumn(network), ElementsAre(0, 0.5F, 1));
  EXPECT_THAT(TargetColumn(network), ElementsAre(1, 0.25F, 0));
  EXPECT_FALSE(network.input_limits.Measured(0));
}

TEST_F(NormalizationTest, SwitchesInputScalingOnForOneValueOutOfRange) {
  for (float outside : {1.2F, std::bit_cast<float>(0x3F800001U), -0.001F}) {
    Network network = MakeColumns({0.5F, outside}, {0, 1});
    ASSERT_TRUE(Normalize(network).ok());
    EXPECT_EQ(network.pat_norm, 1) << outside;
    EXPECT_EQ(network.targ_norm, 0);
    EXPECT_THAT(TargetColumn(network), ElementsAre(0, 1));
    EXPECT_TRUE(network.input_limits.Measured(0));
  }
}

TEST_F(NormalizationTest, SwitchesTargetScalingOnForOneValueOutOfRange) {
  for (float outside : {1.2F, -0.001F}) {
    Network network = MakeColumns({0, 1}, {0.5F, outside});
    ASSERT_TRUE(Normalize(network).ok());
    EXPECT_EQ(network.targ_norm, 1) << outside;
    EXPECT_EQ(network.pat_norm, 0);
    EXPECT_THAT(InputColumn(network), ElementsAre(0, 1));
  }
}

TEST_F(NormalizationTest, ScalesTargetsOnceWhenInputsAreFoundFirst) {
  // Within a pattern the inputs come first.
  Network network = MakeColumns({9, 0}, {10, 20});
  ASSERT_TRUE(Normalize(network).ok());
  EXPECT_EQ(network.pat_norm, 1);
  EXPECT_EQ(network.targ_norm, 1);
  EXPECT_THAT(network.target_limits.lower, ElementsAre(10));
  EXPECT_THAT(network.target_limits.upper, ElementsAre(20));
  EXPECT_THAT(TargetColumn(network), ElementsAre(0.15F, 0.85F));
}

TEST_F(NormalizationTest, ScalesTargetsTwiceWhenInputsAreFoundBehindThem) {
  const std::vector<float> raw = {10, 13, 20};
  Network network = MakeColumns({0, 0.5F, 9}, raw);
  ASSERT_TRUE(Normalize(network).ok());
  EXPECT_EQ(network.pat_norm, 1);
  EXPECT_EQ(network.targ_norm, 1);
  // The second time the limits are those of the targets scaled once.
  EXPECT_THAT(network.target_limits.lower, ElementsAre(0.15F));
  EXPECT_THAT(network.target_limits.upper, ElementsAre(0.85F));
  for (size_t p = 0; p < raw.size(); ++p) {
    const float once = ScaledTarget(raw[p], 10, 20);
    EXPECT_EQ(TargetColumn(network)[p], ScaledTarget(once, 0.15F, 0.85F));
  }
}

TEST_F(NormalizationTest, ScalesTargetsTwiceWhenTheUserAskedForThemAndInputsAreOutOfRange) {
  Network network = MakeColumns({9, 0, 1}, {10, 13, 20});
  network.targ_norm = 1;
  ASSERT_TRUE(Normalize(network).ok());
  EXPECT_THAT(network.target_limits.lower, ElementsAre(0.15F));
  EXPECT_THAT(network.target_limits.upper, ElementsAre(0.85F));
  EXPECT_EQ(TargetColumn(network)[1], ScaledTarget(ScaledTarget(13, 10, 20), 0.15F, 0.85F));
}

TEST_F(NormalizationTest, ScalesOnceWhenBothAreAskedFor) {
  Network network = MakeColumns({9, 0, 1}, {10, 13, 20});
  network.pat_norm = network.targ_norm = 1;
  ASSERT_TRUE(Normalize(network).ok());
  EXPECT_THAT(network.target_limits.upper, ElementsAre(20));
  EXPECT_THAT(network.input_limits.upper, ElementsAre(9));
}

class RecallNormalizationTest : public NormalizationTest {
 protected:
  static Network MakeRecalled() {
    Network network = MakeLoaded({{2, 30}}, {{5}});
    network.mode = Mode::kRecall;
    network.pat_norm = network.targ_norm = 1;
    return network;
  }
  // The NORMALIZE section of the network's file, with other sections before it.
  void PutSection(const std::string& section) {
    m_files.Put("test.net", "TARNV2.1\nWEIGHTS:RANDOM\nCONNECTIONS:FULL\n" + section);
  }
};

TEST_F(RecallNormalizationTest, ScalesByTheLimitsOfTheFile) {
  PutSection("NORMALIZE:READ\nINPUTS\n1.0 10.0 \n5.0 30.0 \nOUTPUTS\n4.0 \n8.0 \nNORMALIZE:STOP\n");
  Network network = MakeRecalled();
  ASSERT_EQ(Normalize(network).message(), "");
  EXPECT_THAT(network.input_limits.lower, ElementsAre(1, 10));
  EXPECT_THAT(network.input_limits.upper, ElementsAre(5, 30));
  EXPECT_THAT(Inputs(network, 0), ElementsAre(ScaledInput(2, 1, 5), 0.85F));
  EXPECT_THAT(Targets(network, 0), ElementsAre(ScaledTarget(5, 4, 8)));
}

TEST_F(RecallNormalizationTest, ReadsTargetLimitsWithoutTargetsToScale) {
  PutSection("NORMALIZE:READ\nOUTPUTS\n4\n8\nNORMALIZE:STOP\n");
  Network network = MakeRecalled();
  network.pat_norm = 0;
  network.RecallTargets = false;
  ASSERT_TRUE(AllocateArrays(network).ok());
  ASSERT_EQ(Normalize(network).message(), "");
  EXPECT_THAT(network.target_limits.lower, ElementsAre(4));
  EXPECT_THAT(network.target_limits.upper, ElementsAre(8));
}

TEST_F(RecallNormalizationTest, ReadsValuesThatSpanLines) {
  PutSection("NORMALIZE:READ\r\nINPUTS\r\n1\r\n\r\n10 5\r\n30\r\nOUTPUTS x\r\n4 8");
  Network network = MakeRecalled();
  ASSERT_EQ(Normalize(network).message(), "");
  EXPECT_THAT(network.input_limits.upper, ElementsAre(5, 30));
  EXPECT_THAT(network.target_limits.upper, ElementsAre(8));
}

TEST_F(RecallNormalizationTest, ReadsPointsUnderADecimalCommaLocale) {
  const CommaLocale locale;
  PutSection("NORMALIZE:READ\nINPUTS\n1.5 10.25\n5.5 30.75\nOUTPUTS\n4.5\n8.5\n");
  Network network = MakeRecalled();
  ASSERT_EQ(Normalize(network).message(), "");
  EXPECT_THAT(network.input_limits.lower, ElementsAre(1.5F, 10.25F));
}

TEST_F(RecallNormalizationTest, ComparesFiveCharactersOfTheHeading) {
  PutSection("NORMALIZE:READ\nINPUTX\n1 10 5 30\nOUTPU\n4 8\n");
  Network network = MakeRecalled();
  EXPECT_EQ(Normalize(network).message(), "");
}

TEST_F(RecallNormalizationTest, FailsWithoutUsableInputLimits) {
  for (const char* section :
       {"", "NORMALIZE:NONE\n", "NORMALIZE:\n", "NORMALIZE:READY\nINPUTS\n1 10 5 30\n",
        "NORMALIZE:READ\nOUTPUTS\n4 8\n", "INPUTS\n1 10 5 30\nNORMALIZE:READ\n",
        "NORMALIZE:READ\nINPUTS\n1 10 5\nNORMALIZE:STOP\n", "NORMALIZE:READ\nINPUTS\n1 x 5 30\n",
        "NORMALIZE:READ\nINPUTS\n1 10 5 10\n", "NORMALIZE:READ\nINPUTS\n1 10 0 30\n"}) {
    PutSection(section);
    Network network = MakeRecalled();
    EXPECT_EQ(Normalize(network).message(), "Bad or missing pattern normalization data");
    EXPECT_THAT(network.input_limits.upper, ElementsAre(0, 0)) << section;
    EXPECT_THAT(Inputs(network, 0), ElementsAre(2, 30)) << section;
  }
}

TEST_F(RecallNormalizationTest, FailsWithoutUsableTargetLimits) {
  for (const char* section :
       {"", "NORMALIZE:NONE\n", "NORMALIZE:READ\nINPUTS\n1 10 5 30\nNORMALIZE:STOP\n",
        "NORMALIZE:READ\nOUTPUTS\n4\n", "NORMALIZE:READ\nOUTPUTS\n8 8\n"}) {
    PutSection(section);
    Network network = MakeRecalled();
    network.pat_norm = 0;
    EXPECT_EQ(Normalize(network).message(), "Bad or missing target normalization data");
    EXPECT_THAT(Targets(network, 0), ElementsAre(5)) << section;
  }
}

TEST_F(RecallNormalizationTest, FailsWithoutTheNetworkFile) {
  Network network = MakeRecalled();
  EXPECT_EQ(ReadInputLimits(network).message(), "Bad or missing pattern normalization data");
  EXPECT_EQ(ReadTargetLimits(network).message(), "Bad or missing target normalization data");
}

TEST_F(RecallNormalizationTest, NeedsNoSectionWhenNothingIsNormalized) {
  Network network = MakeRecalled();
  network.pat_norm = network.targ_norm = 0;
  EXPECT_TRUE(Normalize(network).ok());
  EXPECT_THAT(Inputs(network, 0), ElementsAre(2, 30));
}

TEST(ToDataUnits, InvertsTheScaling) {
  for (float x : {-3.0F, -0.516F, 0.0F, 2.0F, 6.9F, 7.0F}) {
    EXPECT_THAT(ToDataUnits(ScaledTarget(x, -3, 7), -3, 7), FloatNear(x, 1e-6F));
  }
}

TEST(ToDataUnits, GivesTheExactBits) {
  // Worked out in exact fractions; double arithmetic would give other last bits.
  EXPECT_EQ(std::bit_cast<uint32_t>(ToDataUnits(std::bit_cast<float>(0x3F5DBBCFU), -3, 7)),
            0x40E761A9U);
  EXPECT_EQ(std::bit_cast<uint32_t>(ToDataUnits(std::bit_cast<float>(0x3F594467U), -3, 7)),
            0x40DF67DDU);
  EXPECT_EQ(std::bit_cast<uint32_t>(ToDataUnits(std::bit_cast<float>(0x3F3F574FU), -3, 7)),
            0x40B11BE9U);
  EXPECT_EQ(std::bit_cast<uint32_t>(ToDataUnits(0.15F, -3, 7)), 0xC0400000U);
  EXPECT_EQ(std::bit_cast<uint32_t>(ToDataUnits(0.85F, -3, 7)), 0x40E00001U);
  // Near 0 the factor's own last bits show.
  EXPECT_EQ(std::bit_cast<uint32_t>(ToDataUnits(0.5F, -1, 1)), 0x23920000U);
}

TEST(ToDataUnits, IsAppliedOnlyToNormalizedData) {
  Network network;
  network.input_limits = {{0, -3}, {1, 7}};
  network.target_limits = {{0, 100}, {1, 200}};
  EXPECT_EQ(OutputScale(network, 1)(0.5F), 0.5F);
  EXPECT_EQ(InputToDataUnits(network, 1, 0.5F), 0.5F);
  network.targ_norm = 1;
  EXPECT_EQ(OutputScale(network, 1)(0.5F), 150.0F);
  EXPECT_EQ(InputToDataUnits(network, 1, 0.5F), 0.5F);
  network.pat_norm = 1;
  network.targ_norm = 0;
  EXPECT_EQ(OutputScale(network, 1)(0.5F), 0.5F);
  EXPECT_EQ(InputToDataUnits(network, 1, 0.5F), 2.0F);
}

}  // namespace
}  // namespace tarn
