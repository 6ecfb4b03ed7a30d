#include "resources/controls.h"

#include <stdexcept>
#include <wx/checkbox.h>
#include <wx/combobox.h>
#include <wx/control.h>
#include <wx/icon.h>
#include <wx/menu.h>
#include <wx/panel.h>
#include <wx/radiobut.h>
#include <wx/textctrl.h>
#include <wx/xrc/xmlres.h>

namespace tarn {
namespace {

wxWindow* HelpButton(const wxDialog& dialog) {
  wxWindow* button = dialog.FindWindow(kHelpId);
  return button != nullptr ? button : dialog.FindWindow(kTransferHelpId);
}

}  // namespace

void LoadDialog(wxDialog& dialog, wxWindow* parent, const char* name) {
  if (!wxXmlResource::Get()->LoadDialog(&dialog, parent, name)) {
    throw std::runtime_error(std::string("no dialog resource ") + name);
  }
  dialog.SetAffirmativeId(kOkId);
  dialog.SetEscapeId(dialog.FindWindow(kCancelId) != nullptr ? kCancelId : kOkId);
  dialog.CentreOnParent();
  dialog.Bind(wxEVT_CHAR_HOOK, [&dialog](wxKeyEvent& event) {
    wxWindow* help = HelpButton(dialog);
    if (event.GetKeyCode() != WXK_F1 || help == nullptr) {
      event.Skip();
      return;
    }
    wxCommandEvent press(wxEVT_BUTTON, help->GetId());
    press.SetEventObject(help);
    help->ProcessWindowEvent(press);
  });
}

void LoadPanel(wxPanel& panel, wxWindow* parent, const char* name) {
  if (!wxXmlResource::Get()->LoadPanel(&panel, parent, name)) {
    throw std::runtime_error(std::string("no panel resource ") + name);
  }
}

void SetProgramIcon(wxTopLevelWindow& window) {
#ifdef __WXMSW__
  // The program has it in all sizes.
  window.SetIcons(wxIconBundle("aatarn", nullptr));
#else
  wxIcon icon;
  icon.CopyFromBitmap(wxXmlResource::Get()->LoadBitmap("TARN_ICON"));
  window.SetIcon(icon);
#endif
}

wxWindow& Control(const wxWindow& window, int id) {
  wxWindow* control = window.FindWindow(id);
  if (control == nullptr) throw std::out_of_range("no control " + std::to_string(id));
  return *control;
}

std::string TextOf(const wxWindow& window, int id) {
  wxWindow& control = Control(window, id);
  if (const auto* entry = dynamic_cast<wxTextEntry*>(&control)) return Utf8(entry->GetValue());
  return Utf8(wxControl::GetLabelText(control.GetLabel()));
}

void SetText(const wxWindow& window, int id, std::string_view text) {
  if (TextOf(window, id) == text) return;
  wxWindow& control = Control(window, id);
  if (auto* entry = dynamic_cast<wxTextEntry*>(&control)) {
    entry->ChangeValue(Wide(text));
  } else {
    control.SetLabel(wxControl::EscapeMnemonics(Wide(text)));
  }
}

bool IsChecked(const wxWindow& window, int id) {
  wxWindow& control = Control(window, id);
  if (const auto* button = dynamic_cast<wxRadioButton*>(&control)) return button->GetValue();
  return dynamic_cast<wxCheckBox&>(control).GetValue();
}

void SetChecked(const wxWindow& window, int id, bool checked) {
  wxWindow& control = Control(window, id);
  if (auto* button = dynamic_cast<wxRadioButton*>(&control)) {
    button->SetValue(checked);
  } else {
    dynamic_cast<wxCheckBox&>(control).SetValue(checked);
  }
}

void FocusEdit(const wxWindow& window, int id) {
  wxWindow& control = Control(window, id);
  control.SetFocus();
  if (auto* entry = dynamic_cast<wxTextEntry*>(&control)) entry->SelectAll();
}

OpenMenuWatch::OpenMenuWatch(wxFrame& frame) {
  const auto note = [this](wxMenuEvent& event) {
    m_open = event.GetEventType() == wxEVT_MENU_OPEN;
    event.Skip();
  };
  frame.Bind(wxEVT_MENU_OPEN, note);
  frame.Bind(wxEVT_MENU_CLOSE, note);
}

}  // namespace tarn
