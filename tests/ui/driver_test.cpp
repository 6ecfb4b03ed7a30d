#include "ui/driver.h"

#include <gmock/gmock.h>
#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>
#include <wx/button.h>
#include <wx/checkbox.h>

#include "engine/network.h"
#include "resources/controls.h"
#include "setup/ui/trans_dlg.h"
#include "setup/ui/trn_param_dlg.h"
#include "support/fake_dialogs.h"

namespace tarn {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// A dialog of the resources whose OK and Cancel close it.
class PlainDialog : public wxDialog {
 public:
  explicit PlainDialog(const char* name, wxWindow* parent = nullptr) {
    LoadDialog(*this, parent, name);
    for (const int id : {kOkId, kCancelId}) {
      Bind(
          wxEVT_BUTTON, [this, id](wxCommandEvent&) { EndModal(id); }, id);
    }
  }
};

TEST(Driver, RunsTheStepsWithinTheDialogAndReturnsItsResult) {
  PlainDialog dialog("DATAENT_DLG");
  std::vector<int> seen;
  const int result = RunModal(dialog, {[&] {
                                         EXPECT_EQ(TopDialog(), &dialog);
                                         Type(dialog, 101, "first");
                                         Type(dialog, 101, "12");
                                         EXPECT_EQ(FocusedId(), 101);
                                         seen.push_back(1);
                                       },
                                       [&] {
                                         seen.push_back(2);
                                         Click(dialog, kOkId);
                                       }});
  EXPECT_EQ(result, kOkId);
  EXPECT_EQ(TextOf(dialog, 101), "12");
  EXPECT_THAT(seen, ElementsAre(1, 2));
  EXPECT_EQ(TopDialog(), nullptr);
}

TEST(Driver, GoesOnInTheDialogThatAStepOpens) {
  PlainDialog outer("DATAENT_DLG");
  int inner_result = 0;
  const int result = RunModal(outer, {[&] {
                                        PlainDialog inner("TPARAM_DLG", &outer);
                                        inner_result = inner.ShowModal();
                                      },
                                      [&] {
                                        EXPECT_NE(TopDialog(), &outer);
                                        Click(*TopDialog(), 111);
                                        EXPECT_TRUE(IsChecked(*TopDialog(), 111));
                                        Click(*TopDialog(), kCancelId);
                                      },
                                      [&] {
                                        EXPECT_EQ(TopDialog(), &outer);
                                        Click(outer, kOkId);
                                      }});
  EXPECT_EQ(inner_result, kCancelId);
  EXPECT_EQ(result, kOkId);
}

TEST(Driver, StrikesRealKeys) {
  PlainDialog dialog("DATAENT_DLG");
  const int result =
      RunModal(dialog, {[&] { Type(dialog, 101, ""); }, [] { Press('7'); },
                        [&] { EXPECT_EQ(TextOf(dialog, 101), "7"); }, [] { Press(WXK_TAB); },
                        [] { EXPECT_EQ(FocusedId(), kOkId); }, [] { Press(WXK_ESCAPE); }});
  EXPECT_EQ(result, kCancelId);
}

TEST(Driver, ClicksNothingThatAUserCouldNotClick) {
  PlainDialog dialog("TPARAM_DLG");
  RunModal(dialog, {[&] {
             Control(dialog, 111).Disable();
             EXPECT_NONFATAL_FAILURE(Click(dialog, 111), "control 111 is disabled");
             EXPECT_FALSE(IsChecked(dialog, 111));
             Control(dialog, 101).Hide();
             EXPECT_NONFATAL_FAILURE(Type(dialog, 101, "1"), "control 101 is disabled");
             EXPECT_NONFATAL_FAILURE(Click(dialog, 77), "no control 77");
             Click(dialog, kCancelId);
           }});
}

void CloseBeforeTheLastStep() {
  PlainDialog dialog("DATAENT_DLG");
  RunModal(dialog, {[&] { Click(dialog, kOkId); }, [] {}});
}

TEST(Driver, FailsWhenStepsAreLeft) {
  EXPECT_NONFATAL_FAILURE(CloseBeforeTheLastStep(), "steps are left");
}

void LeaveOpen() {
  PlainDialog dialog("DATAENT_DLG");
  EXPECT_EQ(RunModal(dialog, {}), kCancelId);
}

TEST(Driver, CancelsADialogThatNobodyCloses) {
  EXPECT_NONFATAL_FAILURE(LeaveOpen(), "the dialog is still open");
}

TEST(FakeDialogs, AnswerFromTheirQueuesAndRecordTheQuestions) {
  FakeDialogs dialogs;
  dialogs.answers = {Answer::kYes};
  dialogs.files = {"a.net", std::nullopt};
  dialogs.Tell("Caption", "text");
  EXPECT_EQ(dialogs.Ask({"Sure", "Really?"}, AnswerChoice::kYesNo), Answer::kYes);
  EXPECT_EQ(dialogs.ChooseFile(kOpenNetworkQuestion), "a.net");
  EXPECT_EQ(dialogs.ChooseFile(kInputDataQuestion), std::nullopt);
  EXPECT_THAT(dialogs.told, ElementsAre("Caption|text"));
  EXPECT_THAT(dialogs.asked, ElementsAre("Sure|Really?"));
  EXPECT_EQ(dialogs.file_questions[1], "Select Input Node Data|All Files (*.*)|*.*|");
}

TEST(FakeDialogs, FailTheTestWhenAnAnswerIsMissing) {
  FakeDialogs dialogs;
  EXPECT_NONFATAL_FAILURE((void)dialogs.ChooseFile(kInputDataQuestion),
                          "no answer to Select Input Node Data");
  EXPECT_NONFATAL_FAILURE((void)dialogs.EnterValue("a", "b", "c"), "no answer to a|b|c");
  EXPECT_THAT(dialogs.told, IsEmpty());
}

TEST(Dialogs, OpenTheirHelpByF1) {
  FakeDialogs dialogs;
  int32_t code = kSigmoid;
  TransDlg transfer(nullptr, code, dialogs);
  RunModal(transfer, {[] { Press(WXK_F1); }, [] { Click(*TopDialog(), kCancelId); }});
  Network network;
  TrnParamDlg parameters(nullptr, network, dialogs);
  RunModal(parameters, {[] { Press(WXK_F1); }, [] { Click(*TopDialog(), kCancelId); }});
  EXPECT_THAT(dialogs.help,
              testing::ElementsAre(HelpTopic::kNetworkDesign, HelpTopic::kTrainingParameters));
}

}  // namespace
}  // namespace tarn
