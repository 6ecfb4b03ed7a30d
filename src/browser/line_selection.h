#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "base/status.h"
#include "browser/report_text.h"

namespace tarn {

// The lines of a report that are selected: from the anchor, where the selection began, to the
// caret, where the user is, both of them with it. None at first.
struct LineSelection {
  static constexpr int64_t kNone = -1;

  int64_t anchor = kNone;
  int64_t caret = 0;

  // The first one; 0 when there is none.
  int64_t first() const;
  int64_t count() const;
  bool Contains(int64_t line) const;

  bool operator==(const LineSelection&) const = default;
};

// Goes to a line, or to the nearest one that a report of `line_count` lines has. The selection is
// extended to it, or is this line alone.
void MoveCaret(LineSelection& selection, int64_t line, int64_t line_count, bool extend);
void SelectAllLines(LineSelection& selection, int64_t line_count);

// Bytes of text that are copied at most: what other programs take without trouble, and what a
// clipboard holds in memory several times over.
inline constexpr size_t kMostCopied = size_t{16} << 20U;

// The lines selected as they are shown, each with its line end. kSelectionTooLarge
// and kReportUnreadable; there is no text then.
Status ReadSelectedText(TVirtText& report, const LineSelection& selection, std::string& text);

}  // namespace tarn
