#include "browser/report_data.h"

namespace tarn {

void WriteReportHead(const Network& network, const char* title, ReportFile& report) {
  report.Write(title);
  report.WriteBlank();
  report.Printf(" Network Name:  %s", network.NetName);
  if (network.mode == Mode::kTraining) report.Printf(" Iterations:    %d", network.iteration);
}

std::vector<PatternSet> PatternSets(const Network& network) {
  const bool training = network.mode == Mode::kTraining;
  if (!training || network.testPats <= 0) {
    return {{training ? " TRAINING DATA:" : " RECALL DATA:", {}, network.nPats, true, false}};
  }
  return {{" TRAINING DATA:", network.train_list, network.nTrain, false, false},
          {" TEST DATA:", network.test_list, network.testPats, false, true}};
}

void WriteSetLabel(const PatternSet& set, ReportFile& report) {
  if (set.is_second) report.WriteBlank();
  report.Write(set.label);
}

std::vector<OutputScale> OutputScales(const Network& network) {
  std::vector<OutputScale> scales;
  const auto nodes = static_cast<size_t>(OutputLayer(network).nUnits);
  scales.reserve(nodes);
  for (size_t j = 0; j < nodes; ++j) scales.emplace_back(network, j);
  return scales;
}

}  // namespace tarn
