#pragma once

#include <array>
#include <string_view>

namespace tarn {

inline constexpr std::string_view kReportFileDenied = "File Creation Access Denied";
inline constexpr std::string_view kReportUnreadable = "The report file cannot be read";
inline constexpr std::string_view kSelectionTooLarge =
    "Too many lines to copy: save the report as a text file instead";
inline constexpr std::string_view kLinesNotCopied = "The lines cannot be copied";
inline constexpr std::string_view kReportNotSaved = "The report cannot be written";
// Completed by the numbers of the nodes.
inline constexpr std::string_view kDivergedNodes = "Diverged Output Nodes - ";
inline constexpr std::string_view kNoDivergences = "Network Training OK - No Divergences Found";

inline constexpr std::array kBrowserMessages = {
    kReportFileDenied, kReportUnreadable, kSelectionTooLarge, kLinesNotCopied,
    kReportNotSaved,   kDivergedNodes,    kNoDivergences};

// Captions of the window, of the message boxes and of the entry dialogs, with the prompts of the
// latter.
inline constexpr std::string_view kBrowserCaption = "Info Browser";
inline constexpr std::string_view kReportErrorCaption = "Tarn Error";
inline constexpr std::string_view kDivergencesCaption = "Training Divergences Found";
inline constexpr std::string_view kNoDivergencesCaption = "No Training Divergences Found";
inline constexpr std::string_view kToleranceCaption = "Select Tolerance";
inline constexpr std::string_view kTolerancePrompt = "Tolerance Value:";
inline constexpr std::string_view kUpperThresholdCaption = "Select Upper Threshold Value";
inline constexpr std::string_view kUpperThresholdPrompt = "Upper threshold (optional):";
inline constexpr std::string_view kLowerThresholdCaption = "Select Lower Threshold Value";
inline constexpr std::string_view kLowerThresholdPrompt = "Lower threshold (optional):";

}  // namespace tarn
