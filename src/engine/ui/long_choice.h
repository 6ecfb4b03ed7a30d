#pragma once

#include <wx/combobox.h>

namespace tarn {

// Readies a combo box for thousands of choices; to be called before they are added. GTK would keep
// a menu of them, in a time that grows with the square of their number.
void ReadyForManyChoices(wxComboBox& box);

}  // namespace tarn
