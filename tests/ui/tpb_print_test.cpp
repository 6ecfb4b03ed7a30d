#include "browser/ui/tpb_print.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <wx/bitmap.h>
#include <wx/dcmemory.h>
#include <wx/image.h>

#include "resources/printing.h"
#include "ui/info_browser_fixture.h"
#include "ui/pictures.h"

namespace tarn {
namespace {

constexpr int kDotsPerInch = 150;
constexpr double kMmPerInch = 25.4;

// An A4 page of a printer, as a picture.
class Page {
 public:
  explicit Page(wxPrintout& printout) : m_printout(printout) {
    m_dc.SelectObject(m_bitmap);
    m_dc.SetBackground(*wxWHITE_BRUSH);
    printout.SetDC(&m_dc);
    printout.SetPPIScreen(96, 96);
    printout.SetPPIPrinter(kDotsPerInch, kDotsPerInch);
    printout.SetPageSizeMM(kWidthMm, kHeightMm);
    printout.SetPageSizePixels(m_bitmap.GetWidth(), m_bitmap.GetHeight());
    printout.SetPaperRectPixels(wxRect(m_bitmap.GetSize()));
    printout.OnPreparePrinting();
  }
  Page(const Page&) = delete;
  Page& operator=(const Page&) = delete;

  int Count() {
    int first = 0;
    int last = 0;
    int from = 0;
    int to = 0;
    m_printout.GetPageInfo(&first, &last, &from, &to);
    return last;
  }
  // False when it is refused.
  bool Print(int page) {
    m_dc.Clear();
    return m_printout.OnPrintPage(page);
  }
  // The part of the page that something is printed on, in mm.
  wxRect Ink() {
    const wxImage image = m_bitmap.ConvertToImage();
    wxRect ink;
    for (int y = 0; y < image.GetHeight(); ++y) {
      for (int x = 0; x < image.GetWidth(); ++x) {
        if (image.GetRed(x, y) < 128) ink.Union({x, y, 1, 1});
      }
    }
    const auto mm = [](int dots) { return static_cast<int>(dots * kMmPerInch / kDotsPerInch); };
    return {mm(ink.x), mm(ink.y), mm(ink.width), mm(ink.height)};
  }

 private:
  static constexpr int kWidthMm = 210;
  static constexpr int kHeightMm = 297;

  wxPrintout& m_printout;
  wxBitmap m_bitmap{static_cast<int>(kWidthMm / kMmPerInch * kDotsPerInch),
                    static_cast<int>(kHeightMm / kMmPerInch * kDotsPerInch)};
  wxMemoryDC m_dc;
};

class ReportPrint : public InfoBrowserTest {
 protected:
  // Null when there is no preview.
  static wxPreviewFrame* Preview(const InfoBrowser& browser) {
    for (wxWindow* child : browser.GetChildren()) {
      auto* frame = dynamic_cast<wxPreviewFrame*>(child);
      if (frame != nullptr && !frame->IsBeingDeleted()) return frame;
    }
    return nullptr;
  }
};

TEST_F(ReportPrint, NamesItsJob) {
  TPBPrint print(Open({"line"}).list(), "x");
  EXPECT_EQ(print.GetTitle(), "Tarn NetGraph Print");
}

TEST_F(ReportPrint, FillsThePageBetweenItsMargins) {
  InfoBrowser& browser = Open(std::vector<std::string>(1000, "MM" + std::string(76, ' ') + "MM"));
  browser.list().SelectAll();
  TPBPrint print(browser.list(), "Network Statistics");
  Page page(print);
  ASSERT_TRUE(page.Print(1));
  const wxRect ink = page.Ink();
  EXPECT_NEAR(ink.GetLeft(), 20, 1);
  EXPECT_NEAR(ink.GetRight(), 190, 2);
  EXPECT_NEAR(ink.GetTop(), 21, 2);
  EXPECT_NEAR(ink.GetBottom(), 275, 5);
  EXPECT_LE(ink.GetBottom(), 277);
  EXPECT_FALSE(browser.list().IsPrinting());
}

TEST_F(ReportPrint, CountsThePagesOfTheWholeReport) {
  TPBPrint print(Open(Numbered(1000)).list(), "x");
  Page page(print);
  const int count = page.Count();
  EXPECT_GE(count, 15);
  EXPECT_LE(count, 20);
  EXPECT_TRUE(page.Print(count));
  EXPECT_LT(page.Ink().width, 171);
  EXPECT_FALSE(page.Print(count + 1));
  EXPECT_FALSE(page.Print(0));
  EXPECT_FALSE(print.HasPage(count + 1));
  TPBPrint empty(Open({}).list(), "x");
  EXPECT_EQ(Page(empty).Count(), 1);
}

TEST_F(ReportPrint, EndsWithItsWindow) {
  InfoBrowser& browser = Open(Numbered(1000));
  TPBPrint print(browser.list(), "x");
  Page page(print);
  EXPECT_TRUE(page.Print(1));
  Close(browser);
  EXPECT_FALSE(page.Print(2));
}

TEST_F(ReportPrint, IsShownBefore) {
  InfoBrowser& browser = Open(Numbered(1000), "Network Statistics");
  Choose(browser, kPreview);
  Until([&] { return Preview(browser) != nullptr && Preview(browser)->IsShownOnScreen(); });
  Turn(40);
  LookAt(*Preview(browser), "report-preview");
  Preview(browser)->Close();
  Until([&] { return Preview(browser) == nullptr; });
  EXPECT_TRUE(browser.IsEnabled());
  Choose(browser, kPreview);
  Turn();
  Close(browser);
}

}  // namespace
}  // namespace tarn
