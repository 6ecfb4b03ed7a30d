#include "app/ui/window_dialogs.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <wx/filedlg.h>

#include "resources/controls.h"
#include "ui/main_window_fixture.h"

namespace tarn {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(FileDialogFilter, HasNoBarAtItsEnd) {
  const std::string any = Utf8(wxFileSelectorDefaultWildcardStr);
  EXPECT_EQ(Utf8(FileDialogFilter(kNetworkFilter)),
            "Tarn Files (*.net)|*.net|All Files(*.*)|" + any);
  EXPECT_EQ(Utf8(FileDialogFilter("All Files (*.*)|*.*|")), "All Files (*.*)|" + any);
}

class SystemDialogs : public MainWindowFixture {
 protected:
  WindowDialogs m_system{m_paths};
};

TEST_F(SystemDialogs, ChooseFilesWithTitleAndFilter) {
  const std::string any = Utf8(wxFileSelectorDefaultWildcardStr);
  EXPECT_EQ(m_system.ChooseFile(kOpenNetworkQuestion), std::nullopt);
  EXPECT_EQ(m_system.ChooseFile(kSaveOutputsQuestion), std::nullopt);
  EXPECT_THAT(m_native.file_dialogs,
              ElementsAre("Open Tarn Network|Tarn Files (*.net)|*.net|All Files(*.*)|" + any,
                          "Save Net Outputs/Targets As ASCII File...|"
                          "Tarn Output File (*.out)|*.out|All Files(*.*)|" +
                              any));
}

TEST_F(SystemDialogs, AnswerQuestionsByTheirButtons) {
  const Message question = {"Caption", "Text?", MessageIcon::kQuestion};
  m_native.answers = {wxID_YES, wxID_NO, wxID_CANCEL, wxID_CANCEL};
  EXPECT_EQ(m_system.Ask(question, AnswerChoice::kYesNoCancel), Answer::kYes);
  EXPECT_EQ(m_system.Ask(question, AnswerChoice::kYesNoCancel), Answer::kNo);
  EXPECT_EQ(m_system.Ask(question, AnswerChoice::kYesNoCancel), Answer::kCancel);
  EXPECT_EQ(m_system.Ask(question, AnswerChoice::kYesNo), Answer::kNo);
}

TEST_F(SystemDialogs, SayThatTheDataEditorIsMissing) {
  m_system.StartDataEditor();
  EXPECT_THAT(m_native.boxes,
              ElementsAre("Invalid Tarn Request|The data editor cannot be started: " +
                          m_paths.data_editor));
}

TEST_F(SystemDialogs, StartTheDataEditorInTheFolderOfTheStartAndDoNotWait) {
  std::filesystem::create_directory(m_folder / "elsewhere");
  std::filesystem::current_path(m_folder / "elsewhere");
  WriteFile(m_paths.data_editor, "#!/bin/sh\nsleep 1\necho iris.txt > TABULO.TBI\n");
  std::filesystem::permissions(m_paths.data_editor, std::filesystem::perms::owner_all);
  m_system.StartDataEditor();
  EXPECT_FALSE(std::filesystem::exists(m_paths.hand_over));
  EXPECT_THAT(m_native.boxes, IsEmpty());
  Until([this] { return std::filesystem::exists(m_paths.hand_over); });
}

}  // namespace
}  // namespace tarn
