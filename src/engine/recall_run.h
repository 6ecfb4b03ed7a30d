#pragma once

#include "engine/network.h"
#include "engine/workers.h"

namespace tarn {

// Applies a network to all its patterns, in file order, and leaves the outputs of every layer
// in the record; the input activations stay as they are. Then iteration is 5, whatever it was,
// the test set's RMS error and correlation are 0, and the results are marked as ready. Needs
// no targets; weights are used as stored, whether their connection was removed or not.
// Up to `threads` threads share the patterns. kOutOfMemory, with nothing changed, when there is no
// room for the work.
Status RunRecall(Network& network, size_t threads = UsefulThreads());

}  // namespace tarn
