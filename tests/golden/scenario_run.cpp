#include "golden/scenario_run.h"

#include <gtest/gtest.h>
#include <utility>

#include "data/outputs_export.h"
#include "engine/error_history.h"
#include "golden/golden_files.h"
#include "netfile/autosave_store.h"
#include "netfile/network_writer.h"

namespace tarn {

LoadedScenario::LoadedScenario(const Scenario& scenario) {
  m_session.seeds = SeedSource(scenario.seed);
  const Status opened = OpenNetwork(m_session, WriteScenario(scenario, m_folder.path()));
  EXPECT_TRUE(opened.ok()) << opened.message();
  const Status loaded = LoadForTraining(m_session, m_notices);
  EXPECT_TRUE(loaded.ok()) << loaded.message();
  if (scenario.iterations > 0) network().MaxIterations = scenario.iterations;
}

StoreKeeper::StoreKeeper(const Network& network, std::string path)
    : m_network(network), m_path(std::move(path)) {
  const Status created = CreateStore(m_path);
  EXPECT_TRUE(created.ok()) << created.message();
}

bool StoreKeeper::StoreSnapshot() {
  const bool stored = AppendSnapshot(m_path, m_network);
  EXPECT_TRUE(stored);
  return stored;
}

void StoreKeeper::HistoryFailed() {
  ADD_FAILURE() << "the error history could not be written";
}

uint64_t WeightsHash(const Network& network) {
  Hash hash;
  for (const Layer& layer : network.layers) hash.Add(layer.weights.All());
  return hash.value();
}

ScenarioRun::ScenarioRun(const Scenario& scenario, const Clock& clock)
    : m_loaded(scenario),
      m_keeper(m_loaded.network(), m_loaded / "store"),
      m_run(m_loaded.network(), clock, m_keeper, m_loaded / "history") {
  if (scenario.group_size > 0) m_run.SetGroupSize(scenario.group_size);
}

Results ScenarioRun::Collect() {
  Results results;
  const Status saved = WriteNetworkFile(network().file_name, network());
  EXPECT_TRUE(saved.ok()) << saved.message();
  const Status history = ExportErrorHistory(m_run.history().path(), m_loaded / "errors");
  EXPECT_TRUE(history.ok()) << history.message();
  const Status outputs = ExportOutputs(network(), m_loaded / "outputs");
  EXPECT_TRUE(outputs.ok()) << outputs.message();
  results.network = ReadFile(network().file_name);
  results.error_history = ReadFile(m_loaded / "errors");
  results.outputs = ReadFile(m_loaded / "outputs");
  if (m_run.has_snapshot()) results.store = ReadFile(m_keeper.path());
  results.weights_hash = WeightsHash(network());
  Hash records;
  records.Add(ReadFile(m_run.history().path()));
  results.history_hash = records.value();
  return results;
}

Results TrainInOneGo(const Scenario& scenario) {
  const SetClock clock;
  ScenarioRun training(scenario, clock);
  EXPECT_TRUE(training.run().Start().ok());
  EXPECT_EQ(training.run().RunFor(kNoLimitMs), RunState::kComplete);
  return training.Collect();
}

}  // namespace tarn
