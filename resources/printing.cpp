#include "resources/printing.h"

#include <wx/intl.h>
#include <wx/printdlg.h>

#include "resources/controls.h"

namespace tarn {
namespace {

constexpr int kMarginMm = 20;
const wxSize kPreviewSize(640, 760);  // independent of the display

struct Settings {
  Settings() {
    page.SetMarginTopLeft({kMarginMm, kMarginMm});
    page.SetMarginBottomRight({kMarginMm, kMarginMm});
  }

  wxPrintDialogData printer;
  wxPageSetupDialogData page;
};

// Made when the first window prints: not before the toolkit is there.
Settings& Kept() {
  static Settings settings;
  return settings;
}

int g_printing = 0;

// Printing for as long as the call that prints has not returned.
class Printing {
 public:
  Printing() { ++g_printing; }
  ~Printing() { --g_printing; }
  Printing(const Printing&) = delete;
  Printing& operator=(const Printing&) = delete;
};

// The paper is chosen in both dialogs.
void KeepPrinter(const wxPrintData& printer) {
  Kept().printer.SetPrintData(printer);
  Kept().page.SetPrintData(printer);
}

// A preview that keeps what was chosen when it printed, as TarnPrinter does.
class Preview : public wxPrintPreview {
 public:
  using wxPrintPreview::wxPrintPreview;
  bool Print(bool interactive) override {
    const Printing printing;
    const bool printed = wxPrintPreview::Print(interactive);
    if (printed) KeepPrinter(GetPrintDialogData().GetPrintData());
    return printed;
  }
};

// The pages are drawn in idle turns, and the buttons of the bar are enabled there.
void LetWorkWhenIdle(wxWindow& window) {
  window.SetExtraStyle(window.GetExtraStyle() | wxWS_EX_PROCESS_IDLE | wxWS_EX_PROCESS_UI_UPDATES);
  for (wxWindow* child : window.GetChildren()) LetWorkWhenIdle(*child);
}

}  // namespace

TarnPrinter::TarnPrinter() : wxPrinter(&Kept().printer) {}

void TarnPrinter::PrintAsking(wxWindow& window, wxPrintout& printout) {
  const Printing printing;
  if (Print(&window, &printout, true)) KeepPrinter(GetPrintDialogData().GetPrintData());
}

bool PreviewPrint(wxWindow& window, const std::function<std::unique_ptr<wxPrintout>()>& make) {
  std::unique_ptr<wxPrintout> shown = make();
  std::unique_ptr<wxPrintout> printed = make();
  if (shown == nullptr || printed == nullptr) return false;
  auto preview =
      std::make_unique<Preview>(shown.release(), printed.release(), &Kept().printer.GetPrintData());
  if (!preview->IsOk()) return false;
  wxWindow* owner = wxGetTopLevelParent(&window);
  auto* frame = new wxPreviewFrame(preview.release(), owner, _("Print Preview"), wxDefaultPosition,
                                   owner->FromDIP(kPreviewSize));
  SetProgramIcon(*frame);
  frame->InitializeWithModality(wxPreviewFrame_WindowModal);
  LetWorkWhenIdle(*frame);
  // Its printout is at work while it prints.
  frame->Bind(wxEVT_CLOSE_WINDOW, [](wxCloseEvent& event) {
    if (event.CanVeto() && IsPrinting()) {
      event.Veto();
    } else {
      event.Skip();
    }
  });
  frame->CentreOnParent();
  frame->Show();
  return true;
}

void SetUpPage(wxWindow& window) {
  const Printing printing;
  wxPageSetupDialog dialog(&window, &Kept().page);
  if (dialog.ShowModal() != wxID_OK) return;
  Kept().page = dialog.GetPageSetupDialogData();
  KeepPrinter(wxPrintData(Kept().page.GetPrintData()));
}

bool IsPrinting() {
  return g_printing > 0;
}

const wxPageSetupDialogData& PageSettings() {
  return Kept().page;
}

}  // namespace tarn
