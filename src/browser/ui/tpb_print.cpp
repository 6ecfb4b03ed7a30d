#include "browser/ui/tpb_print.h"

#include <algorithm>
#include <utility>
#include <wx/dc.h>
#include <wx/font.h>

#include "browser/report_file.h"
#include "resources/printing.h"

namespace tarn {
namespace {

// Before it is scaled to the page: so large that heights rounded to whole units do not matter.
constexpr int kFontPoints = 40;

}  // namespace

TPBPrint::TPBPrint(VirtualList& list, std::string caption)
    : wxPrintout(kPrintTitle), m_list(&list), m_caption(std::move(caption)) {}

int TPBPrint::FitPage() {
  wxDC& dc = *GetDC();
  dc.SetFont(wxFont(wxFontInfo(kFontPoints).Family(wxFONTFAMILY_TELETYPE)));
  dc.SetUserScale(1, 1);
  dc.SetLogicalOrigin(0, 0);
  dc.SetDeviceOrigin(0, 0);
  const wxRect room = GetLogicalPageMarginsRect(PageSettings());
  if (room.width <= 0 || room.height <= 0) return 0;
  const wxSize line = dc.GetTextExtent(wxString('M', kReportWidth));
  m_cell = {std::max(line.x, 1) / static_cast<double>(kReportWidth),
            static_cast<double>(std::max(line.y, 1))};
  FitThisSizeToPageMargins({std::max(line.x, 1), 1}, PageSettings());
  return GetLogicalPageMarginsRect(PageSettings()).height;
}

void TPBPrint::OnPreparePrinting() {
  if (m_list == nullptr || GetDC() == nullptr) return;
  const int height = FitPage();
  if (height > 0) m_pages.emplace(m_list->text().line_count(), height, m_cell.y);
}

bool TPBPrint::HasPage(int page) {
  return m_pages && page >= 1 && page <= m_pages->page_count();
}

void TPBPrint::GetPageInfo(int* first, int* last, int* from, int* to) {
  *first = *from = m_pages ? 1 : 0;
  *last = *to = m_pages ? m_pages->page_count() : 0;
}

bool TPBPrint::OnPrintPage(int page) {
  if (m_list == nullptr || GetDC() == nullptr || !HasPage(page) || FitPage() <= 0) return false;
  m_list->PaintPage(*GetDC(), m_pages->Header(m_caption, page), m_pages->FirstLine(page),
                    m_pages->LineCount(page), m_cell);
  return true;
}

}  // namespace tarn
