// The note of a training run, from its writing to the end of the run, on disks that fail in every
// way at every moment.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "app/faults_scene.h"
#include "app/interrupted_runs.h"
#include "base/paths.h"
#include "netfile/autosave_store.h"
#include "support/faulty_files.h"
#include "support/memory_files.h"

namespace tarn {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using namespace std::string_literals;

constexpr const char* kFolder = "/home/nets";
constexpr const char* kFirst = "/home/nets/first.net";
constexpr const char* kSecond = "/home/nets/second.net";

class RunNoteFaults : public testing::Test {
 protected:
  void Clear() {
    m_scene.reset();
    for (const std::string& path : m_files.Paths()) m_files.Remove(path);
  }
  // A desk at which a run has ended, that has not been left.
  void OpenDesk() {
    Clear();
    m_scene = std::make_unique<FaultScene>(kFolder, 10);
    m_scene->OpenDesk();
    m_scene->desk->TellPending();
    m_scene->dialogs = {};
  }
  // The scene goes before the start: it is the process that has ended.
  FakeDialogs Start(Answer answer) {
    m_scene.reset();
    FakeDialogs dialogs;
    dialogs.answers = {answer};
    Session session;
    OfferInterruptedRuns(ClearTemporaryFolder(TemporaryFolder()), session, dialogs);
    return dialogs;
  }

  // What the notes hold, the part of a name behind the number of the process aside.
  std::vector<std::string> Notes() const {
    std::vector<std::string> notes;
    for (const std::string& path : m_files.Paths()) {
      if (path.ends_with(".run")) notes.push_back(m_files.Get(path).value_or(""));
    }
    return notes;
  }
  static std::string NoteOf(const std::string& network) {
    return "TARN RUN 1\0"s + network + "\0store\0003\0"s;
  }
  size_t Temporaries() { return m_files.NamesIn(TemporaryFolder()).size(); }

  void Rewrite(bool again) {
    const std::string store = JoinPath(TemporaryFolder(), "store");
    std::unique_ptr<RunNote> note;
    ForAllFaults(
        m_faulty, again ? "note of a run under another name" : "note of a run",
        [&] {
          note.reset();
          Clear();
          m_files.Put(store, "");
          note = std::make_unique<RunNote>();
          if (again) note->Write(kFirst, store, 3);
        },
        [&] { note->Write(kSecond, store, 3); },
        [&](bool struck) {
          SCOPED_TRACE(testing::PrintToString(m_faulty.Failed()));
          EXPECT_EQ(m_files.OpenHandles(), 0);
          const std::vector<std::string> notes = Notes();
          ASSERT_EQ(notes.size(), note->IsThere() ? 1U : 0U);
          EXPECT_TRUE(note->IsThere() || (struck && !again));
          if (note->IsThere()) {
            EXPECT_TRUE(notes[0] == NoteOf(kSecond) ||
                        (struck && again && notes[0] == NoteOf(kFirst)));
          }
          note->Remove();
          EXPECT_LE(Temporaries(), 1 + static_cast<size_t>(m_faulty.Failures() > 1)) << "the store";
          (void)ClearTemporaryFolder(TemporaryFolder());
          EXPECT_EQ(Temporaries(), 1U) << "the store";
        },
        2);
  }

  MemoryFiles m_files{kFolder};
  FaultyFiles m_faulty{m_files};
  ScopedFileLayer m_layer{m_faulty};
  std::unique_ptr<FaultScene> m_scene;
};

TEST_F(RunNoteFaults, LeaveAWholeNoteOrNone) {
  Rewrite(false);
}

TEST_F(RunNoteFaults, LeaveTheOldNoteOrTheNewOne) {
  Rewrite(true);
}

TEST_F(RunNoteFaults, OfTheEndOfARunLeaveNothingToOffer) {
  ForAllFaults(
      m_faulty, "end of a training run", [this] { OpenDesk(); }, [this] { m_scene->desk.reset(); },
      [this](bool struck) {
        SCOPED_TRACE(testing::PrintToString(m_faulty.Failed()));
        const std::string old = BytesOf(*m_scene / "test.net");
        EXPECT_TRUE(struck || Notes().empty());
        const FakeDialogs dialogs = Start(Answer::kYes);
        EXPECT_THAT(dialogs.asked, IsEmpty());
        EXPECT_THAT(dialogs.told, IsEmpty());
        EXPECT_EQ(Temporaries(), 0U);
        EXPECT_EQ(BytesOf(JoinPath(kFolder, "test.net")), old);
      },
      0);
}

TEST_F(RunNoteFaults, OfAnEndWithoutMemoryLeaveTheSnapshots) {
  ForAllFaults(
      m_faulty, "end of a training run whose snapshots stay", [this] { OpenDesk(); },
      [this] {
        m_scene->desk->LeaveNetwork();
        m_scene->desk.reset();
      },
      [this](bool) {
        SCOPED_TRACE(testing::PrintToString(m_faulty.Failed()));
        ASSERT_EQ(Notes().size(), 1U);
        EXPECT_THAT(Start(Answer::kCancel).asked,
                    ElementsAre(testing::HasSubstr("snapshot of iteration 20 is newer")));
        EXPECT_EQ(Temporaries(), 2U) << "the note and its store";
        EXPECT_EQ(Start(Answer::kNo).asked.size(), 1U);
        EXPECT_EQ(Temporaries(), 0U);
      });
}

}  // namespace
}  // namespace tarn
