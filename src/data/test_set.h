#pragma once

#include <cstdint>

#include "base/status.h"
#include "engine/network.h"

namespace tarn {

// Brings testPats into its bounds for nPats patterns and sets nTrain: at most 60 per cent of
// the patterns and at most 19660 are test patterns; in recall both counts are nPats.
void SizeTestSet(Network& network, Notices& notices);

// Fills the training list and the test list by the method overMeth, and testStart and testEnd;
// in recall both lists hold every pattern. The sizes are those of SizeTestSet. A stored random
// split is taken from the network's file; where there is none a new one is drawn from `seed`.
// A failure is a notice only: its text says why the stored split was not taken, and the new
// one stands.
Status BuildTestSet(Network& network, uint32_t seed);

}  // namespace tarn
