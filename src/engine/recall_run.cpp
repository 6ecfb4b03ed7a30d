#include "engine/recall_run.h"

#include <cstdint>

#include "engine/forward.h"

namespace tarn {
namespace {

constexpr int32_t kIterationAfterRecall = 5;

}  // namespace

void RunRecall(Network& network) {
  for (int32_t p = 0; p < network.nPats; ++p) Forward(network, p);
  network.iteration = kIterationAfterRecall;
  network.rms_test = 0.0F;
  network.correlation_test = 0.0F;
  network.results_ready = true;
}

}  // namespace tarn
