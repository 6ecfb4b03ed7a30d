#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "bounded_run.h"
#include "netfile/connections_section.h"
#include "netfile/header.h"
#include "network_checks.h"

// The input is what stands behind a sound header: the sections, so that changes reach them. Its
// first character chooses the header. Behind a line "=====" stands the pending connection file of
// the second layer, behind another one that of the third.
//
// Nothing crashes, a section that cannot be read leaves its whole fallback, and sections that were
// read are the same after they were written and read again.

namespace tarn::fuzz {
namespace {

const std::string kInput = "/fuzz/input.net";
constexpr std::string_view kDivider = "=====\n";

// 3-2-2 nodes in the current version and in the oldest, 1-4-3-1 nodes; normalized or not, with each
// way to choose the test set.
constexpr std::array<std::string_view, 4> kHeaders = {
    "TARNV2.1\nA\n3\n3 2 2 0 1\n0 0.1 0.01 0.3 0.8 0.5\n9\n1 5\n5 0\nin\n1\n1 1\nt\n4\n3 2\n",
    "TARNV2.1\nB\n4\n1 4 3 1 0 2 3\n0 0.1 0.01 0.3 0.8\n9\n1\n5 2\nin\n1\n0 1\nt\n4\n3 4\n",
    "TARNV2.0\nC\n3\n3 2 2 0 1\n0 0.1 0.01 0.3 0.8\n9\n1 5\n5 0\nin\n1\n1 0\nt\n4\n1 3\n",
    "TARNV1.0\nD\n3\n3 2 2\n0 0.1 0.01 0.3 0.8\n9\n1\n5\nin\n1\n0 0\nt\n4\n5 7\n"};

// What stands before the next divider; `rest` is behind it.
std::string_view TakePart(std::string_view& rest) {
  const size_t divider = rest.find(kDivider);
  const std::string_view part = rest.substr(0, divider);
  rest.remove_prefix(divider == std::string_view::npos ? rest.size() : divider + kDivider.size());
  return part;
}

void CheckRemoved(const Network& network, int32_t layer) {
  const std::vector<RemovedConnection> removed = RemovedConnections(network, layer, kScratch);
  Require(std::ranges::is_sorted(removed), "removed connections rise");
  for (const RemovedConnection& connection : removed) {
    Require(connection.node >= 0 && connection.source >= 0 &&
                connection.node < network.layers[static_cast<size_t>(layer)].nUnits &&
                connection.source < network.layers[static_cast<size_t>(layer - 1)].nUnits,
            "removed connections exist");
  }
}

}  // namespace

const Bounds kBounds = {{1 << 20, 64}, {1 << 20, 64}, {1 << 20, 64}};

void Run(FuzzFiles& files, std::string_view input) {
  if (input.empty()) return;
  const size_t kind = static_cast<unsigned char>(input[0]) % kHeaders.size();
  std::string_view rest = input.substr(1);
  const std::string bytes = std::string(kHeaders[kind]).append(TakePart(rest));
  files.Put(kInput, bytes);
  Network network;
  network.file_name = kInput;
  Require(ReadHeader(network).ok(), "the header is sound");
  for (int32_t layer = 1; layer <= 2 && !rest.empty(); ++layer) {
    files.Put(ConnectionFilePath(kScratch, layer), TakePart(rest));
    network.connections_edited[static_cast<size_t>(layer)] = true;
  }
  CheckRemoved(network, 1);
  CheckRemoved(network, 2);
  if (IsSample(input, 16)) TrySetupSave(network, files.Get(kInput));
  const size_t count = files.Count();
  ReadSections(network);
  Require(files.Count() <= count, "nothing is left behind");
  if (IsSample(input, 8)) WriteAndRead(network);
  Require(files.Get(kInput) == bytes, "the file that was read is as it was");
}

std::span<const std::string_view> Words() {
  static constexpr std::array<std::string_view, 25> kWords = {
      "WEIGHTS:RANDOM",
      "WEIGHTS:READ",
      "WEIGHTS:STOP",
      "WEIGHTS:READ\n1 2 3 4 5 6 7 8\n9 10 11 12 13 14\nWEIGHTS:STOP",
      "0.1 0.2 0.3 ",
      "-20000",
      "RANDOM",
      "CONNECTIONS:FULL",
      "CONNECTIONS:READ",
      "CONNECTIONS:STOP",
      "1 0 1",
      "2 1 1",
      "CONNECTIONS:READ\n1\n1 1 0",
      "TESTPATTERNS:COMPUTE",
      "TESTPATTERNS:READ",
      "TESTPATTERNS:STOP",
      "7 5 2",
      "0 1 3 4 6",
      "2 5",
      "NORMALIZE:NONE",
      "NORMALIZE:READ",
      "INPUTS",
      "OUTPUTS",
      "NORMALIZE:STOP",
      "====="};
  return kWords;
}

}  // namespace tarn::fuzz
