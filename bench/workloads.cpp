#include "workloads.h"

#include <fmt/format.h>
#include <numeric>
#include <stdexcept>

#include "base/random.h"

namespace tarn::bench {

std::string Workload::Name() const {
  return fmt::format("{}-{}-{}", inputs, hidden, outputs);
}

Network MakeNetwork(const std::vector<int32_t>& nodes, int32_t patterns) {
  Network network;
  network.nLayers = static_cast<int32_t>(nodes.size());
  for (size_t l = 0; l < nodes.size(); ++l) {
    network.layers[l].nUnits = nodes[l];
    network.layers[l].TransFunc = kSigmoid;
  }
  network.nPats = network.nTrain = patterns;
  network.train_list.resize(static_cast<size_t>(patterns));
  std::iota(network.train_list.begin(), network.train_list.end(), 0);
  network.Eta = 1e-5F;
  network.Alpha = 0.5F;
  network.LRC = 1000000000;
  network.UpdateRate = 1000000000;
  if (!AllocateArrays(network).ok()) throw std::runtime_error("no memory for the network");
  InitializeRandomWeights(network, 1);
  Random random(2);
  for (Matrix* matrix : {&network.layers[0].activations, &network.targets}) {
    for (float& value : matrix->All()) {
      value = 0.15F + 0.7F * static_cast<float>(random.Next()) / 32767.0F;
    }
  }
  return network;
}

Network MakeNetwork(const Workload& workload) {
  return MakeNetwork({workload.inputs, workload.hidden, workload.outputs}, workload.patterns);
}

}  // namespace tarn::bench
