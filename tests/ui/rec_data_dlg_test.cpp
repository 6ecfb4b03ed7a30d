#include "setup/ui/rec_data_dlg.h"

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

class RecDataDlgTest : public DataDialogFixture<RecDataDlg> {
 protected:
  RecDataDlgTest() {
    m_network.RecallPatName = m_files.Make("inputs.txt");
    m_network.RecallPatCol = 2;
  }
};

TEST_F(RecDataDlgTest, OpensWithEveryField) {
  m_network.RecallTargName = m_files.Make("targets.txt");
  m_network.RecallTargCol = 3;
  const int result =
      Run({[this](RecDataDlg& dialog) {
             EXPECT_EQ(TextOf(dialog, 113), kInputsLabel + m_network.RecallPatName);
             EXPECT_EQ(TextOf(dialog, 111), "2");
             EXPECT_EQ(TextOf(dialog, 114), kTargetsLabel + m_network.RecallTargName);
             EXPECT_EQ(TextOf(dialog, 112), "3");
             EXPECT_EQ(Utf8(Control(dialog, 113).GetToolTipText()), m_network.RecallPatName);
             EXPECT_EQ(FocusedId(), 111);
           },
           ClickStep(kOkId)});
  EXPECT_EQ(result, kOkId);
  EXPECT_TRUE(m_network.RecallTargets);
}

TEST_F(RecDataDlgTest, OpensWithoutFilesBeforeTheFirstRecall) {
  m_network.RecallPatName = "";
  m_network.RecallPatCol = 1;
  (void)Run({[](RecDataDlg& dialog) {
               EXPECT_EQ(TextOf(dialog, 113), kInputsLabel);
               EXPECT_EQ(TextOf(dialog, 111), "1");
               EXPECT_EQ(TextOf(dialog, 114), kTargetsLabel);
               EXPECT_EQ(TextOf(dialog, 112), "0");
             },
             ClickStep(kCancelId)});
}

TEST_F(RecDataDlgTest, StoresFilesAndColumnsWithOk) {
  const std::string inputs = m_files.Make("a.txt");
  const std::string targets = m_files.Make("b.txt");
  m_dialogs.files = {inputs, targets};
  const int result = Run({ClickStep(101), ClickStep(102),
                          [&](RecDataDlg& dialog) {
                            EXPECT_EQ(TextOf(dialog, 113), kInputsLabel + inputs);
                            EXPECT_EQ(TextOf(dialog, 114), kTargetsLabel + targets);
                            Type(dialog, 111, "4");
                            Type(dialog, 112, "6");
                          },
                          ClickStep(kOkId)});
  EXPECT_EQ(result, kOkId);
  EXPECT_THAT(m_dialogs.told, IsEmpty());
  EXPECT_THAT(m_dialogs.file_questions, ElementsAre("Select Input Node Data|All Files (*.*)|*.*|",
                                                    "Select Target Data|All Files (*.*)|*.*|"));
  EXPECT_EQ(m_network.RecallPatName, inputs);
  EXPECT_EQ(m_network.RecallPatCol, 4);
  EXPECT_EQ(m_network.RecallTargName, targets);
  EXPECT_EQ(m_network.RecallTargCol, 6);
  EXPECT_TRUE(m_network.RecallTargets);
}

TEST_F(RecDataDlgTest, AcceptsInputsAlone) {
  m_network.RecallTargets = true;
  EXPECT_EQ(Run({ClickStep(kOkId)}), kOkId);
  EXPECT_FALSE(m_network.RecallTargets);
}

TEST_F(RecDataDlgTest, StoresNothingWithCancel) {
  m_dialogs.files = {m_files.Make("a.txt")};
  const std::string inputs = m_network.RecallPatName;
  EXPECT_EQ(Run({ClickStep(101), [](RecDataDlg& dialog) { Type(dialog, 111, "4"); },
                 ClickStep(kCancelId)}),
            kCancelId);
  EXPECT_EQ(m_network.RecallPatName, inputs);
  EXPECT_EQ(m_network.RecallPatCol, 2);
}

TEST_F(RecDataDlgTest, TellsEveryFieldThatFailsInOrderAndStaysOpenAtTheFirst) {
  m_dialogs.files = {m_files.Missing("a.txt"), m_files.Missing("b.txt")};
  EXPECT_EQ(Run({ClickStep(101), ClickStep(102),
                 [](RecDataDlg& dialog) {
                   Type(dialog, 111, "0");
                   Click(dialog, kOkId);
                 },
                 [](RecDataDlg& dialog) {
                   EXPECT_EQ(TopDialog(), &dialog);
                   EXPECT_EQ(FocusedId(), 111);
                 },
                 ClickStep(kCancelId)}),
            kCancelId);
  const std::string caption = "Recall Data Error|";
  EXPECT_THAT(m_dialogs.told, ElementsAre(caption + "Invalid start column specified for inputs",
                                          caption + "Input node data file not found",
                                          caption + "Target node data file not found"));
  EXPECT_THAT(m_dialogs.icons, testing::Each(MessageIcon::kExclamation));
}

