// The next start of the program after a training run that was killed, on disks that fail in every
// way at every moment.

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "app/interrupted_runs.h"
#include "app/session_fixture.h"
#include "netfile/autosave_store.h"
#include "netfile/netfile_test.h"
#include "support/doomed_process.h"
#include "support/fake_dialogs.h"
#include "support/faulty_files.h"
#include "support/slashes.h"

namespace tarn {
namespace {

using testing::AnyOf;
using testing::Each;
using testing::IsEmpty;
using namespace std::string_literals;
using Texts = std::vector<std::string>;

constexpr const char* kNetwork = "/home/nets/test.net";
constexpr const char* kOther = "/home/nets/other.net";
constexpr const char* kQuestion =
    "Tarn Warning|The training of /home/nets/test.net was interrupted. Its AutoSave snapshot of "
    "iteration 10 is newer than the file. Save the snapshot as a network file? No removes it, "
    "Cancel asks again at the next start.";
// The file is the snapshot itself, which could not be opened then.
constexpr const char* kQuestionOfAnotherWrite =
    "Tarn Warning|The training of /home/nets/test.net was interrupted after its AutoSave snapshot "
    "of iteration 10, and the file has been written since. Save the snapshot as a network file? No "
    "removes it, Cancel asks again at the next start.";
constexpr const char* kNotWritten = "AutoSave Error|Error Writing Network File";
constexpr const char* kNotRead = "AutoSave Error|AutoSave File Not Found";

// A store with the snapshots 5 and 10, and a note of it.
class InterruptedRunFaults : public SessionFixture {
 protected:
  InterruptedRunFaults() {
    EXPECT_EQ(Train(), "");
    for (const int32_t iteration : {5, 10}) {
      m_network.iteration = iteration;
      EXPECT_TRUE(AppendSnapshot(m_store, m_network));
    }
    m_snapshots = Get(m_store);
    m_newest = TextOf(m_network);
    m_old = Get(kNetwork);
  }

  std::string Get(const std::string& path) const { return m_files.Get(path).value_or("(none)"); }
  bool IsThere() const { return Get(m_store) == m_snapshots && Get(m_note) == m_noted; }
  bool HasGone() const { return !m_files.Exists(m_store) && !m_files.Exists(m_note); }

  void OpenScene() {
    for (const std::string& path : m_files.Paths()) m_files.Remove(path);
    m_network = {};
    m_files.Put(kNetwork, m_old);
    m_files.Put(m_store, m_snapshots);
    m_files.Put(m_note, m_noted);
  }

  // As the program does it.
  void Start(Answer answer, const std::string& file = "") {
    m_dialogs = {};
    m_dialogs.answers = {answer};
    m_dialogs.files = {file};
    OfferInterruptedRuns(ClearTemporaryFolder("/tmp"), m_session, m_dialogs);
  }
  bool Asked() const { return !m_dialogs.asked.empty(); }

  // What is there is whole, and nothing else is there save what could not be removed.
  void ExpectNothingTorn(const std::string& network) {
    EXPECT_THAT(Get(m_store), AnyOf(m_snapshots, "(none)"));
    EXPECT_THAT(Get(m_note), AnyOf(m_noted, "(none)"));
    EXPECT_THAT(m_dialogs.asked, Each(AnyOf(kQuestion, kQuestionOfAnotherWrite)));
    EXPECT_LE(m_dialogs.asked.size(), 1U);
    EXPECT_EQ(m_files.OpenHandles(), 0);
    const auto known = [&](const std::string& path) {
      return path == m_store || path == m_note || path == kNetwork || path == network;
    };
    const Texts paths = m_files.Paths();
    EXPECT_LE(paths.size() - static_cast<size_t>(std::ranges::count_if(paths, known)),
              Failures("remove "))
        << testing::PrintToString(paths);
  }
  size_t Failures(const std::string& kind) const {
    const auto is_one = [&](const std::string& failed) { return failed.starts_with(kind); };
    return static_cast<size_t>(std::ranges::count_if(m_faulty.Failed(), is_one));
  }

  // A file whose writing was told to have failed has not been touched; without a word it is whole.
  void ExpectWholeOrTold(bool struck, const std::string& file, const std::string& before) {
    const bool written = Get(file) == m_newest;
    EXPECT_TRUE(written || Get(file) == before);
    EXPECT_TRUE(written || IsThere()) << "the snapshots are lost";
    EXPECT_EQ(m_dialogs.told.empty(), !Asked() || (written && Slashes(m_network.file_name) == file))
        << testing::PrintToString(m_dialogs.told);
    for (const std::string& told : m_dialogs.told) {
      const bool unread = Failures("read-open ") > 0;
      const Texts right = written ? Texts{file + "|File Not Found!",
                                          file + "|Not a valid Tarn Network Definition File!"}
                                  : Texts{unread ? kNotRead : kNotWritten};
      EXPECT_THAT(right, testing::Contains(told));
      EXPECT_TRUE(!written || IsThere());
    }
    EXPECT_TRUE(struck || (written && HasGone() && m_dialogs.told.empty()));
  }

