#include "setup/setup_options.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <fmt/printf.h>
#include <iterator>
#include <utility>

#include "setup/messages.h"
#include "setup/net_design_draft.h"
#include "setup/option_words.h"
#include "setup/training_data_draft.h"
#include "setup/training_parameters_draft.h"

namespace tarn {
namespace {

using Value = SetupOptions::Value;

constexpr std::string_view kNoFile = "none";

Status Refusal(std::string_view format, std::string_view name, std::string_view text) {
  return Status::Failure(fmt::sprintf(std::string(format), std::string(name), std::string(text)));
}

// The layers above the input layer; 0 when the count is one that the design refuses.
int32_t ComputedLayers(const SetupOptions& options, const Network& network) {
  const auto count =
      options.layers ? static_cast<int32_t>(SplitList(*options.layers).size()) : network.nLayers;
  return count >= kMinLayers && count <= kMaxLayers ? count - 1 : 0;
}

Status CheckTransfer(const SetupOptions& options, const Network& network) {
  const std::vector<std::string_view> names = SplitList(*options.transfer);
  for (const std::string_view name : names) {
    if (!ParseTransfer(name)) return Refusal(kOptionWantsTransfer, "transfer", name);
  }
  const int32_t wanted = ComputedLayers(options, network);
  const auto given = static_cast<int32_t>(names.size());
  if (given == 1 || given == wanted || wanted == 0) return {};
  return Status::Failure(fmt::sprintf(std::string(kTransferNameCount), wanted, given));
}

Status CheckOption(const SetupOptionEntry& option, const SetupOptions& options,
                   const Network& network) {
  const Value& value = options.*option.value;
  if (!value) return {};
  const auto unless = [&](bool understood, std::string_view format) {
    return understood ? Status() : Refusal(format, option.name, *value);
  };
  switch (option.kind) {
    case OptionKind::kText:
    case OptionKind::kLayers:
      return {};
    case OptionKind::kTransfer:
      return CheckTransfer(options, network);
    case OptionKind::kInteger:
      return unless(IsInteger(*value), kOptionWantsInteger);
    case OptionKind::kReal:
      return unless(IsReal(*value), kOptionWantsReal);
    case OptionKind::kSwitch:
      return unless(ParseSwitch(*value).has_value(), kOptionWantsSwitch);
    case OptionKind::kTestMethod:
      return unless(ParseTestMethod(*value).has_value(), kOptionWantsTestMethod);
  }
  return {};
}

void Fill(const Value& value, std::string& field) {
  if (value) field = *value;
}

void Fill(const Value& value, bool& box) {
  if (value) box = ParseSwitch(*value).value_or(box);
}

void FillLayers(std::string_view list, NetDesignDraft& draft) {
  const std::vector<std::string_view> items = SplitList(list);
  // An empty field would keep the old count.
  const auto text = [&](size_t i) { return std::string(items[i].empty() ? "0" : items[i]); };
  const size_t last = items.size() - 1;
  draft.layer_count = fmt::sprintf("%d", static_cast<int32_t>(items.size()));
  draft.input_nodes = text(0);
  if (last > 0) draft.output_nodes = text(last);
  for (size_t k = 1; k < last && k <= kHiddenRows; ++k) draft.hidden_nodes[k - 1] = text(k);
}

void FillTransfer(std::string_view list, NetDesignDraft& draft) {
  const std::vector<std::string_view> names = SplitList(list);
  for (size_t l = 1; l < draft.transfer.size(); ++l) {
    const size_t item = names.size() == 1 ? 0 : l - 1;
    if (item < names.size()) {
      draft.transfer[l] = ParseTransfer(names[item]).value_or(draft.transfer[l]);
    }
  }
}

void FillMethod(const Value& value, InclusionMethod& method) {
  if (!value) return;
  const std::optional<int32_t> code = ParseTestMethod(*value);
  method.none = code == kTestNone;
  method.beginning = code == kTestBeginning;
  method.end = code == kTestEnding;
  method.random = code == kTestRandom;
}

bool NamesFile(const Value& value) {
  return value && !value->empty() && *value != kNoFile;
}

DraftResult ApplyDesign(const SetupOptions& options, Network& network) {
  NetDesignDraft draft;
  draft.Load(network);
  Fill(options.name, draft.name);
  if (options.layers) FillLayers(*options.layers, draft);
  if (options.transfer) FillTransfer(*options.transfer, draft);
  return draft.Apply(network);
}

DraftResult ApplyTrainingData(const SetupOptions& options, Network& network) {
  TrainingDataDraft draft;
  draft.Load(network);
  Fill(options.inputs, draft.input_path);
  Fill(options.inputs_column, draft.input_column);
  Fill(options.normalize_inputs, draft.normalize_inputs);
  Fill(options.targets, draft.target_path);
  Fill(options.targets_column, draft.target_column);
  Fill(options.normalize_targets, draft.normalize_outputs);
  Fill(options.test_patterns, draft.test_cases);
  FillMethod(options.test_method, draft.method);
  draft.check_inputs = NamesFile(options.inputs);
  draft.check_targets = NamesFile(options.targets);
  return draft.Apply(network);
}

DraftResult ApplyTrainingParameters(const SetupOptions& options, Network& network) {
  TrainingParametersDraft draft;
  draft.Load(network);
  draft.EmptyFieldsOutOfRange();
  Fill(options.eta, draft.eta);
  Fill(options.eta_min, draft.eta_min);
  Fill(options.eta_max, draft.eta_max);
  Fill(options.momentum, draft.momentum);
  Fill(options.fast_prop, draft.fast_prop);
  Fill(options.tolerance, draft.tolerance);
  Fill(options.patterns_per_update, draft.patterns_per_update);
  Fill(options.iterations, draft.max_iterations);
  Fill(options.lrc_start, draft.lrc_start);
  Fill(options.autosave_rate, draft.autosave_rate);
  Fill(options.update_rate, draft.update_rate);
  return draft.Apply(network);
}

template <typename... Values>
bool AnyGiven(const Values&... values) {
  return (values.has_value() || ...);
}

void Join(DraftResult result, SetupOutcome& outcome) {
  std::ranges::move(result.messages, std::back_inserter(outcome.messages));
  outcome.accepted = outcome.accepted && result.may_close;
}

}  // namespace

Status CheckSetupOptions(const SetupOptions& options, const Network& network) {
  for (const SetupOptionEntry& option : kSetupOptions) {
    Status status = CheckOption(option, options, network);
    if (!status.ok()) return status;
  }
  return {};
}

SetupOutcome ApplySetupOptions(const SetupOptions& options, Network& network) {
  SetupOutcome outcome;
  const Status understood = CheckSetupOptions(options, network);
  if (!understood.ok()) {
    outcome.accepted = false;
    outcome.messages.push_back({std::string(kErrorCaption), understood.message()});
    return outcome;
  }
  const SetupOptions& o = options;
  if (AnyGiven(o.name, o.layers, o.transfer)) Join(ApplyDesign(o, network), outcome);
  if (AnyGiven(o.inputs, o.inputs_column, o.targets, o.targets_column, o.normalize_inputs,
               o.normalize_targets, o.test_patterns, o.test_method)) {
    Join(ApplyTrainingData(o, network), outcome);
  }
  if (AnyGiven(o.eta, o.eta_min, o.eta_max, o.momentum, o.fast_prop, o.tolerance,
               o.patterns_per_update, o.iterations, o.lrc_start, o.autosave_rate, o.update_rate)) {
    Join(ApplyTrainingParameters(o, network), outcome);
  }
  return outcome;
}

}  // namespace tarn
