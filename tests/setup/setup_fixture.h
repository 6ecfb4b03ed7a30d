#pragma once

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "base/paths.h"
#include "base/status.h"
#include "base/temp_file.h"
#include "engine/network.h"

namespace tarn {

// A network as the new-network template describes it, with these node counts.
inline Network MakeNetwork(std::initializer_list<int32_t> nodes) {
  Network network;
  network.NetName = "NO NAME";
  network.nLayers = static_cast<int32_t>(nodes.size());
  size_t l = 0;
  for (const int32_t count : nodes) network.layers[l++].nUnits = count;
  network.Eta = 0.01F;
  network.EtaMin = 0.001F;
  network.EtaMax = 0.3F;
  network.Alpha = 0.8F;
  network.MaxIterations = 10000;
  network.LRC = 100;
  network.UpdateRate = 5;
  network.SaveRate = 500;
  network.PatName = "none";
  network.TargName = "none";
  network.pat_norm = 1;
  network.targ_norm = 1;
  return network;
}

inline std::vector<std::string> TextsOf(const std::vector<Message>& messages) {
  std::vector<std::string> texts;
  for (const Message& message : messages) texts.push_back(message.text);
  return texts;
}

// A folder of its own, removed with all its files.
class SetupFiles {
 public:
  std::string Make(std::string_view name, std::string_view text = "1 2 3\n") const {
    const std::string path = Missing(name);
    std::ofstream(NativePath(path), std::ios::binary) << text;
    return path;
  }
  // The path of a file that is not made.
  std::string Missing(std::string_view name) const { return JoinPath(m_folder.path(), name); }

 private:
  ScratchFolder m_folder;
};

}  // namespace tarn
