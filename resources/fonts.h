#pragma once

#include <wx/font.h>

namespace tarn {

// The font under a name that graphics contexts know. On Windows a name may only stand for that of
// another font, as "MS Shell Dlg" does, and they draw nothing by it.
wxFont DrawableFont(const wxFont& font);

}  // namespace tarn
