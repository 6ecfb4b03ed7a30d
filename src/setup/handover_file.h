#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "base/status.h"

namespace tarn {

// What the companion data editor hands over: the file saved in it, and where its targets
// begin.
struct HandOver {
  std::string path;           // at most 254 bytes
  int32_t target_column = 0;  // from 1; 0: the file holds no targets
};

// "Load Tabulo Info": reads the hand-over file (a path line, then the target start column) and
// deletes it. When it cannot be read nothing happens but the message.
std::optional<HandOver> TakeHandOver(const std::string& handover_path, Message& message);

}  // namespace tarn
