#include "engine/monitors.h"

#include <cmath>

namespace tarn {

template <typename Sum>
void MonitorSums<Sum>::Add(std::span<const float> targets, std::span<const float> outputs,
                           float tolerance) {
  for (size_t j = 0; j < outputs.size(); ++j) {
    const float error = targets[j] - outputs[j];
    if (std::fabs(error) < tolerance) ++hits;
    squared_error += error * error;
    const Sum out = outputs[j];
    const Sum wanted = targets[j];
    output_target += out * wanted;
    output += out;
    target += wanted;
    output_squared += out * out;
    target_squared += wanted * wanted;
  }
}

float EffectiveTolerance(const Network& network) {
  constexpr float kBand = 0.7F;  // the width of the normalized range
  if (!(network.Tolerance > 0)) return 0;
  if (network.targ_norm == 0) return network.Tolerance;
  const float range = network.target_limits.upper[0] - network.target_limits.lower[0];
  return kBand / range * network.Tolerance;
}

template <typename Sum>
float Correlation(const MonitorSums<Sum>& sums, int64_t count) {
  const auto n = static_cast<double>(count);
  const double output = sums.output;
  const double target = sums.target;
  const double a = n * sums.output_squared - output * output;
  const double b = n * sums.target_squared - target * target;
  if (!(a > 0) || !(b > 0)) return 0;
  return static_cast<float>((n * sums.output_target - output * target) /
                            (std::sqrt(b) * std::sqrt(a)));
}

float PercentWithin(int64_t hits, int64_t n) {
  return static_cast<float>(static_cast<double>(hits) / static_cast<double>(n) * 100.0);
}

template struct MonitorSums<double>;
template struct MonitorSums<float>;
template float Correlation(const MonitorSums<double>&, int64_t);
template float Correlation(const MonitorSums<float>&, int64_t);

}  // namespace tarn
