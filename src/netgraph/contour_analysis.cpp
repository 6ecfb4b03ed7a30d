#include "netgraph/contour_analysis.h"

#include <algorithm>
#include <fmt/printf.h>
#include <string>

#include "netgraph/input_range.h"
#include "netgraph/messages.h"

namespace tarn {
namespace {

constexpr size_t kPoints = kContourSteps * kContourSteps;

// The input at a grid step, in the network's own units.
float InputAt(const Network& network, size_t step) {
  return InputAtShare(network, static_cast<double>(step) / (kContourSteps - 1));
}

// The range of an input in data units.
float LowerEnd(const Network& network, size_t input) {
  return network.pat_norm != 0 ? network.input_limits.lower[input] : 0.0F;
}
float UpperEnd(const Network& network, size_t input) {
  return network.pat_norm != 0 ? network.input_limits.upper[input] : 1.0F;
}

std::string Title(const Network& network, const ContourNodes& nodes) {
  if (network.input_names.empty() || network.output_names.empty()) {
    return fmt::sprintf("Input nodes %d, %d Influence on Output node %d", nodes.first_input + 1,
                        nodes.second_input + 1, nodes.output + 1);
  }
  return fmt::sprintf("Inputs %s, %s Influence on Output %s",
                      network.input_names[nodes.first_input],
                      network.input_names[nodes.second_input], network.output_names[nodes.output]);
}

}  // namespace

ContourAnalysis::ContourAnalysis(const Network& network, const ContourNodes& nodes)
    : m_network(network), m_nodes(nodes), m_probe(network, kPoints) {
  const auto middle = static_cast<size_t>(network.nPats / 2);
  const std::span<const float> inputs = network.layers[0].activations.Row(middle);
  m_reference.assign(inputs.begin(), inputs.end());
  m_surface.values[0] = static_cast<float>(nodes.first_input + 1);
  m_surface.values[1] = static_cast<float>(nodes.second_input + 1);
}

bool ContourAnalysis::Advance() {
  const size_t rows = std::min(m_probe.rows(), kPoints - m_point);
  for (size_t row = 0; row < rows; ++row) {
    const size_t point = m_point + row;
    const std::span<float> inputs = m_probe.Inputs(row);
    std::ranges::copy(m_reference, inputs.begin());
    inputs[m_nodes.first_input] = InputAt(m_network, point % kContourSteps);
    inputs[m_nodes.second_input] = InputAt(m_network, point / kContourSteps);
  }
  m_probe.Run(rows);
  for (size_t row = 0; row < rows; ++row) {
    const size_t point = m_point + row;
    m_surface.At(point / kContourSteps, point % kContourSteps) =
        m_probe.Outputs(row)[m_nodes.output];
    ShowProgress(kContourProgress, static_cast<int64_t>(point / kContourSteps), kContourSteps);
  }
  m_point += rows;
  return m_point == kPoints;
}

Graph ContourPlot(const ContourSurface& surface, const Network& network,
                  const ContourNodes& nodes) {
  Graph graph;
  graph.title = Title(network, nodes);
  graph.x_label = fmt::sprintf("Input Node %d", nodes.first_input + 1);
  graph.y_label = fmt::sprintf("Input Node %d", nodes.second_input + 1);
  graph.range = {LowerEnd(network, nodes.first_input), UpperEnd(network, nodes.first_input),
                 LowerEnd(network, nodes.second_input), UpperEnd(network, nodes.second_input)};
  graph.contours = surface;
  return graph;
}

}  // namespace tarn
