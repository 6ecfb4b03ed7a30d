#include "setup/ui/trn_setup_dlg.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>
#include <wx/listbox.h>

#include "netfile/connections_section.h"
#include "netfile/header.h"
#include "resources/controls.h"
#include "support/fake_dialogs.h"
#include "support/temp_folder.h"
#include "ui/driver.h"

namespace tarn {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class TrnSetupDlgTest : public testing::Test {
 protected:
  TrnSetupDlgTest() {
    m_session.network.file_name = m_folder / "a.net";
    CreateNewNetwork(m_session.network.file_name);
  }

  int Run(const std::vector<Step>& steps) {
    TrnSetupDlg dialog(nullptr, m_session, m_dialogs, m_paths, [this] { ++m_file_changes; });
    m_dialog = &dialog;
    const int result = RunModal(dialog, steps);
    m_shape = dialog.stored_shape();
    return result;
  }
  // Clicks in the dialog itself, or in the one that it has opened.
  Step Open(int id) {
    return [this, id] { Click(*m_dialog, id); };
  }
  static Step ClickTop(int id) {
    return [id] { Click(*TopDialog(), id); };
  }
  static Step ExpectTop(const char* title) {
    return [title] { EXPECT_EQ(Utf8(TopDialog()->GetTitle()), title); };
  }