  void TakeUp(const std::string& file, const std::string& before, const std::string& name) {
    ForAllFaults(
        m_faulty, name,
        [&] {
          OpenScene();
          if (file != kNetwork && before != "(none)") m_files.Put(file, before);
        },
        [&] { Start(Answer::kYes, file); },
        [&](bool struck) {
          SCOPED_TRACE(testing::PrintToString(m_faulty.Failed()));
          ExpectNothingTorn(file);
          ExpectWholeOrTold(struck, file, before);
          EXPECT_EQ(Get(kNetwork), file == kNetwork ? Get(file) : m_old);
          Start(Answer::kYes, file);
          EXPECT_THAT(m_dialogs.told, IsEmpty());
          EXPECT_TRUE(Get(file) == m_newest && HasGone());
          ExpectNothingTorn(file);
        },
        2);
  }

  const std::string m_temporary = "/tmp/Tarn" + EndedProcess();
  const std::string m_store = m_temporary + "-store1";
  const std::string m_note = m_temporary + "-note12.run";
  const std::string m_noted =
      "TARN RUN 1\0"s + kNetwork + '\0' + m_store.substr(m_store.rfind('/') + 1) + "\0000\0"s;
  std::string m_snapshots;
  std::string m_newest;
  std::string m_old;
  FakeDialogs m_dialogs;
  FaultyFiles m_faulty{m_files};

 private:
  ScopedFileLayer m_faults{m_faulty};
};

TEST_F(InterruptedRunFaults, OfTakingUpLeaveAWholeFileOrTheSnapshots) {
  TakeUp(kNetwork, m_old, "taking up over the network file");
  TakeUp(kOther, "what stood there", "taking up over another file");
  TakeUp(kOther, "(none)", "taking up as a new file");
}

TEST_F(InterruptedRunFaults, OfRefusingTakeNothingUnasked) {
  ForAllFaults(
      m_faulty, "refusing an interrupted run", [this] { OpenScene(); },
      [this] { Start(Answer::kNo); },
      [this](bool struck) {
        SCOPED_TRACE(testing::PrintToString(m_faulty.Failed()));
        ExpectNothingTorn(kNetwork);
        EXPECT_THAT(m_dialogs.told, IsEmpty());
        const bool asked = Asked();
        EXPECT_TRUE(asked || IsThere()) << "the snapshots are lost";
        EXPECT_TRUE(struck || HasGone());
        Start(Answer::kNo);
        EXPECT_NE(Asked(), asked) << "once is enough";
        EXPECT_TRUE(HasGone());
        EXPECT_EQ(Get(kNetwork), m_old);
      });
}

TEST_F(InterruptedRunFaults, OfPuttingOffChangeNothing) {
  ForAllFaults(
      m_faulty, "putting off an interrupted run", [this] { OpenScene(); },
      [this] { Start(Answer::kCancel); },
      [this](bool struck) {
        SCOPED_TRACE(testing::PrintToString(m_faulty.Failed()));
        ExpectNothingTorn(kNetwork);
        EXPECT_THAT(m_dialogs.told, IsEmpty());
        EXPECT_TRUE(struck || Asked());
        EXPECT_TRUE(IsThere()) << "the snapshots are lost";
        Start(Answer::kCancel);
        EXPECT_TRUE(Asked() && IsThere());
        EXPECT_EQ(Get(kNetwork), m_old);
      });
}

TEST_F(InterruptedRunFaults, NeverOfferWhatIsOlderThanItsFile) {
  std::string noted = m_noted;
  noted.at(noted.size() - 2) = '2';
  ForAllFaults(
      m_faulty, "interrupted run that was saved since",
      [&] {
        OpenScene();
        m_files.Put(m_note, noted);
        m_files.Put(kNetwork, "saved since");
      },
      [this] { Start(Answer::kYes, kNetwork); },
      [&](bool struck) {
        SCOPED_TRACE(testing::PrintToString(m_faulty.Failed()));
        EXPECT_THAT(Get(m_note), AnyOf(noted, "(none)"));
        EXPECT_FALSE(Asked());
        EXPECT_TRUE(struck || HasGone());
        Start(Answer::kYes, kNetwork);
        EXPECT_FALSE(Asked());
        EXPECT_TRUE(HasGone());
        EXPECT_EQ(Get(kNetwork), "saved since");
      });
}

}  // namespace
}  // namespace tarn
