#pragma once

#include <array>
#include <string>
#include <string_view>

// The data module's own texts. Those that end in " - " are completed by a file name, those
// with a format by fmt::sprintf.

namespace tarn {

inline constexpr std::string_view kInputColumnInvalid = "Invalid start column specified for inputs";
inline constexpr std::string_view kTargetColumnInvalid =
    "Invalid start column specified for targets";
inline constexpr std::string_view kInputFileInvalid = "Invalid Input Node Training File - ";
inline constexpr std::string_view kInputFormatInvalid =
    "Invalid File Format - Input Training Data File";
inline constexpr std::string_view kTargetFileInvalid = "Invalid Target/Output Node Training File";
inline constexpr std::string_view kTargetFormatInvalid =
    "Invalid File Format - Target Training Data File";
inline constexpr std::string_view kCountsNotEqual = "Number Inputs and Targets are Not Equal";
inline constexpr std::string_view kDataFileEmpty = "Invalid or Empty Training Data File";
inline constexpr std::string_view kNoReadingBuffer = "OUT OF MEMORY - Reading Input Data";
inline constexpr std::string_view kInputFileBad = "Bad Input Training Data File - ";
inline constexpr std::string_view kTargetFileBad = "Bad Target Training Data File - ";
inline constexpr std::string_view kInputDataInsufficient =
    "Insufficient input node data - Data record %d";
inline constexpr std::string_view kTargetDataInsufficient =
    "Insufficient target node data - Data record %d";
inline constexpr std::string_view kRecordsInvalid =
    "Error - training data files have invalid records";
inline constexpr std::string_view kNoDataPoints = "No data points found in training data files!";
inline constexpr std::string_view kInputLimitsBad = "Bad or missing pattern normalization data";
inline constexpr std::string_view kTargetLimitsBad = "Bad or missing target normalization data";
inline constexpr std::string_view kTestCountInvalid = "Invalid number of test cases - set to ZERO";
inline constexpr std::string_view kTrainSetChanged =
    "Train set has changed - resetting test cases!";
inline constexpr std::string_view kTestSetInvalid =
    "Test set information invalid - resetting test cases!";
inline constexpr std::string_view kTestSetRandom = "Tarn setting random test set cases!";
inline constexpr std::string_view kOutputsWriteError = "File Error Writting Outputs";

inline constexpr std::array kDataMessages = {
    kInputColumnInvalid,     kTargetColumnInvalid, kInputFileInvalid, kInputFormatInvalid,
    kTargetFileInvalid,      kTargetFormatInvalid, kCountsNotEqual,   kDataFileEmpty,
    kNoReadingBuffer,        kInputFileBad,        kTargetFileBad,    kInputDataInsufficient,
    kTargetDataInsufficient, kRecordsInvalid,      kNoDataPoints,     kInputLimitsBad,
    kTargetLimitsBad,        kTestCountInvalid,    kTrainSetChanged,  kTestSetInvalid,
    kTestSetRandom,          kOutputsWriteError};

// The notice about a data record at the end of a file whose line is not ended.
inline std::string LastLineNotRead(std::string_view name) {
  return "The last line of " + std::string(name) + " has no line end and is not read";
}

}  // namespace tarn
