#include <fstream>
#include <ios>
#include <iterator>
#include <stdexcept>

#include "engine/network.h"
#include "scenarios/generated_network.h"
#include "scenarios/scenario.h"

namespace tarn {
namespace {

ScenarioFile ExampleFile(const std::string& example, const std::string& name) {
  const std::string path = TARN_SOURCE_DIR "/examples/" + example + "/" + name;
  std::ifstream file(path, std::ios::binary);
  if (!file.is_open()) throw std::runtime_error("no file " + path);
  return {name, {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()}};
}

// examples/EXAMPLE as it stands; 0 iterations: all of them.
Scenario FromExample(const std::string& name, const std::string& example, int32_t iterations) {
  return {.name = name,
          .network = example + ".net",
          .files =
              [example] {
                return std::vector<ScenarioFile>{ExampleFile(example, example + ".net"),
                                                 ExampleFile(example, example + ".txt")};
              },
          .iterations = iterations};
}

Scenario Generated(const std::string& name, const GeneratedNetwork& network,
                   int32_t group_size = 0) {
  return {.name = name,
          .network = name + ".net",
          .files = [network, name] { return FilesOf(network, name); },
          .group_size = group_size};
}

void AddTransferFunctions(std::vector<Scenario>& all) {
  all.push_back(Generated("sigmoid", {.transfer = {kSigmoid}}));
  all.push_back(Generated("gaussian", {.transfer = {kGaussian}}));
  all.push_back(Generated("tanh", {.transfer = {kTanh}}));
  all.push_back(Generated("sech", {.transfer = {kSech}}));
  all.push_back(Generated(
      "mixed", {.nodes = {3, 4, 4, 4, 2}, .transfer = {kSech, kGaussian, kTanh, kSigmoid}}));
  // Outputs of exactly 0 and 1, and what underflows on the way.
  all.push_back(Generated("saturated", {.nodes = {3, 4, 4, 4, 2},
                                        .transfer = {kGaussian, kTanh, kSech, kSigmoid},
                                        .weight_spread = 15}));
  // A code that is no transfer function leaves its layer's outputs alone.
  all.push_back(Generated("unknown_transfer", {.nodes = {3, 3, 3, 2}, .transfer = {2, 9, 0}}));
}

void AddLayers(std::vector<Scenario>& all) {
  for (int32_t layers = 3; layers <= 10; ++layers) {
    GeneratedNetwork network{.nodes = {4}, .transfer = {kTanh, kSigmoid}, .iterations = 8};
    for (int32_t l = 1; l < layers - 1; ++l) network.nodes.push_back(l % 2 == 0 ? 3 : 5);
    network.nodes.push_back(2);
    all.push_back(Generated("layers_" + std::to_string(layers), network));
  }
  all.push_back(Generated("one_node_each", {.nodes = {1, 1, 1}}));
}

void AddGroups(std::vector<Scenario>& all) {
  all.push_back(Generated("group_1", {.lrc = 5, .weight_rate = 1}));
  // 20 patterns: groups run on over the end of the list.
  all.push_back(Generated("group_7", {.lrc = 5, .weight_rate = 7}));
  all.push_back(Generated("group_all", {.lrc = 5, .weight_rate = 0}));
  all.push_back(Generated("group_more_than_all", {.lrc = 5, .weight_rate = 1000}));
  // Set in the run, beyond the list: it is passed more than once in one group.
  all.push_back(Generated("group_wraps", {.eta = 0.1, .lrc = 5, .weight_rate = 1}, 27));
  all.push_back(Generated("group_wraps_twice", {.eta = 0.1, .lrc = 5, .weight_rate = 0}, 47));
}

void AddConnectionsAndFastProp(std::vector<Scenario>& all) {
  const std::vector<std::array<int32_t, 3>> removed = {
      {1, 0, 0}, {1, 0, 2}, {1, 3, 1}, {2, 0, 0}, {2, 1, 3}};
  all.push_back(Generated("removed", {.removed = removed}));
  all.push_back(Generated("removed_all_of_a_node",
                          {.weight_rate = 0, .removed = {{1, 2, 0}, {1, 2, 1}, {1, 2, 2}}}));
  all.push_back(Generated("fast_prop", {.fast_prop = 0.5}));
  all.push_back(Generated(
      "fast_prop_deep",
      {.nodes = {3, 4, 3, 4, 2}, .transfer = {kTanh, kGaussian, kSech, kSigmoid}, .fast_prop = 3}));
  all.push_back(Generated("fast_prop_removed",
                          {.transfer = {kSech}, .fast_prop = 1.5, .lrc = 3, .removed = removed}));
}

void AddMonitors(std::vector<Scenario>& all) {
  all.push_back(Generated("tolerance", {.tolerance = 0.9, .test_method = 2, .test_patterns = 5}));
  all.push_back(Generated("tolerance_raw", {.tolerance = 0.2,
                                            .targ_norm = false,
                                            .test_method = 2,
                                            .test_patterns = 5,
                                            .within_unit = true}));
  all.push_back(
      Generated("not_normalized", {.pat_norm = false, .targ_norm = false, .within_unit = true}));
  // Neither flag is set, but the data ask for it.
  all.push_back(Generated("normalized_by_need", {.pat_norm = false, .targ_norm = false}));
}

void AddTestSets(std::vector<Scenario>& all) {
  const auto add = [&all](const char* name, int32_t method, std::vector<int32_t> stored = {}) {
    all.push_back(Generated(name, {.tolerance = 0.5,
                                   .test_method = method,
                                   .test_patterns = 6,
                                   .stored_test_set = std::move(stored)}));
  };
  add("test_none", 0);
  add("test_beginning", 1);
  add("test_ending", 2);
  add("test_random", 3);
  add("test_stored", 3, {0, 3, 4, 11, 12, 19});
}

void AddLearnRateControl(std::vector<Scenario>& all) {
  const auto add = [&all](const char* name, int32_t lrc, double minimum, double maximum) {
    all.push_back(Generated(name, {.eta_min = minimum,
                                   .eta_max = maximum,
                                   .iterations = 40,
                                   .lrc = lrc,
                                   .update_rate = 1,
                                   .weight_rate = 0}));
  };
  add("control_at_once", 0, 0.001, 0.9);
  add("control_from_first", 1, 0.001, 0.9);
  add("control_from_middle", 20, 0.001, 0.9);
  add("control_from_last", 40, 0.001, 0.9);
  add("control_never", 41, 0.001, 0.9);
  add("control_bounds_crossed", 10, 0.4, 0.3);
}

void AddFiles(std::vector<Scenario>& all) {
  all.push_back(Generated("autosave", {.iterations = 15, .lrc = 8, .save_rate = 5}));
  all.push_back(Generated("autosave_every", {.nodes = {2, 2, 1}, .iterations = 4, .save_rate = 1}));
  all.push_back(
      Generated("autosave_split",
                {.save_rate = 7, .test_method = 3, .test_patterns = 4, .removed = {{2, 1, 1}}}));
  all.push_back(Generated("stored_weights", {.weight_spread = 1.5}));
  all.push_back(Generated("two_files", {.targets_apart = true, .labels_and_commas = true}));
  all.push_back(Generated("wide_lines", {.nodes = {9, 8, 16}, .iterations = 3}));
  all.push_back(
      Generated("version_1_0",
                {.magic = "TARNV1.0", .test_patterns = 16, .test_end = 20, .weight_spread = 0.5}));
  all.push_back(Generated("version_1_5", {.magic = "TARNV1.5", .transfer = {kTanh}}));
  all.push_back(Generated("version_2_0", {.magic = "TARNV2.0", .weight_rate = 4}));
}

}  // namespace

const std::vector<Scenario>& GoldenScenarios() {
  static const std::vector<Scenario> all = [] {
    std::vector<Scenario> scenarios = {
        FromExample("iris", "iris", 60), FromExample("iris_full", "iris", 0),
        FromExample("xor", "xor", 60), FromExample("surface", "surface", 60)};
    AddTransferFunctions(scenarios);
    AddLayers(scenarios);
    AddGroups(scenarios);
    AddConnectionsAndFastProp(scenarios);
    AddMonitors(scenarios);
    AddTestSets(scenarios);
    AddLearnRateControl(scenarios);
    AddFiles(scenarios);
    return scenarios;
  }();
  return all;
}

const Scenario& WideScenario() {
  static const Scenario wide = Generated("wide", {.nodes = {330, 300, 3},
                                                  .transfer = {kTanh, kSigmoid},
                                                  .eta = 0.02,
                                                  .tolerance = 0.5,
                                                  .iterations = 5,
                                                  .update_rate = 2,
                                                  .test_method = 2,
                                                  .test_patterns = 3,
                                                  .patterns = 11});
  return wide;
}

}  // namespace tarn
