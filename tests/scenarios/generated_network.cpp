#include "scenarios/generated_network.h"

#include <algorithm>
#include <fmt/printf.h>

#include "base/random.h"

namespace tarn {
namespace {

constexpr uint32_t kDataSeed = 11;
constexpr uint32_t kWeightSeed = 12;

// 0..1
double Draw(Random& random) {
  return random.Next() / double{Random::kLargest};
}

std::string HeaderText(const GeneratedNetwork& network, const std::string& name) {
  const bool oldest = network.magic == "TARNV1.0";
  const bool current = network.magic == "TARNV2.1";
  const bool weight_rate = network.magic.starts_with("TARNV2.");
  const int32_t inputs = network.nodes.front();
  std::string text = fmt::sprintf("%s\n%s\n%d\n", network.magic, name, network.nodes.size());
  for (int32_t count : network.nodes) text += fmt::sprintf("%d ", count);
  for (size_t l = 1; l < network.nodes.size() && !oldest; ++l) {
    text += fmt::sprintf("%d ", network.transfer[(l - 1) % network.transfer.size()]);
  }
  text += fmt::sprintf("\n%f %f %f %f %f", network.fast_prop, network.eta, network.eta_min,
                       network.eta_max, network.alpha);
  text += current ? fmt::sprintf(" %f\n", network.tolerance) : "\n";
  text += fmt::sprintf("%d\n%d %d\n", network.iterations, network.lrc, network.update_rate);
  text += weight_rate ? fmt::sprintf("%d %d\n", network.save_rate, network.weight_rate)
                      : fmt::sprintf("%d\n", network.save_rate);
  text += fmt::sprintf("%s.dat\n1\n%d %d\n", name, int{network.pat_norm}, int{network.targ_norm});
  text += network.targets_apart ? fmt::sprintf("%s.tgt\n1\n", name)
                                : fmt::sprintf("%s.dat\n%d\n", name, inputs + 1);
  return text + fmt::sprintf("%d %d\n", oldest ? network.test_patterns : network.test_method,
                             oldest ? network.test_end : network.test_patterns);
}

std::string WeightsText(const GeneratedNetwork& network) {
  const bool oldest = network.magic == "TARNV1.0";
  if (network.weight_spread == 0) return oldest ? "RANDOM\n" : "WEIGHTS:RANDOM\n";
  std::string text = oldest ? "-20000\n" : "WEIGHTS:READ\n";
  Random random(kWeightSeed);
  for (size_t l = 1; l < network.nodes.size(); ++l) {
    for (int32_t j = 0; j < network.nodes[l]; ++j) {
      for (int32_t k = 0; k <= network.nodes[l - 1]; ++k) {
        text += fmt::sprintf("%g ", (2 * Draw(random) - 1) * network.weight_spread);
      }
      text += '\n';
    }
  }
  return text + (oldest ? "-20000\n" : "WEIGHTS:STOP\n");
}

std::string ConnectionsText(const GeneratedNetwork& network) {
  if (network.removed.empty()) return "CONNECTIONS:FULL\n";
  std::string text = fmt::sprintf("CONNECTIONS:READ\n%d\n", network.removed.size());
  for (const auto& [layer, node, source] : network.removed) {
    text += fmt::sprintf("%d %d %d\n", layer, node, source);
  }
  return text + "CONNECTIONS:STOP\n";
}

std::string TestPatternsText(const GeneratedNetwork& network) {
  const std::vector<int32_t>& test = network.stored_test_set;
  if (test.empty()) return "TESTPATTERNS:COMPUTE\n";
  const int32_t count = static_cast<int32_t>(test.size());
  std::string text = fmt::sprintf("TESTPATTERNS:READ\n%d %d %d\n", network.patterns,
                                  network.patterns - count, count);
  for (int32_t p = 0; p < network.patterns; ++p) {
    if (!std::binary_search(test.begin(), test.end(), p)) text += fmt::sprintf("%d ", p);
  }
  text += '\n';
  for (int32_t p : test) text += fmt::sprintf("%d ", p);
  return text + "\nTESTPATTERNS:STOP\n";
}

// Of inputs x within 0..1, within 0.05..0.95: a product of two neighbours, turned around for
// every other target, and noise.
double Target(const std::vector<double>& inputs, size_t j, double noise) {
  const double product = inputs[j % inputs.size()] * inputs[(j + 1) % inputs.size()];
  const double shape = j % 2 == 0 ? product : 1 - product;
  return 0.1 + 0.8 * shape + 0.05 * (2 * noise - 1);
}

std::vector<ScenarioFile> DataFiles(const GeneratedNetwork& network, const std::string& name) {
  ScenarioFile data{name + ".dat", ""};
  ScenarioFile apart{name + ".tgt", ""};
  ScenarioFile& targets = network.targets_apart ? apart : data;
  const char* const format = network.labels_and_commas ? "%.4f," : "%.4f ";
  if (network.labels_and_commas) data.text = "# \"First\" \"Second\" \"Third\"\n\n";
  const size_t inputs = static_cast<size_t>(network.nodes.front());
  const size_t outputs = static_cast<size_t>(network.nodes.back());
  Random random(kDataSeed);
  std::vector<double> x(inputs);
  for (int32_t p = 0; p < network.patterns; ++p) {
    for (double& value : x) {
      value = Draw(random);
      data.text += fmt::sprintf(format, network.within_unit ? value : 25 * value - 5);
    }
    for (size_t j = 0; j < outputs; ++j) {
      const double t = Target(x, j, Draw(random));
      targets.text += fmt::sprintf(format, network.within_unit ? t : 4 * t - 1);
    }
    data.text += '\n';
    if (network.targets_apart) apart.text += '\n';
  }
  if (network.targets_apart) return {data, apart};
  return {data};
}

}  // namespace

std::vector<ScenarioFile> FilesOf(const GeneratedNetwork& network, const std::string& name) {
  std::vector<ScenarioFile> files = DataFiles(network, name);
  std::string text = HeaderText(network, name) + WeightsText(network);
  if (network.magic != "TARNV1.0") {
    text += ConnectionsText(network) + TestPatternsText(network) + "NORMALIZE:NONE\n";
  }
  files.push_back({name + ".net", text});
  return files;
}

}  // namespace tarn
