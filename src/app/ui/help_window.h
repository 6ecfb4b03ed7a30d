#pragma once

#include <string>
#include <wx/frame.h>
#include <wx/html/helpctrl.h>

#include "app/dialogs.h"

namespace tarn {

// The help book with its contents, index and search, in a window that can be used beside modal
// dialogs.
class HelpWindow : public wxFrame {
 public:
  explicit HelpWindow(wxWindow* owner);
  ~HelpWindow() override;
  HelpWindow(const HelpWindow&) = delete;
  HelpWindow& operator=(const HelpWindow&) = delete;

  // Once, before anything is shown. False when the file holds no book.
  bool Open(const std::string& path);
  // Brings the window to the front with the page of a topic; with the first page of the book where
  // it has none of that number.
  void ShowTopic(HelpTopic topic);

  // Stays enabled: a modal dialog that opens disables every window of the program.
  bool Enable(bool enable) override;

  wxHtmlHelpController& controller() { return m_controller; }

 private:
  void OnKey(wxKeyEvent& event);

  wxHtmlHelpController m_controller;
};

}  // namespace tarn
