#pragma once

#include <CLI/CLI.hpp>

#include "cli/console.h"
#include "engine/network.h"
#include "setup/setup_options.h"

namespace tarn {

// Adds the setup options, --layers, --inputs and so on, with their help.
void AddSetupFlags(CLI::App& command, SetupOptions& options);

// Checks and applies the options and prints the messages: those that let the work go on as
// notices. kDone when the network may be saved.
ExitStatus ApplyAndReport(const SetupOptions& options, Network& network);

}  // namespace tarn
