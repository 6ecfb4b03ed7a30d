#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "base/status.h"
#include "engine/network.h"

namespace tarn {

// A list box holds so many connections of a pair of layers; each costs it some 400 bytes.
inline constexpr int64_t kMostListedConnections = 4'000'000;

// The connection editor (`NetConnectDlg`) without its window: which connections between two
// adjacent layers exist, as two lists that every connection is in one of.
class ConnectionsDraft {
 public:
  enum class List { kInNetwork, kRemoved };

  // The connections into `receiving_layer`, 1..9, of the design, whose edit marks tell whether a
  // pending connection file holds. The design is not owned.
  ConnectionsDraft(const Network& design, int32_t receiving_layer, std::string scratch_folder);

  std::string Caption() const;

  // Takes up what was removed before. What cannot be read leaves the connections in place; a
  // failure means that memory is short.
  Status Load();

  // The lists are in the order of the receiving nodes, then of the sending nodes.
  size_t Count(List list) const;
  void ForEachText(List list, const std::function<void(const std::string&)>& show) const;

  // Moves connections between the lists. The selection are places in the list that they are in,
  // from 0 and rising; false when it is empty and nothing happens.
  bool Remove(std::span<const int> selection) { return Move(List::kInNetwork, selection); }
  bool Add(std::span<const int> selection) { return Move(List::kRemoved, selection); }
  bool modified() const { return m_modified; }

  // Writes the connections into the pending connection file and sets `edited`, when something was
  // moved. After a failure the file and the mark are as they were.
  Status Save(bool& edited) const;

 private:
  bool Move(List from, std::span<const int> selection);
  size_t Nodes(int32_t layer) const;
  bool WriteMask() const;

  const Network& m_design;
  const int32_t m_layer;
  const std::string m_scratch_folder;
  std::vector<int32_t> m_mask;  // receiving nodes x sending nodes: 1 exists, 0 is removed
  bool m_modified = false;
};

}  // namespace tarn
