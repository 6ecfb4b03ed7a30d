#pragma once

#include <functional>
#include <memory>
#include <wx/cmndata.h>
#include <wx/print.h>
#include <wx/window.h>

// Printing what a window shows. The settings of page and printer that the user chose last hold
// until the program ends.

namespace tarn {

// The title of every print job.
inline constexpr const char* kPrintTitle = "Tarn NetGraph Print";

// The printer with these settings.
class TarnPrinter : public wxPrinter {
 public:
  TarnPrinter();

  // Runs the print dialog above the window and prints; what the user chose is kept.
  void PrintAsking(wxWindow& window, wxPrintout& printout);
};

// Shows the pages before they are printed; `make` makes a printout of them, one to be shown and
// one to be printed. False when there is no preview.
bool PreviewPrint(wxWindow& window, const std::function<std::unique_ptr<wxPrintout>()>& make);

// A dialog of the printing system is open, or pages are on their way to the printer.
bool IsPrinting();

// Asks for paper and margins.
void SetUpPage(wxWindow& window);
const wxPageSetupDialogData& PageSettings();

}  // namespace tarn
