#include "ui/native_answers.h"

#include <gtest/gtest.h>
#include <wx/filedlg.h>
#include <wx/msgdlg.h>

#include "resources/controls.h"

namespace tarn {

int NativeAnswers::Enter(wxDialog* dialog) {
  if (auto* box = dynamic_cast<wxMessageDialog*>(dialog)) {
    if (while_open) while_open();
    boxes.push_back(Utf8(box->GetCaption()) + "|" + Utf8(box->GetMessage()));
    if ((box->GetMessageDialogStyle() & wxYES_NO) == 0) return wxID_OK;
    if (answers.empty()) {
      ADD_FAILURE() << "no answer to " << boxes.back();
      return wxID_CANCEL;
    }
    const int answer = answers.front();
    answers.pop_front();
    return answer;
  }
  if (auto* chooser = dynamic_cast<wxFileDialog*>(dialog)) {
    file_dialogs.push_back(Utf8(chooser->GetMessage()) + "|" + Utf8(chooser->GetWildcard()));
    return wxID_CANCEL;
  }
  return wxID_NONE;
}

std::optional<WindowDialogs::ChosenFile> AnsweredDialogs::ShowFileDialog(
    const FileQuestion& question) {
  file_questions.emplace_back(question.title);
  if (files.empty()) {
    ADD_FAILURE() << "no file for " << question.title;
    return std::nullopt;
  }
  const std::string path = files.front();
  files.pop_front();
  if (path.empty()) return std::nullopt;
  return ChosenFile{path, 0};
}

}  // namespace tarn
