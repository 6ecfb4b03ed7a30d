#pragma once

#include <functional>
#include <string_view>
#include <vector>
#include <wx/app.h>
#include <wx/dialog.h>
#include <wx/toplevel.h>
#include <wx/window.h>

#include "support/fake_dialogs.h"

// Drives windows as a user would, within their own event loops.

namespace tarn {

using Step = std::function<void()>;

// Shows the dialog and runs the steps one after the other, each in a turn of the modal loop that
// is innermost by then. The first comes when the dialog is on the screen. A dialog that is still
// open 5 seconds after the last step fails the test and is cancelled; steps that are left when it
// closes fail the test. Returns what ShowModal returns.
int RunModal(wxDialog& dialog, const std::vector<Step>& steps);

// The same for an action that shows dialogs.
void RunWhile(const std::function<void()>& action, const std::vector<Step>& steps);

// The innermost modal dialog that is shown; null when there is none.
wxDialog* TopDialog();

// The windows of a kind that are on the screen, in the order in which they were opened.
template <typename Window>
std::vector<Window*> OpenWindows() {
  std::vector<Window*> open;
  for (wxWindow* window : wxTopLevelWindows) {
    auto* wanted = dynamic_cast<Window*>(window);
    const bool stays = wanted != nullptr && !wxTheApp->IsScheduledForDestruction(wanted);
    if (stays && wanted->IsShown()) open.push_back(wanted);
  }
  return open;
}

// Presses a button, checks a radio button or toggles a check box. A control that is disabled or
// not shown fails the test.
void Click(wxWindow& window, int id);
// Replaces the text of an edit or combo box.
void Type(wxWindow& window, int id, std::string_view text);
// Strikes a real key on the top dialog. It arrives before the next step.
void Press(int key);
// The same on any top-level window; does not wait.
void PressOn(wxWindow& window, int key);
// The number of the control that has the focus; wxID_NONE when none has.
int FocusedId();

}  // namespace tarn
