#pragma once

#include <cstdint>
#include <vector>

#include "base/status.h"
#include "engine/network.h"

namespace tarn {

// Output nodes, from 1 and ascending, whose normalized output is below 0.0001 for every pattern, or
// above 0.9999 for every one. The network has patterns. Throws std::bad_alloc.
std::vector<int32_t> DivergedNodes(const Network& network);

// What the user is told: their numbers, as far as they go before the text passes 60 characters, or
// that there are none. Throws std::bad_alloc.
Message DivergenceMessage(const Network& network);

}  // namespace tarn
