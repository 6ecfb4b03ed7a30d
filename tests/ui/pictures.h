#pragma once

#include <string>
#include <wx/window.h>

namespace tarn {

// Checks that the window shows every one of its controls whole. When the environment names a
// folder in TARN_SCREENSHOTS, a picture of it as it stands on the screen is kept there.
void LookAt(wxWindow& window, const std::string& name);

}  // namespace tarn
