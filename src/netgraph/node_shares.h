#pragma once

#include <span>
#include <vector>

#include "netgraph/graph.h"

namespace tarn {

// Divides each value by their sum, in single precision and by ascending index, where that is above
// 0; otherwise they stay.
void ToShares(std::span<float> values);

// A red line over node numbers from 1, each share in per cent. Title and labels are left empty.
Graph NodeSharePlot(const std::vector<float>& shares);

}  // namespace tarn
