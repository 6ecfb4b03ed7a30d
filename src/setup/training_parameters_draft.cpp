#include "setup/training_parameters_draft.h"

#include <cstdint>
#include <fmt/printf.h>
#include <string_view>

#include "base/text_numbers.h"
#include "setup/edit_text.h"
#include "setup/messages.h"

namespace tarn {
namespace {

constexpr float kLargestFastProp = 3.0F;

bool IsFastProp(float value) {
  return value >= 0.0F && value <= kLargestFastProp;
}
bool IsMomentum(float value) {
  return value >= 0.0F && value <= 1.0F;
}
bool IsLearnRate(float value) {
  return value > 0.0F && value <= 1.0F;
}
bool IsPositive(int32_t value) {
  return value > 0;
}
bool IsNotNegative(int32_t value) {
  return value >= 0;
}

std::string_view Read(const std::string& field) {
  return EditText(field, kEditLimit);
}

void Convert(const std::string& field, float& value) {
  value = ToFloat(Read(field));
}
void Convert(const std::string& field, int32_t& value) {
  value = ToInt(Read(field));
}

// Stores the field's value in `target` when it is accepted, keeps the old one when the field
// is empty. False when the value is refused.
template <typename Value>
bool Store(const std::string& field, bool (*accepts)(Value), Value& target) {
  if (field.empty()) return true;
  Value value{};
  Convert(field, value);
  if (!accepts(value)) return false;
  target = value;
  return true;
}

template <typename Value>
void EmptyUnless(bool (*accepts)(Value), std::string& field) {
  Value value{};
  if (!Store(field, accepts, value)) field.clear();
}

}  // namespace

void TrainingParametersDraft::Load(const Network& network) {
  max_iterations = fmt::sprintf("%d", network.MaxIterations);
  lrc_start = fmt::sprintf("%d", network.LRC);
  autosave_rate = fmt::sprintf("%d", network.SaveRate);
  update_rate = fmt::sprintf("%d", network.UpdateRate);
  eta = fmt::sprintf("%f", network.Eta);
  eta_min = fmt::sprintf("%f", network.EtaMin);
  eta_max = fmt::sprintf("%f", network.EtaMax);
  momentum = fmt::sprintf("%f", network.Alpha);
  fast_prop = fmt::sprintf("%f", network.FastProp);
  patterns_per_update = fmt::sprintf("%d", network.WeightRate);
  tolerance = fmt::sprintf("%f", network.Tolerance);
  reset_weights = false;
}

void TrainingParametersDraft::EmptyFieldsOutOfRange() {
  EmptyUnless(IsFastProp, fast_prop);
  EmptyUnless(IsMomentum, momentum);
  EmptyUnless(IsLearnRate, eta_max);
  EmptyUnless(IsLearnRate, eta_min);
  EmptyUnless(IsPositive, update_rate);
  EmptyUnless(IsNotNegative, autosave_rate);
  EmptyUnless(IsPositive, lrc_start);
  EmptyUnless(IsPositive, max_iterations);
}

DraftResult TrainingParametersDraft::Apply(Network& network) const {
  DraftResult result;
  result.may_close = true;
  const auto check = [&](bool passes, std::string_view text, int edit) {
    if (!passes) result.Refuse(kTrainingParameterError, text, edit);
  };

  check(Store(fast_prop, IsFastProp, network.FastProp), kFastPropRange, kFastPropEdit);
  (void)Store(patterns_per_update, IsNotNegative, network.WeightRate);
  check(Store(momentum, IsMomentum, network.Alpha), kMomentumRange, kMomentumEdit);
  check(Store(eta_max, IsLearnRate, network.EtaMax), kEtaMaxRange, kEtaMaxEdit);
  check(Store(eta_min, IsLearnRate, network.EtaMin), kEtaMinRange, kEtaMinEdit);
  check(!eta.empty() && Store(eta, IsLearnRate, network.Eta), kEtaRange, kEtaEdit);
  if (!Store(update_rate, IsPositive, network.UpdateRate)) {
    result.Tell(kTrainingParameterError, kUpdateRateRange);
    network.UpdateRate = 1;
  }
  if (!Store(autosave_rate, IsNotNegative, network.SaveRate)) {
    result.Tell(kTrainingParameterError, kAutoSaveRateRange);
    network.SaveRate = 0;
  }
  check(Store(lrc_start, IsPositive, network.LRC), kLrcStartRange, kLrcStartEdit);
  check(Store(max_iterations, IsPositive, network.MaxIterations), kMaxIterationsRange,
        kMaxIterationsEdit);
  if (!tolerance.empty()) {
    const float value = ToFloat(Read(tolerance));
    network.Tolerance = value > 0.0F ? value : 0.0F;
  }
  network.reset_weights = reset_weights;
  return result;
}

}  // namespace tarn
