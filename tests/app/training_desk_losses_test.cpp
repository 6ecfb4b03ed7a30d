// Runs that diverge or are cut short, and what is left of them.

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

#include "app/interrupted_runs.h"
#include "app/training_desk_fixture.h"
#include "netfile/autosave_store.h"
#include "support/faulty_files.h"

namespace tarn {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr float kHuge = 1e30F;  // the square of it is infinite

// The iteration of the snapshot that the next start finds, 0 when there is none.
int32_t IterationLeft() {
  const std::vector<InterruptedRun> runs = FindInterruptedRuns(TemporaryFolder());
  std::optional<StoredSnapshot> newest;
  if (runs.size() != 1 || !FindNewestSnapshot(runs[0].store, newest).ok()) return 0;
  return newest ? newest->iteration : 0;
}

TEST_F(TrainingDeskTest, TellsThatARunHasDiverged) {
  Desk();
  m_network.targets.Row(0)[0] = kHuge;
  RunToTheEnd();
  EXPECT_THAT(m_dialogs.told, IsEmpty()) << "not within the run";
  Desk().TellPending();
  Desk().TellPending();
  EXPECT_THAT(m_dialogs.told,
              ElementsAre("Tarn Warning|Training stopped at iteration 1: the error is infinite or "
                          "not a number."));
  EXPECT_FALSE(Desk().IsUnderWay());
}

TEST_F(TrainingDeskTest, OffersTheLastSnapshotOfARunThatHasDiverged) {
  SetLine(8, "3 0");
  Desk().Start();
  while (m_network.iteration < 7) ASSERT_TRUE(Desk().Work(0));
  m_network.targets.Row(0)[0] = kHuge;
  while (Desk().Work(1000)) {
  }
  m_dialogs.answers = {Answer::kYes};
  m_dialogs.files = {m_network.file_name};
  m_session.saved = true;
  Desk().TellPending();
  const int32_t last = (m_network.iteration - 1) / 3 * 3;
  const std::string expected = "Tarn Warning|Training stopped at iteration " +
                               std::to_string(m_network.iteration) +
                               ": the error is infinite or not a number. Save the network as it "
                               "was at iteration " +
                               std::to_string(last) + ", the last AutoSave snapshot?";
  EXPECT_THAT(m_dialogs.asked, ElementsAre(expected));
  EXPECT_TRUE(m_files.Get("/home/nets/test.net").value_or("").starts_with("TARNV2.1\nTest\n"));
  EXPECT_FALSE(m_session.saved) << "the file holds another network";
  EXPECT_THAT(m_dialogs.told, IsEmpty());
}

TEST_F(TrainingDeskTest, NotesWhoseStoreItIs) {
  Desk();
  const std::string folder = TemporaryFolder();
  ASSERT_EQ(FindInterruptedRuns(folder).size(), 1U);
  EXPECT_EQ(Slashes(FindInterruptedRuns(folder)[0].network), "/home/nets/test.net");
  m_dialogs.files = {"/home/nets/new.net"};
  Desk().SaveAs();
  ASSERT_EQ(FindInterruptedRuns(folder).size(), 1U);
  EXPECT_EQ(FindInterruptedRuns(folder)[0].network, "/home/nets/new.net");
  m_desk.reset();
  EXPECT_THAT(FindInterruptedRuns(folder), IsEmpty());
}

TEST_F(TrainingDeskTest, LeavesItsSnapshotsWhenNobodyCouldBeAsked) {
  SetLine(8, "8 0");
  RunToTheEnd();
  Desk().LeaveSnapshots();
  m_desk.reset();
  EXPECT_EQ(IterationLeft(), 16);
  EXPECT_EQ(std::ranges::count_if(m_files.Paths(), IsTemporary), 2) << "the store and its note";
}

TEST_F(TrainingDeskTest, LeavesTheNetworkAsItIsWhereItIsNotSaved) {
  RunToTheEnd();
  Desk().LeaveNetwork();
  m_desk.reset();
  EXPECT_EQ(IterationLeft(), 20);
}

TEST_F(TrainingDeskTest, KeepsTheNetworkThatALaterEndWouldFind) {
  RunToTheEnd();
  Desk().KeepNetwork();
  EXPECT_EQ(IterationLeft(), 20);
  Desk().LeaveNetwork();
  m_desk.reset();
  EXPECT_EQ(IterationLeft(), 20);
  EXPECT_EQ(std::ranges::count_if(m_files.Paths(), IsTemporary), 2) << "the store and its note";
}

TEST_F(TrainingDeskTest, LeavesNothingOfANetworkThatWasKeptAndThenSaved) {
  RunToTheEnd();
  Desk().KeepNetwork();
  EXPECT_TRUE(Desk().Save());
  Desk().LeaveNetwork();
  m_desk.reset();
  EXPECT_EQ(std::ranges::count_if(m_files.Paths(), IsTemporary), 0);
}

TEST_F(TrainingDeskTest, NotesTheRunAtItsEndWhereItCouldNotBefore) {
  SetLine(6, "20");
  ASSERT_EQ(Train(), "");
  FaultyFiles faulty(m_files);
  const auto fail_at = [&](int64_t k) {
    const ScopedFileLayer layer(faulty);
    faulty.FailAt(k);
    m_desk.reset();
    m_dialogs.told.clear();
    Open();
    return m_dialogs.told.empty();
  };
  const auto noted = [] { return !FindInterruptedRuns(TemporaryFolder()).empty(); };
  int64_t k = 1;
  while (k < 50 && (!fail_at(k) || noted())) ++k;
  ASSERT_FALSE(noted()) << "one of the faults is that of the note alone";
  RunToTheEnd();
  Desk().LeaveNetwork();
  m_desk.reset();
  EXPECT_EQ(IterationLeft(), 20);
}

TEST_F(TrainingDeskTest, TellsThatANameStandsInTheWayOfSnapshots) {
  SetLine(2, "ITERATION 9");
  SetLine(8, "3 0");
  RunToTheEnd();
  EXPECT_THAT(m_dialogs.told,
              ElementsAre("Tarn Warning|No AutoSave snapshots are taken. The file of this network "
                          "could not be read back: a value of it is infinite or not a number, or a "
                          "name begins like a section or a snapshot"));
  Desk().LeaveNetwork();
  m_desk.reset();
  EXPECT_EQ(IterationLeft(), 0);
}

TEST_F(TrainingDeskTest, LeavesNothingWhereThereIsNoSnapshot) {
  RunToTheEnd();
  Desk().LeaveSnapshots();
  EXPECT_EQ(std::ranges::count_if(m_files.Paths(), IsTemporary), 0);
}

TEST_F(TrainingDeskTest, LeavesNothingOfANetworkThatIsSaved) {
  RunToTheEnd();
  EXPECT_TRUE(Desk().Save());
  Desk().LeaveNetwork();
  m_desk.reset();
  EXPECT_EQ(std::ranges::count_if(m_files.Paths(), IsTemporary), 0);
}

TEST_F(TrainingDeskTest, LeavesNoTemporaryFiles) {
  RunToTheEnd();
  const auto ours = [&] { return std::ranges::count_if(m_files.Paths(), IsTemporary); };
  EXPECT_EQ(ours(), 3) << "history, store and its note";
  m_desk.reset();
  EXPECT_EQ(ours(), 0);
  Open();
  Desk().RemoveFiles();
  EXPECT_EQ(ours(), 0);
}

}  // namespace
}  // namespace tarn
