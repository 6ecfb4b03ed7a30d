#include "app/interrupted_runs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "app/session_fixture.h"
#include "base/process.h"
#include "base/temp_file.h"
#include "netfile/autosave_store.h"
#include "netfile/network_writer.h"
#include "support/doomed_process.h"
#include "support/fake_dialogs.h"
#include "support/faulty_files.h"
#include "support/slashes.h"

namespace tarn {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using namespace std::string_literals;

// A store with the snapshots 5 and 10 of the fixture's network in /tmp, and a note of it.
class InterruptedRuns : public SessionFixture {
 protected:
  InterruptedRuns() {
    EXPECT_EQ(Train(), "");
    for (const int32_t iteration : {5, 10}) Append(iteration);
    m_network = {};
    m_session.saved = false;
    PutNote(m_note, "/home/nets/test.net", m_store);
  }
  void Append(int32_t iteration) {
    m_network.iteration = iteration;
    EXPECT_TRUE(AppendSnapshot(m_store, m_network));
  }
  void PutNote(const std::string& note, const std::string& network, const std::string& store,
               int older_snapshots = 0) {
    m_files.Put(note, "TARN RUN 1\0"s + network + '\0' + store.substr(store.rfind('/') + 1) + '\0' +
                          std::to_string(older_snapshots) + '\0');
  }
  void Offer() { OfferInterruptedRuns(FindInterruptedRuns("/tmp"), m_session, m_dialogs); }

