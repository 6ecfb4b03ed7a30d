#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "engine/network.h"

namespace tarn {

// A set of patterns that reports and plots look at by itself. The network outlives it.
struct PatternSet {
  std::span<const int32_t> list;
  int32_t count = 0;
  bool is_all = false;   // every pattern in order, the list unused
  bool is_test = false;  // the test set

  // The k-th pattern, from 0.
  size_t Pattern(int32_t k) const {
    return static_cast<size_t>(is_all ? k : list[static_cast<size_t>(k)]);
  }
};

// In training with a test set the training set and the test set; otherwise all patterns.
std::vector<PatternSet> PatternSets(const Network& network);

}  // namespace tarn
