#pragma once

#include <string>
#include <string_view>
#include <wx/dialog.h>
#include <wx/frame.h>
#include <wx/panel.h>
#include <wx/string.h>
#include <wx/toplevel.h>
#include <wx/window.h>

// Windows loaded from the resources, and their controls by number.

namespace tarn {

// Numbers that every dialog shares.
inline constexpr int kOkId = 1;
inline constexpr int kCancelId = 2;
inline constexpr int kHelpId = 998;
inline constexpr int kTransferHelpId = 9;  // of the transfer functions

inline wxString Wide(std::string_view text) {
  return wxString::FromUTF8(text.data(), text.size());
}
inline std::string Utf8(const wxString& text) {
  return text.utf8_string();
}

// Loads the resource `name` into the dialog or panel, which has not been created yet. OK, Cancel,
// Enter and Escape of a dialog work by the numbers above; `parent` may be null for a dialog.
void LoadDialog(wxDialog& dialog, wxWindow* parent, const char* name);
void LoadPanel(wxPanel& panel, wxWindow* parent, const char* name);

// The icon of the program in the frame of a window.
void SetProgramIcon(wxTopLevelWindow& window);

// The control of that number, which the resource has.
wxWindow& Control(const wxWindow& window, int id);
template <typename Kind>
Kind& Control(const wxWindow& window, int id) {
  return dynamic_cast<Kind&>(Control(window, id));
}

// The text of an edit, a combo box or a static text.
std::string TextOf(const wxWindow& window, int id);
// Writes it, unless it stands there already: nothing flickers.
void SetText(const wxWindow& window, int id, std::string_view text);

// Radio buttons and check boxes.
bool IsChecked(const wxWindow& window, int id);
void SetChecked(const wxWindow& window, int id, bool checked);

// Shows the edit of that number as the one to be mended: focused, its text selected.
void FocusEdit(const wxWindow& window, int id);

// Knows whether a menu of the frame is open, which takes Escape for itself then.
class OpenMenuWatch {
 public:
  explicit OpenMenuWatch(wxFrame& frame);
  OpenMenuWatch(const OpenMenuWatch&) = delete;
  OpenMenuWatch& operator=(const OpenMenuWatch&) = delete;

  bool IsOpen() const { return m_open; }

 private:
  bool m_open = false;
};

}  // namespace tarn
