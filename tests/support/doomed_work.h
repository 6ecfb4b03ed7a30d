#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "engine/network.h"

// What a process is killed in the middle of. No test framework in here.

namespace tarn {

inline constexpr std::string_view kWait = "wait";
// Text file "a.net": DoomedText(1) and DoomedText(2) in turn.
inline constexpr std::string_view kSaveTexts = "save-texts";
// Network file "a.net": DoomedNetwork(1) and DoomedNetwork(2) in turn.
inline constexpr std::string_view kSaveNetworks = "save-networks";
// DoomedNetwork(3) into the store "store", with the iterations 1001, 1002, ...
inline constexpr std::string_view kStoreSnapshots = "store-snapshots";
// The setup of network file "a.net", names DoomedName(1) and DoomedName(2) in turn, with the
// scratch folder "scratch".
inline constexpr std::string_view kSaveSetups = "save-setups";
// DoomedNetwork(2), whose file is "a.net", saved as "b.net".
inline constexpr std::string_view kSaveAs = "save-as";
// The outputs of DoomedOutputs(1) and DoomedOutputs(2) in turn into "a.out".
inline constexpr std::string_view kExportOutputs = "export-outputs";
// DoomedNetwork(3) into a store with its note, as a training run leaves them; the file "a.net".
inline constexpr std::string_view kTrainWithStore = "train-with-store";
// A TempFile.
inline constexpr std::string_view kKeepTemporary = "keep-temporary";

// What it takes to do such work in the current directory is got ready; it is done each time that
// the result is called, false when it fails. Empty for a name that is none of these.
std::function<bool()> DoomedWork(std::string_view name);

std::string DoomedText(int which);
Network DoomedNetwork(int which);
std::string DoomedName(int which);
Network DoomedOutputs(int which);

}  // namespace tarn
