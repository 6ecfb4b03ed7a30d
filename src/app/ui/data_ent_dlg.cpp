#include "app/ui/data_ent_dlg.h"

#include <wx/textctrl.h>

#include "resources/controls.h"
#include "setup/edit_text.h"

namespace tarn {
namespace {

constexpr int kValueEdit = 101;
constexpr int kPromptText = 102;

}  // namespace

DataEntDlg::DataEntDlg(wxWindow* parent, std::string_view caption, std::string_view prompt,
                       const std::string& text)
    : m_offered(text) {
  LoadDialog(*this, parent, "DATAENT_DLG");
  SetTitle(Wide(caption));
  SetText(*this, kPromptText, prompt);
  SetText(*this, kValueEdit, text);
  Control<wxTextCtrl>(*this, kValueEdit).SetMaxLength(kEditLimit);
  Fit();
  CentreOnParent();
  FocusEdit(*this, kValueEdit);
  Bind(
      wxEVT_BUTTON, [this](wxCommandEvent&) { OnOk(); }, kOkId);
  Bind(
      wxEVT_BUTTON, [this](wxCommandEvent&) { EndModal(kCancelId); }, kCancelId);
}

void DataEntDlg::OnOk() {
  m_entered = TextOf(*this, kValueEdit);
  EndModal(kOkId);
}

}  // namespace tarn
