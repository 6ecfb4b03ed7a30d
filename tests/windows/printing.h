#pragma once

#include <string_view>

#include "windows/place.h"

namespace tarn {

// The commands of a graph or a report for paper: the window that each of them opens, or where the
// system has no printer, the message that says so.
void LookAtPrinting(const Place& place, std::string_view error_caption);

}  // namespace tarn
