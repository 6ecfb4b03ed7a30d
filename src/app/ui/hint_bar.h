#pragma once

#include <string_view>
#include <wx/frame.h>
#include <wx/statusbr.h>

namespace tarn {

// The status bar of the main window: hints in its first field, in the second what the client has to
// say.
class HintBar : public wxStatusBar {
 public:
  // With room for such a text in the second field.
  HintBar(wxFrame& frame, std::string_view longest_status);

  // Hints are long: while a menu is open they have the whole bar.
  void GiveAllToHints(bool all);

 private:
  void Divide();

  int m_wanted;  // width of the second field
  bool m_all_hints = false;
};

}  // namespace tarn
