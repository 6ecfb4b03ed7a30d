#include "windows/boxes.h"

#include <fmt/format.h>

namespace tarn {
namespace {

// The name in file dialogs: in a combo box or not, as the system has it.
constexpr int kNameCombo = 1148;
constexpr int kNameEdit = 1152;
constexpr int kFilterCombo = 1136;

// A box with one button may have it under the number of Cancel.
Window ButtonOf(const Window& box, int button) {
  Window found = box.Child(button);
  if (!found.IsShown() && button == IDOK) found = box.Child(IDCANCEL);
  return found;
}

Window NameOf(const Window& dialog) {
  const Window combo = dialog.Child(kNameCombo);
  if (!combo.Exists()) return dialog.Child(kNameEdit);
  const Window edit = combo.ChildOfClass("Edit");
  return edit.Exists() ? edit : combo;
}

}  // namespace

std::string BoxText(const Window& box) {
  std::string text;
  for (const Window& child : box.Children()) {
    if (child.Class() != "Static" || !child.IsShown()) continue;
    const std::string line = child.Text();
    if (!line.empty()) text += (text.empty() ? "" : " ") + line;
  }
  return text;
}

void PressIn(const Window& window, int button) {
  const Window found = ButtonOf(window, button);
  if (!found.Exists()) throw Lost(fmt::format("no button {} in \"{}\"", button, window.Caption()));
  found.Post(BM_CLICK);
}

void Answer(Driver& driver, const Window& box, std::string_view text, int button) {
  const std::string said = BoxText(box);
  driver.Expect(said.find(text) != std::string::npos,
                fmt::format("\"{}\" says \"{}\"", box.Caption(), said));
  PressIn(box, button);
  driver.AwaitEndOf(box);
}

void ChooseFile(Driver& driver, const Window& dialog, std::string_view path, int filter) {
  if (!driver.Until([&] { return NameOf(dialog).IsShown(); })) throw Lost("no name to enter");
  if (filter != 0) {
    const Window combo = dialog.Child(kFilterCombo);
    combo.Send(CB_SETCURSEL, static_cast<WPARAM>(filter));
    combo.Notify(CBN_SELCHANGE);
  }
  const Window name = NameOf(dialog);
  name.SetText(path);
  driver.Expect(name.Text() == path, fmt::format("the name reads \"{}\"", name.Text()));
  PressIn(dialog, IDOK);
}

void Dismiss(Driver& driver, const Window& window) {
  if (window.IsDialog()) {
    const bool cancels = window.Child(IDCANCEL).IsShown();
    PressIn(window, cancels ? IDCANCEL : IDOK);
  } else {
    window.Post(WM_CLOSE);
  }
  driver.AwaitEndOf(window);
}

}  // namespace tarn
