#pragma once

#include <string>
#include <string_view>

#include "base/output_file.h"
#include "base/status.h"
#include "engine/network.h"

namespace tarn {

// What the line in front of a network in an AutoSave store begins with.
inline constexpr std::string_view kSnapshotKey = "ITERATION";

// TESTPATTERNS, the third section: a random split is stored, any other is computed anew at
// each load.
//
//   TESTPATTERNS:COMPUTE   or   TESTPATTERNS:READ
//                               "%d %d %d": nPats, nTrain, testPats
//                               the training list, then the test list, pattern numbers from 0,
//                               each list at most eleven a line and on lines of its own
//                               TESTPATTERNS:STOP
bool WriteTestPatterns(OutputFile& file, const Network& network);

// NORMALIZE, the last section: the limits in force.
//
//   NORMALIZE:NONE   or   NORMALIZE:READ
//                         INPUTS   with pat_norm: lower limits, then upper limits
//                         OUTPUTS  with targ_norm: likewise
//                         NORMALIZE:STOP
//
// "%f" each, at most eight a line; one more line break ends each list.
bool WriteNormalize(OutputFile& file, const Network& network);

// The whole network, header and four sections, into an open file. False when a write failed.
bool WriteNetwork(OutputFile& file, const Network& network);

// Whether a reader would take the network from a file as it is: all its rates and weights are
// finite, and none of its texts begins like a section, for which it would be taken. Of a setup,
// which is saved without the weights of the record, the rates and texts alone count; of a snapshot,
// which stands in a store, also that no text begins like the line in front of one.
bool CanBeReadBack(const Network& network);
bool SetupCanBeReadBack(const Network& network);
bool SnapshotCanBeReadBack(const Network& network);

// Writes the network to `path`. The network's own file, that is a path equal to file_name byte
// for byte, is replaced; any other is appended to. After a failure ("Cannot Write to Network
// File") the file is as it was.
Status WriteNetworkFile(const std::string& path, const Network& network);

}  // namespace tarn
