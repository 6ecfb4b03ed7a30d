#include "cli/recall_data.h"

#include "app/messages.h"
#include "setup/recall_data_draft.h"

namespace tarn {

CLI::Option* AddRecallDataOptions(CLI::App& command, RecallData& data) {
  const auto add = [&command](const char* name, std::string& value, const char* help,
                              const char* type) {
    return command.add_option(name, value, help)->type_name(type);
  };
  CLI::Option* inputs = add("--inputs", data.inputs, "Text file with the inputs", "FILE");
  add("--inputs-column", data.inputs_column, "Column of the first input value, from 1", "N")
      ->capture_default_str()
      ->needs(inputs);
  CLI::Option* targets =
      add("--targets", data.targets,
          "Text file with targets, for all that compares outputs with them", "FILE");
  targets->needs(inputs);
  add("--targets-column", data.targets_column,
      "Column of the first target value, from 1; needed with --targets", "N")
      ->needs(targets);
  return inputs;
}

ExitStatus TakeRecallData(const RecallData& data, Network& network) {
  if (!network.trained) {
    PrintError(kUntrainedRecall);
    return kFailed;
  }
  RecallDataDraft draft;
  draft.input_path = data.inputs;
  draft.input_column = data.inputs_column;
  draft.target_path = data.targets;
  draft.target_column = data.targets_column;
  const DraftResult result = draft.Apply(network);
  for (const Message& message : result.messages) PrintError(message.text);
  return result.may_close ? kDone : kFailed;
}

}  // namespace tarn
