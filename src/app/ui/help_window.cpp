#include "app/ui/help_window.h"

#include <array>
#include <wx/filename.h>
#include <wx/filesys.h>
#include <wx/fs_arc.h>
#include <wx/html/helpwnd.h>
#include <wx/log.h>
#include <wx/math.h>
#include <wx/settings.h>
#include <wx/splitter.h>

#include "resources/controls.h"
#include "setup/ui/native_settings.h"

namespace tarn {
namespace {

// No printing: the system's dialog would outlive the window in a close that is forced.
constexpr int kParts = wxHF_EMBEDDED | wxHF_TOOLBAR | wxHF_CONTENTS | wxHF_INDEX | wxHF_SEARCH;
constexpr const char* kCaption = "Tarn Help";
constexpr const char* kTitleFormat = "Tarn Help: %s";

// Independent of the display. The widest picture fits beside the contents.
const wxSize kOpeningSize(1000, 700);
const wxSize kLeastSize(400, 240);
constexpr int kContentsWidth = 295;
constexpr int kMargin = 12;

// The book is an archive that pages are read from as they are shown.
void PrepareArchives() {
  static const bool done = [] {
    wxFileSystem::AddHandler(new wxArchiveFSHandler);
    return true;
  }();
  (void)done;
}

// Empty when no page has that number. The book itself, above its pages, counts as number 0.
wxString PageOf(const wxHtmlHelpData& book, HelpTopic topic) {
  const wxHtmlHelpDataItems& items = book.GetContentsArray();
  for (size_t i = 0; i < items.size(); ++i) {
    if (items[i].level > 0 && items[i].id == static_cast<int>(topic)) return items[i].page;
  }
  return {};
}

// As large as the text of dialogs; headings not as large as those of the web.
void SetFonts(wxHtmlWindow& page) {
  constexpr std::array kSizes = {0.8, 0.9, 1.0, 1.1, 1.2, 1.35, 1.6};
  const double text = wxSystemSettings::GetFont(wxSYS_DEFAULT_GUI_FONT).GetPointSize();
  std::array<int, kSizes.size()> points{};
  for (size_t i = 0; i < points.size(); ++i) points[i] = wxRound(text * kSizes[i]);
  page.SetFonts("", "", points.data());
}

}  // namespace

HelpWindow::HelpWindow(wxWindow* owner)
    : wxFrame(owner, wxID_ANY, kCaption), m_controller(kParts, this) {
  // Keys and commands of this window are none of its owner's.
  SetExtraStyle(GetExtraStyle() | wxWS_EX_BLOCK_EVENTS);
  SetProgramIcon(*this);
  Bind(wxEVT_CHAR_HOOK, &HelpWindow::OnKey, this);
  const wxSize screen = wxGetClientDisplayRect().GetSize();
  wxSize size = FromDIP(kOpeningSize);
  size.DecTo(screen);
  SetSize(size);
  SetMinClientSize(FromDIP(kLeastSize));
  CentreOnScreen();
  UseBesideModalDialogs(*this);
}

HelpWindow::~HelpWindow() {
  // The pages know the controller: they go first.
  DestroyChildren();
}

bool HelpWindow::Open(const std::string& path) {
  PrepareArchives();
  {
    // What is wrong with the file is told by the one who asked for it.
    const wxLogNull silent;
    const wxString file = wxFileSystem::FileNameToURL(wxFileName(Wide(path)));
    if (!m_controller.AddBook(file + "#zip:tarn.hhp")) return false;
  }
  m_controller.DisplayContents();
  wxHtmlHelpWindow& pages = *m_controller.GetHelpWindow();
  pages.GetSplitterWindow()->SetSashPosition(FromDIP(kContentsWidth));
  wxHtmlWindow& page = *pages.GetHtmlWindow();
  page.SetRelatedFrame(this, kTitleFormat);
  page.SetBorders(FromDIP(kMargin));
  SetFonts(page);
  Layout();
  return true;
}

void HelpWindow::ShowTopic(HelpTopic topic) {
  wxHtmlHelpData& book = *m_controller.GetHelpData();
  wxString page = PageOf(book, topic);
  if (page.empty()) page = book.GetContentsArray()[0].page;
  m_controller.Display(page);
  if (IsIconized()) Iconize(false);
  Show();
  Raise();
}

bool HelpWindow::Enable(bool) {
  return false;
}

void HelpWindow::OnKey(wxKeyEvent& event) {
  if (event.GetKeyCode() == WXK_ESCAPE && !event.HasAnyModifiers()) {
    Close();
  } else {
    event.Skip();
  }
}

}  // namespace tarn
