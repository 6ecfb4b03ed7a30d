#pragma once

#include <memory>
#include <wx/dataobj.h>

namespace tarn {

// Puts the data in place of what the clipboard holds; it stays there when the program ends. False
// when the clipboard does not take it.
bool PutOnClipboard(std::unique_ptr<wxDataObject> data);

}  // namespace tarn
