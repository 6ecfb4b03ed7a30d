#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/status.h"

// What the commands ask of the user. The windows answer it with dialogs, tests with a script.

namespace tarn {

enum class Answer { kYes, kNo, kCancel };
enum class AnswerChoice { kYesNo, kYesNoCancel };

// A file dialog. The filter is pairs of a text and its pattern, with "|" between and behind them.
struct FileQuestion {
  std::string_view title;
  std::string_view filter;
  std::string_view extension;  // with its dot, for a name to save that has none; may be empty
  bool saving = false;         // else an existing file is opened
};

inline constexpr std::string_view kNetworkFilter = "Tarn Files (*.net)|*.net|All Files(*.*)|*.*|";
inline constexpr FileQuestion kOpenNetworkQuestion = {"Open Tarn Network", kNetworkFilter, ".net"};
inline constexpr FileQuestion kSaveNetworkQuestion = {"Save Network As...", kNetworkFilter, ".net",
                                                      true};
inline constexpr FileQuestion kSaveSnapshotQuestion = {"Save Tarn Network As...", kNetworkFilter,
                                                       ".net", true};
inline constexpr FileQuestion kSaveOutputsQuestion = {
    "Save Net Outputs/Targets As ASCII File...",
    "Tarn Output File (*.out)|*.out|All Files(*.*)|*.*|", ".out", true};
inline constexpr FileQuestion kSaveHistoryQuestion = {
    "Save Error History As ASCII File...", "Tarn Error File (*.err)|*.err|All Files(*.*)|*.*|",
    ".err", true};
inline constexpr FileQuestion kSaveReportQuestion = {"Save Information as...",
                                                     "bitmap (*.txt)|*.txt", ".txt", true};
inline constexpr FileQuestion kSaveBitmapQuestion = {"Save NetGraph Bitmap as...",
                                                     "bitmap (*.bmp)|*.bmp", ".bmp", true};
inline constexpr FileQuestion kExportPictureQuestion = {
    "Export Picture...", "PNG Picture (*.png)|*.png|SVG Picture (*.svg)|*.svg", ".png", true};
inline constexpr FileQuestion kExportDataQuestion = {
    "Export Data...", "Comma Separated Values (*.csv)|*.csv|All Files(*.*)|*.*|", ".csv", true};
inline constexpr FileQuestion kInputDataQuestion = {"Select Input Node Data",
                                                    "All Files (*.*)|*.*|", ""};
inline constexpr FileQuestion kTargetDataQuestion = {"Select Target Data", "All Files (*.*)|*.*|",
                                                     ""};

// Topics of the help file, by their context numbers.
enum class HelpTopic : int {
  kAutoSave = 0,
  kStartUp = 4,
  kInformationBrowser = 13,
  kNetGraph = 25,
  kRecallData = 39,
  kTraining = 40,
  kConnections = 61,
  kNetworkDesign = 62,
  kTrainingData = 63,
  kTrainingParameters = 64,
  kTrainingSetup = 65,
  kTrainingMenus = 67,
};

class Dialogs {
 public:
  virtual ~Dialogs() = default;

  // A message box with OK alone.
  virtual void Tell(const Message& message) = 0;
  virtual Answer Ask(const Message& question, AnswerChoice choice) = 0;
  // The single-value entry: the text entered, or the one given when the field was left empty;
  // nothing after Cancel.
  virtual std::optional<std::string> EnterValue(std::string_view caption, std::string_view prompt,
                                                const std::string& text) = 0;
  // The same where nothing is an answer, too: the text that was in the field.
  virtual std::optional<std::string> EnterAnswer(std::string_view caption, std::string_view prompt,
                                                 const std::string& text) = 0;
  // The full path; nothing after Cancel.
  virtual std::optional<std::string> ChooseFile(const FileQuestion& question) = 0;
  // The snapshot wanted, as it was typed or picked; nothing after Cancel.
  virtual std::optional<std::string> ChooseSnapshot(const std::vector<std::string>& iterations) = 0;
  virtual void ShowHelp(HelpTopic topic) = 0;
  // Starts the companion data editor and does not wait for it.
  virtual void StartDataEditor() = 0;
  // One of its questions is open; a dialog of the system is.
  virtual bool IsAsking() const { return false; }
  virtual bool IsSystemAsking() const { return false; }
  // Between true and false the user has to wait: the cursor says so.
  virtual void ShowBusy(bool busy) = 0;

  void Tell(std::string_view caption, std::string_view text) {
    Tell(Message{std::string(caption), std::string(text), MessageIcon::kExclamation});
  }
};

// Does work that the user has to wait for.
template <typename Work>
auto WhileBusy(Dialogs& dialogs, const Work& work) {
  struct Wait {
    explicit Wait(Dialogs& shown) : dialogs(shown) { dialogs.ShowBusy(true); }
    ~Wait() { dialogs.ShowBusy(false); }
    Wait(const Wait&) = delete;
    Wait& operator=(const Wait&) = delete;
    Dialogs& dialogs;
  };
  const Wait wait(dialogs);
  return work();
}

}  // namespace tarn
