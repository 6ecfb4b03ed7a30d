#pragma once

#include <CLI/CLI.hpp>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>

#include "app/session.h"
#include "cli/console.h"

namespace tarn {

// Adds the positional NET.
void AddNetworkArgument(CLI::App& command, std::string& path);

// Adds --seed.
void AddSeedOption(CLI::App& command, std::optional<uint32_t>& seed);

// Sees to it that an interrupt leaves nothing of the session behind.
void TidyWhenInterrupted(const Session& session);

// Opens the network file as the window's Open command does, with its messages.
ExitStatus Open(Session& session, const std::string& path);

// Paths of the command line belong to the folder that the user is in. They are completed
// before a network is opened, which makes its own folder the current one; empty ones stay so.
void CompletePaths(std::initializer_list<std::string*> paths);

// Whether both paths name the same existing file.
bool SameFile(const std::string& a, const std::string& b);

// Refuses an output path that names one of the files being read.
ExitStatus KeepInputsSafe(std::initializer_list<const std::string*> outputs,
                          std::initializer_list<const std::string*> inputs);

}  // namespace tarn
