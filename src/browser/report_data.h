#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "browser/report_file.h"
#include "data/normalization.h"
#include "engine/network.h"

// What the reports share: their heads, the sets of patterns that they go through, and the values
// that they compare.

namespace tarn {

// Title, blank line, network name, and in training the iterations.
void WriteReportHead(const Network& network, const char* title, ReportFile& report);

// One set of patterns and its heading.
struct PatternSet {
  std::string_view label;  // " TRAINING DATA:", " TEST DATA:" or " RECALL DATA:"
  std::span<const int32_t> list;
  int32_t count = 0;
  bool is_all = false;  // every pattern in order, the list unused
  bool is_second = false;

  size_t Pattern(int32_t k) const {
    return static_cast<size_t>(is_all ? k : list[static_cast<size_t>(k)]);
  }
};

// In training with a test set the training set and the test set; otherwise all patterns.
std::vector<PatternSet> PatternSets(const Network& network);

// A blank line before the second set, then its label.
void WriteSetLabel(const PatternSet& set, ReportFile& report);

// One for every output node. Throws std::bad_alloc.
std::vector<OutputScale> OutputScales(const Network& network);

// Calls f(output node, output, target), both values in data units, for every output of the set,
// pattern after pattern. The network has targets. Throws std::bad_alloc.
template <typename F>
void ForEachOutput(const Network& network, const PatternSet& set, const F& f) {
  const std::vector<OutputScale> scales = OutputScales(network);
  for (int32_t k = 0; k < set.count; ++k) {
    const size_t p = set.Pattern(k);
    const std::span<const float> outputs = OutputLayer(network).activations.Row(p);
    const std::span<const float> targets = network.targets.Row(p);
    for (size_t j = 0; j < scales.size(); ++j) {
      f(j, scales[j](outputs[j]), scales[j](targets[j]));
    }
  }
}

}  // namespace tarn
