#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace tarn {

struct ScenarioFile {
  std::string name;
  std::string text;
};

// One training run from its files on, written once for all who want to run it. The same at
// every call: data are drawn from generators with seeds of their own.
struct Scenario {
  std::string name;     // letters, digits and "_"
  std::string network;  // which of the files is the network
  std::function<std::vector<ScenarioFile>()> files;
  uint32_t seed = 1;       // of random weights and random test sets
  int32_t iterations = 0;  // in place of the network's MaxIterations when above 0
  int32_t group_size = 0;  // set in the run itself when above 0; may be above nTrain there
};

// Writes the files of the scenario into a folder on the disk and returns the path of the
// network; empty when a file could not be written.
std::string WriteScenario(const Scenario& scenario, const std::string& folder);

// Small enough to be trained in every build: the examples, cut short and one of them whole,
// and a network for every turn that training can take.
const std::vector<Scenario>& GoldenScenarios();
// One of them by its name, which must exist.
const Scenario& GoldenScenario(const std::string& name);

// About 100,000 connections, so that a run in slices may end one behind every step.
const Scenario& WideScenario();

}  // namespace tarn
