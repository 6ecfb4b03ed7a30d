#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "scenarios/scenario.h"

namespace tarn {

// What a generated network file says, by the names of the header, and how its data are made.
// The defaults are a small network that learns something in a few iterations.
struct GeneratedNetwork {
  std::string magic = "TARNV2.1";
  std::vector<int32_t> nodes = {3, 4, 2};
  std::vector<int32_t> transfer = {0};  // one for all computed layers, or one for each
  double fast_prop = 0;
  double eta = 0.2;
  double eta_min = 0.05;
  double eta_max = 0.6;
  double alpha = 0.7;
  double tolerance = 0;
  int32_t iterations = 12;
  int32_t lrc = 1000;
  int32_t update_rate = 4;
  int32_t save_rate = 0;
  int32_t weight_rate = 1;
  bool pat_norm = true;
  bool targ_norm = true;
  int32_t test_method = 0;
  int32_t test_patterns = 0;  // in the oldest files: the first and
  int32_t test_end = 0;       //   the last test pattern
  double weight_spread = 0;   // stored weights within +-spread; 0: random ones at each load
  std::vector<std::array<int32_t, 3>> removed = {};  // layer, node, source node
  std::vector<int32_t> stored_test_set = {};  // pattern numbers, rising; empty: none is stored

  int32_t patterns = 20;
  bool within_unit = false;    // data within 0..1, else in wider units
  bool targets_apart = false;  // in a file of their own
  bool labels_and_commas = false;
};

// NAME.net and NAME.dat, the targets behind the inputs or in NAME.tgt: smooth functions of
// random inputs, with a little noise.
std::vector<ScenarioFile> FilesOf(const GeneratedNetwork& network, const std::string& name);

}  // namespace tarn
