#pragma once

#include <array>
#include <string_view>

namespace tarn {

inline constexpr std::string_view kUntrainedRecall =
    "Untrained Networks Cannot be used for Recall!";
inline constexpr std::string_view kSelectMode = "Select Recall or Training Execution Mode!";

inline constexpr std::array kAppMessages = {kUntrainedRecall, kSelectMode};

// Captions of the message boxes.
inline constexpr std::string_view kSelectionError = "Selection Error";
inline constexpr std::string_view kSelectModeCaption = "Select Mode";

// What the caption of the main window begins with, and the name of a network without a file.
inline constexpr std::string_view kCaptionStart = "Tarn - ";
inline constexpr std::string_view kUntitledCaption = "UNTITLED";

}  // namespace tarn
