#pragma once

#include <array>
#include <string_view>

// The texts of the network file readers and writers, typing errors included: users know them.

namespace tarn {

inline constexpr std::string_view kNetFileNotFound = "Tarn Network File Not Found";
inline constexpr std::string_view kNetFileNoAccess = "ERROR - Unable to access network file!";
inline constexpr std::string_view kNetFileNotTarn = "Invalid Input file - Not a TARN Network File!";
inline constexpr std::string_view kTooManyLayers =
    "Error - Too many layers requested, adjust Layer Count!";
inline constexpr std::string_view kBadUnits = "Input error reading NET file - nUnits!";
inline constexpr std::string_view kBadTransFunc = "Input error reading NET file - TransFunc!";
inline constexpr std::string_view kBadRates =
    "Input error reading NET file - Invalid learning rates!";
inline constexpr std::string_view kBadMaxIterations =
    "Input error reading NET file - MaxIterations!";
inline constexpr std::string_view kBadLrc = "Input error reading NET file - LRC!";
inline constexpr std::string_view kBadSaveRate = "Input error reading NET file - SaveRate!";
inline constexpr std::string_view kBadSaveWeightRate =
    "Input error reading NET file - SaveRate, WeightRate!";
inline constexpr std::string_view kBadPatName = "Input error reading NET file - PatName!";
inline constexpr std::string_view kBadPatCol = "Input error reading NET file - PatCol!";
inline constexpr std::string_view kBadNorm = "Input error reading NET file - pat_norm, targ_norm!";
inline constexpr std::string_view kBadTargName = "Input error reading NET file - TargName!";
inline constexpr std::string_view kBadTargCol = "Input error reading NET file - TargCol!";
inline constexpr std::string_view kBadOverMeth =
    "Input error reading NET file - overMeth,testPats!";
inline constexpr std::string_view kBadTestRange =
    "Input error reading NET file - testStart, testEnd!";

inline constexpr std::string_view kOpenNotFound = "File Not Found!";
inline constexpr std::string_view kOpenNotTarn = "Not a valid Tarn Network Definition File!";

inline constexpr std::string_view kWeightsFallback =
    "Error reading weights - Random initialization";
inline constexpr std::string_view kOldWeightsFallback =
    "Error Reading Version 1.0 Weights - Randomize";
inline constexpr std::string_view kConnectionsFallback =
    "Error Reading Connections - Fully Connecting Network";
inline constexpr std::string_view kSetupSaveNoOldFile =
    "Error openning old network file - save aborted";
inline constexpr std::string_view kSetupSaveFailed = "Tarn Network File Error Detected";
inline constexpr std::string_view kSaveFailed = "Cannot Write to Network File";
inline constexpr std::string_view kNotReadBack =
    "The file of this network could not be read back: a value of it is infinite or not a number, "
    "or a name begins like a section or a snapshot";

inline constexpr std::string_view kStoreNotCreated = "Cannot Create AutoSave File Storage";
inline constexpr std::string_view kStoreNotFound = "AutoSave File Not Found";
inline constexpr std::string_view kRestoreWriteError = "Error Writing Network File";
inline constexpr std::string_view kNotRestored = "File Not Saved";

inline constexpr std::array kNetFileMessages = {kNetFileNotFound,
                                                kNetFileNoAccess,
                                                kNetFileNotTarn,
                                                kTooManyLayers,
                                                kBadUnits,
                                                kBadTransFunc,
                                                kBadRates,
                                                kBadMaxIterations,
                                                kBadLrc,
                                                kBadSaveRate,
                                                kBadSaveWeightRate,
                                                kBadPatName,
                                                kBadPatCol,
                                                kBadNorm,
                                                kBadTargName,
                                                kBadTargCol,
                                                kBadOverMeth,
                                                kBadTestRange,
                                                kOpenNotFound,
                                                kOpenNotTarn,
                                                kWeightsFallback,
                                                kOldWeightsFallback,
                                                kConnectionsFallback,
                                                kSetupSaveNoOldFile,
                                                kSetupSaveFailed,
                                                kSaveFailed,
                                                kNotReadBack,
                                                kStoreNotCreated,
                                                kStoreNotFound,
                                                kRestoreWriteError,
                                                kNotRestored};

}  // namespace tarn
