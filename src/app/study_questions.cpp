#include "app/study_questions.h"

#include <fmt/printf.h>
#include <numeric>
#include <string>

#include "base/text_numbers.h"
#include "browser/messages.h"

namespace tarn {
namespace {

// An input of the contour plot: an empty answer leaves the command, as Cancel does.
std::optional<size_t> AskForContourInput(Dialogs& dialogs, const NodePrompt& prompt,
                                         const Network& network) {
  const std::optional<std::string> answer =
      dialogs.EnterAnswer(prompt.caption, prompt.prompt, prompt.initial);
  if (!answer || answer->empty()) return std::nullopt;
  return ChooseNode(*answer, network.layers[0].nUnits);
}

bool AskForContourInputs(Dialogs& dialogs, const Network& network, ContourNodes& nodes) {
  const std::optional<size_t> first = AskForContourInput(dialogs, FirstInputPrompt(), network);
  if (!first) return false;
  const std::optional<size_t> second =
      AskForContourInput(dialogs, SecondInputPrompt(*first), network);
  if (!second) return false;
  nodes.first_input = *first;
  nodes.second_input = *second;
  return true;
}

// False when the user has left the question.
bool AskForThreshold(Dialogs& dialogs, std::string_view caption, std::string_view prompt,
                     std::optional<float>& threshold) {
  const std::optional<std::string> answer = dialogs.EnterAnswer(caption, prompt, "");
  if (!answer) return false;
  if (!answer->empty()) threshold = ToFloat(*answer);
  return true;
}

}  // namespace

bool AsksYes(Dialogs& dialogs, const PlotQuestion& question) {
  const Message message = {std::string(question.caption), std::string(question.text),
                           MessageIcon::kQuestion};
  return dialogs.Ask(message, AnswerChoice::kYesNo) == Answer::kYes;
}

std::optional<size_t> AskForNode(Dialogs& dialogs, const NodePrompt& prompt, int32_t count) {
  const std::optional<std::string> answer =
      dialogs.EnterValue(prompt.caption, prompt.prompt, prompt.initial);
  if (!answer) return std::nullopt;
  return ChooseNode(*answer, count);
}

std::optional<std::deque<size_t>> AskForOutputs(Dialogs& dialogs, const PlotQuestion& question,
                                                const Network& network) {
  const int32_t outputs = OutputLayer(network).nUnits;
  if (AsksYes(dialogs, question)) return AllNodes(outputs);
  const std::optional<size_t> node = AskForNode(dialogs, OutputNodePrompt(), outputs);
  if (!node) return std::nullopt;
  return std::deque<size_t>{*node};
}

std::optional<ContourNodes> AskForContourNodes(Dialogs& dialogs, const Network& network) {
  std::optional<Message> refused = CheckContourNetwork(network);
  ContourNodes nodes;
  if (!refused) {
    if (AsksForInputs(network) && !AskForContourInputs(dialogs, network, nodes)) {
      return std::nullopt;
    }
    refused = CheckContourNodes(nodes);
  }
  if (refused) {
    dialogs.Tell(*refused);
    return std::nullopt;
  }
  if (!AsksForOutput(network)) return nodes;
  const std::optional<size_t> output =
      AskForNode(dialogs, OutputNodePrompt(), OutputLayer(network).nUnits);
  if (!output) return std::nullopt;
  nodes.output = *output;
  return nodes;
}

std::optional<float> AskForTolerance(Dialogs& dialogs, const Network& network) {
  const std::string offered = fmt::sprintf("%g", network.Tolerance);
  const std::optional<std::string> answer =
      dialogs.EnterValue(kToleranceCaption, kTolerancePrompt, offered);
  if (!answer) return std::nullopt;
  // What is offered is rounded.
  return *answer == offered ? network.Tolerance : ToFloat(*answer);
}

std::optional<Thresholds> AskForThresholds(Dialogs& dialogs) {
  Thresholds thresholds;
  const bool answered =
      AskForThreshold(dialogs, kUpperThresholdCaption, kUpperThresholdPrompt, thresholds.upper) &&
      AskForThreshold(dialogs, kLowerThresholdCaption, kLowerThresholdPrompt, thresholds.lower);
  if (!answered) return std::nullopt;
  return thresholds;
}

std::deque<size_t> AllNodes(int32_t count) {
  std::deque<size_t> nodes(static_cast<size_t>(count));
  std::iota(nodes.begin(), nodes.end(), size_t{0});
  return nodes;
}

}  // namespace tarn
