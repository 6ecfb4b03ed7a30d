#pragma once

#include "windows/tables.h"
#include "windows/window.h"

namespace tarn {

// Whether the system has such a control there; no window is a command.
bool IsOfKind(const Window& control, Kind kind);

}  // namespace tarn
