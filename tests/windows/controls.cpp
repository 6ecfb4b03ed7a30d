#include "windows/controls.h"

namespace tarn {
namespace {

using enum Kind;

// What a button class draws: one class has buttons, check boxes and radio buttons.
bool IsButtonOfKind(LONG type, Kind kind) {
  switch (type) {
    case BS_PUSHBUTTON:
    case BS_DEFPUSHBUTTON:
      return kind == kButton;
    case BS_CHECKBOX:
    case BS_AUTOCHECKBOX:
      return kind == kCheck;
    case BS_RADIOBUTTON:
    case BS_AUTORADIOBUTTON:
      return kind == kRadio;
    default:
      return false;
  }
}

bool IsStaticOfKind(LONG type, Kind kind) {
  switch (type) {
    case SS_LEFT:
    case SS_CENTER:
    case SS_RIGHT:
    case SS_LEFTNOWORDWRAP:
      return kind == kText;
    case SS_ICON:
    case SS_BITMAP:
    case SS_OWNERDRAW:
      return kind == kIcon;
    default:
      return false;
  }
}

}  // namespace

bool IsOfKind(const Window& control, Kind kind) {
  const std::string name = control.Class();
  const LONG style = ::GetWindowLongW(control.handle(), GWL_STYLE);
  if (name == "Button") return IsButtonOfKind(style & BS_TYPEMASK, kind);
  if (name == "Static") return IsStaticOfKind(style & SS_TYPEMASK, kind);
  if (name == "Edit") return kind == kEdit;
  if (name == "ListBox") return kind == kList;
  if (name == "ComboBox") return kind == kCombo;
  return name == "msctls_progress32" && kind == kGauge;
}

}  // namespace tarn
