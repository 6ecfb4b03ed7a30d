#pragma once

#include "engine/network.h"
#include "engine/workers.h"

namespace tarn {

// The forward pass of all patterns, in file order: leaves the outputs of every layer in the record;
// the input activations stay as they are, and so does everything else. Needs no targets; weights
// are used as stored, whether their connection was removed or not. Up to `threads` threads share
// the patterns. kOutOfMemory, with nothing changed, when there is no room for the work.
Status PropagateAll(Network& network, size_t threads = UsefulThreads());

// The recall run: PropagateAll; then iteration is 5, whatever it was, the test set's RMS error and
// correlation are 0, and the results are marked as ready.
Status RunRecall(Network& network, size_t threads = UsefulThreads());

}  // namespace tarn
