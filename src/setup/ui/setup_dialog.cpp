#include "setup/ui/setup_dialog.h"

#include <utility>
#include <wx/radiobut.h>
#include <wx/textctrl.h>

#include "resources/controls.h"

namespace tarn {

SetupDialog::SetupDialog(wxWindow* parent, const char* resource, Dialogs& dialogs, HelpTopic topic,
                         int help_button)
    : m_dialogs(dialogs) {
  LoadDialog(*this, parent, resource);
  OnButton(kCancelId, [this] { EndModal(kCancelId); });
  OnButton(help_button, [this, topic] { m_dialogs.ShowHelp(topic); });
}

void SetupDialog::OnButton(int id, std::function<void()> action) {
  Bind(
      wxEVT_BUTTON, [action = std::move(action)](wxCommandEvent&) { action(); }, id);
}

void SetupDialog::Tie(int edit, std::string& field, unsigned long limit) {
  m_edits.push_back({edit, field});
  SetText(*this, edit, field);
  // Behind the text: one that is longer is cut without a beep.
  Control<wxTextCtrl>(*this, edit).SetMaxLength(limit);
}

void SetupDialog::Tie(int box, bool& field) {
  m_boxes.push_back({box, field});
  SetChecked(*this, box, field);
}

// One of a group is always checked on GTK: one that nobody sees stands for none.
void SetupDialog::CheckNone(int radio) {
  auto* none = new wxRadioButton(Control(*this, radio).GetParent(), wxID_ANY, "");
  none->Hide();
  none->SetValue(true);
}

void SetupDialog::ShowFields() {
  for (const TiedEdit& edit : m_edits) SetText(*this, edit.id, edit.field);
  for (const TiedBox& box : m_boxes) SetChecked(*this, box.id, box.field);
}

void SetupDialog::ReadFields() {
  for (const TiedEdit& edit : m_edits) edit.field = TextOf(*this, edit.id);
  for (const TiedBox& box : m_boxes) box.field = IsChecked(*this, box.id);
}

void SetupDialog::Finish(const DraftResult& result) {
  TellAll(result.messages);
  if (result.may_close) {
    EndModal(kOkId);
  } else if (result.first_refused != 0) {
    FocusEdit(*this, result.first_refused);
  }
}

void SetupDialog::TellAll(const std::vector<Message>& messages) {
  for (const Message& message : messages) m_dialogs.Tell(message);
}

}  // namespace tarn
