#pragma once

#include <wx/window.h>

#include "base/status.h"

namespace tarn {

// Shows a message over `parent` with the buttons of `style` (wxOK, wxYES_NO, wxCANCEL) and its
// icon; returns the number of the button, wxID_OK, wxID_YES, wxID_NO or wxID_CANCEL.
int ShowMessageBox(wxWindow* parent, const Message& message, long style);

}  // namespace tarn
