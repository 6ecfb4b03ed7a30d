#include "engine/monitors.h"

#include <cmath>
#include <type_traits>

namespace tarn {

namespace {

template <bool kWithHits, typename Sum>
inline void AddPattern(MonitorSums<Sum>& sums, const float* targets, const float* outputs,
                       size_t count, float tolerance) {
  for (size_t j = 0; j < count; ++j) {
    const float error = targets[j] - outputs[j];
    if constexpr (kWithHits) sums.hits += std::fabs(error) < tolerance ? 1 : 0;
    sums.squared_error += error * error;
    const Sum out = outputs[j];
    const Sum wanted = targets[j];
    sums.output_target += out * wanted;
    sums.output += out;
    sums.target += wanted;
    sums.output_squared += out * out;
    sums.target_squared += wanted * wanted;
  }
}

}  // namespace

template <typename Sum>
void MonitorSums<Sum>::Add(std::span<const float> targets, std::span<const float> outputs,
                           float tolerance) {
  AddPattern<true>(*this, targets.data(), outputs.data(), outputs.size(), tolerance);
}

template <typename Sum>
void MonitorSums<Sum>::AddRows(const Matrix& targets, const Matrix& outputs,
                               std::span<const int32_t> rows, float tolerance) {
  // The sums stay in registers: through memory, each step would wait for the store before it.
  MonitorSums sums = *this;
  const size_t columns = outputs.columns();
  const float* const wanted = targets.All().data();
  const float* const given = outputs.All().data();
  const auto add = [&](auto with_hits) {
    for (const int32_t row : rows) {
      const size_t at = static_cast<size_t>(row) * columns;
      AddPattern<with_hits()>(sums, wanted + at, given + at, columns, tolerance);
    }
  };
  if (tolerance > 0) {
    add(std::true_type());
  } else {
    add(std::false_type());
  }
  *this = sums;
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
