#pragma once

namespace tarn {

// Opens and closes windows again and again, and prints how long it takes and by how much the memory
// of the program grows. Needs an application and a display.
void MeasureOpening();

}  // namespace tarn
