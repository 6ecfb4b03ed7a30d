#include "setup/option_prompts.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <fmt/printf.h>
#include <limits>

#include "base/text_numbers.h"
#include "setup/edit_text.h"
#include "setup/messages.h"

namespace tarn {
namespace {

// The field behind a prompt: one of the two, and its range.
struct Field {
  float Network::*real = nullptr;
  int32_t Network::*whole = nullptr;
  float lowest = 0;
  float highest = std::numeric_limits<float>::max();
};

struct Row {
  OptionPrompt prompt;
  Field field;
};

constexpr OptionPrompt Prompt(int32_t command, std::string_view caption, std::string_view prompt,
                              std::string_view message) {
  return {command, caption, prompt, message, kTrainingParameterError};
}

constexpr Field Real(float Network::*field, float highest) {
  return {field, nullptr, 0, highest};
}
constexpr Field Whole(int32_t Network::*field, float lowest) {
  return {nullptr, field, lowest, std::numeric_limits<float>::max()};
}

constexpr std::array<Row, 10> kRows = {
    {{Prompt(106, "Set Learn Rate", "Eta (between 0. and 1.):", kLearnRateInvalid),
      Real(&Network::Eta, 1)},
     {Prompt(107, "Set LRC Min Learn Rate", "Eta Min (between 0. and 1.):", kEtaMinInvalid),
      Real(&Network::EtaMin, 1)},
     {Prompt(108, "Set LRC Max Learn Rate", "Eta Max (between 0. and 1.):", kEtaMaxInvalid),
      Real(&Network::EtaMax, 1)},
     {Prompt(109, "Set Momentum Factor", "Alpha (between 0. and 1.):", kMomentumInvalid),
      Real(&Network::Alpha, 1)},
     {Prompt(110, "Set Fast-Prop Coefficient",
             "Coefficient (between 0. and 3.):", kFastPropInvalid),
      Real(&Network::FastProp, 3)},
     {Prompt(142, "Set Patterns per Iteration",
             "Process ? Patterns per Iteration:", kPatternsInvalid),
      Whole(&Network::WeightRate, 0)},
     {Prompt(111, "Set Max Iterations", "Maximum Iterations:", kIterationsInvalid),
      Whole(&Network::MaxIterations, 1)},
     {Prompt(113, "Set AutoSave Rate", "AutoSave Iteration Interval:", kAutoSaveInvalid),
      Whole(&Network::SaveRate, 0)},
     {Prompt(114, "Set Screen Update Rate",
             "Screen Update Iteration Interval:", kScreenUpdateInvalid),
      Whole(&Network::UpdateRate, 1)},
     {{147, "Set Tolerance", "Tolerance Monitor Value:", kToleranceInvalid, kToleranceMonitors},
      Real(&Network::Tolerance, std::numeric_limits<float>::max())}}};

constexpr auto kPrompts = []() {
  std::array<OptionPrompt, kRows.size()> prompts{};
  for (size_t i = 0; i < prompts.size(); ++i) prompts[i] = kRows[i].prompt;
  return prompts;
}();

const Field& FieldOf(const OptionPrompt& prompt) {
  return std::ranges::find(kRows, prompt.command, [](const Row& row) { return row.prompt.command; })
      ->field;
}

// The whole text is the number.
bool Scan(std::string_view text, float& value) {
  return ScanFloat(text, value) && std::ranges::all_of(text, IsSpace);
}
bool Scan(std::string_view text, int32_t& value) {
  return ScanInt(text, value) && std::ranges::all_of(text, IsSpace);
}

template <typename Value>
bool Store(std::string_view text, const Field& field, Value& target) {
  Value value{};
  if (!Scan(text, value)) return false;
  const auto number = static_cast<float>(value);
  if (number < field.lowest || number > field.highest) return false;
  target = value;
  return true;
}

}  // namespace

std::span<const OptionPrompt> OptionPrompts() {
  return kPrompts;
}

const OptionPrompt* FindOptionPrompt(int32_t command) {
  const auto* prompt = std::ranges::find(kPrompts, command, &OptionPrompt::command);
  return prompt != kPrompts.end() ? prompt : nullptr;
}

std::string OptionText(const OptionPrompt& prompt, const Network& network) {
  const Field& field = FieldOf(prompt);
  if (field.whole != nullptr) return fmt::sprintf("%d", network.*field.whole);
  return fmt::sprintf("%f", double{network.*field.real});
}

std::optional<Message> ApplyOption(const OptionPrompt& prompt, std::string_view text,
                                   Network& network) {
  const Field& field = FieldOf(prompt);
  const std::string_view read = EditText(text, kEditLimit);
  const bool stored = field.whole != nullptr ? Store(read, field, network.*field.whole)
                                             : Store(read, field, network.*field.real);
  if (stored) return std::nullopt;
  return Message{std::string(prompt.message_caption), std::string(prompt.message),
                 MessageIcon::kExclamation};
}

}  // namespace tarn
