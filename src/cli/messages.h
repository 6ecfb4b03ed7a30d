#pragma once

#include <string_view>

// What only the command line says, some of it printf formats. The program's other messages are
// those of its windows.

namespace tarn {

inline constexpr std::string_view kFileExists = "'%s' exists; --force replaces it";
inline constexpr std::string_view kWrittenTwice = "'%s' is to be written twice";
inline constexpr std::string_view kReadByCommand =
    "'%s' is read by this command and cannot be written over";
inline constexpr std::string_view kWeightsLeftOut =
    "the weights do not fit the changed design and are not kept";
inline constexpr std::string_view kSnapshotNotAdded = "a snapshot could not be added to '%s'";
inline constexpr std::string_view kSnapshotIsNewer =
    "'%s' holds a snapshot of iteration %d that is newer than '%s': 'tarn-cli restore' takes it "
    "back; remove it to train anew";
inline constexpr std::string_view kNetworkRescued = "the trained network is kept in %s";
inline constexpr std::string_view kLastSnapshot = "the last snapshot in %s is of iteration %d";
inline constexpr std::string_view kResultsLost = "the results could not be written";
inline constexpr std::string_view kAborting = "FATAL - Aborting Session!";

}  // namespace tarn
