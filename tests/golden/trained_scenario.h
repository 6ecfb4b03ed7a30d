#pragma once

#include <cstdint>
#include <gtest/gtest.h>
#include <string>

#include "app/session.h"
#include "engine/recall_run.h"
#include "golden/scenario_run.h"
#include "scenarios/scenario.h"
#include "support/temp_folder.h"

namespace tarn {

// Trains a scenario, saves it, and has the saved file recall the scenario's own data.
class TrainedScenario : public testing::Test {
 protected:
  void Train(const std::string& scenario) {
    const SetClock clock;
    ScenarioRun training(GoldenScenario(scenario), clock);
    EXPECT_TRUE(training.run().Start().ok());
    ASSERT_EQ(training.run().RunFor(kNoLimitMs), RunState::kComplete);
    Network& network = training.network();
    WriteFile(m_folder / "trained.net", training.Collect().network);
    WriteFile(m_folder / "inputs", ReadFile(training.loaded() / network.PatName));
    m_data_name = network.PatName;
    m_target_column = network.TargCol;
  }

  // Loads the saved file with its own data, propagated once.
  void LoadTrained() {
    WriteFile(m_folder / m_data_name, ReadFile(m_folder / "inputs"));
    const Status opened = OpenNetwork(m_session, m_folder / "trained.net");
    ASSERT_TRUE(opened.ok()) << opened.message();
    Notices notices;
    ASSERT_TRUE(LoadForTraining(m_session, notices).ok());
    EXPECT_EQ(notices, Notices());
    ASSERT_TRUE(PropagateAll(m_session.network).ok());
  }

  void Recall(bool targets) {
    const Status opened = OpenNetwork(m_session, m_folder / "trained.net");
    ASSERT_TRUE(opened.ok()) << opened.message();
    Network& network = m_session.network;
    network.RecallPatName = "inputs";
    network.RecallPatCol = 1;
    network.RecallTargets = targets;
    if (targets) {
      network.RecallTargName = "inputs";
      network.RecallTargCol = m_target_column;
    }
    Notices notices;
    const Status recalled = LoadAndRecall(m_session, notices);
    ASSERT_TRUE(recalled.ok()) << recalled.message();
    EXPECT_EQ(notices, Notices());
  }

  TempFolder m_folder;
  Session m_session;
  std::string m_data_name;
  int32_t m_target_column = 0;
};

}  // namespace tarn
