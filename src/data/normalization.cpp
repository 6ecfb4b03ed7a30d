#include "data/normalization.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "base/text_reader.h"
#include "data/messages.h"
#include "netfile/find_section.h"

namespace tarn {
namespace {

static_assert(std::numeric_limits<long double>::digits >= 64,
              "scaled data need 64 mantissa bits to be the same on every machine");

// The bands differ a little between inputs and targets: the former are scaled by constants of
// single precision.
struct Band {
  long double factor;
  long double offset;
};
constexpr Band kInputBand = {0.70000005F, 0.15F};
constexpr Band kTargetBand = {0.7, 0.15};
constexpr long double kInverseFactor = 10.0L / 7.0L;

// Where the search for the smallest and the largest value begins.
constexpr float kAboveData = 1e30F;
constexpr float kBelowData = -1e30F;

void WidenConstant(float lower, float& upper) {
  if (upper != lower) return;
  const float next = upper + 1.0F;
  upper = next > upper ? next : std::nextafter(upper, std::numeric_limits<float>::infinity());
}

void MeasureLimits(const Matrix& data, Limits& limits) {
  std::ranges::fill(limits.lower, kAboveData);
  std::ranges::fill(limits.upper, kBelowData);
  for (size_t p = 0; p < data.rows(); ++p) {
    const std::span<const float> row = data.Row(p);
    for (size_t i = 0; i < row.size(); ++i) {
      if (row[i] < limits.lower[i]) limits.lower[i] = row[i];
      if (row[i] > limits.upper[i]) limits.upper[i] = row[i];
    }
  }
  for (size_t i = 0; i < limits.lower.size(); ++i) WidenConstant(limits.lower[i], limits.upper[i]);
}

void Scale(Matrix& data, const Limits& limits, const Band& band) {
  for (size_t p = 0; p < data.rows(); ++p) {
    const std::span<float> row = data.Row(p);
    for (size_t i = 0; i < row.size(); ++i) {
      const long double lower = limits.lower[i];
      row[i] = static_cast<float>((row[i] - lower) / (limits.upper[i] - lower) * band.factor +
                                  band.offset);
    }
  }
}

bool InRange(std::span<const float> values) {
  return std::ranges::none_of(values, [](float v) { return v > 1.0F || v < 0.0F; });
}

enum class RangeFault { kNone, kInput, kTarget };

// The first pattern with a value outside 0..1 decides, its inputs before its targets.
RangeFault CheckRange(const Network& network) {
  const Matrix& inputs = network.layers[0].activations;
  for (size_t p = 0; p < inputs.rows(); ++p) {
    if (!InRange(inputs.Row(p))) return RangeFault::kInput;
    if (!InRange(network.targets.Row(p))) return RangeFault::kTarget;
  }
  return RangeFault::kNone;
}

void NormalizeTraining(Network& network) {
  const auto scale_inputs = [&network] {
    if (network.pat_norm == 0) return;
    MeasureLimits(network.layers[0].activations, network.input_limits);
    Scale(network.layers[0].activations, network.input_limits, kInputBand);
  };
  const auto scale_targets = [&network] {
    if (network.targ_norm == 0) return;
    MeasureLimits(network.targets, network.target_limits);
    Scale(network.targets, network.target_limits, kTargetBand);
  };
  scale_inputs();
  scale_targets();
  RangeFault fault = CheckRange(network);
  while (fault != RangeFault::kNone) {
    if (fault == RangeFault::kInput) {
      network.pat_norm = 1;
      scale_inputs();
    } else {
      network.targ_norm = 1;
    }
    // Also behind newly scaled inputs: targets scaled before are measured and scaled anew.
    scale_targets();
    fault = CheckRange(network);
  }
}

Status NormalizeRecall(Network& network) {
  if (network.pat_norm != 0) {
    if (Status limits = ReadInputLimits(network); !limits.ok()) return limits;
    Scale(network.layers[0].activations, network.input_limits, kInputBand);
  }
  if (network.targ_norm != 0) {
    if (Status limits = ReadTargetLimits(network); !limits.ok()) return limits;
    if (network.RecallTargets) Scale(network.targets, network.target_limits, kTargetBand);
  }
  return {};
}

bool FindBlock(TextReader& file, std::string_view heading) {
  TextReader::Line line;
  while (file.ReadLine(kSectionLineLimit, line)) {
    if (line.text.starts_with(heading)) return true;
  }
  return false;
}

// `values` grow with what the file holds, not with what the network asks for.
bool ReadValues(TextReader& file, int32_t count, std::vector<float>& values) {
  for (int32_t i = 0; i < count; ++i) {
    float value = 0;
    if (!file.ScanFloat(value)) return false;
    values.push_back(value);
  }
  return true;
}

bool ReadLimits(const std::string& path, std::string_view heading, int32_t nodes, Limits& limits) {
  TextReader file;
  Limits read;
  if (!file.Open(path) || FindSection(file, "NORMALIZE:") != "READ" || !FindBlock(file, heading) ||
      !ReadValues(file, nodes, read.lower) || !ReadValues(file, nodes, read.upper)) {
    return false;
  }
  for (size_t i = 0; i < read.lower.size(); ++i) {
    if (!read.Measured(i)) return false;
  }
  limits = std::move(read);
  return true;
}

}  // namespace

Status Normalize(Network& network) {
  if (network.mode == Mode::kRecall) return NormalizeRecall(network);
  NormalizeTraining(network);
  return {};
}

Status ReadInputLimits(Network& network) {
  return ReadLimits(network.file_name, "INPUT", network.layers[0].nUnits, network.input_limits)
             ? Status()
             : Status::Failure(kInputLimitsBad);
}

Status ReadTargetLimits(Network& network) {
  return ReadLimits(network.file_name, "OUTPU", OutputLayer(network).nUnits, network.target_limits)
             ? Status()
             : Status::Failure(kTargetLimitsBad);
}

float ToDataUnits(float value, float lower, float upper) {
  const long double offset = kTargetBand.offset;
  const long double range = static_cast<long double>(upper) - lower;
  return static_cast<float>((value - offset) * kInverseFactor * range + lower);
}

OutputScale::OutputScale(const Network& network, size_t node)
    : m_scaled(network.targ_norm != 0),
      m_lower(network.target_limits.lower[node]),
      m_upper(network.target_limits.upper[node]) {}

float InputToDataUnits(const Network& network, size_t node, float value) {
  if (network.pat_norm == 0) return value;
  return ToDataUnits(value, network.input_limits.lower[node], network.input_limits.upper[node]);
}

}  // namespace tarn
