#pragma once

#include "base/output_file.h"
#include "base/status.h"
#include "engine/network.h"

// WEIGHTS, the first section of a network file:
//
//   WEIGHTS:RANDOM                      or   WEIGHTS:READ
//                                            per layer and node: one weight per node of the
//                                            layer below, then the bias weight; "%g", at most
//                                            seven a line, each node on a new line
//                                            WEIGHTS:STOP
//
// The oldest files (version 0) hold the weights between two numbers -20000 instead.

namespace tarn {

// Reads the weights of network.file_name in the layout of its version into the allocated
// record and clears every weight change. A failure is a notice: the weights are random then,
// from `seed`, and random_weights is set.
Status ReadWeights(Network& network, uint32_t seed);

// The same without the fallback: what was read so far stands in the record.
enum class StoredWeights {
  kRead,
  kNone,    // the file holds none, or none that fit the record
  kFailed,  // the file cannot be read
};
StoredWeights ReadStoredWeights(Network& network);

bool WriteWeights(OutputFile& file, const Network& network);

}  // namespace tarn
