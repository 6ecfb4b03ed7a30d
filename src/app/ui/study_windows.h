#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>
#include <wx/event.h>
#include <wx/frame.h>
#include <wx/menu.h>
#include <wx/timer.h>
#include <wx/weakref.h>

#include "app/dialogs.h"
#include "app/session.h"
#include "app/study_desk.h"
#include "base/clock.h"
#include "netgraph/ui/net_graph_dlg.h"

namespace tarn {

// The graph and report windows of a network, and the desk whose commands open them. They close
// with it.
class StudyWindows : private StudyView {
 public:
  // The frame owns the windows and shows the menu of the commands; `history_path` is that of the
  // training run. Session, dialogs and clock are not owned and outlive it.
  StudyWindows(wxFrame& frame, const Session& session, Dialogs& dialogs, const Clock& clock,
               std::string history_path = {});
  ~StudyWindows() override;
  StudyWindows(const StudyWindows&) = delete;
  StudyWindows& operator=(const StudyWindows&) = delete;

  // False when the command is none of them.
  bool DoCommand(int command) { return m_desk.DoCommand(command); }
  // A slice of the task under way; false when there is nothing to do.
  bool Work();
  void StopTask() { m_desk.StopTask(); }

  // The run has gone on: brings the graphs of its history up to date, now or soon.
  void FollowRun();

  // Of a program that ends without closing the windows: they follow no run any more, and their
  // report files are gone.
  void RemoveFiles();

  // While a menu is open: the hint of its commands that are disabled for good; afterwards what
  // there is to say without a menu.
  void ShowObstacle(const wxMenu& menu);
  void ShowHint();

 private:
  struct Follower {
    HistoryKind kind;
    wxWeakRef<NetGraphDlg> window;
  };

  // StudyView
  void ShowGraph(Graph graph) override { Open(std::move(graph)); }
  void ShowHistory(HistoryKind kind, Graph graph) override;
  void ShowReport(std::unique_ptr<ReportFile> report, std::string_view caption) override;
  void ShowProgress(std::string_view text) override;
  void TaskChanged() override;

  NetGraphDlg* Open(Graph graph);
  void Keep(wxFrame* window);
  void OnKey(wxKeyEvent& event);
  void BringUpToDate();
  void EnableCommands();
  void PutBackStatus();

  wxFrame& m_frame;
  Dialogs& m_dialogs;
  const Clock& m_clock;
  StudyDesk m_desk;
  std::vector<wxWeakRef<wxFrame>> m_windows;
  std::vector<Follower> m_followers;
  int64_t m_follow_at_ms = 0;  // not before
  wxString m_progress;         // as it was shown last; empty without a task
  wxString m_status;           // what stood there before
  wxTimer m_follow_timer;
};

}  // namespace tarn
