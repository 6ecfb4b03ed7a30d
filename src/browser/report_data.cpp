#include "browser/report_data.h"

#include "base/utf8.h"

namespace tarn {

void WriteReportHead(const Network& network, const char* title, ReportFile& report) {
  report.Write(title);
  report.WriteBlank();
  report.Printf(" Network Name:  %s", network.NetName);
  if (network.mode == Mode::kTraining) report.Printf(" Iterations:    %d", network.iteration);
}

std::string NameColumn::Text(std::string_view name) const {
  std::string text;
  size_t characters = 0;
  while (!name.empty() && !(cut && characters == width)) {
    const size_t bytes = CharacterLength(name);
    const size_t blanks = width > characters ? width - characters - 1 : 0;
    if (text.size() + bytes + blanks > room) break;
    text += name.substr(0, bytes);
    name.remove_prefix(bytes);
    ++characters;
  }
  text.resize(text.size() + (width > characters ? width - characters : 0), ' ');
  return text;
}

void WriteSetLabel(const Network& network, const PatternSet& set, ReportFile& report) {
  if (set.is_test) report.WriteBlank();
  if (network.mode == Mode::kRecall) return report.Write(" RECALL DATA:");
  report.Write(set.is_test ? " TEST DATA:" : " TRAINING DATA:");
}

std::vector<OutputScale> OutputScales(const Network& network) {
  std::vector<OutputScale> scales;
  const auto nodes = static_cast<size_t>(OutputLayer(network).nUnits);
  scales.reserve(nodes);
  for (size_t j = 0; j < nodes; ++j) scales.emplace_back(network, j);
  return scales;
}

}  // namespace tarn
