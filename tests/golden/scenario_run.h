#pragma once

#include <cstdint>
#include <optional>
#include <ostream>
#include <string>

#include "app/session.h"
#include "base/clock.h"
#include "base/status.h"
#include "engine/training_run.h"
#include "scenarios/scenario.h"
#include "support/set_clock.h"
#include "support/temp_folder.h"

namespace tarn {

// A scenario in a folder of its own, opened and loaded as the program does it: ready for a
// training run.
class LoadedScenario {
 public:
  explicit LoadedScenario(const Scenario& scenario);

  Network& network() { return m_session.network; }
  // The path of a name in the scenario's folder.
  std::string operator/(std::string_view name) const { return m_folder / name; }
  const Notices& notices() const { return m_notices; }

 private:
  TempFolder m_folder;
  Session m_session;
  Notices m_notices;
};

// Keeps the AutoSave store.
class StoreKeeper : public TrainingObserver {
 public:
  StoreKeeper(const Network& network, std::string path);

  bool StoreSnapshot() override;
  void HistoryFailed() override;
  const std::string& path() const { return m_path; }

 private:
  const Network& m_network;
  std::string m_path;
};

// What a run leaves behind.
struct Results {
  std::string network;  // the saved network file
  std::string error_history;
  std::string outputs;
  std::optional<std::string> store;  // when a snapshot was stored
  uint64_t weights_hash = 0;
  uint64_t history_hash = 0;

  bool operator==(const Results&) const = default;
};
// For messages of failed tests.
inline void PrintTo(const Scenario& scenario, std::ostream* out) {
  *out << scenario.name;
}
inline void PrintTo(const Results& results, std::ostream* out) {
  *out << results.network << results.error_history << results.outputs;
}

uint64_t WeightsHash(const Network& network);

// A scenario with its training run.
class ScenarioRun {
 public:
  ScenarioRun(const Scenario& scenario, const Clock& clock);

  Network& network() { return m_loaded.network(); }
  TrainingRun& run() { return m_run; }
  const LoadedScenario& loaded() const { return m_loaded; }
  // Saves, exports, and reads everything back.
  Results Collect();

 private:
  LoadedScenario m_loaded;
  StoreKeeper m_keeper;
  TrainingRun m_run;
};

// A clock that moves on by a millisecond with every look at it.
class TickingClock : public Clock {
 public:
  int64_t NowMs() const override { return m_now_ms++; }

 private:
  mutable int64_t m_now_ms = 0;
};

// Longer than any run of a scenario.
inline constexpr int64_t kNoLimitMs = int64_t{1} << 40;

// The whole run in one go, with a clock that stands still.
Results TrainInOneGo(const Scenario& scenario);

}  // namespace tarn
