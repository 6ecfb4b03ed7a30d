#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>
#include <wx/modalhook.h>

#include "app/ui/window_dialogs.h"

namespace tarn {

// Answers message boxes, which belong to the system, before they are shown, and records what they
// asked. Dialogs of our own open as they are. A file dialog is recorded and cancelled.
class NativeAnswers : public wxModalDialogHook {
 public:
  NativeAnswers() { Register(); }
  ~NativeAnswers() override { Unregister(); }
  NativeAnswers(const NativeAnswers&) = delete;
  NativeAnswers& operator=(const NativeAnswers&) = delete;

  // Answers to come, of questions; boxes with OK alone need none. One that is missing fails the
  // test and is Cancel.
  std::deque<int> answers;
  // Called while a box is open, before it is answered.
  std::function<void()> while_open;

  std::vector<std::string> boxes;         // "caption|text"
  std::vector<std::string> file_dialogs;  // "title|filter"

 protected:
  int Enter(wxDialog* dialog) override;
};

// The windows' own dialogs, but for the system's file dialog: it is answered from a queue. An
// empty path is Cancel, and so is one that is missing, which fails the test.
class AnsweredDialogs : public WindowDialogs {
 public:
  using WindowDialogs::WindowDialogs;

  std::deque<std::string> files;
  std::vector<std::string> file_questions;  // the titles

 protected:
  std::optional<ChosenFile> ShowFileDialog(const FileQuestion& question) override;
};

}  // namespace tarn
