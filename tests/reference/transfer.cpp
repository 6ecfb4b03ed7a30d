#include "reference/transfer.h"

#include <cstddef>

#include "engine/network.h"
#include "reference/exponential.h"

namespace tarn::reference {
namespace {

struct NodeResult {
  float y;
  float derivative;
};

NodeResult Sigmoid(float x) {
  const float e = static_cast<float>(Exp(x));
  const float y = 1.0F / (e + 1.0F);
  return {y, (1.0F - y) * y};
}

NodeResult Gaussian(float x) {
  const float square = x * x;
  const float y = static_cast<float>(Exp(-square));
  // x may be so large that x * 2 is infinite.
  return {y, y == 0.0F ? 0.0F : (x * 2.0F) * y};
}

NodeResult ShiftedTanh(float x) {
  const float t = static_cast<float>(Tanh(-x));
  return {(t + 1.0F) * 0.5F, (1.0F - t * t) * 0.5F};
}

float SechOutput(float x) {
  return 1.0F / static_cast<float>(Cosh(x));
}

NodeResult Sech(float x) {
  const float y = SechOutput(x);
  const float s = static_cast<float>(Sinh(-x));
  // s is infinite where y is 0.
  return {y, y == 0.0F ? 0.0F : (-s * y) * y};
}

template <typename Function>
void ForEach(Function function, std::span<const float> negated_net, std::span<float> output,
             std::span<float> derivative) {
  if (derivative.empty()) {
    for (size_t j = 0; j < negated_net.size(); ++j) output[j] = function(negated_net[j]).y;
    return;
  }
  for (size_t j = 0; j < negated_net.size(); ++j) {
    const NodeResult result = function(negated_net[j]);
    output[j] = result.y;
    derivative[j] = result.derivative;
  }
}

}  // namespace

void ApplyTransfer(int32_t code, std::span<const float> negated_net, std::span<float> output,
                   std::span<float> derivative_or_empty) {
  switch (code) {
    case kSigmoid:
      return ForEach(Sigmoid, negated_net, output, derivative_or_empty);
    case kGaussian:
      return ForEach(Gaussian, negated_net, output, derivative_or_empty);
    case kTanh:
      return ForEach(ShiftedTanh, negated_net, output, derivative_or_empty);
    case kSech:
      return ForEach(Sech, negated_net, output, derivative_or_empty);
    default:
      return;
  }
}

}  // namespace tarn::reference
