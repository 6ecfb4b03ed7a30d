#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "app/dialogs.h"
#include "app/session.h"
#include "app/study_task.h"
#include "base/clock.h"
#include "browser/report.h"
#include "browser/report_file.h"
#include "netgraph/graph.h"
#include "netgraph/history_plots.h"
#include "netgraph/node_selection.h"

namespace tarn {

// Where a study desk shows what its commands have made.
class StudyView {
 public:
  virtual ~StudyView() = default;
  virtual void ShowGraph(Graph graph) = 0;
  // A graph of the error history, which grows while the network trains.
  virtual void ShowHistory(HistoryKind kind, Graph graph) = 0;
  // The report's file lives as long as the window that shows it.
  virtual void ShowReport(std::unique_ptr<ReportFile> report, std::string_view caption) = 0;
  // How far a task is: a text for the status bar, in place of what it shows without a task.
  virtual void ShowProgress(std::string_view text) = 0;
  // A task has begun or ended: other commands are available now, and the hint is another.
  virtual void TaskChanged() = 0;
};

// What the graph and report commands of the training and of the recall window do, without their
// windows. What takes long is a task, done in slices; there is one at a time.
class StudyDesk {
 public:
  // A loaded network with the activations of its patterns. `history_path` is that of the training
  // run. Session, dialogs, view and clock are not owned and outlive the desk.
  StudyDesk(const Session& session, Dialogs& dialogs, StudyView& view, const Clock& clock,
            std::string history_path = {});
  ~StudyDesk() { EndTask(); }
  StudyDesk(const StudyDesk&) = delete;
  StudyDesk& operator=(const StudyDesk&) = delete;

  // False when the command is none of the desk's. One that is not available does nothing.
  bool DoCommand(int32_t command);

  static bool HasCommand(int32_t command) { return Find(command) != nullptr; }
  // Why a command is of no use to this network; empty when it is.
  std::string_view Obstacle(int32_t command) const;
  // Whether it can be given now: there is no obstacle, and not another task to wait for.
  bool IsAvailable(int32_t command) const;

  // Works on the task for about `budget_ms`; false when there is nothing to do before the user
  // acts.
  bool Work(int64_t budget_ms);
  bool HasTask() const { return m_task.has_value(); }
  // What the user is told beside the progress; empty when there is nothing to tell.
  std::string_view hint() const { return m_hint; }
  // The user has gone on: what is told of a task that was stopped is old.
  void ForgetNotice();
  // Ends the task. Graphs that it has shown stay.
  void StopTask();

  // The graph of a history as it is by now; nothing when it cannot be read.
  std::optional<Graph> HistoryGraph(HistoryKind kind) const;

 private:
  struct Command;
  static const Command* Find(int32_t command);
  const Network& network() const { return m_session.network; }

  using NodePlot = Graph (*)(const Network&, size_t node);

  template <HistoryKind kind>
  void PlotHistory();
  void PlotScatter();
  void PlotOutputs();
  void PlotErrors();
  void PlotInputs();
  void InterrogateInputs();
  void AnalyzeHiddenNodes();
  void TraceContours();
  void ReportInformation();
  void ReportWeights();
  void ReportOutputs();
  void ReportStatistics();
  void CheckTolerance();
  void CheckThreshold();
  void CheckDivergence();

  void PlotOutputNodes(const PlotQuestion& question, NodePlot plot);
  void ShowReport(ReportKind kind, const CheckValues& values = {});
  void Begin(StudyTask task);
  void EndTask();

  const Session& m_session;
  Dialogs& m_dialogs;
  StudyView& m_view;
  const Clock& m_clock;
  const std::string m_history_path;
  std::optional<StudyTask> m_task;
  std::string_view m_hint;
};

}  // namespace tarn
