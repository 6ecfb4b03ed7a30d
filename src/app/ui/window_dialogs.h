#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>
#include <wx/weakref.h>
#include <wx/window.h>

#include "app/application_paths.h"
#include "app/dialogs.h"
#include "app/ui/help_window.h"

namespace tarn {

// Asks the user with message boxes, file dialogs and the dialogs of the resources, above the
// innermost window that is open.
class WindowDialogs : public Dialogs {
 public:
  explicit WindowDialogs(ApplicationPaths paths);
  // With the program in another folder than it is in.
  WindowDialogs(ApplicationPaths paths, std::string program_folder)
      : m_paths(std::move(paths)), m_program_folder(std::move(program_folder)) {}
  ~WindowDialogs() override;
  WindowDialogs(const WindowDialogs&) = delete;
  WindowDialogs& operator=(const WindowDialogs&) = delete;

  using Dialogs::Tell;
  void Tell(const Message& message) override;
  Answer Ask(const Message& question, AnswerChoice choice) override;
  std::optional<std::string> EnterValue(std::string_view caption, std::string_view prompt,
                                        const std::string& text) override;
  std::optional<std::string> EnterAnswer(std::string_view caption, std::string_view prompt,
                                         const std::string& text) override;
  std::optional<std::string> ChooseFile(const FileQuestion& question) override;
  std::optional<std::string> ChooseSnapshot(const std::vector<std::string>& iterations) override;
  void ShowHelp(HelpTopic topic) override;
  void StartDataEditor() override;
  bool IsAsking() const override;
  bool IsSystemAsking() const override;
  void ShowBusy(bool busy) override;

 protected:
  struct ChosenFile {
    std::string path;
    size_t filter = 0;  // the one that was chosen with it
  };
  // The system's file dialog, shown once.
  virtual std::optional<ChosenFile> ShowFileDialog(const FileQuestion& question);

 private:
  int ShowBox(const Message& message, long style);
  HelpWindow* OpenHelp(std::string& unreadable) const;

  ApplicationPaths m_paths;
  std::string m_program_folder;
  int m_open = 0;         // dialogs of ours
  int m_system_open = 0;  // message boxes and file dialogs
  wxWeakRef<HelpWindow> m_help;
};

// The window that the next dialog belongs to: the innermost modal dialog, else the window that has
// the focus, unless that is the help window, else the main window.
wxWindow* DialogParent();

// The filter in the form that the file dialogs take: no "|" at the end, and every file stands
// for "*.*" everywhere.
wxString FileDialogFilter(std::string_view filter);

}  // namespace tarn
