#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "app/dialogs.h"
#include "app/interrupted_runs.h"
#include "app/session.h"
#include "base/clock.h"
#include "base/temp_file.h"
#include "engine/training_run.h"
#include "engine/workers.h"
#include "setup/option_prompts.h"

namespace tarn {

// What the training window shows of its desk. Called from within the desk's functions.
class TrainingView {
 public:
  virtual ~TrainingView() = default;
  // A text for the status bar.
  virtual void ShowStatus(std::string_view text) = 0;
  // Figures, options or the state of the run have changed.
  virtual void Changed() = 0;
};

enum class LearnRateControlState { kOff, kWaiting, kStarted };

// What the commands of the training window do, without the window: the run, its temporary files,
// the options and the exports. Questions go to the dialogs, all else to the view.
//
// Messages of the run itself wait until TellPending, which is not called from within the run.
class TrainingDesk : public TrainingObserver {
 public:
  // A loaded network with its training data. Session, dialogs, view and clock are not owned and
  // outlive the desk. A store that cannot be made is told at once; training goes without it.
  TrainingDesk(Session& session, Dialogs& dialogs, TrainingView& view, const Clock& clock,
               size_t threads = UsefulThreads());

  // Trains for about `budget_ms`; false when there is nothing to do before the user acts: the
  // run is over or not begun, or it is halted.
  bool Work(int64_t budget_ms);
  // To be called now and then while the run is halted.
  void WorkWhileHalted();
  void TellPending();
  // Removes the temporary files; nothing else may be called afterwards.
  void RemoveFiles();
  // The same, but leaves the AutoSave store to the next start of the program.
  void LeaveSnapshots();
  // The same, with the network as it is where it is not saved: nobody can be asked.
  void LeaveNetwork();
  // Stores the network now for LeaveNetwork, which may come too late.
  void KeepNetwork();

  void Start();
  void Stop();
  void HaltOrResume();
  bool IsUnderWay() const;  // running or halted
  bool IsHalted() const { return m_run->state() == RunState::kHalted; }

  bool Save();
  bool SaveAs();
  void SaveOutputsAs();
  void SaveErrorHistoryAs();
  void SaveSnapshotAs();

  void ToggleLearnRateControl();
  // By its command; false when that is none of the option prompts'.
  bool ChangeOption(int32_t command);
  void ResetWeights();

  LearnRateControlState LearnRateControl() const;
  // "Off", "On" or "From Iteration %d".
  std::string LearnRateControlText() const;
  const Network& network() const { return m_session.network; }
  const std::string& history_path() const { return m_history.path(); }
  const RunFigures& figures() const { return m_run->figures(); }

 private:
  // TrainingObserver
  void ShowStatus(std::string_view text) override { m_view.ShowStatus(text); }
  void ScreenUpdated() override { m_view.Changed(); }
  void LearnRateControlStarted() override { m_view.Changed(); }
  bool CanStoreSnapshot() override { return !m_store.path().empty(); }
  bool StoreSnapshot() override;
  void HistoryFailed() override { m_history_failed = true; }

  void CreateStore();
  // Tells that the run has diverged, and offers what can be taken back.
  void TellDivergence();
  void NoteRun();
  // Notes what a save means for the snapshots, if it was one.
  bool Saved(bool saved);
  void ReleaseStore();
  void Ended(RunState state);
  void Apply(const OptionPrompt& prompt, const std::string& text);
  void Edited();

  Session& m_session;
  Dialogs& m_dialogs;
  TrainingView& m_view;
  TempFile m_history;
  TempFile m_store;
  RunNote m_note;  // of the store
  std::unique_ptr<TrainingRun> m_run;
  std::optional<int32_t> m_switched_off;  // the start iteration before learn rate control went off
  int64_t m_snapshots = 0;
  int64_t m_older_snapshots = 0;  // than the network's file
  bool m_history_failed = false;
  bool m_diverged = false;  // and nobody has been told
  bool m_kept = false;
};

}  // namespace tarn
