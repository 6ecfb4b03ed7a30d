#include "app/ui/window_dialogs.h"

#include <algorithm>
#include <fmt/printf.h>
#include <wx/app.h>
#include <wx/filedlg.h>
#include <wx/filefn.h>
#include <wx/filename.h>
#include <wx/frame.h>
#include <wx/stdpaths.h>
#include <wx/utils.h>

#include "app/file_choice.h"
#include "app/messages.h"
#include "app/ui/data_ent_dlg.h"
#include "app/ui/message_box.h"
#include "app/ui/messages.h"
#include "app/ui/opened.h"
#include "engine/ui/auto_save_dlg.h"
#include "resources/controls.h"
#include "resources/printing.h"
#include "setup/messages.h"

namespace tarn {
namespace {

bool ReplacesUnasked(const std::string& chosen, const std::string& path) {
  return chosen != path && wxFileExists(Wide(path));
}

wxDialog* InnermostModalDialog() {
  for (auto node = wxTopLevelWindows.GetLast(); node != nullptr; node = node->GetPrevious()) {
    auto* dialog = dynamic_cast<wxDialog*>(node->GetData());
    if (dialog != nullptr && dialog->IsModal()) return dialog;
  }
  return nullptr;
}

// Neither it nor a window that owns it is about to go.
bool Stays(const wxWindow* window) {
  for (; window != nullptr; window = window->GetParent()) {
    if (wxTheApp->IsScheduledForDestruction(const_cast<wxWindow*>(window))) return false;
  }
  return true;
}

}  // namespace

WindowDialogs::WindowDialogs(ApplicationPaths paths)
    : WindowDialogs(std::move(paths),
                    Utf8(wxFileName(wxStandardPaths::Get().GetExecutablePath()).GetPath())) {}

WindowDialogs::~WindowDialogs() {
  if (m_help) m_help->Destroy();
}

wxWindow* DialogParent() {
  if (wxDialog* dialog = InnermostModalDialog()) return dialog;
  // Above the graph or the report that the user is at. A dialog of the help window would keep the
  // user from that window alone.
  wxWindow* active = wxGetTopLevelParent(wxGetActiveWindow());
  const bool reads_help = dynamic_cast<HelpWindow*>(active) != nullptr;
  if (dynamic_cast<wxFrame*>(active) != nullptr && !reads_help && Stays(active)) return active;
  return wxTheApp->GetTopWindow();
}

wxString FileDialogFilter(std::string_view filter) {
  if (filter.ends_with('|')) filter.remove_suffix(1);
  wxString text = Wide(filter);
  text.Replace("|*.*", "|" + wxString(wxFileSelectorDefaultWildcardStr));
  return text;
}

// Those that others have opened count, too.
bool WindowDialogs::IsAsking() const {
  return m_open > 0 || IsSystemAsking() || InnermostModalDialog() != nullptr;
}

bool WindowDialogs::IsSystemAsking() const {
  return m_system_open > 0 || IsPrinting();
}

int WindowDialogs::ShowBox(const Message& message, long style) {
  const Opened opened(m_system_open);
  return ShowMessageBox(DialogParent(), message, style);
}

void WindowDialogs::Tell(const Message& message) {
  ShowBox(message, wxOK);
}

Answer WindowDialogs::Ask(const Message& question, AnswerChoice choice) {
  const bool cancel = choice == AnswerChoice::kYesNoCancel;
  switch (ShowBox(question, cancel ? wxYES_NO | wxCANCEL : wxYES_NO)) {
    case wxID_YES:
      return Answer::kYes;
    case wxID_NO:
      return Answer::kNo;
    default:
      return cancel ? Answer::kCancel : Answer::kNo;
  }
}

std::optional<std::string> WindowDialogs::EnterValue(std::string_view caption,
                                                     std::string_view prompt,
                                                     const std::string& text) {
  const Opened opened(m_open);
  DataEntDlg dialog(DialogParent(), caption, prompt, text);
  if (dialog.ShowModal() != kOkId) return std::nullopt;
  return dialog.text();
}

std::optional<std::string> WindowDialogs::EnterAnswer(std::string_view caption,
                                                      std::string_view prompt,
                                                      const std::string& text) {
  const Opened opened(m_open);
  DataEntDlg dialog(DialogParent(), caption, prompt, text);
  if (dialog.ShowModal() != kOkId) return std::nullopt;
  return dialog.entered();
}

std::optional<WindowDialogs::ChosenFile> WindowDialogs::ShowFileDialog(
    const FileQuestion& question) {
  const long style =
      question.saving ? wxFD_SAVE | wxFD_OVERWRITE_PROMPT : wxFD_OPEN | wxFD_FILE_MUST_EXIST;
  const Opened opened(m_system_open);
  wxFileDialog dialog(DialogParent(), Wide(question.title), wxGetCwd(), "",
                      FileDialogFilter(question.filter), style);
  if (dialog.ShowModal() != wxID_OK) return std::nullopt;
  const int filter = std::max(dialog.GetFilterIndex(), 0);
  return ChosenFile{Utf8(dialog.GetPath()), static_cast<size_t>(filter)};
}

std::optional<std::string> WindowDialogs::ChooseFile(const FileQuestion& question) {
  while (true) {
    const std::optional<ChosenFile> chosen = ShowFileDialog(question);
    if (!chosen) return std::nullopt;
    if (!question.saving) return chosen->path;
    const std::string path = WithExtension(chosen->path, ExtensionUnder(question, chosen->filter));
    if (!ReplacesUnasked(chosen->path, path)) return path;
    // The dialog has asked about the name without the extension.
    const Message again = {std::string(question.title), fmt::sprintf(kAskToReplace.data(), path),
                           MessageIcon::kQuestion};
    if (Ask(again, AnswerChoice::kYesNo) == Answer::kYes) return path;
  }
}

std::optional<std::string> WindowDialogs::ChooseSnapshot(
    const std::vector<std::string>& iterations) {
  const Opened opened(m_open);
  AutoSaveDlg dialog(DialogParent(), iterations, *this);
  if (dialog.ShowModal() != kOkId) return std::nullopt;
  return dialog.choice();
}

void WindowDialogs::ShowHelp(HelpTopic topic) {
  std::string unreadable;
  if (!m_help || !Stays(m_help)) m_help = OpenHelp(unreadable);
  if (m_help) {
    m_help->ShowTopic(topic);
  } else if (unreadable.empty()) {
    Tell(kTarnWarningCaption, fmt::sprintf(kNoHelpFile.data(), m_paths.help_file));
  } else {
    Tell(kTarnWarningCaption, fmt::sprintf(kHelpFileUnreadable.data(), unreadable));
  }
}

// The book of the first place that has one; null when there is none, and then the first file that
// holds no book.
HelpWindow* WindowDialogs::OpenHelp(std::string& unreadable) const {
  for (const std::string& place : HelpFilePlaces(m_paths, m_program_folder)) {
    if (!wxFileExists(Wide(place))) continue;
    // Not of the dialog that asks for it, which may be gone before the user has read it.
    auto* window = new HelpWindow(wxTheApp->GetTopWindow());
    if (window->Open(place)) return window;
    window->Destroy();
    if (unreadable.empty()) unreadable = place;
  }
  return nullptr;
}

void WindowDialogs::ShowBusy(bool busy) {
  if (busy) {
    wxBeginBusyCursor();
  } else {
    wxEndBusyCursor();
  }
}

void WindowDialogs::StartDataEditor() {
  const std::string& path = m_paths.data_editor;
  const wxString program = Wide(path);
  const wxWCharBuffer name = program.wc_str();
  const wchar_t* const arguments[] = {name.data(), nullptr};
  // What it hands over is looked for in the folder that Tarn was started in.
  wxExecuteEnv surroundings;
  wxGetEnvMap(&surroundings.env);
  surroundings.cwd = Wide(m_paths.start_folder);
  const bool started = wxFileExists(program) && wxFileName::IsFileExecutable(program) &&
                       wxExecute(arguments, wxEXEC_ASYNC, nullptr, &surroundings) != 0;
  if (!started) Tell(kInvalidRequest, fmt::sprintf(kNoDataEditor.data(), path));
}

}  // namespace tarn