  const std::string m_store = "/tmp/Tarn" + EndedProcess() + "-store1";
  const std::string m_note = "/tmp/Tarn" + EndedProcess() + "-note12.run";
  FakeDialogs m_dialogs;
};

TEST_F(InterruptedRuns, GiveTheirNewestSnapshotBackAsAFile) {
  m_dialogs.answers = {Answer::kYes};
  m_dialogs.files = {"/home/nets/back.net"};
  Offer();
  EXPECT_THAT(m_dialogs.asked,
              ElementsAre("Tarn Warning|The training of /home/nets/test.net was interrupted. Its "
                          "AutoSave snapshot of iteration 10 is newer than the file. Save the "
                          "snapshot as a network file? No removes it, Cancel asks again at the "
                          "next start."));
  EXPECT_EQ(m_dialogs.file_questions.back(),
            "Save Tarn Network As...|Tarn Files (*.net)|*.net|All Files(*.*)|*.*|");
  const std::string back = m_files.Get("/home/nets/back.net").value_or("");
  EXPECT_TRUE(m_files.Get("/home/nets/test.net").has_value());
  EXPECT_TRUE(back.starts_with("TARNV2.1\nTest\n"));
  EXPECT_THAT(back, testing::Not(testing::HasSubstr("ITERATION")));
  EXPECT_EQ(Slashes(m_network.file_name), "/home/nets/back.net") << "at hand to go on with";
  EXPECT_TRUE(m_network.trained);
  EXPECT_FALSE(m_files.Exists(m_store));
  EXPECT_FALSE(m_files.Exists(m_note));
}

TEST_F(InterruptedRuns, AreForgottenWhenTheUserSaysNo) {
  m_dialogs.answers = {Answer::kNo};
  Offer();
  EXPECT_FALSE(m_files.Exists(m_store));
  EXPECT_FALSE(m_files.Exists(m_note));
  EXPECT_EQ(m_network.file_name, "");
}

TEST_F(InterruptedRuns, AreOfferedAgainAfterCancelAndAfterAFailure) {
  m_dialogs.answers = {Answer::kCancel, Answer::kYes, Answer::kYes};
  m_dialogs.files = {std::nullopt, "/none/back.net"};
  Offer();
  Offer();
  EXPECT_THAT(m_dialogs.told, IsEmpty());
  Offer();
  EXPECT_THAT(m_dialogs.told, ElementsAre("AutoSave Error|Error Writing Network File"));
  EXPECT_EQ(m_dialogs.asked.size(), 3U);
  EXPECT_TRUE(m_files.Exists(m_store));
  EXPECT_TRUE(m_files.Exists(m_note));
}

TEST_F(InterruptedRuns, StayWhenTheirStoreCannotBeReadNow) {
  FaultyFiles faulty(m_files);
  const ScopedFileLayer layer(faulty);
  const std::vector<InterruptedRun> runs = FindInterruptedRuns("/tmp");
  ASSERT_EQ(runs.size(), 1U);
  for (int64_t k = 1; k <= 2; ++k) {
    faulty.FailAt(k, FaultyFiles::Fault::kOnce, FaultyFiles::Kinds::kAll);
    OfferInterruptedRuns(runs, m_session, m_dialogs);
    EXPECT_EQ(faulty.Failures(), 1) << "the open, then the read";
  }
  EXPECT_THAT(m_dialogs.asked, IsEmpty());
  EXPECT_TRUE(m_files.Exists(m_store));
  EXPECT_TRUE(m_files.Exists(m_note));
}

TEST_F(InterruptedRuns, AreForgottenWhenTheNetworkWasSavedAfterItsSnapshots) {
  PutNote(m_note, "/home/nets/test.net", m_store, 2);
  Offer();
  EXPECT_THAT(m_dialogs.asked, IsEmpty());
  EXPECT_FALSE(m_files.Exists(m_store));
  EXPECT_FALSE(m_files.Exists(m_note));
}

TEST_F(InterruptedRuns, AreOfferedWhenTheNetworkWasSavedBeforeTheLastSnapshot) {
  PutNote(m_note, "/home/nets/test.net", m_store, 1);
  m_dialogs.answers = {Answer::kCancel};
  Offer();
  EXPECT_THAT(m_dialogs.asked, ElementsAre(testing::HasSubstr("of iteration 10 is newer")));
}

// What lies behind the snapshot was under way when the process was killed.
TEST_F(InterruptedRuns, AreForgottenWhenOnlyHalfASnapshotIsNewer) {
  PutNote(m_note, "/home/nets/test.net", m_store, 2);
  const std::string whole = m_files.Get(m_store).value();
  m_files.Put(m_store, whole + whole.substr(0, whole.size() / 4));
  Offer();
  EXPECT_THAT(m_dialogs.asked, IsEmpty());
  EXPECT_FALSE(m_files.Exists(m_store));
}

// By another process, or by another clock.
TEST_F(InterruptedRuns, AskAlsoWhenTheFileHasBeenWrittenSince) {
  m_files.Put("/home/nets/test.net", "written since");
  m_dialogs.answers = {Answer::kCancel, Answer::kNo};
  Offer();
  EXPECT_THAT(m_dialogs.asked,
              ElementsAre("Tarn Warning|The training of /home/nets/test.net was interrupted after "
                          "its AutoSave snapshot of iteration 10, and the file has been written "
                          "since. Save the snapshot as a network file? No removes it, Cancel asks "
                          "again at the next start."));
  EXPECT_TRUE(m_files.Exists(m_store));
  Offer();
  EXPECT_FALSE(m_files.Exists(m_store));
}

TEST_F(InterruptedRuns, AreOfferedWhenTheFileHasGone) {
  m_files.Remove("/home/nets/test.net");
  m_dialogs.answers = {Answer::kCancel};
  Offer();
  EXPECT_EQ(m_dialogs.asked.size(), 1U);
}

TEST_F(InterruptedRuns, HaveNothingToOfferBeforeTheFirstWholeSnapshot) {
  const std::string whole = m_files.Get(m_store).value();
  m_files.Put(m_store, whole.substr(0, whole.find("NORMALIZE")));
  Offer();
  EXPECT_THAT(m_dialogs.asked, IsEmpty());
  EXPECT_FALSE(m_files.Exists(m_note));
}

TEST_F(InterruptedRuns, AreLeftToTheProcessThatLives) {
  for (const std::string& path : {m_note, m_store}) m_files.Remove(path);
  PutNote("/tmp/Tarn" + OtherProcess() + "-note12.run", "/home/nets/test.net", m_store);
  EXPECT_THAT(FindInterruptedRuns("/tmp"), IsEmpty());
}

TEST_F(InterruptedRuns, AreNotMadeOfOtherFiles) {
  m_files.Put("/home/nets/precious", "ITERATION 5\n");
  const std::string start = "/tmp/Tarn" + EndedProcess();
  for (const char* store : {"/home/nets/precious", "../home/nets/precious", "", ".."}) {
    m_files.Put(m_note, "TARN RUN 1\0/home/nets/test.net\0"s + store + '\0');
    for (const InterruptedRun& run : FindInterruptedRuns("/tmp")) {
      EXPECT_EQ(Slashes(run.store), "/tmp/..");
    }
  }
  m_files.Remove(m_note);
  PutNote(start + "-note56.run", "", m_store);
  m_files.Put(start + "-note78.run", "TARN RUN 2\0/home/nets/test.net\0store\0"s);
  m_files.Put(start + "-note90.run", "TARN RUN 1");
  m_files.Put(start + "-noteab.run", "");
  m_files.Put(start + "-note.run", "TARN RUN 1\0/home/nets/test.net\0store\0"s);
  EXPECT_THAT(FindInterruptedRuns("/tmp"), IsEmpty());
  EXPECT_THAT(FindInterruptedRuns("/no such folder"), IsEmpty());
}

TEST_F(InterruptedRuns, KeepTheirStoresWhenAbandonedFilesAreRemoved) {
  const std::string left = "/tmp/Tarn" + EndedProcess() + "-left12";
  m_files.Put(left, "");
  EXPECT_EQ(ClearTemporaryFolder("/tmp").size(), 1U);
  EXPECT_FALSE(m_files.Exists(left));
  EXPECT_TRUE(m_files.Exists(m_store));
  EXPECT_TRUE(m_files.Exists(m_note));
  RemoveAbandonedFiles("/tmp");
  EXPECT_FALSE(m_files.Exists(m_store));
}

TEST_F(InterruptedRuns, AreNotedInAFileOfTheirProcess) {
  RunNote note;
  note.Write("/home/nets/test.net", m_store, 7);
  EXPECT_TRUE(note.IsThere());
  m_files.Remove(m_note);
  // The next process with this number has ended this one.
  const std::vector<InterruptedRun> runs = FindInterruptedRuns("/tmp");
  ASSERT_EQ(runs.size(), 1U);
  EXPECT_TRUE(Slashes(runs[0].note).starts_with("/tmp/Tarn" + ProcessName() + "-"));
  EXPECT_EQ(runs[0].network, "/home/nets/test.net");
  EXPECT_EQ(Slashes(runs[0].store), m_store);
  EXPECT_EQ(runs[0].older_snapshots, 7);
  note.Write("/home/nets/other.net", m_store, 8);
  ASSERT_EQ(FindInterruptedRuns("/tmp").size(), 1U) << "written anew";
  EXPECT_EQ(FindInterruptedRuns("/tmp")[0].network, "/home/nets/other.net");
  note.Write("/home/nets/third.net", "/none/store", 9);
  EXPECT_EQ(FindInterruptedRuns("/tmp")[0].network, "/home/nets/other.net") << "it stays";
  note.Remove();
  EXPECT_THAT(FindInterruptedRuns("/tmp"), IsEmpty());
  EXPECT_FALSE(note.IsThere());
}

}  // namespace
}  // namespace tarn
