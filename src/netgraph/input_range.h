#pragma once

#include "engine/network.h"

namespace tarn {

// An input in the network's own units, `share` (0..1) of the way through its range: 0.15..0.85
// where inputs are normalized, 0..1 where not.
inline float InputAtShare(const Network& network, double share) {
  return static_cast<float>(network.pat_norm != 0 ? 0.7 * share + 0.15 : share);
}

}  // namespace tarn
