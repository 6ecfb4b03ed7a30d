#pragma once

#include "windows/driver.h"

// The data editor that the data dialogs start. This program stands in for it under its name.

namespace tarn {

inline constexpr int kHandedOverColumn = 3;

// This run was started as the data editor.
bool IsCompanion();
// What the editor leaves when it is closed; the exit status.
int HandOver();

// Puts the editor where the program looks for it, or takes it away.
void InstallCompanion(Driver& driver);
void RemoveCompanion(Driver& driver);

}  // namespace tarn
