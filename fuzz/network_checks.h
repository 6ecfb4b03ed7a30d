#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "engine/network.h"
#include "fuzz_files.h"
#include "netfile/header.h"

// What is said of every network that was read, whatever its file holds.

namespace tarn::fuzz {

inline const std::string kScratch = "/tmp";
// Patterns that the network is said to have.
inline constexpr int32_t kPatterns = 7;

// A value as the file gives it back.
float ThroughText(const char* format, float value);

// Whether the network is one to allocate in a run. Larger ones are sound designs up to what
// CheckShape lets pass, that is the memory of the machine, and cost what they hold.
bool IsSmall(const Network& network);

// `again` was read from what was written of `read`.
void RequireSameHeader(const Network& read, const Network& again, HeaderKind kind);

// Into another record; the header there has to be sound.
Network ReadAgain(const std::string& path);

// A failed read leaves a record into which another file can be read.
void RequireUsable(Network& network);

// Saves the setup of a network whose header was read from `text`: the file gives the same header,
// and the same weights, test set and limits where their sections are sound.
void TrySetupSave(Network network, std::string_view text);

// Reads the sections of a small network whose header was read, with what has to hold of them.
void ReadSections(Network& network);

// Writes a network with its sections; the file gives the same ones again.
void WriteAndRead(Network& network);

}  // namespace tarn::fuzz
