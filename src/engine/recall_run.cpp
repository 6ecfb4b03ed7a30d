#include "engine/recall_run.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <new>
#include <numeric>
#include <vector>

#include "engine/packed_network.h"

namespace tarn {
namespace {

constexpr int32_t kIterationAfterRecall = 5;

}  // namespace

Status PropagateAll(Network& network, size_t threads) {
  try {
    PackedNetwork packed(network, PackedNetwork::Use::kForward, threads);
    std::vector<int32_t> patterns(packed.batch());
    const auto all = static_cast<size_t>(std::max(network.nPats, 0));
    for (size_t first = 0; first < all; first += patterns.size()) {
      std::iota(patterns.begin(), patterns.end(), static_cast<int32_t>(first));
      packed.Forward(std::span(patterns).first(std::min(patterns.size(), all - first)));
    }
  } catch (const std::bad_alloc&) {
    return Status::Failure(kOutOfMemory);
  }
  return {};
}

Status RunRecall(Network& network, size_t threads) {
  Status propagated = PropagateAll(network, threads);
  if (!propagated.ok()) return propagated;
  network.iteration = kIterationAfterRecall;
  network.rms_test = 0.0F;
  network.correlation_test = 0.0F;
  network.results_ready = true;
  return propagated;
}

}  // namespace tarn
