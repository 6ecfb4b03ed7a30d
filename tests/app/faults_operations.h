#pragma once

#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "app/faults_scene.h"

namespace tarn {

// Something that the program does with files, as a user asks for it.
struct FaultOperation {
  // All that is told of one failure, in order: "caption|text", a text alone where there is no box.
  using Told = std::vector<std::string>;

  std::string name;
  // Tells of a failure through the dialogs of the scene.
  std::function<void(FaultScene&)> run;
  std::vector<Told> writing;       // what may be told when it cannot write; nothing of a silent one
  std::vector<Told> reading = {};  // and beside that when it cannot read
  std::function<void(FaultScene&)> prepare = {};

  friend void PrintTo(const FaultOperation& operation, std::ostream* stream) {
    *stream << operation.name;
  }
};

// Each leaves all as it was when it fails, and does the same when it is done again.
const std::vector<FaultOperation>& FaultOperations();

}  // namespace tarn
