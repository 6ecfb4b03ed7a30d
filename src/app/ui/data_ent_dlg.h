#pragma once

#include <string>
#include <string_view>
#include <wx/dialog.h>

namespace tarn {

// The single-value entry: one field, checked by whoever asked.
class DataEntDlg : public wxDialog {
 public:
  DataEntDlg(wxWindow* parent, std::string_view caption, std::string_view prompt,
             const std::string& text);

  // After OK the text that was entered, or the first one when the field was left empty.
  const std::string& text() const { return m_entered.empty() ? m_offered : m_entered; }
  // What stood in the field.
  const std::string& entered() const { return m_entered; }

 private:
  void OnOk();

  const std::string m_offered;
  std::string m_entered;
};

}  // namespace tarn
