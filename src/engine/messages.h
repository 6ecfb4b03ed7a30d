#pragma once

#include <array>
#include <string_view>

// The engine's own texts. Those with a format are completed by fmt::sprintf.

namespace tarn {

inline constexpr std::string_view kLayerCountOutOfRange =
    "Set number of network layers between 3 and 10";
inline constexpr std::string_view kInputNodesInvalid = "Invalid value for input node count";
inline constexpr std::string_view kOutputNodesInvalid = "Invalid value for output node count";
inline constexpr std::string_view kHiddenNodesInvalid = "Hidden layer %d has an invalid node count";
inline constexpr std::string_view kErrorHistoryWriteError = "File Error Writting Error History";
inline constexpr std::string_view kDivergedAt =
    "Training stopped at iteration %d: the error is infinite or not a number";

// Texts of the status bar.
inline constexpr std::string_view kTrainingStatus = "Network Training";
inline constexpr std::string_view kAutoSaveStatus = "AutoSave Network";
inline constexpr std::string_view kTrainingComplete = "Training Run Complete!";
inline constexpr std::string_view kTrainingStopped = "Training Run Stopped";
inline constexpr std::string_view kHaltNotice = "NOTICE!";
inline constexpr std::string_view kHaltedStatus = "Network Training Halted";

inline constexpr std::array kEngineMessages = {
    kLayerCountOutOfRange,   kInputNodesInvalid, kOutputNodesInvalid, kHiddenNodesInvalid,
    kErrorHistoryWriteError, kTrainingStatus,    kAutoSaveStatus,     kTrainingComplete,
    kTrainingStopped,        kHaltNotice,        kHaltedStatus,       kDivergedAt};

}  // namespace tarn
