#include "app/ui/message_box.h"

#include <wx/msgdlg.h>

#include "resources/controls.h"

#ifdef __WXMSW__
#include <wx/msw/private.h>
#include <wx/utils.h>
#endif

namespace tarn {

#ifdef __WXMSW__

namespace {

UINT IconType(MessageIcon icon) {
  switch (icon) {
    case MessageIcon::kExclamation:
      return MB_ICONEXCLAMATION;
    case MessageIcon::kQuestion:
      return MB_ICONQUESTION;
    case MessageIcon::kNone:
      break;
  }
  return 0;
}

UINT ButtonType(long style) {
  if ((style & wxYES_NO) == 0) return MB_OK;
  return (style & wxCANCEL) != 0 ? MB_YESNOCANCEL : MB_YESNO;
}

}  // namespace

// The system's own: that of wxWidgets has no question mark.
int ShowMessageBox(wxWindow* parent, const Message& message, long style) {
  const wxWindowDisabler disable_others(parent);
  HWND owner = parent != nullptr ? GetHwndOf(parent) : nullptr;
  switch (::MessageBoxW(owner, Wide(message.text).wc_str(), Wide(message.caption).wc_str(),
                        IconType(message.icon) | ButtonType(style))) {
    case IDOK:
      return wxID_OK;
    case IDYES:
      return wxID_YES;
    case IDNO:
      return wxID_NO;
    default:
      return wxID_CANCEL;
  }
}

#else

namespace {

long IconStyle(MessageIcon icon) {
  switch (icon) {
    case MessageIcon::kExclamation:
      return wxICON_EXCLAMATION;
    case MessageIcon::kQuestion:
      return wxICON_QUESTION;
    case MessageIcon::kNone:
      break;
  }
  return wxICON_NONE;
}

}  // namespace

int ShowMessageBox(wxWindow* parent, const Message& message, long style) {
  wxMessageDialog box(parent, Wide(message.text), Wide(message.caption),
                      style | IconStyle(message.icon) | wxCENTRE);
  return box.ShowModal();
}

#endif

}  // namespace tarn
