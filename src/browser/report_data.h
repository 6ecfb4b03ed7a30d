#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "browser/report_file.h"
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

// Outputs and targets of one output node in data units: those of OutputToDataUnits.
class NodeScale {
 public:
  NodeScale(const Network& network, size_t node);
  float operator()(float value) const;

 private:
  bool m_scaled;
  float m_lower;
  float m_upper;
};
std::vector<NodeScale> NodeScales(const Network& network);

}  // namespace tarn
