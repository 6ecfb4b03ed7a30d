#pragma once

#include <CLI/CLI.hpp>
#include <cstdint>
#include <optional>
#include <string>

#include "app/session.h"
#include "cli/console.h"
#include "cli/recall_data.h"

namespace tarn {

// The network that a report or a plot is about, with the data that it is looked at with: its own
// training and test data, or a recall run over new inputs.
struct StudiedNetwork {
  std::string path;
  RecallData data;
  const CLI::Option* inputs = nullptr;
  std::optional<uint32_t> seed;

  bool IsRecall() const { return inputs != nullptr && inputs->count() > 0; }
};

// Adds NET, the options that name recall data, and --seed.
void AddStudiedNetwork(CLI::App& command, StudiedNetwork& studied);

// Opens the network and leaves the activations of all patterns in the record.
ExitStatus LoadStudied(StudiedNetwork& studied, Session& session);

}  // namespace tarn
