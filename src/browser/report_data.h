#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "browser/report_file.h"
#include "data/normalization.h"
#include "engine/network.h"
#include "engine/pattern_sets.h"

// What the reports share: their heads, the headings of their sets of patterns, and the values that
// they compare.

namespace tarn {

// Title, blank line, network name, and in training the iterations.
void WriteReportHead(const Network& network, const char* title, ReportFile& report);

// How a node's name stands in a line.
struct NameColumn {
  size_t width = 0;  // characters, filled up with blanks
  bool cut = false;  // a longer name is cut at the width
  size_t room = 0;   // bytes: a name that takes more is cut, so that no figure behind it is lost

  std::string Text(std::string_view name) const;
};

// A blank line before the test set, then " TRAINING DATA:", " TEST DATA:" or " RECALL DATA:".
void WriteSetLabel(const Network& network, const PatternSet& set, ReportFile& report);

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
