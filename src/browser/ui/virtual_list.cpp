#include "browser/ui/virtual_list.h"

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <wx/dcbuffer.h>
#include <wx/math.h>
#include <wx/pen.h>
#include <wx/settings.h>
#include <wx/utils.h>

#include "browser/report_file.h"
#include "browser/scroll_map.h"
#include "resources/controls.h"

namespace tarn {
namespace {

constexpr int kColumns = static_cast<int>(kReportWidth);
constexpr int kOpenRows = 25;
constexpr int kMargin = 4;  // pixels, independent of the display
constexpr int kDragMilliseconds = 50;
constexpr int kColumnsPerStep = 4;

// The line that a key goes to from `line`; nothing when it goes to none.
std::optional<int64_t> TargetOf(int key, int64_t line, int64_t rows, int64_t line_count) {
  switch (key) {
    case WXK_UP:
    case WXK_NUMPAD_UP:
      return line - 1;
    case WXK_DOWN:
    case WXK_NUMPAD_DOWN:
      return line + 1;
    case WXK_PAGEUP:
    case WXK_NUMPAD_PAGEUP:
      return line - std::max<int64_t>(rows - 1, 1);
    case WXK_PAGEDOWN:
    case WXK_NUMPAD_PAGEDOWN:
      return line + std::max<int64_t>(rows - 1, 1);
    case WXK_HOME:
    case WXK_NUMPAD_HOME:
      return 0;
    case WXK_END:
    case WXK_NUMPAD_END:
      return line_count - 1;
    default:
      return std::nullopt;
  }
}

// Columns to the right.
int StepAcross(int key) {
  if (key == WXK_LEFT || key == WXK_NUMPAD_LEFT) return -kColumnsPerStep;
  if (key == WXK_RIGHT || key == WXK_NUMPAD_RIGHT) return kColumnsPerStep;
  return 0;
}

bool GoesToAnEnd(int key) {
  return key == WXK_HOME || key == WXK_END || key == WXK_NUMPAD_HOME || key == WXK_NUMPAD_END;
}

// Where a scroll bar goes to, by steps and pages of that size.
int64_t ScrolledTo(const wxScrollWinEvent& event, int64_t from, int64_t step, int64_t page,
                   int64_t last, int64_t thumb) {
  const wxEventType type = event.GetEventType();
  if (type == wxEVT_SCROLLWIN_TOP) return 0;
  if (type == wxEVT_SCROLLWIN_BOTTOM) return last;
  if (type == wxEVT_SCROLLWIN_LINEUP) return from - step;
  if (type == wxEVT_SCROLLWIN_LINEDOWN) return from + step;
  if (type == wxEVT_SCROLLWIN_PAGEUP) return from - page;
  if (type == wxEVT_SCROLLWIN_PAGEDOWN) return from + page;
  return thumb;
}

// Each word in its column: on paper the characters are not exactly as wide as the columns, and
// those that another font stands in for are not on the screen either.
void DrawLine(wxDC& dc, std::string_view line, const wxPoint& place, double column_width) {
  const wxString text = Wide(DisplayText(line));
  for (size_t start = text.find_first_not_of(' '); start != wxString::npos;) {
    const size_t end = std::min(text.find(' ', start), text.size());
    const int x = wxRound(static_cast<double>(start) * column_width);
    dc.DrawText(text.Mid(start, end - start), place.x + x, place.y);
    start = text.find_first_not_of(' ', end);
  }
}

// Whole units of a wheel's turn, of which `unit` is one; the rest is kept.
int TakeUnits(int& turned, int unit) {
  const int units = turned / unit;
  turned -= units * unit;
  return units;
}

}  // namespace

VirtualList::VirtualList(wxWindow* parent) {
  SetBackgroundStyle(wxBG_STYLE_PAINT);
  Create(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize,
         wxVSCROLL | wxHSCROLL | wxWANTS_CHARS | wxFULL_REPAINT_ON_RESIZE | wxBORDER_NONE);
  m_drag_timer.SetOwner(this);
  Measure();
  Bind(wxEVT_PAINT, &VirtualList::OnPaint, this);
  Bind(wxEVT_SIZE, &VirtualList::OnSize, this);
  Bind(wxEVT_KEY_DOWN, &VirtualList::OnKey, this);
  Bind(wxEVT_LEFT_DOWN, &VirtualList::OnPress, this);
  Bind(wxEVT_LEFT_DCLICK, &VirtualList::OnPress, this);
  Bind(wxEVT_RIGHT_DOWN, &VirtualList::OnRightPress, this);
  Bind(wxEVT_MOTION, &VirtualList::OnDrag, this);
  Bind(wxEVT_LEFT_UP, [this](wxMouseEvent&) { EndDrag(); });
  Bind(wxEVT_TIMER, [this](wxTimerEvent&) { DragOutside(); });
  Bind(wxEVT_MOUSE_CAPTURE_LOST, [this](wxMouseCaptureLostEvent&) { m_drag_timer.Stop(); });
  Bind(wxEVT_MOUSEWHEEL, &VirtualList::OnWheel, this);
  for (const auto& type :
       {wxEVT_SCROLLWIN_TOP, wxEVT_SCROLLWIN_BOTTOM, wxEVT_SCROLLWIN_LINEUP,
        wxEVT_SCROLLWIN_LINEDOWN, wxEVT_SCROLLWIN_PAGEUP, wxEVT_SCROLLWIN_PAGEDOWN,
        wxEVT_SCROLLWIN_THUMBTRACK, wxEVT_SCROLLWIN_THUMBRELEASE}) {
    Bind(type, &VirtualList::OnScroll, this);
  }
  const auto repaint = [this](wxEvent& event) {
    Refresh();
    event.Skip();
  };
  Bind(wxEVT_SET_FOCUS, repaint);
  Bind(wxEVT_KILL_FOCUS, repaint);
  const auto measure = [this](wxEvent& event) {
    Measure();
    event.Skip();
  };
  Bind(wxEVT_SYS_COLOUR_CHANGED, measure);
  Bind(wxEVT_DPI_CHANGED, measure);
}

VirtualList::~VirtualList() {
  EndDrag();
}

bool VirtualList::Open(const std::string& path) {
  const bool opened = m_text.Open(path);
  m_selection = {};
  AdjustScrollBars();
  return opened;
}

void VirtualList::SelectAll() {
  LineSelection all = m_selection;
  SelectAllLines(all, m_text.line_count());
  Select(all);
}

int64_t VirtualList::VisibleRows() const {
  return std::max(GetClientSize().y / m_character.y, 1);
}

int VirtualList::WidthOfLines() const {
  return kColumns * m_character.x + 2 * m_margin;
}

wxSize VirtualList::DoGetBestClientSize() const {
  return {WidthOfLines(), kOpenRows * m_character.y};
}

void VirtualList::Measure() {
  SetFont(wxFont(wxFontInfo(wxSystemSettings::GetFont(wxSYS_DEFAULT_GUI_FONT).GetPointSize())
                     .Family(wxFONTFAMILY_TELETYPE)));
  const wxSize line = GetTextExtent(wxString('M', kColumns));
  m_character = {std::max((line.x + kColumns - 1) / kColumns, 1), std::max(line.y, 1)};
  m_margin = FromDIP(kMargin);
  InvalidateBestSize();
  AdjustScrollBars();
}

void VirtualList::OnPaint(wxPaintEvent&) {
  wxAutoBufferedPaintDC dc(this);
  dc.SetBackground(wxBrush(wxSystemSettings::GetColour(wxSYS_COLOUR_WINDOW)));
  dc.Clear();
  dc.SetFont(GetFont());
  // The line that is partly visible as well.
  PaintLines(dc, m_text.first_visible(), VisibleRows() + 1, {m_margin - m_left, 0},
             {static_cast<double>(m_character.x), static_cast<double>(m_character.y)});
}

void VirtualList::PaintLines(wxDC& dc, int64_t first, int64_t count, const wxPoint& origin,
                             const wxRealPoint& cell) {
  const std::string records = m_text.Lines(first, count);
  const int width = std::max(GetClientSize().x, WidthOfLines());
  dc.SetBackgroundMode(wxBRUSHSTYLE_TRANSPARENT);
  int64_t line = first;
  for (std::string_view rest = records; !rest.empty(); rest.remove_prefix(kReportWidth)) {
    const auto row = static_cast<double>(line - first);
    const int y = origin.y + wxRound(row * cell.y);
    dc.SetTextForeground(m_printing ? *wxBLACK
                                    : wxSystemSettings::GetColour(wxSYS_COLOUR_WINDOWTEXT));
    if (!m_printing) PaintSelectedLine(dc, line, {-m_left, y, width, m_character.y});
    DrawLine(dc, rest.substr(0, kReportWidth), {origin.x, y}, cell.x);
    ++line;
  }
}

// Beneath the text of the line, whose colour is set.
void VirtualList::PaintSelectedLine(wxDC& dc, int64_t line, const wxRect& row) {
  if (m_selection.Contains(line)) {
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(wxBrush(wxSystemSettings::GetColour(wxSYS_COLOUR_HIGHLIGHT)));
    dc.DrawRectangle(row);
    dc.SetTextForeground(wxSystemSettings::GetColour(wxSYS_COLOUR_HIGHLIGHTTEXT));
  }
  if (line == m_selection.caret && HasFocus()) {
    dc.SetPen(wxPen(dc.GetTextForeground(), 1, wxPENSTYLE_DOT));
    dc.SetBrush(*wxTRANSPARENT_BRUSH);
    dc.DrawRectangle(row);
  }
}

void VirtualList::PaintPage(wxDC& dc, const std::string& header, int64_t first, int64_t count,
                            const wxRealPoint& cell) {
  m_printing = true;
  dc.SetTextForeground(*wxBLACK);
  DrawLine(dc, header, {0, 0}, cell.x);
  PaintLines(dc, first, count, {0, wxRound(2 * cell.y)}, cell);
  m_printing = false;
}

void VirtualList::OnSize(wxSizeEvent& event) {
  AdjustScrollBars();
  event.Skip();
}

void VirtualList::AdjustScrollBars() {
  const int64_t rows = VisibleRows();
  m_text.ScrollTo(m_text.first_visible(), rows);
  const ScrollMap map(m_text.line_count(), rows);
  SetScrollbar(wxVERTICAL, map.PositionOf(m_text.first_visible()), map.thumb(), map.range());
  const int room = GetClientSize().x;
  m_left = std::clamp(m_left, 0, std::max(WidthOfLines() - room, 0));
  SetScrollbar(wxHORIZONTAL, m_left, std::min(room, WidthOfLines()), WidthOfLines());
  Refresh();
}

void VirtualList::ScrollTo(int64_t line) {
  const int64_t rows = VisibleRows();
  m_text.ScrollTo(line, rows);
  SetScrollPos(wxVERTICAL, ScrollMap(m_text.line_count(), rows).PositionOf(m_text.first_visible()));
  Refresh();
}

void VirtualList::ScrollAcrossTo(int x) {
  m_left = std::clamp(x, 0, std::max(WidthOfLines() - GetClientSize().x, 0));
  SetScrollPos(wxHORIZONTAL, m_left);
  Refresh();
}

void VirtualList::OnScroll(wxScrollWinEvent& event) {
  if (event.GetOrientation() == wxHORIZONTAL) {
    const int step = kColumnsPerStep * m_character.x;
    const int64_t x =
        ScrolledTo(event, m_left, step, GetClientSize().x, WidthOfLines(), event.GetPosition());
    ScrollAcrossTo(static_cast<int>(x));
    return;
  }
  const int64_t rows = VisibleRows();
  const ScrollMap map(m_text.line_count(), rows);
  ScrollTo(ScrolledTo(event, m_text.first_visible(), 1, rows, m_text.ScrollRange(rows),
                      map.LineAt(event.GetPosition())));
}

void VirtualList::OnKey(wxKeyEvent& event) {
  const int key = event.GetKeyCode();
  const int across = StepAcross(key);
  // With Ctrl the lines go and the caret stays.
  const bool scrolls = event.ControlDown() && !GoesToAnEnd(key);
  const int64_t from = scrolls ? m_text.first_visible() : m_selection.caret;
  const std::optional<int64_t> target = TargetOf(key, from, VisibleRows(), m_text.line_count());
  if (event.AltDown() || (across == 0 && !target)) {
    event.Skip();
  } else if (across != 0) {
    ScrollAcrossTo(m_left + across * m_character.x);
  } else if (scrolls) {
    ScrollTo(*target);
  } else {
    GoTo(*target, event.ShiftDown());
  }
}

void VirtualList::GoTo(int64_t line, bool extend) {
  LineSelection moved = m_selection;
  MoveCaret(moved, line, m_text.line_count(), extend);
  Select(moved);
  const int64_t rows = VisibleRows();
  if (moved.caret < m_text.first_visible()) {
    ScrollTo(moved.caret);
  } else if (moved.caret >= m_text.first_visible() + rows) {
    ScrollTo(moved.caret - rows + 1);
  }
}

void VirtualList::Select(const LineSelection& selection) {
  if (selection == m_selection) return;
  m_selection = selection;
  Refresh();
  wxCommandEvent event(wxEVT_LISTBOX, GetId());
  event.SetEventObject(this);
  ProcessWindowEvent(event);
}

wxPoint VirtualList::CaretPlace() const {
  const int64_t row = m_selection.caret - m_text.first_visible() + 1;
  const auto within = static_cast<int>(std::clamp<int64_t>(row, 0, VisibleRows()));
  return {m_margin, within * m_character.y};
}

int64_t VirtualList::LineAt(int y) const {
  const int rows = (std::abs(y) + (y < 0 ? m_character.y - 1 : 0)) / m_character.y;
  return m_text.first_visible() + (y < 0 ? -rows : rows);
}

void VirtualList::OnPress(wxMouseEvent& event) {
  SetFocus();
  GoTo(LineAt(event.GetY()), event.ShiftDown());
  if (!HasCapture()) CaptureMouse();
  // While the pointer is held outside, lines go on coming.
  m_drag_timer.Start(kDragMilliseconds);
}

void VirtualList::OnDrag(wxMouseEvent& event) {
  if (HasCapture() && event.LeftIsDown()) GoTo(LineAt(event.GetY()), true);
  event.Skip();
}

// The further outside the pointer is held, the faster the lines come.
void VirtualList::DragOutside() {
  const int y = ScreenToClient(wxGetMousePosition()).y;
  if (HasCapture() && (y < 0 || y >= GetClientSize().y)) GoTo(LineAt(y), true);
}

void VirtualList::EndDrag() {
  m_drag_timer.Stop();
  if (HasCapture()) ReleaseMouse();
}

// What is selected already stays: a menu opens for it.
void VirtualList::OnRightPress(wxMouseEvent& event) {
  SetFocus();
  const int64_t line = LineAt(event.GetY());
  if (!m_selection.Contains(line)) GoTo(line, false);
  event.Skip();
}

void VirtualList::OnWheel(wxMouseEvent& event) {
  const int delta = std::max(event.GetWheelDelta(), 1);
  if (event.GetWheelAxis() == wxMOUSE_WHEEL_HORIZONTAL || event.ShiftDown()) {
    const int sign = event.GetWheelAxis() == wxMOUSE_WHEEL_HORIZONTAL ? 1 : -1;
    m_wheel_across += sign * event.GetWheelRotation() * event.GetColumnsPerAction();
    ScrollAcrossTo(m_left + TakeUnits(m_wheel_across, delta) * m_character.x);
    return;
  }
  const int64_t page = VisibleRows();
  const int lines = event.IsPageScroll() ? static_cast<int>(page) : event.GetLinesPerAction();
  m_wheel += event.GetWheelRotation() * lines;
  ScrollTo(m_text.first_visible() - TakeUnits(m_wheel, delta));
}

}  // namespace tarn
