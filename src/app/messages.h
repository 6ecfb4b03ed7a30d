#pragma once

#include <array>
#include <string_view>

namespace tarn {

inline constexpr std::string_view kUntrainedRecall =
    "Untrained Networks Cannot be used for Recall!";
inline constexpr std::string_view kSelectMode = "Select Recall or Training Execution Mode!";
inline constexpr std::string_view kAskToSave = "Save Network File?";
// Behind what is wrong with it.
inline constexpr std::string_view kAskAllTheSame = ". Save it all the same?";
inline constexpr std::string_view kAskToSaveLastSnapshot =
    "%s. Save the network as it was at iteration %d, the last AutoSave snapshot?";
// In front of why.
inline constexpr std::string_view kNoSnapshots = "No AutoSave snapshots are taken. ";
inline constexpr std::string_view kAskToTakeUp =
    "The training of %s was interrupted. Its AutoSave snapshot of iteration %d is newer than the "
    "file. Save the snapshot as a network file? No removes it, Cancel asks again at the next "
    "start.";
inline constexpr std::string_view kAskToTakeUpOlder =
    "The training of %s was interrupted after its AutoSave snapshot of iteration %d, and the file "
    "has been written since. Save the snapshot as a network file? No removes it, Cancel asks again "
    "at the next start.";
inline constexpr std::string_view kAskToReset = "Reset Network to Untrained State?";

// Of a command that compares with targets, of an analysis, and of one that was left.
inline constexpr std::string_view kNoTargets = "Needs targets: this recall has none";
inline constexpr std::string_view kEscapeStops = "Press Escape to stop";
inline constexpr std::string_view kAnalysisStopped = "Analysis Stopped";

// Of a graph or a report of which there is no preview.
inline constexpr std::string_view kNoPreview = "The pages cannot be shown";

// What the load status box names, step by step.
inline constexpr std::string_view kLoadHeader = "Reading Network File";
inline constexpr std::string_view kLoadCount = "Counting Patterns";
inline constexpr std::string_view kLoadData = "Reading Patterns";
inline constexpr std::string_view kLoadWeights = "Reading Weights";
inline constexpr std::string_view kLoadConnections = "Reading Connections";
inline constexpr std::string_view kLoadTestSet = "Selecting Test Set";
inline constexpr std::string_view kLoadRecall = "Processing Recall Inputs...";

inline constexpr std::array kAppMessages = {
    kNoPreview,       kUntrainedRecall, kSelectMode,
    kAskToSave,       kAskToReset,      kLoadHeader,
    kLoadCount,       kLoadData,        kLoadWeights,
    kLoadConnections, kLoadTestSet,     kLoadRecall,
    kNoTargets,       kNoSnapshots,     kEscapeStops,
    kAnalysisStopped, kAskAllTheSame,   kAskToSaveLastSnapshot,
    kAskToTakeUp,     kAskToTakeUpOlder};

// Captions of the message boxes.
inline constexpr std::string_view kSelectionError = "Selection Error";
inline constexpr std::string_view kSelectModeCaption = "Select Mode";
inline constexpr std::string_view kNotSavedCaption = "Network File Not Saved!";
inline constexpr std::string_view kSureCaption = "Are You Sure?";
inline constexpr std::string_view kNetworkErrorCaption = "Network Error";
inline constexpr std::string_view kTarnErrorCaption = "Tarn Error";
inline constexpr std::string_view kTarnWarningCaption = "Tarn Warning";
inline constexpr std::string_view kSaveErrorCaption = "File Save Error - FILE NOT SAVED!";
inline constexpr std::string_view kOutputsAbortedCaption = "Output/Target Save Aborted";
inline constexpr std::string_view kHistoryAbortedCaption = "Error History Save Aborted";
inline constexpr std::string_view kAutoSaveErrorCaption = "AutoSave Error";
inline constexpr std::string_view kAutoSaveAbortedCaption = "Network AutoSave Aborted";

// What the caption of the main window begins with, and the name of a network without a file.
inline constexpr std::string_view kCaptionStart = "Tarn - ";
inline constexpr std::string_view kUntitledCaption = "UNTITLED";

}  // namespace tarn
