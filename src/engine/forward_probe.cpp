#include "engine/forward_probe.h"

#include <algorithm>
#include <numeric>

namespace tarn {
namespace {

// Connections x rows of a run: 0.2 to 1 ms measured on a processor of 2024, so that a window never
// waits long for one; and no more rows than the vectors of a run are worth.
constexpr size_t kWorkOfRun = 20000000;
constexpr size_t kMostRows = 1024;

size_t RowsFor(const Network& network, size_t most_rows) {
  const auto connections = static_cast<size_t>(ConnectionCount(network));
  const size_t fitting = std::clamp<size_t>(kWorkOfRun / connections, 1, kMostRows);
  return std::clamp<size_t>(most_rows, 1, fitting);
}

Network WeightsAlone(const Network& network, size_t rows) {
  Network copy;
  copy.nLayers = network.nLayers;
  copy.nPats = static_cast<int32_t>(rows);
  for (size_t l = 0; l < static_cast<size_t>(network.nLayers); ++l) {
    const Layer& from = network.layers[l];
    Layer& layer = copy.layers[l];
    layer.nUnits = from.nUnits;
    layer.TransFunc = from.TransFunc;
    layer.role = from.role;
    layer.computed = from.computed;
    layer.weights = from.weights;
    layer.activations.Resize(rows, static_cast<size_t>(from.nUnits));
  }
  return copy;
}

}  // namespace

ForwardProbe::ForwardProbe(const Network& network, size_t most_rows)
    : m_network(WeightsAlone(network, RowsFor(network, most_rows))),
      m_rows(RowsFor(network, most_rows)),
      m_packed(m_network, PackedNetwork::Use::kForward, 1) {
  std::iota(m_rows.begin(), m_rows.end(), 0);
}

void ForwardProbe::Run(size_t count) {
  const std::span<const int32_t> rows = std::span(m_rows).first(count);
  for (size_t first = 0; first < count; first += m_packed.batch()) {
    m_packed.Forward(rows.subspan(first, std::min(m_packed.batch(), count - first)));
  }
}

}  // namespace tarn
