#include "browser/line_selection.h"

#include <algorithm>
#include <cstdlib>

#include "browser/messages.h"

namespace tarn {

int64_t LineSelection::first() const {
  return anchor == kNone ? 0 : std::min(anchor, caret);
}

int64_t LineSelection::count() const {
  return anchor == kNone ? 0 : std::abs(caret - anchor) + 1;
}

bool LineSelection::Contains(int64_t line) const {
  return line >= first() && line - first() < count();
}

void MoveCaret(LineSelection& selection, int64_t line, int64_t line_count, bool extend) {
  if (line_count <= 0) return;
  const int64_t from =
      selection.anchor == LineSelection::kNone ? selection.caret : selection.anchor;
  selection.caret = std::clamp<int64_t>(line, 0, line_count - 1);
  selection.anchor = extend ? from : selection.caret;
}

void SelectAllLines(LineSelection& selection, int64_t line_count) {
  if (line_count > 0) selection = {0, line_count - 1};
}

Status ReadSelectedText(TVirtText& report, const LineSelection& selection, std::string& text) {
  text.clear();
  bool fits = true;
  const Status read = WriteReportText(report, selection.first(), selection.count(),
                                      [&text, &fits](std::string_view line) {
                                        line.remove_suffix(1);
                                        text += DisplayText(line) + '\n';
                                        fits = text.size() <= kMostCopied;
                                        return fits;
                                      });
  if (read.ok() && fits) return {};
  text.clear();
  return read.ok() ? Status::Failure(kSelectionTooLarge) : read;
}

}  // namespace tarn
