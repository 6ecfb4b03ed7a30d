#pragma once

#include <CLI/CLI.hpp>
#include <string>

#include "cli/console.h"
#include "engine/network.h"

namespace tarn {

// The options that name recall data, and their values as typed.
struct RecallData {
  std::string inputs;
  std::string inputs_column = "1";
  std::string targets;
  std::string targets_column;
};

// Adds --inputs, --inputs-column, --targets and --targets-column; gives the first.
CLI::Option* AddRecallDataOptions(CLI::App& command, RecallData& data);

// The checks of the Recall button and of the recall data dialog, with their messages; then the
// record names the data.
ExitStatus TakeRecallData(const RecallData& data, Network& network);

}  // namespace tarn
