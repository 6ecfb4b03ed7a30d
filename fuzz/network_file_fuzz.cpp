#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "bounded_run.h"
#include "netfile/connections_section.h"
#include "netfile/header.h"
#include "network_checks.h"

// The input is a network file. Whatever it holds: nothing crashes, a header that cannot be read
// leaves a record that can be used for another file, and a network that can be read is the same
// after it was written and read again, as far as the digits of the file carry it.

namespace tarn::fuzz {
namespace {

const std::string kInput = "/fuzz/input.net";

// The end of the input as the pending connection file of the second layer.
void AddPendingConnections(FuzzFiles& files, Network& network, std::string_view bytes) {
  if (bytes.size() % 2 == 0) return;
  constexpr size_t kMost = 64;
  files.Put(ConnectionFilePath(kScratch, 1),
            bytes.substr(bytes.size() - std::min(bytes.size(), kMost)));
  network.connections_edited[1] = true;
}

}  // namespace

const Bounds kBounds = {{1 << 20, 64}, {1 << 20, 64}, {1 << 20, 64}};

void Run(FuzzFiles& files, std::string_view bytes) {
  files.Put(kInput, bytes);
  Network network;
  std::string path = kInput;
  (void)CheckNetworkFile(path, network);
  network.file_name = kInput;
  if (!ReadHeader(network).ok()) {
    RequireUsable(network);
  } else {
    if (IsSample(bytes, 16)) TrySetupSave(network, files.Get(kInput));
    if (IsSmall(network)) {
      AddPendingConnections(files, network, bytes);
      for (const RemovedConnection& removed : RemovedConnections(network, 1, kScratch)) {
        Require(removed.node >= 0 && removed.source >= 0, "removed connections exist");
      }
      ReadSections(network);
      if (IsSample(bytes, 8)) WriteAndRead(network);
    }
  }
  Require(files.Get(kInput) == bytes, "the file that was read is as it was");
}

std::span<const std::string_view> Words() {
  static constexpr std::array<std::string_view, 22> kWords = {"TARNV2.1",
                                                              "TARNV2.0",
                                                              "TARNV1.5",
                                                              "TARNV1.0",
                                                              "NO NAME",
                                                              "3",
                                                              "2 2 1 0 0",
                                                              "0.0 0.01 0.001 0.3 0.8 0.5",
                                                              "10000",
                                                              "100 5",
                                                              "500 0",
                                                              "none",
                                                              "1 1",
                                                              "3 2",
                                                              "WEIGHTS:RANDOM",
                                                              "WEIGHTS:READ",
                                                              "WEIGHTS:STOP",
                                                              "CONNECTIONS:READ",
                                                              "CONNECTIONS:STOP",
                                                              "TESTPATTERNS:READ",
                                                              "TESTPATTERNS:STOP",
                                                              "NORMALIZE:READ\nINPUTS\n"};
  return kWords;
}

}  // namespace tarn::fuzz
