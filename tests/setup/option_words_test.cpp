#include "setup/option_words.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "engine/network.h"

namespace tarn {
namespace {

using testing::ElementsAre;

TEST(OptionWords, SplitAListAtItsCommasAndTrimTheItems) {
  EXPECT_THAT(SplitList("4, 8 ,3"), ElementsAre("4", "8", "3"));
  EXPECT_THAT(SplitList("4"), ElementsAre("4"));
  EXPECT_THAT(SplitList(""), ElementsAre(""));
  EXPECT_THAT(SplitList(",a,"), ElementsAre("", "a", ""));
}

TEST(OptionWords, KnowTransferFunctionsInAnyCase) {
  EXPECT_EQ(ParseTransfer("sigmoid"), kSigmoid);
  EXPECT_EQ(ParseTransfer("Gaussian"), kGaussian);
  EXPECT_EQ(ParseTransfer("TANH"), kTanh);
  EXPECT_EQ(ParseTransfer("sEch"), kSech);
  EXPECT_EQ(ParseTransfer("tan"), std::nullopt);
  EXPECT_EQ(ParseTransfer(""), std::nullopt);
}

TEST(OptionWords, KnowTestMethodsAndSwitches) {
  EXPECT_EQ(ParseTestMethod("none"), kTestNone);
  EXPECT_EQ(ParseTestMethod("beginning"), kTestBeginning);
  EXPECT_EQ(ParseTestMethod("end"), kTestEnding);
  EXPECT_EQ(ParseTestMethod("Random"), kTestRandom);
  EXPECT_EQ(ParseTestMethod("ending"), std::nullopt);
  EXPECT_EQ(ParseSwitch("on"), true);
  EXPECT_EQ(ParseSwitch("OFF"), false);
  EXPECT_EQ(ParseSwitch("1"), std::nullopt);
}

TEST(OptionWords, TakeOnlyWholeTextsForNumbers) {
  for (const char* text : {"0", "-5", "+7", " 12 ", "2147483647"}) EXPECT_TRUE(IsInteger(text));
  for (const char* text : {"", "x", "12x", "1.5", "1e3", "2147483648", "1 2"}) {
    EXPECT_FALSE(IsInteger(text)) << text;
  }
  for (const char* text : {"0", "-0.5", ".5", "1e-3", "5.", " 1 "}) EXPECT_TRUE(IsReal(text));
  for (const char* text : {"", "x", "0.5x", "nan", "inf", "0,5", "1e60", "0.5 0.6"}) {
    EXPECT_FALSE(IsReal(text)) << text;
  }
}

TEST(OptionWords, RefuseNumbersThatAFieldWouldCut) {
  EXPECT_TRUE(IsInteger(std::string(38, '0') + "1"));
  EXPECT_FALSE(IsInteger(std::string(39, '0') + "1"));
}

}  // namespace
}  // namespace tarn
