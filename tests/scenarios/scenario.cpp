#include "scenarios/scenario.h"

#include <algorithm>
#include <fstream>
#include <ios>
#include <stdexcept>

#include "base/paths.h"

namespace tarn {

std::string WriteScenario(const Scenario& scenario, const std::string& folder) {
  for (const ScenarioFile& file : scenario.files()) {
    std::ofstream stream(NativePath(folder + "/" + file.name), std::ios::binary | std::ios::trunc);
    stream << file.text;
    stream.close();
    if (!stream.good()) return {};
  }
  return folder + "/" + scenario.network;
}

const Scenario& GoldenScenario(const std::string& name) {
  const std::vector<Scenario>& all = GoldenScenarios();
  const auto found = std::find_if(all.begin(), all.end(),
                                  [&](const Scenario& scenario) { return scenario.name == name; });
  if (found == all.end()) throw std::invalid_argument("no scenario " + name);
  return *found;
}

}  // namespace tarn
