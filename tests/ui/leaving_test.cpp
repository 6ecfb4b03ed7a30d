#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>
#include <wx/app.h>
#include <wx/utils.h>

#include "base/paths.h"
#include "resources/controls.h"
#include "ui/main_window_fixture.h"

// Ways out of the training window, and what becomes of the network.

namespace tarn {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kQuestion = "Network File Not Saved!|Save Network File?";
constexpr int kExit = 130;
constexpr int kRestart = 129;
constexpr int kSave = 101;
constexpr int kStart = 215;

class Leaving : public MainWindowFixture {
 protected:
  void TrainIris() {
    OpenForTraining("iris.net");
    Train();
  }
  void StartLongRun() {
    OpenForTraining("iris.net");
    m_session->network.MaxIterations = 100000000;
    Click(Client(), kStart);
    Until([this] { return m_session->network.iteration > 100; });
  }
};

TEST_F(Leaving, SavesFirstWhenTheUserWantsIt) {
  const std::string before = ReadFile(m_folder / "iris.net");
  TrainIris();
  m_native.answers = {wxID_YES};
  Choose(kExit);
  Until([this] { return !FrameIsOpen(); });
  EXPECT_THAT(m_native.boxes, ElementsAre(kQuestion));
  EXPECT_NE(ReadFile(m_folder / "iris.net"), before);
  EXPECT_EQ(ReadFile(m_folder / "tarn.cfg"), m_folder.path() + "\n");
}

TEST_F(Leaving, LeavesTheFileAloneWhenTheUserSaysNo) {
  const std::string before = ReadFile(m_folder / "iris.net");
  TrainIris();
  m_native.answers = {wxID_NO};
  Choose(kExit);
  Until([this] { return !FrameIsOpen(); });
  EXPECT_EQ(ReadFile(m_folder / "iris.net"), before);
}

TEST_F(Leaving, StaysWhenTheUserCancels) {
  TrainIris();
  m_native.answers = {wxID_CANCEL, wxID_CANCEL};
  Choose(kExit);
  EXPECT_TRUE(FrameIsOpen());
  EXPECT_NE(Frame().training(), nullptr);
  Choose(kRestart);
  Until([this] { return m_native.boxes.size() == 2; });
  EXPECT_NE(Frame().training(), nullptr);
  EXPECT_EQ(Text(207), "1500");
}

TEST_F(Leaving, AsksForANameForTheUntitledNetwork) {
  TrainIris();
  m_session->network.file_name = m_folder / "UNTITLED.NE_";
  m_native.answers = {wxID_YES, wxID_YES};
  m_dialogs->files = {"", m_folder / "named.net"};
  Choose(kExit);
  EXPECT_TRUE(FrameIsOpen()) << "no name was given";
  Choose(kExit);
  Until([this] { return !FrameIsOpen(); });
  EXPECT_TRUE(std::filesystem::exists(m_folder / "named.net"));
}

TEST_F(Leaving, AsksNothingAfterASave) {
  TrainIris();
  Choose(kSave);
  Choose(kExit);
  Until([this] { return !FrameIsOpen(); });
  EXPECT_THAT(m_native.boxes, IsEmpty());
}

TEST_F(Leaving, AsksNothingBeforeTwoIterations) {
  OpenForTraining("iris.net");
  Frame().Close();
  Until([this] { return !FrameIsOpen(); });
  EXPECT_THAT(m_native.boxes, IsEmpty());
}

TEST_F(Leaving, StaysWhenTheSaveFails) {
  TrainIris();
  m_session->network.file_name = m_folder / "none" + "/iris.net";
  m_native.answers = {wxID_YES};
  Frame().Close();
  EXPECT_THAT(
      m_native.boxes,
      ElementsAre(kQuestion, "File Save Error - FILE NOT SAVED!|Cannot Write to Network File"));
  EXPECT_TRUE(FrameIsOpen());
  EXPECT_NE(Frame().training(), nullptr);
}

TEST_F(Leaving, GoesOnTrainingWhenTheUserStays) {
  StartLongRun();
  m_native.answers = {wxID_CANCEL};
  Frame().Close();
  const int32_t then = m_session->network.iteration;
  Until([&] { return m_session->network.iteration > then + 100; });
  EXPECT_TRUE(Frame().training()->desk().IsUnderWay());
}

TEST_F(Leaving, StopsARunAndSavesItsLastState) {
  StartLongRun();
  m_native.answers = {wxID_YES};
  Frame().Close();
  Until([this] { return !FrameIsOpen(); });
  EXPECT_THAT(m_native.boxes, ElementsAre(kQuestion));
  EXPECT_NE(ReadFile(m_folder / "iris.net").find("WEIGHTS:READ"), std::string::npos);
}

TEST_F(Leaving, KeepsTheSnapshotsForTheNextStartWhenItIsForcedTo) {
  StartLongRun();
  m_session->network.SaveRate = 10;
  const int32_t then = m_session->network.iteration;
  Until([&] { return m_session->network.iteration > then + 20; });
  Frame().Close(true);
  Until([this] { return !FrameIsOpen(); });
  EXPECT_THAT(m_native.boxes, IsEmpty());
  OpenFrame();
  const std::vector<InterruptedRun> runs = FindInterruptedRuns(TemporaryFolder());
  ASSERT_EQ(runs.size(), 1U);
  m_native.answers = {wxID_YES};
  m_dialogs->files = {m_folder / "back.net"};
  Frame().OfferInterruptedRuns(runs);
  ASSERT_EQ(m_native.boxes.size(), 1U);
  EXPECT_THAT(m_native.boxes[0], testing::HasSubstr("was interrupted. Its AutoSave snapshot"));
  EXPECT_EQ(Caption(), "Tarn - " + m_folder / "back.net");
  EXPECT_NE(ReadFile(m_folder / "back.net").find("WEIGHTS:READ"), std::string::npos);
  EXPECT_THAT(FindInterruptedRuns(TemporaryFolder()), IsEmpty());
}

TEST_F(Leaving, TellsFirstThatARunHasDiverged) {
  StartLongRun();
  // iris.net takes snapshots.
  m_native.answers = {wxID_NO};
  m_session->network.targets.Row(0)[0] = 1e30F;
  Until([this] { return !m_native.boxes.empty(); });
  EXPECT_THAT(m_native.boxes[0], testing::StartsWith("Tarn Warning|Training stopped at iteration"));
  EXPECT_FALSE(Frame().training()->desk().IsUnderWay());
}

TEST_F(Leaving, GoesBackToTheStartUpWindowByRestart) {
  StartLongRun();
  m_native.answers = {wxID_NO};
  Choose(kRestart);
  Until([this] { return Frame().training() == nullptr; });
  EXPECT_EQ(Frame().GetMenuBar(), nullptr);
  EXPECT_EQ(Caption(), "Tarn - " + m_folder / "iris.net");
  EXPECT_FALSE(std::filesystem::exists(m_folder / "tarn.cfg")) << "the program has not ended";
  EXPECT_EQ(m_session->network.iteration, 0);
  OpenForTraining("iris.net");
  EXPECT_EQ(Text(207), "0");
}

TEST_F(Leaving, StopsARunAtTheEndOfTheSession) {
  StartLongRun();
  m_native.answers = {wxID_CANCEL, wxID_NO};
  wxCloseEvent query(wxEVT_QUERY_END_SESSION);
  query.SetCanVeto(true);
  wxTheApp->ProcessEvent(query);
  EXPECT_TRUE(query.GetVeto());
  EXPECT_TRUE(FrameIsOpen());
  wxCloseEvent again(wxEVT_QUERY_END_SESSION);
  again.SetCanVeto(true);
  wxTheApp->ProcessEvent(again);
  EXPECT_FALSE(again.GetVeto());
  Until([this] { return !FrameIsOpen(); });
}

TEST_F(Leaving, LeavesNoTemporaryFilesBehind) {
  const auto count = [] {
    size_t ours = 0;
    for (const auto& entry :
         std::filesystem::directory_iterator(std::filesystem::temp_directory_path())) {
      const std::string mark = "Tarn" + std::to_string(wxGetProcessId()) + "-";
      if (entry.path().filename().string().starts_with(mark)) ++ours;
    }
    return ours;
  };
  StartLongRun();
  EXPECT_EQ(count(), 4U) << "history, store with its note, and scratch folder";
  m_native.answers = {wxID_NO};
  Frame().Close();
  Until([this] { return !FrameIsOpen(); });
  EXPECT_EQ(count(), 1U) << "the session's scratch folder";
}

TEST_F(Leaving, ShowsTheErrorInTheTitleWhileMinimized) {
  StartLongRun();
  wxIconizeEvent minimize(Frame().GetId(), true);
  Frame().ProcessWindowEvent(minimize);
  EXPECT_THAT(Caption(), testing::MatchesRegex("Tarn: Iteration - [0-9]+; Error 0\\.[0-9]+"));
  const std::string then = Caption();
  Until([&] { return Caption() != then; });
  wxIconizeEvent restore(Frame().GetId(), false);
  Frame().ProcessWindowEvent(restore);
  EXPECT_EQ(Caption(), "Tarn - " + m_folder / "iris.net");
}

}  // namespace
}  // namespace tarn
