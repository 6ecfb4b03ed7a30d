#include "engine/packed_network.h"

#include <algorithm>
#include <functional>
#include <new>
#include <utility>

namespace tarn {
namespace {

// Patterns of a batch for each thread: enough to use a weight many times once it is in a
// register, few enough that what belongs to them stays in the cache; more in small networks.
constexpr size_t kFewestOfBatch = 64;
constexpr size_t kMostOfBatch = 256;
constexpr size_t kWorkOfBatch = 2000000;  // connections x patterns

// What belongs to the patterns of a batch, four values a node, is held to 64 MB: very wide layers
// take fewer patterns at once.
constexpr size_t kMostNodesOfBatch = size_t{1} << 22;  // nodes x patterns

// Patterns that are groups of their own are taken together to spare what comes between them;
// what belongs to their nodes stays in the first-level cache.
constexpr size_t kMostSinglePatterns = 16;
constexpr size_t kNodesOfSinglePatterns = 1000;

// Connections x patterns of a batch from which on more threads than one pay: at 10 to 50 million
// of them a millisecond, several times what it takes to hand the work over.
constexpr size_t kWorkToShare = 500000;

hwy::AlignedFreeUniquePtr<float[]> AlignedZeros(size_t count) {
  auto floats = hwy::AllocateAligned<float>(std::max<size_t>(count, 1));
  if (floats == nullptr) throw std::bad_alloc();
  std::fill_n(floats.get(), count, 0.0F);
  return floats;
}

std::vector<const float*> RowsOf(const float* table, size_t rows, size_t stride) {
  std::vector<const float*> pointers(rows);
  for (size_t r = 0; r < rows; ++r) pointers[r] = table + r * stride;
  return pointers;
}

bool IsTransferCode(int32_t code) {
  return code >= kSigmoid && code <= kSech;
}

// From a table by node, its last column the bias, to panels.
void FillPanels(const kernels::PanelShape& shape, const Matrix& table, float* panels) {
  const size_t padded_nodes = shape.Padded(table.rows());
  for (size_t j = 0; j < table.rows(); ++j) {
    const size_t first = j / shape.panel_nodes * shape.panel_nodes;
    const size_t width = shape.Width(padded_nodes, first);
    float* out = panels + first * table.columns() + (j - first);
    for (const float value : table.Row(j)) {
      *out = value;
      out += width;
    }
  }
}

// The masks have no column for the bias; its row is all ones.
Matrix MasksWithBias(const Matrix& masks) {
  Matrix table;
  table.Resize(masks.rows(), masks.columns() + 1);
  for (size_t j = 0; j < masks.rows(); ++j) {
    std::ranges::copy(masks.Row(j), table.Row(j).begin());
    table.Row(j).back() = 1.0F;
  }
  return table;
}

// Whether each row but the first follows the one before, in a list that may hold any rows.
bool AreAdjacent(std::span<const int32_t> rows) {
  for (size_t i = 1; i < rows.size(); ++i) {
    if (rows[i] != rows[i - 1] + 1) return false;
  }
  return true;
}

}  // namespace

PackedNetwork::PackedNetwork(Network& network, Use use, size_t threads)
    : m_network(network), m_use(use), m_connections(static_cast<size_t>(ConnectionCount(network))) {
  const auto nodes = static_cast<size_t>(NodeCount(network));
  const size_t most = std::clamp<size_t>(kMostNodesOfBatch / nodes, 1,
                                         static_cast<size_t>(std::max(network.nPats, 1)));
  const size_t of_thread = std::clamp(kWorkOfBatch / m_connections, kFewestOfBatch, kMostOfBatch);
  m_batch = std::min(most, of_thread * std::max<size_t>(threads, 1));
  if (threads > 1 && m_connections * m_batch >= kWorkToShare) {
    m_workers = std::make_unique<Workers>(threads);
  } else {
    m_batch = std::min(most, of_thread);
  }
  m_batch_of_single_patterns =
      std::min(m_batch, std::clamp<size_t>(kNodesOfSinglePatterns / nodes, 1, kMostSinglePatterns));
  m_panels.shape = kernels::CurrentShape();
  m_panels.layer_count = static_cast<size_t>(network.nLayers) - 1;
  m_input_rows.resize(m_batch);
  m_target_rows.resize(m_batch);
  m_panels.targets = m_target_rows.data();
  for (size_t l = 0; l < m_panels.layer_count; ++l) {
    Allocate(l);
    if (use == Use::kForward) continue;
    AllocateForTraining(l);
    PackDerivatives(l);
  }
  AllocateNets();
  Pack();
}

// Each part of a batch has room of its own, with a panel to spill into.
void PackedNetwork::AllocateNets() {
  size_t widest = 0;
  for (size_t l = 0; l < m_panels.layer_count; ++l) {
    widest = std::max(widest, m_panels.layers[l].padded_nodes);
  }
  const size_t parts = m_workers == nullptr ? 1 : m_workers->parts();
  const size_t patterns = m_batch / parts + 2 * m_panels.shape.lanes;
  const size_t room = patterns * widest + m_panels.shape.panel_nodes;
  m_nets = AlignedZeros(parts * room);
  for (size_t part = 0; part < parts; ++part) {
    m_nets_of_part.push_back(m_nets.get() + part * room);
  }
  m_panels.nets = m_nets.get();
}

void PackedNetwork::Allocate(size_t l) {
  const kernels::PanelShape& shape = m_panels.shape;
  kernels::LayerPanels& panels = m_panels.layers[l];
  LayerMemory& memory = m_memory[l];
  panels.sources = static_cast<size_t>(m_network.layers[l].nUnits);
  panels.nodes = static_cast<size_t>(RecordOf(l).nUnits);
  panels.padded_sources = shape.Padded(panels.sources);
  panels.padded_nodes = shape.Padded(panels.nodes);
  panels.code = RecordOf(l).TransFunc;
  panels.stride = panels.padded_nodes <= shape.panel_nodes ? panels.nodes : panels.padded_nodes;
  memory.weights = AlignedZeros((panels.sources + 1) * panels.padded_nodes);
  memory.outputs = AlignedZeros(m_batch * panels.stride + shape.panel_nodes);
  memory.output_rows = RowsOf(memory.outputs.get(), m_batch, panels.stride);
  panels.weights = memory.weights.get();
  panels.inputs = l == 0 ? m_input_rows.data() : m_memory[l - 1].output_rows.data();
  panels.outputs = memory.outputs.get();
}

void PackedNetwork::AllocateForTraining(size_t l) {
  kernels::LayerPanels& panels = m_panels.layers[l];
  LayerMemory& memory = m_memory[l];
  const size_t weights = (panels.sources + 1) * panels.padded_nodes;
  memory.changes = AlignedZeros(weights);
  memory.gradients = AlignedZeros(weights);
  panels.changes = memory.changes.get();
  panels.gradients = memory.gradients.get();
  memory.derivatives = AlignedZeros(m_batch * panels.stride + m_panels.shape.panel_nodes);
  memory.deltas = AlignedZeros(m_batch * panels.padded_nodes);
  panels.derivatives = memory.derivatives.get();
  panels.deltas = memory.deltas.get();
  if (l > 0) {
    memory.transposed = AlignedZeros(panels.nodes * panels.padded_sources);
    panels.transposed = memory.transposed.get();
  }
  panels.factors = l == 0 ? m_input_rows.data() : m_memory[l - 1].factor_rows.data();
  if (l + 1 == m_panels.layer_count) return;
  memory.factors = AlignedZeros(m_batch * panels.padded_nodes);
  memory.factor_rows = RowsOf(memory.factors.get(), m_batch, panels.padded_nodes);
  panels.own_factors = memory.factors.get();
}

void PackedNetwork::Pack() {
  for (size_t l = 0; l < m_panels.layer_count; ++l) {
    const Layer& layer = RecordOf(l);
    kernels::LayerPanels& panels = m_panels.layers[l];
    FillPanels(m_panels.shape, layer.weights, panels.weights);
    if (m_use == Use::kForward) continue;
    FillPanels(m_panels.shape, layer.weight_changes, panels.changes);
    PackMasks(l);
    for (size_t j = 0; panels.transposed != nullptr && j < panels.nodes; ++j) {
      std::copy_n(layer.weights.Row(j).data(), panels.sources,
                  panels.transposed + j * panels.padded_sources);
    }
  }
}

void PackedNetwork::PackMasks(size_t l) {
  kernels::LayerPanels& panels = m_panels.layers[l];
  if (m_network.fully_connected) {
    panels.masks = nullptr;
    return;
  }
  Floats& masks = m_memory[l].masks;
  if (masks == nullptr) masks = AlignedZeros((panels.sources + 1) * panels.padded_nodes);
  FillPanels(m_panels.shape, MasksWithBias(RecordOf(l).masks), masks.get());
  panels.masks = masks.get();
}

// In every place of the batch: a layer without a known transfer function keeps its derivatives.
void PackedNetwork::PackDerivatives(size_t l) {
  const Layer& layer = RecordOf(l);
  const kernels::LayerPanels& panels = m_panels.layers[l];
  for (size_t p = 0; p < m_batch; ++p) {
    std::ranges::copy(layer.derivatives, panels.derivatives + p * panels.stride);
  }
  std::ranges::copy(layer.deltas, panels.deltas);
}

void PackedNetwork::Publish() {
  if (m_use == Use::kForward) return;
  for (size_t l = 0; l < m_panels.layer_count; ++l) {
    Layer& layer = RecordOf(l);
    const kernels::LayerPanels& panels = m_panels.layers[l];
    for (const auto& [from, to] : {std::pair(panels.weights, &layer.weights),
                                   std::pair(panels.changes, &layer.weight_changes)}) {
      kernels::ToTable(m_panels.shape, from, panels.sources, panels.nodes, to->All().data(),
                       to->columns());
    }
    std::copy_n(panels.derivatives + m_last * panels.stride, panels.nodes,
                layer.derivatives.begin());
    std::copy_n(panels.deltas + m_last_deltas * panels.padded_nodes, panels.nodes,
                layer.deltas.begin());
  }
}

void PackedNetwork::Begin(std::span<const int32_t> patterns) {
  m_first = 0;
  m_count = patterns.size();
  const auto point = [&](std::vector<const float*>& rows, const Matrix& table) {
    const float* const base = table.All().data();
    const size_t columns = table.columns();
    for (size_t p = 0; p < patterns.size(); ++p) {
      rows[p] = base + static_cast<size_t>(patterns[p]) * columns;
    }
  };
  point(m_input_rows, m_network.layers[0].activations);
  if (m_use == Use::kTraining) point(m_target_rows, m_network.targets);
  for (size_t l = 0; l < m_panels.layer_count; ++l) {
    const kernels::LayerPanels& panels = m_panels.layers[l];
    if (IsTransferCode(panels.code)) continue;
    for (size_t p = 0; p < patterns.size(); ++p) {
      std::ranges::copy(RecordOf(l).activations.Row(static_cast<size_t>(patterns[p])),
                        panels.outputs + p * panels.stride);
    }
  }
}

// Those of the patterns from place `first` of the batch on.
void PackedNetwork::StoreOutputs(std::span<const int32_t> patterns, size_t first) {
  const auto first_row = static_cast<size_t>(patterns.front());
  const bool adjacent = AreAdjacent(patterns);
  for (size_t l = 0; l < m_panels.layer_count; ++l) {
    const kernels::LayerPanels& panels = m_panels.layers[l];
    const float* const outputs = panels.outputs + first * panels.stride;
    Matrix& record = RecordOf(l).activations;
    if (adjacent && panels.stride == panels.nodes) {
      std::copy_n(outputs, patterns.size() * panels.nodes, record.Row(first_row).data());
      continue;
    }
    for (size_t p = 0; p < patterns.size(); ++p) {
      std::copy_n(outputs + p * panels.stride, panels.nodes,
                  record.Row(static_cast<size_t>(patterns[p])).data());
    }
  }
}

// Shares of the batch begin at whole vectors of patterns: rows without gaps then do, too, and no
// share writes into another's. Calls task(part, first pattern, patterns).
template <typename Task>
void PackedNetwork::InParts(const Task& task) {
  const size_t parts = Parts();
  const size_t lanes = m_panels.shape.lanes;
  if (parts == 1 || m_count <= lanes) return task(0, 0, m_count);
  const size_t vectors = (m_count + lanes - 1) / lanes;
  m_workers->Run([&](size_t part) {
    const size_t first = vectors * part / parts * lanes;
    const size_t end = std::min(vectors * (part + 1) / parts * lanes, m_count);
    if (first < end) task(part, first, end - first);
  });
}

size_t PackedNetwork::Parts() const {
  return m_workers != nullptr && m_connections * m_count >= kWorkToShare ? m_workers->parts() : 1;
}

void PackedNetwork::Forward(std::span<const int32_t> patterns) {
  ForwardInParts(patterns, false);
}

void PackedNetwork::ForwardWithDerivatives(std::span<const int32_t> patterns) {
  ForwardInParts(patterns, true);
  m_last = m_count - 1;
}

// A list that names a pattern twice gives two parts of the batch the same row to store: only one
// that ascends is stored by the parts.
void PackedNetwork::ForwardInParts(std::span<const int32_t> patterns, bool derivatives) {
  Begin(patterns);
  const bool distinct =
      std::ranges::adjacent_find(patterns, std::greater_equal()) == patterns.end();
  InParts([&](size_t part, size_t first, size_t count) {
    kernels::Forward(m_panels, first, count, derivatives, m_nets_of_part[part]);
    if (distinct) StoreOutputs(patterns.subspan(first, count), first);
  });
  if (!distinct) StoreOutputs(patterns, 0);
}

void PackedNetwork::Backpropagate() {
  InParts([&](size_t, size_t first, size_t count) {
    kernels::Deltas(m_panels, m_network.FastProp, m_first + first, count);
  });
  m_last_deltas = m_first + m_count - 1;
}

void PackedNetwork::AddGradients(bool begins) {
  GradientsInParts({begins, false, {}});
}

void PackedNetwork::AddGradientsAndUpdate(bool begins) {
  GradientsInParts({begins, true, {m_network.Alpha, m_network.Eta}});
}

void PackedNetwork::GradientsInParts(const kernels::GroupStep& group) {
  const size_t parts = Parts();
  if (parts == 1) return kernels::Gradients(m_panels, m_first, m_count, group, {});
  m_workers->Run([&](size_t part) {
    kernels::Gradients(m_panels, m_first, m_count, group, {part, parts});
  });
}

void PackedNetwork::UpdateAndForward(std::span<const int32_t> next_patterns) {
  const kernels::PreviousPattern previous = {m_input_rows[m_first], m_first};
  Begin(next_patterns);
  kernels::UpdateAndForward(m_panels, m_count, previous, {m_network.Alpha, m_network.Eta},
                            m_network.FastProp, m_descending);
  StoreOutputs(next_patterns, 0);
  if (m_count % 2 != 0) m_descending = !m_descending;
  m_first = m_last = m_count - 1;
  m_count = 1;
  if (m_first > 0) m_last_deltas = m_first - 1;
}

}  // namespace tarn
