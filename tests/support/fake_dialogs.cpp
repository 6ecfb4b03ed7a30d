#include "support/fake_dialogs.h"

#include <gtest/gtest.h>
#include <utility>

namespace tarn {
namespace {

std::string Join(std::string_view first, std::string_view second) {
  return std::string(first) + '|' + std::string(second);
}

template <typename Value>
Value Next(std::deque<Value>& queue, Value otherwise, const std::string& question) {
  if (queue.empty()) {
    ADD_FAILURE() << "no answer to " << question;
    return otherwise;
  }
  Value answer = std::move(queue.front());
  queue.pop_front();
  return answer;
}

}  // namespace

void FakeDialogs::Tell(const Message& message) {
  told.push_back(Join(message.caption, message.text));
  icons.push_back(message.icon);
}

Answer FakeDialogs::Ask(const Message& question, AnswerChoice) {
  asked.push_back(Join(question.caption, question.text));
  return Next(answers, Answer::kCancel, asked.back());
}

std::optional<std::string> FakeDialogs::EnterValue(std::string_view caption,
                                                   std::string_view prompt,
                                                   const std::string& text) {
  entries.push_back(Join(Join(caption, prompt), text));
  return Next(values, {}, entries.back());
}

std::optional<std::string> FakeDialogs::ChooseFile(const FileQuestion& question) {
  file_questions.push_back(Join(question.title, question.filter));
  return Next(files, {}, file_questions.back());
}

std::optional<std::string> FakeDialogs::ChooseSnapshot(const std::vector<std::string>& iterations) {
  snapshot_lists.push_back(iterations);
  return Next(snapshots, {}, "the choice of a snapshot");
}

}  // namespace tarn
