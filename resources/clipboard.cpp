#include "resources/clipboard.h"

#include <wx/clipbrd.h>

namespace tarn {

bool PutOnClipboard(std::unique_ptr<wxDataObject> data) {
  if (!wxTheClipboard->Open()) return false;
  const bool taken = wxTheClipboard->SetData(data.release());
  wxTheClipboard->Flush();
  wxTheClipboard->Close();
  return taken;
}

}  // namespace tarn
