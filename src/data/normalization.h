#pragma once

#include <cstddef>

#include "base/status.h"
#include "engine/network.h"

namespace tarn {

// Inputs and targets are scaled by node into the band 0.15..0.85, from the range lower..upper
// of the node's data:
//   inputs:  x' = (x - lower) / (upper - lower) * 0.70000005f + 0.15f
//   targets: t' = (t - lower) / (upper - lower) * 0.7 + 0.15
// and outputs, targets and inputs back to data units:
//   v_data = (v - 0.15) * (1 / 0.7) * (upper - lower) + lower
// All of it in extended precision (64 mantissa bits), stored as a float once.

// Scales the patterns that were read, inputs when pat_norm is set, targets when targ_norm is.
// In training the limits are measured and data outside 0..1 switch the flags on; in recall
// the limits come from the network file, those of the targets even when there are none. For
// every node of scaled data upper > lower then.
Status Normalize(Network& network);

// Read the limits of the inputs or of the targets from the NORMALIZE section of the network's
// file. On failure the limits stay as they were.
Status ReadInputLimits(Network& network);
Status ReadTargetLimits(Network& network);

// A scaled value in data units.
float ToDataUnits(float value, float lower, float upper);
// Outputs and targets of one output node in data units; the values themselves unless targ_norm.
class OutputScale {
 public:
  OutputScale(const Network& network, size_t node);
  float operator()(float value) const {
    return m_scaled ? ToDataUnits(value, m_lower, m_upper) : value;
  }

 private:
  bool m_scaled;
  float m_lower;
  float m_upper;
};
// A value of an input node in data units; the value itself unless pat_norm.
float InputToDataUnits(const Network& network, size_t node, float value);

}  // namespace tarn
