#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>
#include <wx/scrolwin.h>
#include <wx/uiaction.h>

#include "ui/info_browser_fixture.h"

namespace tarn {
namespace {

TEST_F(LongInfoBrowserTest, OpensByReadingWhatCanBeSeen) {
  InfoBrowser& browser = Open({});
  Turn();
  EXPECT_GT(m_files.lines_read, 0);
  EXPECT_LE(m_files.last_read, browser.list().VisibleRows());
  EXPECT_LT(m_files.lines_read, 2000);
  EXPECT_GE(browser.list().VisibleRows(), 24);
}

TEST_F(LongInfoBrowserTest, ShowsTheLastOfTenMillionLines) {
  InfoBrowser& browser = Open({});
  VirtualList& list = browser.list();
  Strike(browser, WXK_END, wxMOD_CONTROL);
  Until([this] { return m_files.last_read == LongReport::kLines - 1; });
  EXPECT_EQ(list.text().first_visible(), LongReport::kLines - list.VisibleRows());
  EXPECT_EQ(list.selection().caret, LongReport::kLines - 1);
  EXPECT_EQ(list.GetScrollPos(wxVERTICAL) + list.GetScrollThumb(wxVERTICAL),
            list.GetScrollRange(wxVERTICAL));
  Choose(browser, kCopy);
  EXPECT_EQ(Clipboard(), "9999999\n");
  Strike(browser, WXK_HOME);
  EXPECT_EQ(list.text().first_visible(), 0);
}

TEST_F(LongInfoBrowserTest, GoesWhereItsScrollBarGoes) {
  VirtualList& list = Open({}).list();
  const auto scroll = [&list](wxEventType type, int position) {
    wxScrollWinEvent event(type, position, wxVERTICAL);
    list.ProcessWindowEvent(event);
    return list.text().first_visible();
  };
  const int64_t rows = list.VisibleRows();
  EXPECT_EQ(scroll(wxEVT_SCROLLWIN_THUMBTRACK, 5000000), 5000000);
  EXPECT_EQ(scroll(wxEVT_SCROLLWIN_LINEDOWN, 0), 5000001);
  EXPECT_EQ(scroll(wxEVT_SCROLLWIN_PAGEUP, 0), 5000001 - rows);
  EXPECT_EQ(scroll(wxEVT_SCROLLWIN_PAGEDOWN, 0), 5000001);
  EXPECT_EQ(scroll(wxEVT_SCROLLWIN_LINEUP, 0), 5000000);
  EXPECT_EQ(scroll(wxEVT_SCROLLWIN_BOTTOM, 0), LongReport::kLines - rows);
  Until([this] { return m_files.last_read == LongReport::kLines - 1; });
  EXPECT_EQ(scroll(wxEVT_SCROLLWIN_TOP, 0), 0);
}

TEST_F(InfoBrowserTest, IsMovedInByKeys) {
  InfoBrowser& browser = Open(Numbered(200));
  VirtualList& list = browser.list();
  const int64_t rows = list.VisibleRows();
  Strike(browser, WXK_DOWN);
  EXPECT_EQ(list.selection(), (LineSelection{1, 1}));
  Strike(browser, WXK_PAGEDOWN);
  EXPECT_EQ(list.selection().caret, rows);
  EXPECT_EQ(list.text().first_visible(), 1);
  Strike(browser, WXK_UP, wxMOD_SHIFT);
  EXPECT_EQ(list.selection(), (LineSelection{rows, rows - 1}));
  Strike(browser, WXK_END, wxMOD_SHIFT);
  EXPECT_EQ(list.selection(), (LineSelection{rows, 199}));
  EXPECT_EQ(list.text().first_visible(), 200 - rows);
  Strike(browser, WXK_PAGEUP);
  EXPECT_EQ(list.selection().caret, 199 - (rows - 1));
  Strike(browser, WXK_HOME);
  EXPECT_EQ(list.selection(), (LineSelection{0, 0}));
  EXPECT_EQ(list.text().first_visible(), 0);
  Strike(browser, WXK_DOWN, wxMOD_CONTROL);
  EXPECT_EQ(list.selection().caret, 0);
  EXPECT_EQ(list.text().first_visible(), 1);
}

TEST_F(InfoBrowserTest, IsScrolledByTheWheel) {
  VirtualList& list = Open(Numbered(200)).list();
  const auto turn = [&list](int rotation) {
    wxMouseEvent event(wxEVT_MOUSEWHEEL);
    event.m_wheelRotation = rotation;
    event.m_wheelDelta = 120;
    event.m_linesPerAction = 3;
    list.ProcessWindowEvent(event);
    return list.text().first_visible();
  };
  EXPECT_EQ(turn(-120), 3);
  EXPECT_EQ(turn(-20), 3);
  EXPECT_EQ(turn(-20), 4);
  EXPECT_EQ(turn(240), 0);
  EXPECT_EQ(turn(120), 0);
}

TEST_F(InfoBrowserTest, ScrollsAcrossWhenItIsNarrow) {
  InfoBrowser& browser = Open(Numbered(200));
  VirtualList& list = browser.list();
  Strike(browser, WXK_RIGHT);
  EXPECT_EQ(list.GetScrollPos(wxHORIZONTAL), 0);
  browser.SetClientSize(300, 200);
  Turn();
  Strike(browser, WXK_RIGHT);
  const int step = list.GetScrollPos(wxHORIZONTAL);
  EXPECT_GT(step, 0);
  Strike(browser, WXK_LEFT);
  EXPECT_EQ(list.GetScrollPos(wxHORIZONTAL), 0);
  browser.SetClientSize(list.GetBestSize());
  Turn();
  EXPECT_EQ(list.VisibleRows(), 25);
}

TEST_F(InfoBrowserTest, KeepsTheSelectionThatAMenuIsOpenedFor) {
  VirtualList& list = Open(Numbered(200)).list();
  const int height = list.GetBestSize().y / 25;
  const auto press = [&](wxEventType type, int row) {
    wxMouseEvent event(type);
    event.SetPosition({40, row * height + height / 2});
    list.ProcessWindowEvent(event);
  };
  press(wxEVT_RIGHT_DOWN, 5);
  EXPECT_EQ(list.selection(), (LineSelection{5, 5}));
  list.SelectAll();
  press(wxEVT_RIGHT_DOWN, 7);
  EXPECT_EQ(list.selection().count(), 200);
}

TEST_F(InfoBrowserTest, IsSelectedInByThePointer) {
  InfoBrowser& browser = Open(Numbered(200));
  VirtualList& list = browser.list();
  const int height = list.GetBestSize().y / 25;
  wxUIActionSimulator simulator;
  const auto at = [&](int row) {
    return list.ClientToScreen(wxPoint(40, row * height + height / 2));
  };
  simulator.MouseMove(at(3));
  simulator.MouseClick();
  Turn();
  EXPECT_EQ(list.selection(), (LineSelection{3, 3}));
  simulator.MouseDown();
  simulator.MouseMove(at(7));
  Turn();
  EXPECT_EQ(list.selection(), (LineSelection{3, 7}));
  simulator.MouseMove(at(40));
  Until([&list] { return list.text().first_visible() > 20; });
  simulator.MouseUp();
  Turn();
  const LineSelection dragged = list.selection();
  EXPECT_EQ(dragged.anchor, 3);
  EXPECT_GT(dragged.caret, 40);
  Turn();
  EXPECT_EQ(list.selection(), dragged) << "nothing goes on after the button is released";
}

TEST_F(InfoBrowserTest, LosesNothingButLinesWithItsFile) {
  InfoBrowser& browser = Open(Numbered(200));
  WriteFile(m_last_path, "");
  Strike(browser, WXK_END);
  Turn();
  Choose(browser, kCopy);
  EXPECT_THAT(m_asked.told, testing::ElementsAre("Tarn Error|The report file cannot be read"));
}

}  // namespace
}  // namespace tarn
