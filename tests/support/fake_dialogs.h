#pragma once

#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/dialogs.h"

namespace tarn {

// Answers from queues and records what was asked. An answer that is missing fails the test and
// is Cancel.
class FakeDialogs : public Dialogs {
 public:
  using Dialogs::Tell;
  void Tell(const Message& message) override;
  Answer Ask(const Message& question, AnswerChoice choice) override;
  std::optional<std::string> EnterValue(std::string_view caption, std::string_view prompt,
                                        const std::string& text) override;
  // Answered and recorded as those of EnterValue are.
  std::optional<std::string> EnterAnswer(std::string_view caption, std::string_view prompt,
                                         const std::string& text) override {
    return EnterValue(caption, prompt, text);
  }
  std::optional<std::string> ChooseFile(const FileQuestion& question) override;
  std::optional<std::string> ChooseSnapshot(const std::vector<std::string>& iterations) override;
  void ShowHelp(HelpTopic topic) override { help.push_back(topic); }
  void StartDataEditor() override { ++editor_starts; }
  void ShowBusy(bool busy) override { busy_log += busy ? '+' : '-'; }

  // Answers to come; no text is Cancel.
  std::deque<Answer> answers;
  std::deque<std::optional<std::string>> values;
  std::deque<std::optional<std::string>> files;
  std::deque<std::optional<std::string>> snapshots;

  std::vector<std::string> told;            // "caption|text"
  std::vector<MessageIcon> icons;           // of those
  std::vector<std::string> asked;           // "caption|text"
  std::vector<std::string> entries;         // "caption|prompt|text"
  std::vector<std::string> file_questions;  // "title|filter"
  std::vector<std::vector<std::string>> snapshot_lists;
  std::vector<HelpTopic> help;
  int editor_starts = 0;
  std::string busy_log;  // "+-" for each time that the user had to wait
};

}  // namespace tarn
