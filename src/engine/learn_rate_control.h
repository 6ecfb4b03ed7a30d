#pragma once

#include "engine/network.h"

namespace tarn {

// What learn rate control remembers between iterations; as made when a training window opens.
struct LearnRateControl {
  float previous_error = 0;  // mean squared error of the training set, the iteration before
  float current_error = 0;   // of the last iteration
  bool started = false;      // the iteration number LRC has come
};

// Takes in the mean squared error of the iteration just counted (squared-error sum over
// training patterns x output nodes, not its root). From iteration LRC on, when the error is
// above 0, with
//   improvement = (previous - current) / current          (float)
//   below -0.0005: 0.8     below 0: 0.995       below 0.00001: 1.02   below 0.00002: 1.008
//   below 0.00005: 1.002   below 0.001: 1.001   to 0.0022: 1          above: 0.98
// Eta is multiplied by the factor, then held at most at EtaMax, then at least at EtaMin, which
// therefore wins where it is the larger. On iteration 1 the previous error is 0 and the
// improvement -1.
//
// An error that is NaN is not above 0: Eta stays. An infinite one, or a NaN before, makes the
// improvement NaN, which is in no row of the table: the factor is 1.
//
// Returns whether control starts with exactly this iteration (the one whose number is LRC, its
// error above 0); `started` then stays set.
bool AdaptLearnRate(Network& network, LearnRateControl& control, float mean_squared_error);

}  // namespace tarn
