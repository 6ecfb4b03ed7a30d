#pragma once

#include <functional>
#include <string>
#include <vector>
#include <wx/dialog.h>
#include <wx/window.h>

#include "app/dialogs.h"
#include "setup/draft_result.h"

namespace tarn {

// A dialog over a draft: its controls are tied to the draft's fields. Cancel and Help work; OK is
// the dialog's own.
class SetupDialog : public wxDialog {
 protected:
  // `resource` is the dialog's name in the resources. Neither `dialogs` nor a tied field is owned.
  SetupDialog(wxWindow* parent, const char* resource, Dialogs& dialogs, HelpTopic topic,
              int help_button);

  void OnButton(int id, std::function<void()> action);
  Dialogs& dialogs() const { return m_dialogs; }

  // Ties a control to a field and shows the field. An edit takes `limit` characters at most.
  void Tie(int edit, std::string& field, unsigned long limit);
  void Tie(int box, bool& field);
  // Leaves the group of that radio button without one that is checked.
  void CheckNone(int radio);

  void ShowFields();
  void ReadFields();

  // Shows the messages, then closes the dialog with OK or goes to the field that was refused.
  void Finish(const DraftResult& result);
  void TellAll(const std::vector<Message>& messages);

 private:
  struct TiedEdit {
    int id;
    std::string& field;
  };
  struct TiedBox {
    int id;
    bool& field;
  };

  Dialogs& m_dialogs;
  std::vector<TiedEdit> m_edits;
  std::vector<TiedBox> m_boxes;
};

}  // namespace tarn
