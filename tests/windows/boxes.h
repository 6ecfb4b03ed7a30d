#pragma once

#include <string>
#include <string_view>

#include "windows/driver.h"
#include "windows/window.h"

// Message boxes and file dialogs, which are the system's.

namespace tarn {

// What a message box says.
std::string BoxText(const Window& box);
// Presses a button of a window that no table is about.
void PressIn(const Window& window, int button);
// The box says that, among other things, and goes when it is answered.
void Answer(Driver& driver, const Window& box, std::string_view text, int button = IDOK);

// Enters the path and accepts it, under the filter of that place.
void ChooseFile(Driver& driver, const Window& dialog, std::string_view path, int filter = 0);

// Closes a window as one can: by a button, or by itself.
void Dismiss(Driver& driver, const Window& window);

}  // namespace tarn
