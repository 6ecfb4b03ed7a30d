#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <wx/frame.h>

#include "app/dialogs.h"
#include "browser/report_file.h"
#include "browser/ui/virtual_list.h"
#include "resources/controls.h"

namespace tarn {

// The Information Browser: a window on a finished report, to be scrolled, copied from, saved as
// text and printed. The report file is removed with it. Its owner has to show it.
class InfoBrowser : public wxFrame {
 public:
  // `dialogs` are not owned and outlive the window. A report that cannot be read is told of and
  // leaves the window empty.
  InfoBrowser(wxWindow* owner, std::unique_ptr<ReportFile> report, std::string_view caption,
              Dialogs& dialogs);
  ~InfoBrowser() override;
  InfoBrowser(const InfoBrowser&) = delete;
  InfoBrowser& operator=(const InfoBrowser&) = delete;

  VirtualList& list() { return *m_list; }
  // Removes the report file before its time, for a program that ends without closing its windows.
  void DiscardReport();

 private:
  void ShowReport();
  void OnMenu(wxCommandEvent& event);
  void OnContextMenu(wxContextMenuEvent& event);
  void OnKey(wxKeyEvent& event);
  void OnClose(wxCloseEvent& event);
  void EnableCopy();

  void SaveAs();
  void PrintReport();
  void Preview();
  void Copy();

  std::unique_ptr<ReportFile> m_report;
  std::string m_caption;
  Dialogs& m_dialogs;
  VirtualList* m_list;  // owned by the frame
  OpenMenuWatch m_menus{*this};
};

}  // namespace tarn
