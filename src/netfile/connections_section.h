#pragma once

#include <compare>
#include <cstdint>
#include <string>
#include <vector>

#include "base/output_file.h"
#include "base/status.h"
#include "engine/network.h"

// CONNECTIONS, the second section of a network file:
//
//   CONNECTIONS:FULL     or   CONNECTIONS:READ
//                             the number of removed connections
//                             "%d %d %d": layer, node, source node, all from 0, per connection
//                             CONNECTIONS:STOP
//
// An edit of the connections into layer l that is not yet saved waits in the scratch folder as
// "~tarn<l>.cnx": nUnits[l] x nUnits[l-1] 32-bit integers, node after node; below 1 is
// removed. network.connections_edited[l] tells that the file is there.

namespace tarn {

// A removed connection into some layer; ordered as the connection editor lists them.
struct RemovedConnection {
  int32_t node = 0;    // of the receiving layer, from 0
  int32_t source = 0;  // of the layer below, from 0
  auto operator<=>(const RemovedConnection&) const = default;
};

std::string ConnectionFilePath(const std::string& scratch_folder, int32_t layer);

// Sets masks and the fully_connected flag from network.file_name, then from the pending
// connection files, which are deleted; a removed connection gets the weight 0. A failure is a
// notice: the network is fully connected then.
Status ReadConnections(Network& network, const std::string& scratch_folder);

bool WriteConnections(OutputFile& file, const Network& network);

// The removed connections into one layer as the connection editor would show them, rising:
// from the pending connection file when the layer is marked as edited, else from the section
// in network.file_name. Whatever cannot be read leaves the connection in place. Needs no
// arrays, and no more of the record than its file name, its marks and its node counts.
std::vector<RemovedConnection> RemovedConnections(const Network& network, int32_t layer,
                                                  const std::string& scratch_folder);

// The same for one who writes them down: false when a file that is there cannot be read, so
// that a removed connection may be missing from the list.
bool FindRemovedConnections(const Network& network, int32_t layer,
                            const std::string& scratch_folder,
                            std::vector<RemovedConnection>& removed);

}  // namespace tarn
