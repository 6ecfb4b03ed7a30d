#include "browser/ui/info_browser.h"

#include <optional>
#include <utility>
#include <wx/dataobj.h>
#include <wx/display.h>
#include <wx/menu.h>
#include <wx/settings.h>
#include <wx/xrc/xmlres.h>

#include "app/messages.h"
#include "browser/line_selection.h"
#include "browser/messages.h"
#include "browser/ui/tpb_print.h"
#include "resources/clipboard.h"
#include "resources/commands.h"
#include "resources/controls.h"
#include "resources/printing.h"

namespace tarn {
namespace {

enum Command : int {
  kSelectAll = 156,
};

const wxSize kLeast(240, 120);  // independent of the display

}  // namespace

InfoBrowser::InfoBrowser(wxWindow* owner, std::unique_ptr<ReportFile> report,
                         std::string_view caption, Dialogs& dialogs)
    : wxFrame(owner, wxID_ANY, Wide(kBrowserCaption) + " - " + Wide(caption)),
      m_report(std::move(report)),
      m_caption(caption),
      m_dialogs(dialogs),
      m_list(new VirtualList(this)) {
  SetProgramIcon(*this);
  SetMenuBar(wxXmlResource::Get()->LoadMenuBar("INFO_MENU"));
  Bind(wxEVT_CHAR_HOOK, &InfoBrowser::OnKey, this);
  Bind(wxEVT_MENU, &InfoBrowser::OnMenu, this);
  Bind(wxEVT_CONTEXT_MENU, &InfoBrowser::OnContextMenu, this);
  Bind(wxEVT_CLOSE_WINDOW, &InfoBrowser::OnClose, this);
  m_list->Bind(wxEVT_LISTBOX, [this](wxCommandEvent&) { EnableCopy(); });
  ShowReport();
}

InfoBrowser::~InfoBrowser() {
  // The list reads the report file: it goes first.
  DestroyChildren();
}

void InfoBrowser::ShowReport() {
  const bool readable = m_report != nullptr && m_list->Open(m_report->path());
  EnableCopy();
  wxSize open = m_list->GetBestSize();
  open.x += wxSystemSettings::GetMetric(wxSYS_VSCROLL_X, this);
  SetMinClientSize(FromDIP(kLeast));
  SetClientSize(open);
  const wxSize screen = wxDisplay(this).GetClientArea().GetSize();
  wxSize fitting = GetSize();
  fitting.DecTo(screen);
  SetSize(fitting);
  CentreOnParent();
  m_list->SetFocus();
  if (!readable) m_dialogs.Tell(kReportErrorCaption, kReportUnreadable);
}

void InfoBrowser::DiscardReport() {
  // The list reads it.
  m_list->text().Close();
  if (m_report != nullptr) m_report->Discard();
}

void InfoBrowser::EnableCopy() {
  GetMenuBar()->Enable(kCopyCommand, m_list->selection().count() > 0);
}

void InfoBrowser::OnMenu(wxCommandEvent& event) {
  switch (event.GetId()) {
    case kSaveAsCommand:
      SaveAs();
      break;
    case kPrintCommand:
      PrintReport();
      break;
    case kPreviewCommand:
      Preview();
      break;
    case kPageSetupCommand:
      SetUpPage(*this);
      break;
    case kCopyCommand:
      Copy();
      break;
    case kSelectAll:
      m_list->SelectAll();
      break;
    case kHelpCommand:
      m_dialogs.ShowHelp(HelpTopic::kInformationBrowser);
      break;
    case kExitCommand:
      Close();
      break;
    default:
      event.Skip();
  }
}

void InfoBrowser::OnContextMenu(wxContextMenuEvent& event) {
  const std::unique_ptr<wxMenu> menu(wxXmlResource::Get()->LoadMenu("INFO_POPUP"));
  menu->Enable(kCopyCommand, m_list->selection().count() > 0);
  const bool by_key = event.GetPosition() == wxDefaultPosition;
  m_list->PopupMenu(menu.get(), by_key ? m_list->CaretPlace() : wxDefaultPosition);
}

void InfoBrowser::OnKey(wxKeyEvent& event) {
  if (event.GetKeyCode() == WXK_ESCAPE && !event.HasAnyModifiers() && !m_menus.IsOpen()) {
    Close();
  } else {
    event.Skip();
  }
}

// Not while a dialog asks on its behalf.
void InfoBrowser::OnClose(wxCloseEvent& event) {
  if (event.CanVeto() && m_dialogs.IsAsking()) {
    event.Veto();
  } else {
    Destroy();
  }
}

void InfoBrowser::SaveAs() {
  const std::optional<std::string> path = m_dialogs.ChooseFile(kSaveReportQuestion);
  if (!path) return;
  const bool saved = WhileBusy(m_dialogs, [&] { return SaveReportText(m_list->text(), *path); });
  if (!saved) m_dialogs.Tell(kReportErrorCaption, kReportNotSaved);
}

void InfoBrowser::PrintReport() {
  TPBPrint printout(*m_list, m_caption);
  TarnPrinter().PrintAsking(*this, printout);
}

void InfoBrowser::Preview() {
  const bool shown =
      PreviewPrint(*this, [this] { return std::make_unique<TPBPrint>(*m_list, m_caption); });
  if (!shown) m_dialogs.Tell(kReportErrorCaption, kNoPreview);
}

void InfoBrowser::Copy() {
  std::string text;
  const Status read = WhileBusy(
      m_dialogs, [&] { return ReadSelectedText(m_list->text(), m_list->selection(), text); });
  if (!read.ok()) {
    m_dialogs.Tell(kReportErrorCaption, read.message());
  } else if (!text.empty() && !PutOnClipboard(std::make_unique<wxTextDataObject>(Wide(text)))) {
    m_dialogs.Tell(kReportErrorCaption, kLinesNotCopied);
  }
}

}  // namespace tarn
