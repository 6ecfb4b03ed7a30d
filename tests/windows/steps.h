#pragma once

#include <string_view>

#include "windows/driver.h"
#include "windows/place.h"

// What several roads begin with, or come by.

namespace tarn {

// The windows within the main window.
Place StartUpWindow(Driver& driver);
Place TrainingWindow(Driver& driver);
Place TrainingMenu(Driver& driver);

// Chooses the file in a dialog that one of the buttons or commands opens.
void Choose(const Place& place, int id, std::string_view title, std::string_view path);
// Cancels that dialog.
void ChooseNothing(const Place& place, int id, std::string_view title);

// The about box, from a button or a command.
void LookAtAbout(const Place& place, int id);

// Opens a network file from the start-up window, and its training window.
void OpenForTraining(Driver& driver, std::string_view file);
// Only Halt and Stop can be pressed, or only Start.
bool IsUnderWay(const Driver& driver);
bool IsAtRest(const Driver& driver);
// Trains for a moment.
void TrainALittle(Driver& driver);

// The single-value entry that has come: its prompt is this, and it is answered.
void Enter(Driver& driver, const Window& entry, std::string_view prompt, std::string_view text);

}  // namespace tarn
