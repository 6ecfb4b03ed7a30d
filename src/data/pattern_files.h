#pragma once

#include <cstddef>
#include <cstdint>

#include "base/status.h"
#include "engine/network.h"

namespace tarn {

// What the counting pass finds in the pattern files of the network's mode.
struct PatternCount {
  int32_t records = 0;
  size_t buffer_size = 0;  // of the reading pass: the longest line + 5
};

// The counting pass: checks the files against each other and gives the number of patterns
// that the arrays are to be allocated for. Fails with the user's message when there is none,
// and when no record can hold the columns that the network asks for: a node count that no
// file bears out never gets as far as an allocation. The target file is not looked at when
// its name begins with the whole name of the input file.
Status CountPatterns(const Network& network, PatternCount& count, Notices& notices);

// The reading pass: fills the input activations and the targets of nPats patterns, both
// allocated, and the node names, and normalizes (see normalization.h). After a failure the
// arrays hold what was read so far; the data are of no use then.
Status ReadPatterns(Network& network, size_t buffer_size);

}  // namespace tarn
