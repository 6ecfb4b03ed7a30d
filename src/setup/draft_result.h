#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/status.h"

namespace tarn {

// What OK in a dialog leads to: the message boxes to show, one after the other, and whether
// the dialog closes. A message alone does not keep it open: some fields correct themselves.
struct DraftResult {
  std::vector<Message> messages;
  bool may_close = false;
  int first_refused = 0;  // the control whose field kept the dialog open; 0: none

  void Tell(std::string_view caption, std::string_view text) {
    messages.push_back({std::string(caption), std::string(text), MessageIcon::kExclamation});
  }
  // Tells it and keeps the dialog open. `control` is the number of the field's control.
  void Refuse(std::string_view caption, std::string_view text, int control = 0) {
    Tell(caption, text);
    may_close = false;
    if (first_refused == 0) first_refused = control;
  }
};

}  // namespace tarn
