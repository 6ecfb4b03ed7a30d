#pragma once

#include "windows/driver.h"

// What users do, from the start of the program to its end.

namespace tarn {

// A new network: start-up window, setup and all its dialogs, saved and opened again.
void NewNetworkRoad(Driver& driver);
// The design dialog with what it opens, from a button of the training setup.
void WalkDesign(Driver& driver, const Window& setup);
// An example is trained: figures, options, files.
void TrainingRoad(Driver& driver);
// The graphs and reports of the training window.
void StudiesRoad(Driver& driver);
// The Information Browser.
void BrowserRoad(Driver& driver);
// The graph window.
void GraphRoad(Driver& driver);
// A recall with all that it offers.
void RecallRoad(Driver& driver);
// Every way to leave a network that is not saved.
void LeavingRoad(Driver& driver);

}  // namespace tarn
