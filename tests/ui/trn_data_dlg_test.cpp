#include "setup/ui/trn_data_dlg.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "ui/data_dialog_fixture.h"

namespace tarn {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class TrnDataDlgTest : public DataDialogFixture<TrnDataDlg> {
 protected:
  TrnDataDlgTest() {
    m_network.PatName = m_files.Make("inputs.txt");
    m_network.TargName = m_files.Make("targets.txt");
    m_network.PatCol = 2;
    m_network.TargCol = 3;
    m_network.pat_norm = 0;
    m_network.testPats = 4;
    m_network.overMeth = kTestEnding;
  }

  static std::vector<int> CheckedMethods(const wxDialog& dialog) {
    std::vector<int> checked;
    for (int radio = 103; radio <= 106; ++radio) {
      if (IsChecked(dialog, radio)) checked.push_back(radio);
    }
    return checked;
  }
};

TEST_F(TrnDataDlgTest, OpensWithEveryField) {
  const int result = Run({[this](TrnDataDlg& dialog) {
                            EXPECT_EQ(TextOf(dialog, 113), kInputsLabel + m_network.PatName);
                            EXPECT_EQ(TextOf(dialog, 111), "2");
                            EXPECT_FALSE(IsChecked(dialog, 109));
                            EXPECT_EQ(TextOf(dialog, 114), kTargetsLabel + m_network.TargName);
                            EXPECT_EQ(TextOf(dialog, 112), "3");
                            EXPECT_TRUE(IsChecked(dialog, 110));
                            EXPECT_EQ(TextOf(dialog, 107), "4");
                            EXPECT_THAT(CheckedMethods(dialog), ElementsAre(105));
                            EXPECT_EQ(FocusedId(), 111);
                          },
                          ClickStep(kOkId)});
  EXPECT_EQ(result, kOkId);
  EXPECT_THAT(m_dialogs.told, IsEmpty());
  EXPECT_EQ(m_network.overMeth, kTestEnding);
}

TEST_F(TrnDataDlgTest, ShowsWholePathsAsTheyAre) {
  const std::string path = m_files.Missing(std::string(150, 'x') + "/a & b_c.txt");
  m_network.PatName = m_network.TargName = path;
  (void)Run({[path](TrnDataDlg& dialog) {
               EXPECT_EQ(TextOf(dialog, 113), kInputsLabel + path);
               EXPECT_EQ(Utf8(Control(dialog, 113).GetToolTipText()), path);
               EXPECT_EQ(TextOf(dialog, 114), kTargetsLabel + path);
               EXPECT_EQ(Utf8(Control(dialog, 114).GetToolTipText()), path);
               EXPECT_LT(dialog.GetSize().GetWidth(), 800);
             },
             ClickStep(kCancelId)});
}

TEST_F(TrnDataDlgTest, OpensWithAndStoresEachInclusionMethod) {
  const std::pair<int, int32_t> methods[] = {
      {103, kTestRandom}, {104, kTestBeginning}, {105, kTestEnding}, {106, kTestNone}};
  for (const auto& [radio, code] : methods) {
    EXPECT_EQ(Run({ClickStep(radio), ClickStep(kOkId)}), kOkId);
    EXPECT_EQ(m_network.overMeth, code);
    (void)Run({[radio = radio](TrnDataDlg& dialog) {
                 EXPECT_THAT(CheckedMethods(dialog), ElementsAre(radio));
               },
               ClickStep(kCancelId)});
  }
}

TEST_F(TrnDataDlgTest, ChecksNoMethodForAnUnknownCodeAndTakesTheEnd) {
  m_network.overMeth = 9;
  EXPECT_EQ(Run({[](TrnDataDlg& dialog) { EXPECT_THAT(CheckedMethods(dialog), IsEmpty()); },
                 ClickStep(kOkId)}),
            kOkId);
  EXPECT_EQ(m_network.overMeth, kTestEnding);
}

TEST_F(TrnDataDlgTest, StoresEveryFieldWithOk) {
  const std::string inputs = m_files.Make("a.txt");
  const std::string targets = m_files.Make("b.txt");
  m_dialogs.files = {inputs, targets};
  const int result = Run({ClickStep(101), ClickStep(102),
                          [&](TrnDataDlg& dialog) {
                            EXPECT_EQ(TextOf(dialog, 113), kInputsLabel + inputs);
                            EXPECT_EQ(TextOf(dialog, 114), kTargetsLabel + targets);
                            EXPECT_EQ(Utf8(Control(dialog, 114).GetToolTipText()), targets);
                            Type(dialog, 111, "5");
                            Click(dialog, 109);
                            Type(dialog, 112, "6");
                            Click(dialog, 110);
                            Type(dialog, 107, "7");
                          },
                          ClickStep(kOkId)});
  EXPECT_EQ(result, kOkId);
  EXPECT_THAT(m_dialogs.file_questions, ElementsAre("Select Input Node Data|All Files (*.*)|*.*|",
                                                    "Select Target Data|All Files (*.*)|*.*|"));
  EXPECT_EQ(m_network.PatName, inputs);
  EXPECT_EQ(m_network.TargName, targets);
  EXPECT_EQ(m_network.PatCol, 5);
  EXPECT_EQ(m_network.TargCol, 6);
  EXPECT_EQ(m_network.pat_norm, 1);
  EXPECT_EQ(m_network.targ_norm, 0);
  EXPECT_EQ(m_network.testPats, 7);
}

TEST_F(TrnDataDlgTest, KeepsTheFilesWhenTheirChoiceIsCancelled) {
  m_dialogs.files = {std::nullopt, std::nullopt};
  (void)Run({ClickStep(101), ClickStep(102),
             [this](TrnDataDlg& dialog) {
               EXPECT_EQ(TextOf(dialog, 113), kInputsLabel + m_network.PatName);
               EXPECT_EQ(TextOf(dialog, 114), kTargetsLabel + m_network.TargName);
             },
             ClickStep(kCancelId)});
}

TEST_F(TrnDataDlgTest, StoresNothingWithCancel) {
  m_dialogs.files = {m_files.Make("a.txt")};
  const std::string inputs = m_network.PatName;
  EXPECT_EQ(Run({ClickStep(101),
                 [](TrnDataDlg& dialog) {
                   Type(dialog, 111, "5");
                   Click(dialog, 109);
                   Type(dialog, 107, "7");
                   Click(dialog, 103);
                 },
                 ClickStep(kCancelId)}),
            kCancelId);
  EXPECT_EQ(m_network.PatName, inputs);
  EXPECT_EQ(m_network.PatCol, 2);
  EXPECT_EQ(m_network.pat_norm, 0);
  EXPECT_EQ(m_network.testPats, 4);
  EXPECT_EQ(m_network.overMeth, kTestEnding);
}

TEST_F(TrnDataDlgTest, TellsEveryFieldThatFailsInOrderAndStaysOpenAtTheFirst) {
  m_dialogs.files = {m_files.Missing("a.txt"), m_files.Missing("b.txt")};
  EXPECT_EQ(Run({ClickStep(101), ClickStep(102),
                 [](TrnDataDlg& dialog) {
                   Type(dialog, 107, "-3");
                   Type(dialog, 111, "0");
                   Type(dialog, 112, "-1");
                   Click(dialog, kOkId);
                 },
                 [](TrnDataDlg& dialog) {
                   EXPECT_EQ(TopDialog(), &dialog);
                   EXPECT_EQ(FocusedId(), 111);
                 },
                 ClickStep(kCancelId)}),
            kCancelId);
  const std::string caption = "Training Data Error|";
  EXPECT_THAT(m_dialogs.told, ElementsAre(caption + "Invalid number of test cases - set to ZERO",
                                          caption + "Invalid start column specified for inputs",
                                          caption + "Invalid start column specified for targets",
                                          caption + "Input node data file not found",
                                          caption + "Target node data file not found"));
  EXPECT_THAT(m_dialogs.icons, testing::Each(MessageIcon::kExclamation));
  EXPECT_EQ(m_network.testPats, 0);
}

TEST_F(TrnDataDlgTest, GoesToTheButtonOfAFileThatIsMissing) {
  m_network.TargName = m_files.Missing("b.txt");
  (void)Run(
      {ClickStep(kOkId), [](TrnDataDlg&) { EXPECT_EQ(FocusedId(), 102); }, ClickStep(kCancelId)});
  EXPECT_THAT(m_dialogs.told, ElementsAre("Training Data Error|Target node data file not found"));
}

TEST_F(TrnDataDlgTest, TakesOverWhatTheDataEditorSaved) {
  const std::string data = m_files.Make("data.txt");
  m_files.Make("TABULO.TBI", data + "\n5\n");
  EXPECT_EQ(Run({[](TrnDataDlg& dialog) {
                   Type(dialog, 107, "8");
                   Click(dialog, 116);
                 },
                 [&](TrnDataDlg& dialog) {
                   EXPECT_EQ(TextOf(dialog, 113), kInputsLabel + data);
                   EXPECT_EQ(TextOf(dialog, 111), "1");
                   EXPECT_EQ(TextOf(dialog, 114), kTargetsLabel + data);
                   EXPECT_EQ(TextOf(dialog, 112), "5");
                   EXPECT_EQ(TextOf(dialog, 107), "8");
                   EXPECT_EQ(Utf8(Control(dialog, 113).GetToolTipText()), data);
                 },
                 ClickStep(kOkId)}),
            kOkId);
  EXPECT_FALSE(std::filesystem::exists(m_paths.hand_over));
  EXPECT_EQ(m_network.PatName, data);
  EXPECT_EQ(m_network.TargName, data);
  EXPECT_EQ(m_network.TargCol, 5);
  EXPECT_EQ(m_network.testPats, 8);
}

TEST_F(TrnDataDlgTest, TellsThatTheDataEditorSavedNothing) {
  (void)Run({[this](TrnDataDlg& dialog) {
               Type(dialog, 111, "9");
               Click(dialog, 116);
               EXPECT_EQ(TextOf(dialog, 111), "9");
               EXPECT_EQ(TextOf(dialog, 113), kInputsLabel + m_network.PatName);
             },
             ClickStep(kCancelId)});
  EXPECT_THAT(m_dialogs.told,
              ElementsAre("Invalid Tarn Request|No file saved durring Tabulo session!"));
}

TEST_F(TrnDataDlgTest, StartsTheDataEditorAndOpensItsHelp) {
  (void)Run({ClickStep(115), ClickStep(kHelpId), ClickStep(kCancelId)});
  EXPECT_EQ(m_dialogs.editor_starts, 1);
  EXPECT_THAT(m_dialogs.help, ElementsAre(HelpTopic::kTrainingData));
}

TEST_F(TrnDataDlgTest, IsWalkedThroughInReadingOrder) {
  std::vector<DialogStep> steps;
  // The radio buttons are one stop: that of the one which is checked.
  for (const int id : {109, 102, 112, 110, 107, 105, 115, 116, kOkId, kCancelId, kHelpId, 101}) {
    steps.emplace_back([](TrnDataDlg&) { Press(WXK_TAB); });
    steps.emplace_back([id](TrnDataDlg&) { EXPECT_EQ(FocusedId(), id); });
  }
  steps.emplace_back([](TrnDataDlg&) { Press(WXK_ESCAPE); });
  EXPECT_EQ(Run(steps), kCancelId);
}

}  // namespace
}  // namespace tarn
