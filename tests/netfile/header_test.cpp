#include "netfile/header.h"

#include "engine/messages.h"
#include "netfile_test.h"
#include "support/comma_locale.h"

namespace tarn {
namespace {

using testing::ElementsAre;

class HeaderReader : public NetFileTest {
 protected:
  // The node counts of all layer slots.
  std::vector<int32_t> Nodes() const {
    std::vector<int32_t> nodes;
    for (const Layer& layer : m_network.layers) nodes.push_back(layer.nUnits);
    return nodes;
  }
  std::vector<int32_t> Codes() const {
    std::vector<int32_t> codes;
    for (const Layer& layer : m_network.layers) codes.push_back(layer.TransFunc);
    return codes;
  }
  bool Reads(const Lines& lines) {
    const Status status = ReadHeaderOf(lines);
    EXPECT_EQ(status.message(), "");
    return status.ok();
  }
};

TEST_F(HeaderReader, ReadsEveryFieldOfTheCurrentVersion) {
  ASSERT_TRUE(Reads(SmallNetwork()));
  EXPECT_EQ(m_network.version, 3);
  EXPECT_EQ(m_network.NetName, "Small");
  EXPECT_EQ(m_network.nLayers, 3);
  EXPECT_THAT(Nodes(), ElementsAre(2, 2, 1, 0, 0, 0, 0, 0, 0, 0));
  EXPECT_THAT(Codes(), ElementsAre(0, 1, 2, 0, 0, 0, 0, 0, 0, 0));
  EXPECT_EQ(m_network.FastProp, 0.5F);
  EXPECT_EQ(m_network.Eta, 0.01F);
  EXPECT_EQ(m_network.EtaMin, 0.001F);
  EXPECT_EQ(m_network.EtaMax, 0.3F);
  EXPECT_EQ(m_network.Alpha, 0.8F);
  EXPECT_EQ(m_network.Tolerance, 0.25F);
  EXPECT_EQ(m_network.MaxIterations, 10000);
  EXPECT_EQ(m_network.LRC, 100);
  EXPECT_EQ(m_network.UpdateRate, 5);
  EXPECT_EQ(m_network.SaveRate, 500);
  EXPECT_EQ(m_network.WeightRate, 7);
  EXPECT_EQ(m_network.PatName, "in.txt");
  EXPECT_EQ(m_network.PatCol, 2);
  EXPECT_EQ(m_network.pat_norm, 1);
  EXPECT_EQ(m_network.targ_norm, 0);
  EXPECT_EQ(m_network.TargName, "targets.txt");
  EXPECT_EQ(m_network.TargCol, 3);
  EXPECT_EQ(m_network.overMeth, kTestEnding);
  EXPECT_EQ(m_network.testPats, 10);
  EXPECT_FALSE(m_network.random_weights);
  EXPECT_EQ(m_files.OpenHandles(), 0);
}

TEST_F(HeaderReader, GivesEveryLayerItsRole) {
  ASSERT_TRUE(Reads(WithLine(WithLine(SmallNetwork(), 3, "4"), 4, "2 3 4 1 0 1 2")));
  const auto& layers = m_network.layers;
  EXPECT_EQ(layers[0].role, LayerRole::kInput);
  EXPECT_EQ(layers[1].role, LayerRole::kHidden);
  EXPECT_EQ(layers[2].role, LayerRole::kHidden);
  EXPECT_EQ(layers[3].role, LayerRole::kOutput);
  EXPECT_FALSE(layers[0].computed);
  EXPECT_TRUE(layers[1].computed && layers[2].computed && layers[3].computed);
}

TEST_F(HeaderReader, ClearsTheSlotsBehindTheLastLayer) {
  for (Layer& layer : m_network.layers) layer.nUnits = layer.TransFunc = 3;
  ASSERT_TRUE(Reads(SmallNetwork()));
  EXPECT_THAT(Nodes(), ElementsAre(2, 2, 1, 0, 0, 0, 0, 0, 0, 0));
  EXPECT_THAT(Codes(), ElementsAre(0, 1, 2, 0, 0, 0, 0, 0, 0, 0));
}

TEST_F(HeaderReader, ReadsTenLayers) {
  const Lines lines = WithLine(SmallNetwork(), 3, "10");
  ASSERT_TRUE(Reads(WithLine(lines, 4, "1 2 3 4 5 6 7 8 9 10 0 1 2 3 0 1 2 3 0")));
  EXPECT_THAT(Nodes(), ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 9, 10));
  EXPECT_THAT(Codes(), ElementsAre(0, 0, 1, 2, 3, 0, 1, 2, 3, 0));
  EXPECT_EQ(m_network.layers[9].role, LayerRole::kOutput);
}

TEST_F(HeaderReader, TellsTheVersionsApartByTheirMagic) {
  for (const auto& [magic, version] :
       std::vector<std::pair<std::string, int32_t>>{{"TARNV1.0", 0},
                                                    {"TARNV1.5", 1},
                                                    {"TARNV2.0", 2},
                                                    {"TARNV2.2", 2},
                                                    {"TARNV2.9", 2},
                                                    {"TARNV2.", 2},
                                                    {"TARNV2.x", 2},
                                                    {"TARNV2.1", 3}}) {
    SCOPED_TRACE(magic);
    ASSERT_TRUE(Reads(OldHeader(magic)));
    EXPECT_EQ(m_network.version, version);
  }
}

TEST_F(HeaderReader, IgnoresWhatFollowsTheMagic) {
  ASSERT_TRUE(Reads(WithLine(SmallNetwork(), 1, "TARNV2.17 and more")));
  EXPECT_EQ(m_network.version, 3);
  ASSERT_TRUE(Reads(WithLine(OldHeader("TARNV1.0"), 1, "TARNV1.05")));
  EXPECT_EQ(m_network.version, 0);
}

TEST_F(HeaderReader, TakesTheNameAsItStands) {
  ASSERT_TRUE(Reads(WithLine(SmallNetwork(), 2, "  a name, \xC3\xA4 and all \t")));
  EXPECT_EQ(m_network.NetName, "  a name, \xC3\xA4 and all \t");
  ASSERT_TRUE(Reads(WithLine(SmallNetwork(), 2, std::string("cut\0off", 7))));
  EXPECT_EQ(m_network.NetName, "cut");
}

TEST_F(HeaderReader, ReadsLinesOf254Characters) {
  const std::string name(254, 'n');
  Lines lines = WithLine(SmallNetwork(), 2, name);
  lines[8] = lines[11] = std::string(254, 'f');
  ASSERT_TRUE(Reads(lines));
  EXPECT_EQ(m_network.NetName, name);
  EXPECT_EQ(m_network.PatName, lines[8]);
  EXPECT_EQ(m_network.TargName, lines[8]);
  // The rest of a longer line is a line of its own.
  EXPECT_FALSE(ReadHeaderOf(WithLine(SmallNetwork(), 2, name + "n")).ok());
  lines = SmallNetwork();
  lines[0] = "TARNV2.1" + std::string(246, ' ') + "Long";
  lines.erase(lines.begin() + 1);
  ASSERT_TRUE(Reads(lines));
  EXPECT_EQ(m_network.NetName, "Long");
}

TEST_F(HeaderReader, TakesALayerCountThatIsNoNumberAsZero) {
  ASSERT_TRUE(Reads(WithLine(SmallNetwork(), 3, "three")));
  EXPECT_EQ(m_network.nLayers, 0);
  EXPECT_EQ(Nodes(), std::vector<int32_t>(kMaxLayers, 0));
  EXPECT_EQ(CheckShape(m_network).message(), kLayerCountOutOfRange);
}

TEST_F(HeaderReader, LeavesLayerCountsBelowThreeToTheShapeCheck) {
  for (const char* count : {"-2147483648", "-99999999999", "-1", "0", "1", "2"}) {
    SCOPED_TRACE(count);
    ASSERT_TRUE(Reads(WithLine(SmallNetwork(), 3, count)));
    EXPECT_LT(m_network.nLayers, kMinLayers);
    EXPECT_EQ(AllocateArrays(m_network).message(), kLayerCountOutOfRange);
  }
}

TEST_F(HeaderReader, LeavesAbsurdNodeCountsToTheShapeCheck) {
  const std::vector<std::pair<std::string, std::string_view>> cases = {
      {"2147483647 2 1 0 0", kOutOfMemory},
      {"2 2147483647 1 0 0", kOutOfMemory},
      {"2 2 2147483647 0 0", kOutOfMemory},
      {"2147483647 2147483647 2147483647 0 0", kOutOfMemory},
      {"-1 2 1 0 0", kInputNodesInvalid},
      {"2 -1 1 0 0", "Hidden layer 1 has an invalid node count"},
      {"2 2 -1 0 0", kOutputNodesInvalid},
      {"-2147483648 0 0 0 0", kInputNodesInvalid}};
  for (const auto& [line, message] : cases) {
    SCOPED_TRACE(line);
    ASSERT_TRUE(Reads(WithLine(SmallNetwork(), 4, line)));
    EXPECT_EQ(CheckShape(m_network).message(), message);
    EXPECT_EQ(AllocateArrays(m_network).message(), message);
  }
}

TEST_F(HeaderReader, ChecksNoOtherRanges) {
  Lines lines = SmallNetwork();
  lines[3] = "-5 0 2147483647 -1 99";
  lines[4] = "-1 -2 7 1e30 -0.5 -3";
  lines[5] = "-10000";
  lines[6] = "-100 -5";
  lines[7] = "-500 -7";
  lines[9] = "0";
  lines[10] = "-3 2";
  lines[12] = "-1";
  lines[13] = "17 -20";
  ASSERT_TRUE(Reads(lines));
  EXPECT_THAT(Codes(), ElementsAre(0, -1, 99, 0, 0, 0, 0, 0, 0, 0));
  EXPECT_EQ(m_network.FastProp, -1.0F);
  EXPECT_EQ(m_network.EtaMax, 1e30F);
  EXPECT_EQ(m_network.MaxIterations, -10000);
  EXPECT_EQ(m_network.UpdateRate, -5);
  EXPECT_EQ(m_network.WeightRate, -7);
  EXPECT_EQ(m_network.PatCol, 0);
  EXPECT_EQ(m_network.pat_norm, -3);
  EXPECT_EQ(m_network.overMeth, 17);
  EXPECT_EQ(m_network.testPats, -20);
}

TEST_F(HeaderReader, TakesNoToleranceWhereTheLineHasFiveValues) {
  m_network.Tolerance = 3;
  ASSERT_TRUE(Reads(WithLine(SmallNetwork(), 5, "0.0  0.01  0.001  0.3  0.8")));
  EXPECT_EQ(m_network.Tolerance, 0.0F);
  m_network.Tolerance = 3;
  ASSERT_TRUE(Reads(WithLine(SmallNetwork(), 5, "0.0 0.01 0.001 0.3 0.8 none")));
  EXPECT_EQ(m_network.Tolerance, 0.0F);
}

TEST_F(HeaderReader, TakesTheToleranceOfTheCurrentVersionOnly) {
  for (const char* magic : {"TARNV1.0", "TARNV1.5", "TARNV2.0"}) {
    SCOPED_TRACE(magic);
    m_network.Tolerance = 3;
    ASSERT_TRUE(Reads(WithLine(OldHeader(magic), 5, "0.5 0.01 0.001 0.3 0.8 0.25")));
    EXPECT_EQ(m_network.Alpha, 0.8F);
    EXPECT_EQ(m_network.Tolerance, 0.0F);
  }
}

TEST_F(HeaderReader, TakesAnUpdateRateOf1WhenTheLineHoldsTheLrcStartAlone) {
  for (const char* line : {"100", "100 x"}) {
    m_network.UpdateRate = 9;
    ASSERT_TRUE(Reads(WithLine(SmallNetwork(), 7, line)));
    EXPECT_EQ(m_network.LRC, 100);
    EXPECT_EQ(m_network.UpdateRate, 1);
  }
}

TEST_F(HeaderReader, ReadsTheWeightRateFromVersion2On) {
  for (const char* magic : {"TARNV1.0", "TARNV1.5"}) {
    SCOPED_TRACE(magic);
    m_network.WeightRate = 9;
    ASSERT_TRUE(Reads(WithLine(OldHeader(magic), 8, "500 7")));
    EXPECT_EQ(m_network.SaveRate, 500);
    EXPECT_EQ(m_network.WeightRate, 0);
  }
  ASSERT_TRUE(Reads(WithLine(OldHeader("TARNV2.2"), 8, "500 7")));
  EXPECT_EQ(m_network.WeightRate, 7);
}

TEST_F(HeaderReader, HasNoTransferCodesInTheOldestVersion) {
  for (Layer& layer : m_network.layers) layer.TransFunc = kSech;
  ASSERT_TRUE(Reads(OldHeader("TARNV1.0")));
  EXPECT_EQ(Codes(), std::vector<int32_t>(kMaxLayers, 0));
  ASSERT_TRUE(Reads(WithLine(OldHeader("TARNV1.0"), 4, "2 2 1 3 3")));
  EXPECT_EQ(Codes(), std::vector<int32_t>(kMaxLayers, 0));
}

TEST_F(HeaderReader, DerivesTheTestSetOfTheOldestVersionFromItsTwoEnds) {
  struct Case {
    const char* line;
    int32_t method, patterns;
  };
  for (const Case& c :
       {Case{"1 20", 1, 20}, Case{"21 40", 2, 20}, Case{"0 0", 0, 0}, Case{"5 4", 0, 0},
        Case{"1 1", 1, 1}, Case{"7 7", 2, 1}, Case{"1 0", 0, 0}, Case{"0 20", 0, 0},
        Case{"-3 20", 0, 0}, Case{"1 2147483647", 1, 2147483647},
        Case{"-2147483648 2147483647", 0, 0}, Case{"2147483647 -2147483648", 0, 0}}) {
    SCOPED_TRACE(c.line);
    m_network.overMeth = m_network.testPats = m_network.testStart = m_network.testEnd = 77;
    ASSERT_TRUE(Reads(WithLine(OldHeader("TARNV1.0"), 14, c.line)));
    EXPECT_EQ(m_network.overMeth, c.method);
    EXPECT_EQ(m_network.testPats, c.patterns);
    EXPECT_EQ(m_network.testStart, 77);
    EXPECT_EQ(m_network.testEnd, 77);
  }
}

TEST_F(HeaderReader, KeepsTheOldFileNameForAnEmptyLine) {
  m_network.PatName = "old inputs";
  m_network.TargName = "old targets";
  ASSERT_TRUE(Reads(WithLine(WithLine(SmallNetwork(), 9, ""), 12, "")));
  EXPECT_EQ(m_network.PatName, "old inputs");
  EXPECT_EQ(m_network.TargName, "old targets");
}

TEST_F(HeaderReader, AsksForRandomWeightsByTheWholeLineOnly) {
  const std::vector<std::pair<std::string, bool>> cases = {
      {"WEIGHTS:RANDOM\n", true},   {"WEIGHTS:RANDOM\r\n", true},
      {"WEIGHTS:RANDOM", false},    {"WEIGHTS:RANDOMLY\n", false},
      {"WEIGHTS:RANDOM \n", false}, {" WEIGHTS:RANDOM\n", false},
      {"WEIGHTS:READ\n", false},    {"", false},
      {"\nWEIGHTS:RANDOM\n", false}};
  Lines header = SmallNetwork();
  header.resize(14);
  for (const auto& [text, random] : cases) {
    SCOPED_TRACE(text);
    m_files.Put("/home/a.net", Join(header) + text);
    m_network.random_weights = !random;
    EXPECT_TRUE(ReadHeader(m_network).ok());
    EXPECT_EQ(m_network.random_weights, random);
  }
}

TEST_F(HeaderReader, NeverAsksForRandomWeightsInTheOldestVersion) {
  m_network.random_weights = true;
  ASSERT_TRUE(Reads(WithLine(OldHeader("TARNV1.0"), 15, "WEIGHTS:RANDOM")));
  EXPECT_FALSE(m_network.random_weights);
  ASSERT_TRUE(Reads(WithLine(OldHeader("TARNV1.5"), 15, "WEIGHTS:RANDOM")));
  EXPECT_TRUE(m_network.random_weights);
}

TEST_F(HeaderReader, ReadsTheValuesOfLine4FromTheStreamButCountsLines) {
  ASSERT_TRUE(Reads(WithLine(SmallNetwork(), 4, "  2\t+2  1 1 2 and more")));
  EXPECT_THAT(Codes(), ElementsAre(0, 1, 2, 0, 0, 0, 0, 0, 0, 0));
  // Over two lines they are all found, but the second one is taken for the learn rates.
  EXPECT_EQ(ReadHeaderOf(WithLine(SmallNetwork(), 4, "2 2 1\n1 2")).message(),
            "Input error reading NET file - Invalid learning rates!");
  EXPECT_THAT(Codes(), ElementsAre(0, 1, 2, 0, 0, 0, 0, 0, 0, 0));
}

TEST_F(HeaderReader, IgnoresWhatFollowsTheNumbersOfALine) {
  Lines lines = SmallNetwork();
  for (const size_t number : {3U, 5U, 6U, 7U, 8U, 10U, 11U, 13U, 14U}) lines[number - 1] += "x 9";
  ASSERT_TRUE(Reads(lines));
  EXPECT_EQ(m_network.testPats, 10);
  EXPECT_EQ(m_network.Tolerance, 0.25F);
}

TEST_F(HeaderReader, ReadsLinesThatEndWithCrLf) {
  Put(SmallNetwork(), "\r\n");
  ASSERT_TRUE(ReadHeader(m_network).ok());
  EXPECT_EQ(m_network.NetName, "Small");
  EXPECT_EQ(m_network.PatName, "in.txt");
  EXPECT_EQ(m_network.TargName, "targets.txt");
  EXPECT_EQ(m_network.testPats, 10);
}

TEST_F(HeaderReader, ReadsTheSameUnderADecimalCommaLocale) {
  const CommaLocale comma;
  ASSERT_TRUE(Reads(SmallNetwork()));
  EXPECT_EQ(m_network.Eta, 0.01F);
  EXPECT_EQ(m_network.Tolerance, 0.25F);
}

TEST_F(HeaderReader, EntersTheFolderOfTheFileBeforeItReads) {
  m_files.Put("/other/b.net", Join(SmallNetwork()));
  m_network.file_name = "/other/b.net";
  ASSERT_TRUE(ReadHeader(m_network).ok());
  EXPECT_EQ(m_files.CurrentDirectory(), "/other");
  m_files.Put("/third/c.net", "no network");
  m_network.file_name = "/third/c.net";
  EXPECT_FALSE(ReadHeader(m_network).ok());
  EXPECT_EQ(m_files.CurrentDirectory(), "/third");
}

TEST_F(HeaderReader, CreatesAMissingFileAsANewNetwork) {
  ASSERT_TRUE(ReadHeader(m_network).ok());
  EXPECT_EQ(Get("/home/a.net"), NewNetworkText());
  EXPECT_EQ(m_network.version, 3);
  EXPECT_EQ(m_network.NetName, "NO NAME");
  EXPECT_THAT(Nodes(), ElementsAre(2, 2, 1, 0, 0, 0, 0, 0, 0, 0));
  EXPECT_EQ(Codes(), std::vector<int32_t>(kMaxLayers, 0));
  EXPECT_EQ(m_network.FastProp, 0.0F);
  EXPECT_EQ(m_network.Eta, 0.01F);
  EXPECT_EQ(m_network.EtaMin, 0.001F);
  EXPECT_EQ(m_network.EtaMax, 0.3F);
  EXPECT_EQ(m_network.Alpha, 0.8F);
  EXPECT_EQ(m_network.Tolerance, 0.0F);
  EXPECT_EQ(m_network.MaxIterations, 10000);
  EXPECT_EQ(m_network.LRC, 100);
  EXPECT_EQ(m_network.UpdateRate, 5);
  EXPECT_EQ(m_network.SaveRate, 500);
  EXPECT_EQ(m_network.WeightRate, 0);
  EXPECT_EQ(m_network.PatName, "none");
  EXPECT_EQ(m_network.PatCol, 1);
  EXPECT_EQ(m_network.pat_norm, 1);
  EXPECT_EQ(m_network.targ_norm, 1);
  EXPECT_EQ(m_network.TargName, "none");
  EXPECT_EQ(m_network.TargCol, 1);
  EXPECT_EQ(m_network.overMeth, 0);
  EXPECT_EQ(m_network.testPats, 0);
  EXPECT_TRUE(m_network.random_weights);
}

}  // namespace
}  // namespace tarn