TEST_F(RecDataDlgTest, WantsAColumnForTargets) {
  m_dialogs.files = {m_files.Make("b.txt")};
  EXPECT_EQ(Run({ClickStep(102), ClickStep(kOkId),
                 [](RecDataDlg& dialog) {
                   EXPECT_EQ(FocusedId(), 112);
                   Type(dialog, 112, "2");
                 },
                 ClickStep(kOkId)}),
            kOkId);
  EXPECT_THAT(m_dialogs.told,
              ElementsAre("Recall Data Error|Invalid start column specified for targets"));
  EXPECT_TRUE(m_network.RecallTargets);
}

TEST_F(RecDataDlgTest, GoesToTheButtonOfAFileThatIsMissing) {
  m_network.RecallPatName = "";
  (void)Run(
      {ClickStep(kOkId), [](RecDataDlg&) { EXPECT_EQ(FocusedId(), 101); }, ClickStep(kCancelId)});
}

TEST_F(RecDataDlgTest, TakesOverInputsAndTargetsOfTheDataEditor) {
  const std::string data = m_files.Make("data.txt");
  m_files.Make("TABULO.TBI", data + "\n5\n");
  EXPECT_EQ(Run({ClickStep(103),
                 [&](RecDataDlg& dialog) {
                   EXPECT_EQ(TextOf(dialog, 113), kInputsLabel + data);
                   EXPECT_EQ(TextOf(dialog, 111), "1");
                   EXPECT_EQ(TextOf(dialog, 114), kTargetsLabel + data);
                   EXPECT_EQ(TextOf(dialog, 112), "5");
                   EXPECT_EQ(Utf8(Control(dialog, 114).GetToolTipText()), data);
                 },
                 ClickStep(kOkId)}),
            kOkId);
  EXPECT_FALSE(std::filesystem::exists(m_paths.hand_over));
  EXPECT_EQ(m_network.RecallPatName, data);
  EXPECT_EQ(m_network.RecallTargName, data);
  EXPECT_EQ(m_network.RecallTargCol, 5);
}

TEST_F(RecDataDlgTest, KeepsTheTargetsWhenTheDataEditorSavedNone) {
  const std::string data = m_files.Make("data.txt");
  m_network.RecallTargName = m_files.Make("targets.txt");
  m_network.RecallTargCol = 7;
  m_files.Make("TABULO.TBI", data + "\n0\n");
  (void)Run({ClickStep(103),
             [&](RecDataDlg& dialog) {
               EXPECT_EQ(TextOf(dialog, 113), kInputsLabel + data);
               EXPECT_EQ(TextOf(dialog, 114), kTargetsLabel + m_network.RecallTargName);
               EXPECT_EQ(TextOf(dialog, 112), "7");
             },
             ClickStep(kCancelId)});
}

TEST_F(RecDataDlgTest, TellsThatTheDataEditorSavedNothing) {
  (void)Run({ClickStep(103), ClickStep(kCancelId)});
  EXPECT_THAT(m_dialogs.told,
              ElementsAre("Invalid Tarn Request|No file saved durring Tabulo session!"));
}

TEST_F(RecDataDlgTest, StartsTheDataEditorAndOpensItsHelp) {
  (void)Run({ClickStep(115), ClickStep(kHelpId), ClickStep(kCancelId)});
  EXPECT_EQ(m_dialogs.editor_starts, 1);
  EXPECT_THAT(m_dialogs.help, ElementsAre(HelpTopic::kRecallData));
}

TEST_F(RecDataDlgTest, IsWalkedThroughInReadingOrder) {
  std::vector<DialogStep> steps;
  for (const int id : {102, 112, 115, 103, kOkId, kCancelId, kHelpId, 101, 111}) {
    steps.emplace_back([](RecDataDlg&) { Press(WXK_TAB); });
    steps.emplace_back([id](RecDataDlg&) { EXPECT_EQ(FocusedId(), id); });
  }
  steps.emplace_back([](RecDataDlg&) { Press(WXK_RETURN); });
  EXPECT_EQ(Run(steps), kOkId);
}

}  // namespace
}  // namespace tarn
