#include "resources/fonts.h"

#ifdef __WXMSW__
#include <wx/msw/private.h>
#endif

namespace tarn {

wxFont DrawableFont(const wxFont& font) {
  wxFont drawable(font);
#ifdef __WXMSW__
  const ScreenHDC screen;
  const SelectInHDC selected(screen, GetHfontOf(font));
  wchar_t face[LF_FACESIZE] = L"";
  if (::GetTextFaceW(screen, LF_FACESIZE, face) > 0) drawable.SetFaceName(face);
#endif
  return drawable;
}

}  // namespace tarn
