#include "netgraph/hidden_node_analyzer.h"

#include <algorithm>
#include <fmt/printf.h>
#include <numeric>
#include <utility>

#include "netgraph/messages.h"
#include "netgraph/node_shares.h"

namespace tarn {

HiddenNodeAnalyzer::HiddenNodeAnalyzer(const Network& network)
    : m_network(network), m_probe(network, static_cast<size_t>(network.nPats)) {
  for (size_t l = 1; l + 1 < static_cast<size_t>(network.nLayers); ++l) {
    const auto nodes = static_cast<size_t>(network.layers[l].nUnits);
    m_layers.push_back({std::vector<float>(nodes), std::vector<bool>(nodes),
                        std::vector<float>(nodes), std::vector<float>(nodes)});
  }
}

void HiddenNodeAnalyzer::HiddenLayer::AddToSums(std::span<const float> activations, bool is_first) {
  for (size_t i = 0; i < activations.size(); ++i) {
    if (is_first) firsts[i] = activations[i];
    varies[i] = varies[i] || activations[i] != firsts[i];
    sums[i] += activations[i];
  }
}

void HiddenNodeAnalyzer::HiddenLayer::AddToSquares(std::span<const float> activations) {
  for (size_t i = 0; i < activations.size(); ++i) {
    const float difference = activations[i] - sums[i];
    squares[i] += difference * difference;
  }
}

void HiddenNodeAnalyzer::Add(size_t pattern, size_t row) {
  for (size_t h = 0; h < m_layers.size(); ++h) {
    const std::span<const float> activations = m_probe.Activations(h + 1, row);
    if (m_second_round) {
      m_layers[h].AddToSquares(activations);
    } else {
      m_layers[h].AddToSums(activations, pattern == 0);
    }
  }
}

void HiddenNodeAnalyzer::ToMeans(HiddenLayer& layer) const {
  const bool of_all = m_network.nTrain == m_network.nPats;
  for (size_t i = 0; i < layer.sums.size(); ++i) {
    layer.sums[i] = of_all && !layer.varies[i]
                        ? layer.firsts[i]
                        : layer.sums[i] / static_cast<float>(m_network.nTrain);
  }
}

void HiddenNodeAnalyzer::EndRound() {
  for (HiddenLayer& layer : m_layers) {
    if (m_second_round) {
      ToShares(layer.squares);
    } else {
      ToMeans(layer);
    }
  }
}

bool HiddenNodeAnalyzer::Advance() {
  const int32_t count = std::min(static_cast<int32_t>(m_probe.rows()), m_network.nPats - m_pattern);
  const auto rows = static_cast<size_t>(count);
  for (size_t row = 0; row < rows; ++row) {
    const auto pattern = static_cast<size_t>(m_pattern) + row;
    std::ranges::copy(m_network.layers[0].activations.Row(pattern), m_probe.Inputs(row).begin());
  }
  m_probe.Run(rows);
  for (size_t row = 0; row < rows; ++row) {
    Add(static_cast<size_t>(m_pattern) + row, row);
    const int64_t done = m_pattern + int64_t{m_second_round} * m_network.nPats;
    ShowProgress(kHiddenNodesProgress, done + static_cast<int64_t>(row),
                 int64_t{2} * m_network.nPats);
  }
  m_pattern += count;
  if (m_pattern < m_network.nPats) return false;
  EndRound();
  m_pattern = 0;
  return std::exchange(m_second_round, true);
}

Graph HiddenNodePlot(const HiddenNodeAnalyzer& analyzer, size_t layer) {
  Graph graph = NodeSharePlot(analyzer.Shares(layer));
  graph.title =
      fmt::sprintf("Cummulative Connection Strengths From Nodes in Hidden Layer %d", layer);
  graph.x_label = "Node Number";
  graph.y_label = "Connection Strength";
  const GraphRange data = DataRange(graph);
  const auto nodes = static_cast<float>(analyzer.Shares(layer).size());
  graph.range = {0.0F, nodes + 1.0F, data.y_min, data.y_max};
  return graph;
}

}  // namespace tarn