  TempFolder m_folder;
  Session m_session;
  FakeDialogs m_dialogs;
  ApplicationPaths m_paths;
  TrnSetupDlg* m_dialog = nullptr;  // while it runs
  NetworkShape m_shape{};
  int m_file_changes = 0;
};

TEST_F(TrnSetupDlgTest, LoadsTheSetupOfTheFile) {
  const int result = Run({[this] {
                            EXPECT_EQ(m_session.network.nLayers, 3);
                            EXPECT_EQ(FocusedId(), 101);
                          },
                          Open(kOkId)});
  EXPECT_EQ(result, kOkId);
  EXPECT_THAT(m_dialogs.told, IsEmpty());
  EXPECT_THAT(m_shape, ElementsAre(2, 2, 1, 0, 0, 0, 0, 0, 0, 0));
}

TEST_F(TrnSetupDlgTest, TellsALoadThatFailsAndIsNotShown) {
  WriteFile(m_folder / "a.net", "no network\n");
  EXPECT_EQ(Run({}), kCancelId);
  EXPECT_THAT(m_dialogs.told,
              ElementsAre("Network Error|Invalid Input file - Not a TARN Network File!"));
  EXPECT_EQ(m_dialogs.icons[0], MessageIcon::kExclamation);
}

TEST_F(TrnSetupDlgTest, DeletesPendingConnectionsOfTheLayersAndForgetsTheirEdits) {
  const auto pending = [this](int32_t layer) {
    return ConnectionFilePath(m_session.scratch.path(), layer);
  };
  for (int32_t layer = 0; layer < 4; ++layer) WriteFile(pending(layer), "1 0\n");
  m_session.network.connections_edited.fill(true);
  EXPECT_EQ(Run({Open(kCancelId)}), kCancelId);
  for (int32_t layer = 0; layer < 3; ++layer) {
    EXPECT_FALSE(std::filesystem::exists(pending(layer))) << layer;
  }
  EXPECT_TRUE(std::filesystem::exists(pending(3)));
  EXPECT_THAT(m_session.network.connections_edited, testing::Each(false));
}

TEST_F(TrnSetupDlgTest, KeepsPendingConnectionsWhenTheLoadFails) {
  const std::string pending = ConnectionFilePath(m_session.scratch.path(), 1);
  WriteFile(pending, "1 0\n");
  WriteFile(m_folder / "a.net", "no network\n");
  EXPECT_EQ(Run({}), kCancelId);
  EXPECT_TRUE(std::filesystem::exists(pending));
}

TEST_F(TrnSetupDlgTest, OpensTheNetworkDesign) {
  EXPECT_EQ(Run({Open(101), ExpectTop("Network Design"), [] { Type(*TopDialog(), 103, "9"); },
                 ClickTop(kOkId), ExpectTop("Training Setup"), Open(kOkId)}),
            kOkId);
  EXPECT_EQ(m_session.network.layers[1].nUnits, 9);
  EXPECT_EQ(m_shape[1], 2);
}

TEST_F(TrnSetupDlgTest, SavesTheConnectionsThatWereRemoved) {
  m_dialogs.files = {m_folder / "b.net"};
  (void)Run({Open(101), ClickTop(139), ExpectTop("Connection Editor: From Layer 1 to Layer 2"),
             [] {
               auto& list = Control<wxListBox>(*TopDialog(), 101);
               list.SetSelection(0);
               list.SetSelection(3);
             },
             ClickTop(103), ClickTop(kOkId), ClickTop(kOkId), Open(104), Open(kOkId)});
  EXPECT_THAT(m_dialogs.told, IsEmpty());
  EXPECT_THAT(ReadFile(m_folder / "b.net"),
              testing::HasSubstr("CONNECTIONS:READ\n2\n1 0 0\n1 1 1\nCONNECTIONS:STOP\n"));
}

TEST_F(TrnSetupDlgTest, OpensTransferFunctionsTwoDialogsDeep) {
  (void)Run({Open(101), ClickTop(120), ExpectTop("Transfer Functions"), ClickTop(12),
             ClickTop(kOkId), ExpectTop("Network Design"), ClickTop(kOkId), Open(kOkId)});
  EXPECT_EQ(m_session.network.layers[2].TransFunc, kTanh);
}

TEST_F(TrnSetupDlgTest, OpensTheTrainingData) {
  const std::string data = m_folder / "data.txt";
  WriteFile(data, "1 2 3\n");
  WriteFile(m_folder / "TABULO.TBI", data + "\n3\n");
  m_paths.hand_over = m_folder / "TABULO.TBI";
  (void)Run(
      {Open(102), ExpectTop("Training/Test Data"), ClickTop(116), ClickTop(kOkId), Open(kOkId)});
  EXPECT_EQ(m_session.network.PatName, data);
  EXPECT_EQ(m_session.network.TargCol, 3);
}

TEST_F(TrnSetupDlgTest, OpensTheTrainingParameters) {
  (void)Run({Open(103), ExpectTop("Training Parameters"), [] { Type(*TopDialog(), 101, "77"); },
             ClickTop(kOkId), Open(kOkId)});
  EXPECT_EQ(m_session.network.MaxIterations, 77);
}

TEST_F(TrnSetupDlgTest, SavesTheSetupUnderANameAndReportsIt) {
  m_dialogs.files = {m_folder / "b.net"};
  (void)Run({[this] { m_session.network.NetName = "renamed"; }, Open(104), Open(kOkId)});
  EXPECT_THAT(m_dialogs.told, IsEmpty());
  EXPECT_THAT(m_dialogs.file_questions,
              ElementsAre("Save Network As...|Tarn Files (*.net)|*.net|All Files(*.*)|*.*|"));
  EXPECT_EQ(m_session.network.file_name, m_folder / "b.net");
  EXPECT_THAT(ReadFile(m_folder / "b.net"), testing::StartsWith("TARNV2.1\nrenamed\n"));
  EXPECT_EQ(m_file_changes, 1);
}

TEST_F(TrnSetupDlgTest, TellsASaveThatFails) {
  m_dialogs.files = {m_folder / "missing/b.net"};
  (void)Run({Open(104), Open(kOkId)});
  EXPECT_THAT(m_dialogs.told, ElementsAre("Network Error|Tarn Network File Error Detected"));
  EXPECT_EQ(m_session.network.file_name, m_folder / "a.net");
  EXPECT_EQ(m_file_changes, 0);
}

TEST_F(TrnSetupDlgTest, SavesNothingWhenTheChoiceIsCancelled) {
  m_dialogs.files = {std::nullopt};
  (void)Run({Open(104), Open(kOkId)});
  EXPECT_THAT(m_dialogs.told, IsEmpty());
  EXPECT_EQ(m_file_changes, 0);
}

TEST_F(TrnSetupDlgTest, OpensItsHelp) {
  (void)Run({Open(kHelpId), Open(kCancelId)});
  EXPECT_THAT(m_dialogs.help, ElementsAre(HelpTopic::kTrainingSetup));
}

TEST_F(TrnSetupDlgTest, AnswersToRealKeys) {
  std::vector<Step> steps;
  for (const int id : {102, 103, 104, kOkId, kCancelId, kHelpId, 101, 102, 103}) {
    steps.emplace_back([] { Press(WXK_TAB); });
    steps.emplace_back([id] { EXPECT_EQ(FocusedId(), id); });
  }
  steps.emplace_back([] { Press(WXK_SPACE); });
  steps.push_back(ExpectTop("Training Parameters"));
  steps.emplace_back([] { Press(WXK_ESCAPE); });
  steps.push_back(ExpectTop("Training Setup"));
  steps.emplace_back([] { Press(WXK_ESCAPE); });
  EXPECT_EQ(Run(steps), kCancelId);
}

}  // namespace
}  // namespace tarn
