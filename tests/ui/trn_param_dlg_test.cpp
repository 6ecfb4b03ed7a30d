#include "setup/ui/trn_param_dlg.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>
#include <wx/textctrl.h>

#include "resources/controls.h"
#include "setup/setup_fixture.h"
#include "support/fake_dialogs.h"
#include "ui/driver.h"

namespace tarn {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Texts = std::vector<std::pair<int, std::string>>;

class TrnParamDlgTest : public testing::Test {
 protected:
  int Run(const std::vector<Step>& steps) { return RunModal(m_dialog, steps); }
  void TypeAll(const Texts& texts) {
    for (const auto& [edit, text] : texts) Type(m_dialog, edit, text);
  }
  Step ClickStep(int id) {
    return [this, id] { Click(m_dialog, id); };
  }

  static Network MakeFilled() {
    Network network = MakeNetwork({2, 2, 1});
    network.FastProp = 1.5F;
    network.WeightRate = 7;
    network.Tolerance = 0.1F;
    network.reset_weights = true;
    return network;
  }

  FakeDialogs m_dialogs;
  Network m_network = MakeFilled();
  TrnParamDlg m_dialog{nullptr, m_network, m_dialogs};
};

TEST_F(TrnParamDlgTest, OpensWithEveryParameterAndTheBoxUnchecked) {
  const Texts texts = {{101, "10000"},    {102, "100"},      {103, "500"},      {104, "5"},
                       {105, "0.010000"}, {106, "0.001000"}, {107, "0.300000"}, {108, "0.800000"},
                       {109, "1.500000"}, {110, "7"},        {112, "0.100000"}};
  const int result = Run({[&] {
                            for (const auto& [edit, text] : texts) {
                              EXPECT_EQ(TextOf(m_dialog, edit), text) << edit;
                            }
                            EXPECT_FALSE(IsChecked(m_dialog, 111));
                            EXPECT_EQ(FocusedId(), 101);
                          },
                          ClickStep(kOkId)});
  EXPECT_EQ(result, kOkId);
  EXPECT_THAT(m_dialogs.told, IsEmpty());
  EXPECT_FALSE(m_network.reset_weights);
}

TEST_F(TrnParamDlgTest, StoresEveryFieldWithOk) {
  const int result = Run({[this] {
                            TypeAll({{101, "20"},
                                     {102, "3"},
                                     {103, "4"},
                                     {104, "6"},
                                     {105, "0.5"},
                                     {106, "0.25"},
                                     {107, "1"},
                                     {108, "0"},
                                     {109, "3"},
                                     {110, "8"},
                                     {112, "0.75"}});
                            Click(m_dialog, 111);
                          },
                          ClickStep(kOkId)});
  EXPECT_EQ(result, kOkId);
  EXPECT_EQ(m_network.MaxIterations, 20);
  EXPECT_EQ(m_network.LRC, 3);
  EXPECT_EQ(m_network.SaveRate, 4);
  EXPECT_EQ(m_network.UpdateRate, 6);
  EXPECT_EQ(m_network.Eta, 0.5F);
  EXPECT_EQ(m_network.EtaMin, 0.25F);
  EXPECT_EQ(m_network.EtaMax, 1.0F);
  EXPECT_EQ(m_network.Alpha, 0.0F);
  EXPECT_EQ(m_network.FastProp, 3.0F);
  EXPECT_EQ(m_network.WeightRate, 8);
  EXPECT_EQ(m_network.Tolerance, 0.75F);
  EXPECT_TRUE(m_network.reset_weights);
}

TEST_F(TrnParamDlgTest, StoresNothingWithCancel) {
  m_network.reset_weights = false;
  EXPECT_EQ(Run({[this] {
                   TypeAll({{101, "20"}, {105, "0.5"}, {112, "2"}});
                   Click(m_dialog, 111);
                 },
                 ClickStep(kCancelId)}),
            kCancelId);
  EXPECT_EQ(m_network.MaxIterations, 10000);
  EXPECT_EQ(m_network.Eta, 0.01F);
  EXPECT_EQ(m_network.Tolerance, 0.1F);
  EXPECT_FALSE(m_network.reset_weights);
}

TEST_F(TrnParamDlgTest, TellsEveryFieldThatFailsInOrderAndStaysOpenAtTheFirst) {
  EXPECT_EQ(Run({[this] {
                   TypeAll({{101, "0"},
                            {102, "0"},
                            {103, "-5"},
                            {104, "0"},
                            {105, ""},
                            {106, "2"},
                            {107, "0"},
                            {108, "-0.1"},
                            {109, "3.01"},
                            {110, "-2"},
                            {112, "-1"}});
                   Click(m_dialog, kOkId);
                 },
                 [this] {
                   EXPECT_EQ(TopDialog(), &m_dialog);
                   EXPECT_EQ(FocusedId(), 109);
                 },
                 ClickStep(kCancelId)}),
            kCancelId);
  const std::string caption = "Training Parameter Error|";
  EXPECT_THAT(m_dialogs.told, ElementsAre(caption + "Fast-Prop coefficient range is 0. to 3.",
                                          caption + "Momentum factor range is 0. to 1.",
                                          caption + "Learn rate maximum range is >0. to 1.",
                                          caption + "Learn rate minimum range is >0. to 1.",
                                          caption + "Learn rate range is >0. to 1.",
                                          caption + "Screen update rate out of range; set to 1",
                                          caption + "AutoSave rate out of range; feature disabled",
                                          caption + "Learn rate control out of range (>0)",
                                          caption + "Maximum iterations out of range (>0)"));
  EXPECT_THAT(m_dialogs.icons, testing::Each(MessageIcon::kExclamation));
  EXPECT_EQ(m_network.UpdateRate, 1);
  EXPECT_EQ(m_network.SaveRate, 0);
  EXPECT_EQ(m_network.WeightRate, 7);
  EXPECT_EQ(m_network.Tolerance, 0.0F);
}

TEST_F(TrnParamDlgTest, ClosesAfterTellingWhatItSetRight) {
  EXPECT_EQ(Run({[this] { TypeAll({{103, "-1"}, {104, "0"}}); }, ClickStep(kOkId)}), kOkId);
  EXPECT_EQ(m_dialogs.told.size(), 2U);
}

TEST_F(TrnParamDlgTest, TakesThirtyNineCharacters) {
  EXPECT_EQ(Run({[this] {
                   Type(m_dialog, 101, std::string(38, '0') + "4");
                   Control<wxTextCtrl>(m_dialog, 101).WriteText("5");
                   EXPECT_EQ(TextOf(m_dialog, 101), std::string(38, '0') + "4");
                 },
                 ClickStep(kOkId)}),
            kOkId);
  EXPECT_EQ(m_network.MaxIterations, 4);
}

TEST_F(TrnParamDlgTest, OpensItsHelp) {
  (void)Run({ClickStep(kHelpId), ClickStep(kCancelId)});
  EXPECT_THAT(m_dialogs.help, ElementsAre(HelpTopic::kTrainingParameters));
}

TEST_F(TrnParamDlgTest, IsLeftWithRealKeysInReadingOrder) {
  std::vector<Step> steps = {[this] { Type(m_dialog, 101, "33"); }};
  for (const int id : {102, 103, 104, 105, 106, 107, 108, 109, 110, 112, 111, 1, 2, 998, 101}) {
    steps.emplace_back([] { Press(WXK_TAB); });
    steps.emplace_back([id] { EXPECT_EQ(FocusedId(), id); });
  }
  steps.emplace_back([] { Press(WXK_RETURN); });
  EXPECT_EQ(Run(steps), kOkId);
  EXPECT_EQ(m_network.MaxIterations, 33);
}

}  // namespace
}  // namespace tarn
