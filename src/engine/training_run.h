#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "base/clock.h"
#include "base/status.h"
#include "engine/error_history.h"
#include "engine/learn_rate_control.h"
#include "engine/monitors.h"
#include "engine/network.h"
#include "engine/packed_network.h"

namespace tarn {

// What a training run tells its window. All calls come from within TrainingRun's functions.
class TrainingObserver {
 public:
  virtual ~TrainingObserver() = default;
  // A text for the status bar.
  virtual void ShowStatus(std::string_view) {}
  // The figures of the network and of the run are new.
  virtual void ScreenUpdated() {}
  virtual void LearnRateControlStarted() {}
  // Whether there is a store that takes snapshots; without one nothing is shown or stored.
  virtual bool CanStoreSnapshot() { return true; }
  // Store a snapshot of the network as it is; false when none was stored.
  virtual bool StoreSnapshot() { return false; }
  // The error history could not be written; it ends there. Told once a run.
  virtual void HistoryFailed() {}
};

// Time and speed as of the last screen update.
struct RunFigures {
  double fraction_complete = 0;  // of MaxIterations
  int64_t seconds_remaining = 0;
  double speed = 0;  // thousands of connections a second, training patterns only
};

// Up to this iteration an estimate of the time remaining would mislead: none is shown.
inline constexpr int32_t kNoEstimateTo = 5;

// "hours:minutes:seconds", each as a plain number.
std::string TimeRemainingText(int64_t seconds);

enum class RunState {
  kIdle,  // not started yet
  kRunning,
  kHalted,
  kStopped,   // by Stop
  kComplete,  // MaxIterations reached
  kDiverged,  // the error became infinite or not a number
};

// A training run that is worked through in slices: the caller runs it for a while, sees to its
// window or its terminal, and runs it on. What is computed does not depend on the slicing.
//
// An iteration is one pass over the training list. Weights change after every group of
// patterns; groups run on over the end of the list, so an iteration can end within one. At
// screen updates the test set is passed, the figures are refreshed and the history grows. The
// iteration whose error is infinite or not a number is the last one, and has a screen update.
//
// The run alone changes weights, statistics, Eta and the iteration counter of the network; the
// caller may change the training parameters between slices, and the weights when it says so.
// The network's weights, weight changes, derivatives and deltas are up to date between slices
// and whenever the observer is called. Network, clock and observer are not owned and outlive
// the run.
class TrainingRun {
 public:
  // Readies the network: iteration 0, statistics 0, WeightRate brought into 0..nTrain. The
  // history file is created, empty. Up to `threads` threads share long work within a slice.
  TrainingRun(Network& network, const Clock& clock, TrainingObserver& observer,
              std::string history_path, size_t threads = UsefulThreads());

  // Begins to run, or goes on after Stop or completion: the iteration counter continues, clock
  // and history start over. Needs at least one training pattern. kOutOfMemory when there is no
  // room for the work; nothing has begun then.
  Status Start();
  // To be called between slices when the network's weights, or which of them are removed, have been
  // changed. kOutOfMemory when there is no room for the work; the run cannot go on then.
  Status WeightsReplaced();
  // Ends the run at the next point where it can, without touching weights further.
  void Stop();
  void Halt();
  void Resume();

  // Trains for about `budget_ms` milliseconds, or until the run ends.
  RunState RunFor(int64_t budget_ms);

  RunState state() const { return m_state; }
  const RunFigures& figures() const { return m_figures; }
  const ErrorHistory& history() const { return m_history; }
  bool has_snapshot() const { return m_has_snapshot; }
  bool learn_rate_control_started() const { return m_control.started; }

  // Patterns per weight update; the network's WeightRate, or nTrain when that is 0. Takes
  // effect with the next group.
  int32_t group_size() const { return m_group_size; }
  void SetGroupSize(int32_t patterns);

 private:
  // The stages of a run, in order. A slice can end behind those marked with *; behind those
  // marked with ** the run also looks whether it has been stopped. Patterns of a group are
  // worked on in batches, one at a time when a slice is to end or the run to stop.
  enum class Stage {
    kGroup,        // a new group begins, or the run is over
    kForward,      // ** the next batch is propagated
    kBackward,     // ** its errors are propagated back, the monitors add up
    kAdvance,      // the cursor moves on
    kUpdate,       // * weights change
    kIteration,    // * an iteration may have ended
    kScreen,       // a screen update begins
    kTestPattern,  // * a batch of the test set
    kRefresh,      // * figures and history
    kAutoSave,     // * snapshot
  };

  Stage Do(Stage stage);
  Stage BeginGroup();
  void Forward();
  void Backward();
  Stage Advance();
  Stage Update();
  Stage EndIteration();
  Stage BeginScreenUpdate();
  Stage TestPattern();
  void Refresh();
  void AutoSave();

  void EndPass();
  int32_t BatchOf(int32_t patterns) const;
  std::span<const int32_t> Batch() const;
  bool NextFollowsAtOnce();
  bool NextIterationEndsQuietly() const;
  bool IsScreenUpdate(int32_t iteration) const;
  bool IsAutoSave(int32_t iteration) const;
  void Publish();
  void UpdateTiming();
  static bool StopsBefore(Stage next);
  bool MayPauseBefore(Stage next) const;
  bool TimeIsUp();
  void AlternateHaltText(int64_t now);
  void EndHalt(int64_t now);

  Network& m_network;
  std::unique_ptr<PackedNetwork> m_packed;  // from the first start on
  size_t m_threads;
  bool m_published = true;  // the record is up to date
  const Clock& m_clock;
  TrainingObserver& m_observer;
  ErrorHistory m_history;

  RunState m_state = RunState::kIdle;
  bool m_stop_asked = false;     // by Stop
  bool m_limit_reached = false;  // MaxIterations
  bool m_diverged = false;
  bool m_has_snapshot = false;
  bool m_history_failed = false;
  Stage m_stage = Stage::kGroup;

  int32_t m_group_size = 1;
  int32_t m_group = 1;                 // the size of the group under way
  double m_patterns_an_iteration = 0;  // nTrain rounded up to whole groups, as the run started
  int32_t m_in_group = 0;              // patterns of the group that are done
  int32_t m_batch = 1;                 // patterns of the batch under way
  int32_t m_cursor = 0;                // position in the training list, kept over groups and runs
  int32_t m_test_position = 0;         // position in the test list during a screen update
  float m_tolerance = 0;               // effective

  MonitorSums<double> m_sums;  // of the pass under way
  MonitorSums<double> m_pass;  // of the last whole pass
  MonitorSums<float> m_test_sums;
  bool m_pass_complete = false;  // in this group
  LearnRateControl m_control;

  int64_t m_connections = 0;   // the work of a pattern
  int64_t m_work = 0;          // done since the clock was read
  int64_t m_slice_work = 0;    // done in this slice, up to that reading
  double m_work_per_ms = 1e6;  // of the slice before
  int64_t m_deadline_ms = 0;   // of the slice
  bool m_time_is_up = false;
  bool m_single_steps = false;  // the slice has no time at all

  int64_t m_start_ms = 0;
  int64_t m_outside_since_ms = 0;  // end of the last slice
  int64_t m_interface_ms = 0;      // spent between slices
  int64_t m_halted_since_ms = 0;
  int64_t m_halt_text_ms = 0;  // when the halt text last changed
  bool m_halt_notice = false;  // which of the two it is
  int64_t m_paused_ms = 0;     // spent halted
  RunFigures m_figures;
};

}  // namespace tarn
