#include "engine/packed_network.h"

#include <algorithm>
#include <new>

namespace tarn {
namespace {

// Patterns of a batch: enough to use a weight many times once it is in a register, few enough
// that what belongs to them stays in the cache.
constexpr size_t kPatternsOfBatch = 64;

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

}  // namespace

PackedNetwork::PackedNetwork(Network& network, Use use) : m_network(network), m_use(use) {
  m_batch = std::clamp<size_t>(static_cast<size_t>(std::max(network.nPats, 1)), 1,
                               kPatternsOfBatch);
  m_panels.shape = kernels::CurrentShape();
  m_panels.layer_count = static_cast<size_t>(network.nLayers) - 1;
  m_input_rows.resize(m_batch);
  m_target_rows.resize(m_batch);
  m_panels.targets = m_target_rows.data();
  size_t widest = 0;
  for (size_t l = 0; l < m_panels.layer_count; ++l) {
    Allocate(l);
    if (use == Use::kTraining) AllocateForTraining(l);
    widest = std::max(widest, m_panels.layers[l].padded_nodes);
  }
  m_nets = AlignedZeros(m_batch * widest + m_panels.shape.panel_nodes);
  m_panels.nets = m_nets.get();
  Pack();
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
  m_count = m_last = m_last_deltas = 0;
  for (size_t l = 0; l < m_panels.layer_count; ++l) {
    const Layer& layer = RecordOf(l);
    kernels::LayerPanels& panels = m_panels.layers[l];
    FillPanels(m_panels.shape, layer.weights, panels.weights);
    if (m_use == Use::kForward) continue;
    FillPanels(m_panels.shape, layer.weight_changes, panels.changes);
    LayerMemory& memory = m_memory[l];
    if (m_network.fully_connected) {
      panels.masks = nullptr;
    } else {
      if (memory.masks == nullptr) {
        memory.masks = AlignedZeros((panels.sources + 1) * panels.padded_nodes);
      }
      FillPanels(m_panels.shape, MasksWithBias(layer.masks), memory.masks.get());
      panels.masks = memory.masks.get();
    }
    // Every place of the batch: a layer without a known transfer function keeps them.
    for (size_t p = 0; p < m_batch; ++p) {
      std::ranges::copy(layer.derivatives, panels.derivatives + p * panels.stride);
    }
    std::ranges::copy(layer.deltas, panels.deltas);
    for (size_t j = 0; panels.transposed != nullptr && j < panels.nodes; ++j) {
      std::copy_n(layer.weights.Row(j).data(), panels.sources,
                  panels.transposed + j * panels.padded_sources);
    }
  }
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

void PackedNetwork::StoreOutputs(std::span<const int32_t> patterns) {
  const auto first = static_cast<size_t>(patterns.front());
  // Lists ascend: then nothing is left out between them.
  const bool adjacent = static_cast<size_t>(patterns.back()) - first == patterns.size() - 1;
  for (size_t l = 0; l < m_panels.layer_count; ++l) {
    const kernels::LayerPanels& panels = m_panels.layers[l];
    Matrix& record = RecordOf(l).activations;
    if (adjacent && panels.stride == panels.nodes) {
      std::copy_n(panels.outputs, patterns.size() * panels.nodes, record.Row(first).data());
      continue;
    }
    for (size_t p = 0; p < patterns.size(); ++p) {
      std::copy_n(panels.outputs + p * panels.stride, panels.nodes,
                  record.Row(static_cast<size_t>(patterns[p])).data());
    }
  }
}

void PackedNetwork::Forward(std::span<const int32_t> patterns) {
  Begin(patterns);
  kernels::Forward(m_panels, 0, m_count, false, m_panels.nets);
  StoreOutputs(patterns);
}

void PackedNetwork::ForwardWithDerivatives(std::span<const int32_t> patterns) {
  Begin(patterns);
  kernels::Forward(m_panels, 0, m_count, true, m_panels.nets);
  StoreOutputs(patterns);
  m_last = m_count - 1;
}

void PackedNetwork::Backpropagate() {
  kernels::Deltas(m_panels, m_network.FastProp, 0, m_count);
  m_last_deltas = m_count - 1;
}

kernels::GroupStep PackedNetwork::Step(bool begins, bool ends) const {
  return {begins, ends, {m_network.Alpha, m_network.Eta}};
}

void PackedNetwork::AddGradients(bool begins) {
  kernels::Gradients(m_panels, m_count, Step(begins, false), {});
}

void PackedNetwork::AddGradientsAndUpdate(bool begins) {
  kernels::Gradients(m_panels, m_count, Step(begins, true), {});
}

void PackedNetwork::Update() {
  kernels::Gradients(m_panels, 0, Step(false, true), {});
}

void PackedNetwork::UpdateAndForward(int32_t next_pattern) {
  const float* const previous_input = m_input_rows[0];
  const std::span next(&next_pattern, 1);
  Begin(next);
  kernels::UpdateAndForward(m_panels, previous_input, {m_network.Alpha, m_network.Eta},
                            m_descending);
  StoreOutputs(next);
  m_descending = !m_descending;
  m_last = 0;
}

}  // namespace tarn
