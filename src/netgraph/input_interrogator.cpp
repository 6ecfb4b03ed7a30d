#include "netgraph/input_interrogator.h"

#include <algorithm>
#include <cmath>
#include <fmt/printf.h>

#include "netgraph/input_range.h"
#include "netgraph/messages.h"
#include "netgraph/node_shares.h"

namespace tarn {

InputInterrogator::InputInterrogator(const Network& network)
    : m_network(network),
      m_inputs(static_cast<size_t>(network.layers[0].nUnits)),
      m_passes(static_cast<size_t>(network.nPats) * PassesOfPattern()),
      m_probe(network, m_passes) {
  m_contributions.Resize(m_inputs, static_cast<size_t>(OutputLayer(network).nUnits));
}

void InputInterrogator::FillRow(size_t pass, size_t row) {
  const size_t pattern = pass / PassesOfPattern();
  const size_t change = pass % PassesOfPattern();
  const std::span<float> inputs = m_probe.Inputs(row);
  std::ranges::copy(m_network.layers[0].activations.Row(pattern), inputs.begin());
  if (change == 0) return;
  const size_t input = (change - 1) % m_inputs;
  inputs[input] = InputAtShare(m_network, change <= m_inputs ? 0.0 : 1.0);
}

void InputInterrogator::TakeRow(size_t pass, size_t row) {
  const size_t change = pass % PassesOfPattern();
  const std::span<const float> outputs = m_probe.Outputs(row);
  if (change == 0) {
    m_base.assign(outputs.begin(), outputs.end());
    ShowProgress(kInterrogatorProgress, static_cast<int64_t>(pass / PassesOfPattern()),
                 m_network.nPats);
    return;
  }
  const std::span<float> contributions = m_contributions.Row((change - 1) % m_inputs);
  for (size_t j = 0; j < outputs.size(); ++j) {
    contributions[j] += std::fabs(outputs[j] - m_base[j]);
  }
}

bool InputInterrogator::Advance() {
  const size_t rows = std::min(m_probe.rows(), m_passes - m_pass);
  for (size_t row = 0; row < rows; ++row) FillRow(m_pass + row, row);
  m_probe.Run(rows);
  for (size_t row = 0; row < rows; ++row) TakeRow(m_pass + row, row);
  m_pass += rows;
  return m_pass == m_passes;
}

std::vector<float> InputInterrogator::Contributions(size_t output) const {
  std::vector<float> shares;
  for (size_t i = 0; i < m_inputs; ++i) shares.push_back(m_contributions.Row(i)[output]);
  ToShares(shares);
  return shares;
}

Graph ContributionPlot(const InputInterrogator& interrogator, const Network& network,
                       size_t output) {
  Graph graph = NodeSharePlot(interrogator.Contributions(output));
  graph.title =
      network.output_names.empty()
          ? fmt::sprintf("Percent Contributions From Inputs on Output Node %d", output + 1)
          : fmt::sprintf("Percent Contributions From Inputs on %s", network.output_names[output]);
  graph.x_label = "Input Node";
  graph.y_label = "Percent Contribution";
  return graph;
}

}  // namespace tarn
