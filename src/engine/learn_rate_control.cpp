#include "engine/learn_rate_control.h"

#include <array>

namespace tarn {
namespace {

struct Row {
  double below;  // improvements under this limit
  float factor;
};

// The smallest improvements, a plateau, raise the learn rate most; fast ones lower it.
constexpr std::array<Row, 6> kRows = {{{-0.0005, 0.8F},
                                       {0.0, 0.995F},
                                       {0.00001, 1.02F},
                                       {0.00002, 1.008F},
                                       {0.00005, 1.002F},
                                       {0.001, 1.001F}}};
constexpr double kFast = 0.0022;  // itself not yet fast
constexpr float kFastFactor = 0.98F;

float Factor(float improvement) {
  for (const Row& row : kRows) {
    if (improvement < row.below) return row.factor;
  }
  return improvement > kFast ? kFastFactor : 1.0F;
}

}  // namespace

bool AdaptLearnRate(Network& network, LearnRateControl& control, float mean_squared_error) {
  control.previous_error = control.current_error;
  control.current_error = mean_squared_error;
  if (network.iteration < network.LRC || !(control.current_error > 0.0F)) return false;

  const bool starts = network.iteration == network.LRC;
  if (starts) control.started = true;
  const float difference = control.previous_error - control.current_error;
  const float improvement = difference / control.current_error;
  network.Eta *= Factor(improvement);
  if (network.Eta > network.EtaMax) network.Eta = network.EtaMax;
  if (network.Eta < network.EtaMin) network.Eta = network.EtaMin;
  return starts;
}

}  // namespace tarn
