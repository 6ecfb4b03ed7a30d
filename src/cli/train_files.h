#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "app/session.h"
#include "cli/console.h"

namespace tarn {

struct TrainArguments {
  std::string path;
  std::string output;
  bool no_save = false;
  std::optional<uint32_t> seed;
  std::optional<int32_t> iterations;
  std::string error_history;
  std::string outputs;
  std::string history;
  std::string autosave;
  bool quiet = false;

  // Whether a file is wanted that is made from the error history.
  bool WantsHistory() const { return !history.empty() || !error_history.empty(); }
};

// Hours of training must not end at a file that cannot be written: before they begin, refuses
// files that would overwrite what is read or each other, or a store whose newest snapshot is newer
// than the network's file, tries each one, and creates the AutoSave store.
ExitStatus PrepareFiles(const TrainArguments& arguments, const Network& network);

// Saves the trained network; its name is that of the file then. A network that could not be read
// back is not saved: nobody can be asked.
ExitStatus SaveTrained(const TrainArguments& arguments, Network& network);

// Writes the exports; the second is tried although the first failed. `history_path` is the
// run's binary history; of one that was lost, which is nothing, there is no export.
ExitStatus WriteExports(const TrainArguments& arguments, const Network& network,
                        const std::optional<std::string>& history_path);

}  // namespace tarn
