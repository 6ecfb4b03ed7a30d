#include "app/training_desk.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

#include "app/training_desk_fixture.h"
#include "base/paths.h"
#include "engine/error_history.h"
#include "netfile/autosave_store.h"
#include "support/faulty_files.h"

namespace tarn {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class TrainingDeskOptions : public TrainingDeskTest {
 protected:
  void EnterOption(int32_t command, const std::string& text) {
    m_dialogs.values.push_back(text);
    EXPECT_TRUE(Desk().ChangeOption(command));
  }
};

TEST_F(TrainingDeskTest, RunsToTheLastIterationAndSaysSo) {
  EXPECT_FALSE(Desk().Work(1000)) << "nothing is started";
  RunToTheEnd();
  EXPECT_EQ(m_network.iteration, 20);
  EXPECT_EQ(m_view.statuses.back(), "Training Run Complete!");
  EXPECT_GT(m_view.changes, 0);
  EXPECT_FALSE(Desk().IsUnderWay());
}

TEST_F(TrainingDeskTest, GoesOnCountingAfterStopAndStart) {
  SetLine(7, "100 1");
  Desk().Start();
  EXPECT_TRUE(Desk().IsUnderWay());
  while (m_network.iteration < 3) ASSERT_TRUE(Desk().Work(0));
  Desk().Stop();
  EXPECT_FALSE(Desk().IsUnderWay());
  EXPECT_EQ(m_view.statuses.back(), "Training Run Stopped");
  const int32_t stopped = m_network.iteration;
  EXPECT_FALSE(Desk().Work(1000));
  EXPECT_EQ(m_network.iteration, stopped);
  Desk().Start();
  EXPECT_EQ(m_view.statuses.back(), "Network Training");
  while (m_network.iteration == stopped) ASSERT_TRUE(Desk().Work(0));
  EXPECT_EQ(m_network.iteration, stopped + 1);
}

TEST_F(TrainingDeskTest, StandsStillWhileHalted) {
  Desk().Start();
  ASSERT_TRUE(Desk().Work(0));
  Desk().HaltOrResume();
  EXPECT_TRUE(Desk().IsHalted());
  EXPECT_TRUE(Desk().IsUnderWay());
  EXPECT_EQ(m_view.statuses.back(), "NOTICE!");
  const int32_t halted = m_network.iteration;
  EXPECT_FALSE(Desk().Work(1000));
  m_clock.Advance(1500);
  Desk().WorkWhileHalted();
  EXPECT_EQ(m_view.statuses.back(), "Network Training Halted");
  EXPECT_EQ(m_network.iteration, halted);
  Desk().HaltOrResume();
  EXPECT_FALSE(Desk().IsHalted());
  EXPECT_EQ(m_view.statuses.back(), "Network Training");
  while (Desk().Work(1000)) {
  }
  EXPECT_EQ(m_network.iteration, 20);
}

TEST_F(TrainingDeskTest, StaysCompleteWhenStopComesTooLate) {
  RunToTheEnd();
  Desk().Stop();
  EXPECT_EQ(m_view.statuses.back(), "Training Run Complete!");
}

TEST_F(TrainingDeskTest, ForgetsThatItWasSavedWhenASnapshotReplacesTheFile) {
  SetLine(8, "8 0");
  RunToTheEnd();
  EXPECT_TRUE(Desk().Save());
  m_dialogs.files = {"/home/snapshot.net", m_network.file_name};
  m_dialogs.snapshots = {"8", "8"};
  Desk().SaveSnapshotAs();
  EXPECT_TRUE(m_session.saved);
  Desk().SaveSnapshotAs();
  EXPECT_FALSE(m_session.saved);
}

TEST_F(TrainingDeskTest, StopsWhileHalted) {
  Desk().Start();
  ASSERT_TRUE(Desk().Work(0));
  Desk().HaltOrResume();
  Desk().Stop();
  EXPECT_FALSE(Desk().IsUnderWay());
}

TEST_F(TrainingDeskOptions, KnowsWhetherTheNetworkIsSaved) {
  RunToTheEnd();
  EXPECT_FALSE(m_session.saved);
  EXPECT_TRUE(Desk().Save());
  EXPECT_TRUE(m_session.saved);
  EnterOption(109, "0.5");
  EXPECT_FALSE(m_session.saved);
  EXPECT_TRUE(Desk().Save());
  Desk().Start();
  EXPECT_FALSE(m_session.saved);
}

TEST_F(TrainingDeskOptions, TakesEveryOptionOfTheMenu) {
  EnterOption(106, "0.25");
  EnterOption(107, "0.125");
  EnterOption(108, "0.75");
  EnterOption(109, "0.5");
  EnterOption(110, "3");
  EnterOption(142, "4");
  EnterOption(111, "77");
  EnterOption(113, "6");
  EnterOption(114, "9");
  EnterOption(147, "1.5");
  EXPECT_EQ(m_network.Eta, 0.25F);
  EXPECT_EQ(m_network.EtaMin, 0.125F);
  EXPECT_EQ(m_network.EtaMax, 0.75F);
  EXPECT_EQ(m_network.Alpha, 0.5F);
  EXPECT_EQ(m_network.FastProp, 3.0F);
  EXPECT_EQ(m_network.WeightRate, 4);
  EXPECT_EQ(m_network.MaxIterations, 77);
  EXPECT_EQ(m_network.SaveRate, 6);
  EXPECT_EQ(m_network.UpdateRate, 9);
  EXPECT_EQ(m_network.Tolerance, 1.5F);
  EXPECT_THAT(m_dialogs.told, IsEmpty());
  EXPECT_EQ(m_dialogs.entries.front(), "Set Learn Rate|Eta (between 0. and 1.):|0.100000");
  EXPECT_FALSE(Desk().ChangeOption(105));
}

TEST_F(TrainingDeskOptions, KeepsTheOldValueOfAnOptionThatIsRefusedOrCancelled) {
  EnterOption(110, "3.1");
  EXPECT_THAT(m_dialogs.told, ElementsAre("Training Parameter Error|Fast-Prop Coef Invalid"));
  m_dialogs.values.push_back(std::nullopt);
  EXPECT_TRUE(Desk().ChangeOption(110));
  EXPECT_EQ(m_network.FastProp, 0.0F);
  EXPECT_EQ(m_dialogs.told.size(), 1U);
}

TEST_F(TrainingDeskOptions, ChangesNothingWhenTheValueShownIsAccepted) {
  RunToTheEnd();
  m_network.Eta = 1e-7F;
  EXPECT_TRUE(Desk().Save());
  EnterOption(106, "0.000000");
  EXPECT_EQ(m_network.Eta, 1e-7F);
  EXPECT_TRUE(m_session.saved);
}

// With ten patterns, an update after each changes the weights ten times an iteration.
TEST_F(TrainingDeskOptions, UpdatesTheWeightsAfterThePatternsEntered) {
  RunToTheEnd();
  const Matrix in_one = m_network.layers[1].weights;
  for (const char* patterns : {"1", "0"}) {
    m_desk.reset();
    ASSERT_EQ(Train(), "");
    Open();
    EnterOption(142, patterns);
    RunToTheEnd();
    const bool equal = std::ranges::equal(in_one.All(), m_network.layers[1].weights.All());
    EXPECT_EQ(equal, std::string(patterns) == "0") << "0 stands for all patterns";
  }
}

TEST_F(TrainingDeskOptions, SwitchesLearnRateControlOffAndOnAgain) {
  SetLine(7, "10 1");
  EXPECT_EQ(Desk().LearnRateControlText(), "From Iteration 10");
  Desk().ToggleLearnRateControl();
  EXPECT_EQ(Desk().LearnRateControl(), LearnRateControlState::kOff);
  EXPECT_EQ(Desk().LearnRateControlText(), "Off");
  EXPECT_EQ(m_network.LRC, 21);
  Desk().ToggleLearnRateControl();
  EXPECT_EQ(m_network.LRC, 10);
  Desk().ToggleLearnRateControl();
  EnterOption(111, "100");
  EXPECT_EQ(Desk().LearnRateControl(), LearnRateControlState::kOff) << "more iterations";
  const float eta = m_network.Eta;
  Desk().Start();
  while (m_network.iteration < 12) ASSERT_TRUE(Desk().Work(0));
  EXPECT_EQ(m_network.Eta, eta);
  Desk().ToggleLearnRateControl();
  EXPECT_EQ(m_network.LRC, 13) << "its start has gone by";
  while (m_network.iteration < 14) ASSERT_TRUE(Desk().Work(0));
  EXPECT_NE(m_network.Eta, eta);
  EXPECT_EQ(Desk().LearnRateControlText(), "On");
}

TEST_F(TrainingDeskTest, ShowsWhenLearnRateControlStarts) {
  SetLine(7, "3 1");
  Desk().Start();
  while (m_network.iteration < 2) ASSERT_TRUE(Desk().Work(0));
  const int before = m_view.changes;
  while (m_network.iteration < 3) ASSERT_TRUE(Desk().Work(0));
  EXPECT_EQ(m_view.changes, before + 2) << "for that, and for the screen update";
}

TEST_F(TrainingDeskTest, ResetsTheWeightsWhenTheUserIsSure) {
  RunToTheEnd();
  const Matrix trained = m_network.layers[1].weights;
  m_dialogs.answers = {Answer::kNo, Answer::kYes};
  Desk().ResetWeights();
  EXPECT_TRUE(std::ranges::equal(trained.All(), m_network.layers[1].weights.All()));
  Desk().ResetWeights();
  Network expected = m_network;
  InitializeRandomWeights(expected, 1);
  EXPECT_TRUE(
      std::ranges::equal(expected.layers[1].weights.All(), m_network.layers[1].weights.All()));
  EXPECT_THAT(m_dialogs.asked, ElementsAre("Are You Sure?|Reset Network to Untrained State?",
                                           "Are You Sure?|Reset Network to Untrained State?"));
}

TEST_F(TrainingDeskTest, LeavesRemovedConnectionsRemovedWhenItResets) {
  SetSections("WEIGHTS:RANDOM\nCONNECTIONS:READ\n1\n1 2 1\nCONNECTIONS:STOP\n");
  m_dialogs.answers = {Answer::kYes};
  Desk().ResetWeights();
  EXPECT_EQ(m_network.layers[1].weights.Row(2)[1], 0.0F);
  EXPECT_NE(m_network.layers[1].weights.Row(2)[0], 0.0F);
}

TEST_F(TrainingDeskTest, TrainsOnFromWeightsThatWereResetInTheMidst) {
  SetLine(7, "100 1");
  Desk().Start();
  while (m_network.iteration < 5) ASSERT_TRUE(Desk().Work(0));
  m_dialogs.answers = {Answer::kYes};
  Desk().ResetWeights();
  const Matrix reset = m_network.layers[1].weights;
  while (m_network.iteration < 6) ASSERT_TRUE(Desk().Work(0));
  const Matrix& after = m_network.layers[1].weights;
  for (size_t i = 0; i < reset.All().size(); ++i) {
    EXPECT_NEAR(reset.All()[i], after.All()[i], 0.05F) << "one small step away";
  }
}

TEST_F(TrainingDeskTest, KeepsSnapshotsAndSavesTheOneChosen) {
  SetLine(8, "8 0");
  RunToTheEnd();
  EXPECT_EQ(m_dialogs.busy_log, "+-+-");
  m_dialogs.files.push_back("/home/snapshot.net");
  m_dialogs.snapshots.push_back("8");
  Desk().SaveSnapshotAs();
  EXPECT_THAT(m_dialogs.snapshot_lists, ElementsAre(ElementsAre("8", "16")));
  EXPECT_THAT(m_dialogs.told, IsEmpty());
  EXPECT_EQ(m_dialogs.file_questions.back(),
            "Save Tarn Network As...|Tarn Files (*.net)|*.net|All Files(*.*)|*.*|");
  EXPECT_TRUE(m_files.Get("/home/snapshot.net").value_or("").starts_with("TARNV2.1\nTest\n"));
}

TEST_F(TrainingDeskTest, SavesNoSnapshotThatIsNotThere) {
  Desk();
  for (const char* choice : {"0", "abc", "7"}) {
    m_dialogs.files.push_back("/home/snapshot.net");
    m_dialogs.snapshots.push_back(choice);
    Desk().SaveSnapshotAs();
    EXPECT_EQ(m_dialogs.told.back(), "Network AutoSave Aborted|File Not Saved") << choice;
  }
  EXPECT_THAT(m_dialogs.snapshot_lists.back(), IsEmpty());
  EXPECT_FALSE(m_files.Exists("/home/snapshot.net"));
  m_dialogs.files = {std::nullopt, "/home/snapshot.net"};
  m_dialogs.snapshots.push_back(std::nullopt);
  Desk().SaveSnapshotAs();
  Desk().SaveSnapshotAs();
  EXPECT_EQ(m_dialogs.told.size(), 3U) << "cancelled twice without a word";
}

TEST_F(TrainingDeskTest, AnswersForAStoreThatHasGone) {
  Desk();
  for (const std::string& path : m_files.Paths()) {
    if (IsTemporary(path)) m_files.Remove(path);
  }
  m_dialogs.files.push_back("/home/snapshot.net");
  Desk().SaveSnapshotAs();
  EXPECT_THAT(m_dialogs.told, ElementsAre("AutoSave Error|AutoSave File Not Found"));
}

TEST_F(TrainingDeskTest, ExportsErrorHistoryAndOutputs) {
  RunToTheEnd();
  m_dialogs.files = {"/home/run.err", "/home/run.out", "/none/run.err", "/none/run.out"};
  Desk().SaveErrorHistoryAs();
  Desk().SaveOutputsAs();
  EXPECT_THAT(m_dialogs.told, IsEmpty());
  EXPECT_TRUE(m_files.Get("/home/run.err").value_or("").starts_with("1,0."));
  EXPECT_TRUE(m_files.Get("/home/run.out").value_or("").starts_with("1\t"));
  Desk().SaveErrorHistoryAs();
  Desk().SaveOutputsAs();
  EXPECT_THAT(m_dialogs.told,
              ElementsAre("Error History Save Aborted|File Error Writting Error History",
                          "Output/Target Save Aborted|File Error Writting Outputs"));
  EXPECT_EQ(m_dialogs.file_questions[1],
            "Save Net Outputs/Targets As ASCII File...|"
            "Tarn Output File (*.out)|*.out|All Files(*.*)|*.*|");
}

TEST_F(TrainingDeskTest, GoesOnRecordingAfterAnExportInTheMidst) {
  SetLine(7, "100 1");
  Desk().Start();
  while (m_network.iteration < 5) ASSERT_TRUE(Desk().Work(0));
  m_dialogs.files = {"/home/a.err", "/home/b.err"};
  Desk().SaveErrorHistoryAs();
  while (Desk().Work(1000)) {
  }
  Desk().SaveErrorHistoryAs();
  EXPECT_EQ(std::ranges::count(m_files.Get("/home/b.err").value_or(""), '\n'), 20);
}

TEST_F(TrainingDeskTest, TrainsWithoutAStoreWhenNoneCanBeMade) {
  SetLine(6, "20");
  SetLine(8, "8 0");
  ASSERT_EQ(Train(), "");
  {
    FaultyFiles full(m_files);
    const ScopedFileLayer layer(full);
    full.FailAt(1, FaultyFiles::Fault::kDiskFull);
    Open();
    EXPECT_THAT(m_dialogs.told, ElementsAre("Tarn Error|Cannot Create AutoSave File Storage"));
    RunToTheEnd();
    EXPECT_EQ(m_network.iteration, 20);
    EXPECT_EQ(m_dialogs.busy_log, "");
    Desk().TellPending();
    EXPECT_EQ(m_dialogs.told.back(), "Tarn Error|File Error Writting Error History");
    Desk().TellPending();
    EXPECT_EQ(m_dialogs.told.size(), 2U) << "told once";
  }
}

}  // namespace
}  // namespace tarn
