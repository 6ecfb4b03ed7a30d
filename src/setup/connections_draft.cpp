#include "setup/connections_draft.h"

#include <algorithm>
#include <fmt/printf.h>
#include <new>
#include <string_view>
#include <utility>

#include "base/output_file.h"
#include "netfile/connections_section.h"
#include "setup/messages.h"

namespace tarn {
namespace {

constexpr int32_t MaskOf(ConnectionsDraft::List list) {
  return list == ConnectionsDraft::List::kInNetwork ? 1 : 0;
}

}  // namespace

ConnectionsDraft::ConnectionsDraft(const Network& design, int32_t receiving_layer,
                                   std::string scratch_folder)
    : m_design(design), m_layer(receiving_layer), m_scratch_folder(std::move(scratch_folder)) {}

std::string ConnectionsDraft::Caption() const {
  return fmt::sprintf(kConnectionEditorCaption.data(), m_layer, m_layer + 1);
}

size_t ConnectionsDraft::Nodes(int32_t layer) const {
  return static_cast<size_t>(std::max(m_design.layers[static_cast<size_t>(layer)].nUnits, 0));
}

Status ConnectionsDraft::Load() {
  if (m_layer < 1 || m_layer >= std::min(m_design.nLayers, kMaxLayers)) return {};
  const size_t sources = Nodes(m_layer - 1);
  const size_t connections = Nodes(m_layer) * sources;
  if (connections > size_t{kMostListedConnections}) {
    return Status::Failure(kConnectionsMemory);
  }
  try {
    m_mask.assign(connections, 1);
    for (const RemovedConnection removed :
         RemovedConnections(m_design, m_layer, m_scratch_folder)) {
      m_mask[static_cast<size_t>(removed.node) * sources + static_cast<size_t>(removed.source)] = 0;
    }
  } catch (const std::bad_alloc&) {
    return Status::Failure(kConnectionsMemory);
  }
  return {};
}

size_t ConnectionsDraft::Count(List list) const {
  return static_cast<size_t>(std::ranges::count(m_mask, MaskOf(list)));
}

void ConnectionsDraft::ForEachText(List list,
                                   const std::function<void(const std::string&)>& show) const {
  const size_t sources = m_mask.empty() ? 1 : Nodes(m_layer - 1);
  for (size_t i = 0; i < m_mask.size(); ++i) {
    if (m_mask[i] != MaskOf(list)) continue;
    show(fmt::sprintf(kConnectionText.data(), m_layer, i % sources + 1, m_layer + 1,
                      i / sources + 1));
  }
}

bool ConnectionsDraft::Move(List from, std::span<const int> selection) {
  if (selection.empty()) return false;
  auto selected = selection.begin();
  int place = 0;
  for (int32_t& mask : m_mask) {
    if (mask != MaskOf(from)) continue;
    if (place++ != *selected) continue;
    mask = 1 - mask;
    m_modified = true;
    if (++selected == selection.end()) break;
  }
  return true;
}

Status ConnectionsDraft::Save(bool& edited) const {
  if (!m_modified) return {};
  if (!WriteMask()) return Status::Failure(kConnectionsNotKept);
  edited = true;
  return {};
}

bool ConnectionsDraft::WriteMask() const {
  OutputFile file;
  const std::string path = ConnectionFilePath(m_scratch_folder, m_layer);
  if (!file.OpenReplacing(path, OutputFile::Content::kBytes)) return false;
  const std::span<const int32_t> mask(m_mask);
  const size_t sources = Nodes(m_layer - 1);
  for (size_t node = 0; node < Nodes(m_layer); ++node) {
    const auto row = std::as_bytes(mask.subspan(node * sources, sources));
    file.Write({reinterpret_cast<const char*>(row.data()), row.size()});
  }
  return file.Commit();
}

}  // namespace tarn
