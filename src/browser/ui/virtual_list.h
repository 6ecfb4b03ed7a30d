#pragma once

#include <cstdint>
#include <string>
#include <wx/dc.h>
#include <wx/event.h>
#include <wx/gdicmn.h>
#include <wx/timer.h>
#include <wx/window.h>

#include "base/status.h"
#include "browser/line_selection.h"
#include "browser/report_text.h"

namespace tarn {

// Shows the lines of a report and reads no more of them than can be seen. Lines are selected by
// keys and pointer; a wxEVT_LISTBOX tells that others are.
class VirtualList : public wxWindow {
 public:
  explicit VirtualList(wxWindow* parent);
  ~VirtualList() override;
  VirtualList(const VirtualList&) = delete;
  VirtualList& operator=(const VirtualList&) = delete;

  // False when the file cannot be read; the list is empty then.
  bool Open(const std::string& path);
  TVirtText& text() { return m_text; }

  const LineSelection& selection() const { return m_selection; }
  void SelectAll();

  // Below the caret, where a menu for it opens; within the window.
  wxPoint CaretPlace() const;

  // Whole lines that the window has room for, 1 at least.
  int64_t VisibleRows() const;

  // Paints a page for the printer in the font of the device context, each character in a cell of
  // that size: a header, a blank line and `count` lines from `first` on. Neither the colours of the
  // screen nor the selection are on it.
  void PaintPage(wxDC& dc, const std::string& header, int64_t first, int64_t count,
                 const wxRealPoint& cell);
  bool IsPrinting() const { return m_printing; }

 protected:
  wxSize DoGetBestClientSize() const override;

 private:
  void Measure();
  void OnPaint(wxPaintEvent& event);
  void PaintLines(wxDC& dc, int64_t first, int64_t count, const wxPoint& origin,
                  const wxRealPoint& cell);
  void PaintSelectedLine(wxDC& dc, int64_t line, const wxRect& row);

  void OnSize(wxSizeEvent& event);
  void OnScroll(wxScrollWinEvent& event);
  void OnKey(wxKeyEvent& event);
  void OnPress(wxMouseEvent& event);
  void OnDrag(wxMouseEvent& event);
  void OnWheel(wxMouseEvent& event);
  void OnRightPress(wxMouseEvent& event);
  void DragOutside();
  void EndDrag();

  void ScrollTo(int64_t line);
  void ScrollAcrossTo(int x);
  void AdjustScrollBars();
  // The caret goes to the line, which is scrolled to when it cannot be seen.
  void GoTo(int64_t line, bool extend);
  void Select(const LineSelection& selection);
  int64_t LineAt(int y) const;
  int WidthOfLines() const;

  TVirtText m_text;
  LineSelection m_selection;
  bool m_printing = false;

  wxSize m_character;  // of the fixed pitch font
  int m_margin = 0;    // left and right of the lines
  int m_left = 0;      // pixels scrolled off to the left
  wxTimer m_drag_timer;
  int m_wheel = 0;         // of the wheel's turn, what is less than a line yet
  int m_wheel_across = 0;  // the same to the side
};

}  // namespace tarn
