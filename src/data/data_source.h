#pragma once

#include <cstdint>
#include <string>

#include "base/status.h"
#include "engine/network.h"

namespace tarn {

// Where the patterns of a network come from in its present mode: the training data or the
// recall data. Columns count from 1.
struct DataSource {
  std::string input_name;
  int32_t input_column = 1;
  std::string target_name;
  int32_t target_column = 1;
  bool targets = false;  // targets are wanted: always in training, in recall when it has them

  bool SameFile() const { return targets && target_name == input_name; }
};

DataSource SourceOf(const Network& network);

// Network files are read with any start column; answers for one below 1.
Status CheckColumns(const DataSource& source);

}  // namespace tarn
