#pragma once

#include <optional>
#include <string>
#include <wx/print.h>
#include <wx/weakref.h>

#include "browser/print_pages.h"
#include "browser/ui/virtual_list.h"

namespace tarn {

// Prints a report as wide as the margins of the page allow. The list paints the pages; when it is
// gone, so are they.
class TPBPrint : public wxPrintout {
 public:
  TPBPrint(VirtualList& list, std::string caption);

  void OnPreparePrinting() override;
  bool HasPage(int page) override;
  void GetPageInfo(int* first, int* last, int* from, int* to) override;
  bool OnPrintPage(int page) override;

 private:
  // Scales the page, with the origin where its margins begin. The height between them; 0 when the
  // margins leave no room.
  int FitPage();

  wxWeakRef<VirtualList> m_list;
  std::string m_caption;
  std::optional<PrintPages> m_pages;
  wxRealPoint m_cell;  // of a character, before the page is scaled
};

}  // namespace tarn
