#include "setup/ui/data_dialog.h"

#include <optional>
#include <utility>

#include "resources/controls.h"

namespace tarn {
namespace {

// Both dialogs have them under the same numbers.
constexpr int kInputFileButton = 101;
constexpr int kTargetFileButton = 102;
constexpr int kInputFileText = 113;
constexpr int kTargetFileText = 114;
constexpr int kDataEditorButton = 115;

}  // namespace

DataDialog::DataDialog(wxWindow* parent, const char* resource, Dialogs& dialogs, HelpTopic topic,
                       const ApplicationPaths& paths)
    : SetupDialog(parent, resource, dialogs, topic, kHelpId), m_handover_path(paths.hand_over) {
  OnButton(kDataEditorButton, [&dialogs] { dialogs.StartDataEditor(); });
}

void DataDialog::TieFiles(std::string& input_path, std::string& target_path) {
  TieFile(kInputFileButton, kInputDataQuestion,
          {kInputFileText, "Input Node Data File: ", input_path});
  TieFile(kTargetFileButton, kTargetDataQuestion,
          {kTargetFileText, "Target Data File: ", target_path});
}

void DataDialog::OnHandOver(int button, std::function<void(const HandOver&)> take) {
  OnButton(button, [this, take = std::move(take)] { TakeOver(take); });
}

void DataDialog::TieFile(int button, const FileQuestion& question, const TiedFile& file) {
  m_files.push_back(file);
  ShowFile(file);
  OnButton(button, [this, question, file] { Choose(question, file); });
}

void DataDialog::Choose(const FileQuestion& question, const TiedFile& file) {
  std::optional<std::string> path = dialogs().ChooseFile(question);
  if (!path) return;
  file.path = std::move(*path);
  ShowFile(file);
}

void DataDialog::ShowFile(const TiedFile& file) {
  SetText(*this, file.text, std::string(file.prefix) + file.path);
  Control(*this, file.text).SetToolTip(Wide(file.path));
}

void DataDialog::TakeOver(const std::function<void(const HandOver&)>& take) {
  Message message;
  const std::optional<HandOver> handover = TakeHandOver(m_handover_path, message);
  if (!handover) {
    dialogs().Tell(message);
    return;
  }
  ReadFields();
  take(*handover);
  ShowFields();
  for (const TiedFile& file : m_files) ShowFile(file);
}

}  // namespace tarn
