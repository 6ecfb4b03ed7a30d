#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "base/status.h"
#include "engine/network.h"

// What the main window shows and asks, without the window.

namespace tarn {

// Characters of a network file's name in a caption; a longer one is shortened.
inline constexpr size_t kLongestCaptionName = 60;

// "Tarn - " and the network file's name: "UNTITLED" for the scratch file of a new network. Of a
// long path its first folder and its end are kept, "..." between them.
std::string FrameCaption(std::string_view network_file);

// Whether closing asks first whether to save: when nothing was saved since the last change, of a
// network in training that has done two iterations.
bool AsksToSave(const Network& network, bool saved);

// The mode that is checked in the start-up window when Run is pressed, and what the user is told
// when the network cannot be run in it.
enum class RunMode { kNone, kTraining, kRecall };
std::optional<Message> CheckRun(RunMode mode, const Network& network);

}  // namespace tarn
