#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>
#include <wx/frame.h>
#include <wx/utils.h>

#include "app/application_paths.h"
#include "app/dialogs.h"
#include "app/interrupted_runs.h"
#include "app/main_window_rules.h"
#include "app/network_loader.h"
#include "app/session.h"
#include "app/ui/startup_window.h"
#include "app/ui/status_dlg.h"
#include "app/ui/study_windows.h"
#include "app/ui/window_settings.h"
#include "base/clock.h"
#include "engine/ui/train_run_dlg.h"

namespace tarn {

// The main window. Its client is the start-up window, the training window or the recall window;
// a network is loaded between them on idle turns.
class TMain : public wxFrame {
 public:
  // None of them is owned; they outlive the window.
  TMain(Session& session, Dialogs& dialogs, const ApplicationPaths& paths, const Clock& clock);
  // The program ends with it: the configuration file is written.
  ~TMain() override;
  TMain(const TMain&) = delete;
  TMain& operator=(const TMain&) = delete;

  // As the program starts.
  void OfferInterruptedRuns(const std::vector<InterruptedRun>& runs);
  // As the Open command does with the file chosen.
  void OpenFile(const std::string& path);
  // Tells that memory has run out, and leaves no temporary files: the program ends in the midst
  // of something.
  void EndOutOfMemory();
  // Null when it is not the client.
  TrainRunDlg* training() const { return m_training; }

 private:
  void New();
  void Open();
  void Run(RunMode mode);
  void SetUpTraining();
  void SetUpRecall();
  void About();
  int ShowModal(wxDialog& dialog);
  void ShowHelp();

  void BeginLoad(NetworkLoader::Kind kind, const NetworkShape& stored);
  void LoadOneStep();
  void EndLoad();

  void ShowStartUp();
  void ShowTraining();
  void ShowRecall();
  void ClearClient(const char* next, const char* menu);
  // `opening` is its size when none is remembered.
  void TakeClient(wxWindow* client, const wxSize& opening = {});
  void ShareStatusBar(bool menu_open);
  void RememberGeometry();
  void UpdateCaption();
  void FiguresShown();

  // Nothing is loaded, and no dialog waits for an answer.
  bool IsFree() const;
  void OnIdle(wxIdleEvent& event);
  void OnMenu(wxCommandEvent& event);
  void OnHelp(wxHelpEvent& event);
  void OnMenuOpen(wxMenuEvent& event);
  void OnMenuClose(wxMenuEvent& event);
  bool DoClientCommand(int command);
  void OnClose(wxCloseEvent& event);
  void OnIconize(wxIconizeEvent& event);
  bool MayLeaveClient();
  void Restart();

  Session& m_session;
  Dialogs& m_dialogs;
  const ApplicationPaths& m_paths;
  const Clock& m_clock;
  WindowSettings m_settings;

  wxWindow* m_client = nullptr;  // owned by the frame, as the two below, which it may be
  wxString m_client_name;
  StartUpWindow* m_start_up = nullptr;
  TrainRunDlg* m_training = nullptr;
  std::unique_ptr<StudyWindows> m_study;  // of the training or the recall window
  const wxMenu* m_open_menu = nullptr;
  bool m_iconized = false;
  bool m_out_of_memory = false;
  int m_open_dialogs = 0;       // of its own
  bool m_close_forced = false;  // as soon as the dialogs that are open have ended

  // While a network is loaded.
  std::unique_ptr<NetworkLoader> m_loader;
  NetworkLoader::Kind m_load_kind = NetworkLoader::Kind::kTraining;
  Notices m_notices;
  StatusDlg* m_status_box = nullptr;
  bool m_step_shown = false;
  std::optional<wxBusyCursor> m_busy;
};

}  // namespace tarn
