#include "netfile/connections_section.h"

#include <algorithm>
#include <array>
#include <functional>

#include "base/paths.h"
#include "base/text_numbers.h"
#include "base/text_reader.h"
#include "netfile/find_section.h"
#include "netfile/messages.h"

namespace tarn {
namespace {

constexpr std::string_view kSection = "CONNECTIONS:";

int32_t Nodes(const Network& network, int32_t layer) {
  return network.layers[static_cast<size_t>(layer)].nUnits;
}

bool Exists(const Network& network, int32_t layer, RemovedConnection connection) {
  return layer >= 1 && layer < network.nLayers && connection.node >= 0 &&
         connection.node < Nodes(network, layer) && connection.source >= 0 &&
         connection.source < Nodes(network, layer - 1);
}

void Remove(Network& network, int32_t layer, RemovedConnection connection) {
  Layer& receiving = network.layers[static_cast<size_t>(layer)];
  const auto source = static_cast<size_t>(connection.source);
  receiving.masks.Row(static_cast<size_t>(connection.node))[source] = 0.0F;
  receiving.weights.Row(static_cast<size_t>(connection.node))[source] = 0.0F;
  network.fully_connected = false;
}

enum class Pending { kWhole, kShort, kUnreadable };

// Hands the removed connections of a pending connection file over, as far as it goes.
Pending ReadPendingFile(FileLayer::Handle file, const Network& network, int32_t layer,
                        const std::function<void(RemovedConnection)>& removed) {
  const int64_t sources = std::max(Nodes(network, layer - 1), 0);
  const int64_t wanted = sources * std::max(Nodes(network, layer), 0);
  std::array<int32_t, 4096> block{};
  size_t held = 0;  // bytes of the block
  for (int64_t next = 0; next < wanted;) {
    const auto most = std::min<int64_t>(wanted - next, int64_t{block.size()});
    const size_t room = static_cast<size_t>(most) * sizeof(int32_t) - held;
    const int64_t count = Files().Read(file, reinterpret_cast<char*>(block.data()) + held, room);
    if (count <= 0) return count < 0 ? Pending::kUnreadable : Pending::kShort;
    held += static_cast<size_t>(count);
    const size_t whole = held / sizeof(int32_t);
    for (size_t i = 0; i < whole; ++i, ++next) {
      if (block[i] >= 1) continue;
      removed({static_cast<int32_t>(next / sources), static_cast<int32_t>(next % sources)});
    }
    // The rest of a number that a read has cut in two.
    held %= sizeof(int32_t);
    if (held > 0) block[0] = block[whole];
  }
  return Pending::kWhole;
}

bool ReadSection(Network& network) {
  TextReader file;
  file.Open(network.file_name);
  if (FindSection(file, kSection) != "READ") return !file.Failed();
  int32_t count = 0;
  if (!file.ScanInt(count)) return false;
  for (int32_t i = 0; i < count; ++i) {
    int32_t layer = 0;
    RemovedConnection connection;
    if (!file.ScanInt(layer) || !file.ScanInt(connection.node) ||
        !file.ScanInt(connection.source) || !Exists(network, layer, connection)) {
      return false;
    }
    Remove(network, layer, connection);
  }
  return true;
}

bool IsListed(const std::string& folder, const std::string& path) {
  const std::vector<std::string> names = Files().NamesIn(folder);
  return std::ranges::any_of(
      names, [&](const std::string& name) { return JoinPath(folder, name) == path; });
}

bool ReadPendingFiles(Network& network, const std::string& scratch_folder) {
  for (int32_t layer = 1; layer < network.nLayers; ++layer) {
    if (!network.connections_edited[static_cast<size_t>(layer)]) continue;
    const std::string path = ConnectionFilePath(scratch_folder, layer);
    const FileLayer::Handle file = Files().Open(path, FileLayer::Mode::kRead);
    if (file == FileLayer::kNoFile && IsListed(scratch_folder, path)) return false;
    if (file == FileLayer::kNoFile) continue;
    // The file replaces what the section said of this layer.
    std::ranges::fill(network.layers[static_cast<size_t>(layer)].masks.All(), 1.0F);
    const Pending read = ReadPendingFile(file, network, layer, [&](RemovedConnection connection) {
      Remove(network, layer, connection);
    });
    Files().Close(file);
    Files().Remove(path);
    if (read != Pending::kWhole) return false;
  }
  return true;
}

// The section's removed connections into one layer, rising; false when the file cannot be read.
bool FindStored(const Network& network, int32_t layer, std::vector<RemovedConnection>& removed) {
  if (network.file_name.empty()) return true;
  TextReader file;
  if (!file.Open(network.file_name)) return false;
  if (FindSection(file, kSection) != "READ") return !file.Failed();
  TextReader::Line line;
  int32_t count = 0;
  if (!file.ReadLine(kSectionLineLimit, line) || ScanInts(line.text, count) != 1) {
    return !file.Failed();
  }
  for (int32_t i = 0; i < count && file.ReadLine(kSectionLineLimit, line); ++i) {
    int32_t receiving = 0;
    RemovedConnection connection;
    if (ScanInts(line.text, receiving, connection.node, connection.source) != 3) break;
    if (receiving == layer && Exists(network, layer, connection)) removed.push_back(connection);
  }
  std::ranges::sort(removed);
  removed.erase(std::unique(removed.begin(), removed.end()), removed.end());
  return !file.Failed();
}

}  // namespace

std::string ConnectionFilePath(const std::string& scratch_folder, int32_t layer) {
  return JoinPath(scratch_folder, fmt::sprintf("~tarn%d.cnx", layer));
}

Status ReadConnections(Network& network, const std::string& scratch_folder) {
  ConnectFully(network);
  if (ReadSection(network) && ReadPendingFiles(network, scratch_folder)) return {};
  ConnectFully(network);
  return Status::Failure(kConnectionsFallback);
}

bool WriteConnections(OutputFile& file, const Network& network) {
  int32_t count = 0;
  for (const Layer& layer : network.layers) {
    count += static_cast<int32_t>(std::ranges::count(layer.masks.All(), 0.0F));
  }
  if (count == 0) return file.Write("CONNECTIONS:FULL\n");
  file.Printf("CONNECTIONS:READ\n%d\n", count);
  for (size_t l = 1; l < static_cast<size_t>(network.nLayers); ++l) {
    const Matrix& masks = network.layers[l].masks;
    for (size_t j = 0; j < masks.rows(); ++j) {
      for (size_t k = 0; k < masks.columns(); ++k) {
        if (masks.Row(j)[k] == 0.0F) file.Printf("%d %d %d\n", l, j, k);
      }
    }
  }
  return file.Write("CONNECTIONS:STOP\n");
}

bool FindRemovedConnections(const Network& network, int32_t layer,
                            const std::string& scratch_folder,
                            std::vector<RemovedConnection>& removed) {
  removed.clear();
  if (layer < 1 || layer >= std::min(network.nLayers, kMaxLayers)) return true;
  if (!network.connections_edited[static_cast<size_t>(layer)]) {
    return FindStored(network, layer, removed);
  }
  const std::string path = ConnectionFilePath(scratch_folder, layer);
  const FileLayer::Handle file = Files().Open(path, FileLayer::Mode::kRead);
  if (file == FileLayer::kNoFile) {
    return !IsListed(scratch_folder, path) && FindStored(network, layer, removed);
  }
  const Pending read = ReadPendingFile(
      file, network, layer, [&](RemovedConnection connection) { removed.push_back(connection); });
  Files().Close(file);
  return read != Pending::kUnreadable;
}

std::vector<RemovedConnection> RemovedConnections(const Network& network, int32_t layer,
                                                  const std::string& scratch_folder) {
  std::vector<RemovedConnection> removed;
  (void)FindRemovedConnections(network, layer, scratch_folder, removed);
  return removed;
}

}  // namespace tarn
