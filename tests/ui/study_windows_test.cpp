#include <algorithm>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>
#include <utility>
#include <vector>
#include <wx/menu.h>
#include <wx/uiaction.h>

#include "browser/ui/info_browser.h"
#include "netgraph/ui/net_graph_dlg.h"
#include "resources/controls.h"
#include "ui/main_window_fixture.h"

// The graph and report commands through the menus of the training and of the recall window.

namespace tarn {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

constexpr int kSaveReport = 136;
constexpr int kExportData = 154;
constexpr int kRestart = 129;
constexpr int kRecallRestart = 229;

std::vector<NetGraphDlg*> Graphs() {
  return OpenWindows<NetGraphDlg>();
}
std::vector<InfoBrowser*> Reports() {
  return OpenWindows<InfoBrowser>();
}

// Answers the single-value entry that is on the screen.
Step Enter(const std::string& text) {
  return [text] {
    Type(*TopDialog(), 101, text);
    Click(*TopDialog(), kOkId);
  };
}
Step Cancel() {
  return [] { Click(*TopDialog(), kCancelId); };
}

class StudyWindowsTest : public MainWindowFixture {
 protected:
  // In which windows are painted, and menus open and close.
  void LetTurnsGoBy() {
    constexpr int kTurns = 30;
    int turns = 0;
    Until([&] { return ++turns > kTurns; });
  }
  // What the window writes by a command that asks for a file.
  std::string Written(wxFrame& window, int command, const std::string& name) {
    m_dialogs->files.push_back(m_folder / name);
    window.ProcessCommand(command);
    return ReadFile(m_folder / name);
  }
  std::string Report(size_t index) { return Written(*Reports().at(index), kSaveReport, "w.txt"); }
  std::string Data(size_t index) { return Written(*Graphs().at(index), kExportData, "w.csv"); }

  void TrainIris() {
    OpenForTraining("iris.net");
    Train();
  }
  void SaveAndRestart() {
    Choose(101);
    Choose(kRestart);
    Until([this] { return Frame().training() == nullptr; });
  }
  // The recall window over the training data.
  void RecallIris(bool targets) {
    TrainIris();
    SaveAndRestart();
    Click(Client(), 106);
    m_dialogs->files = {"iris.txt"};
    std::vector<Step> steps = {[] { Click(*TopDialog(), 101); }};
    if (targets) {
      m_dialogs->files.push_back("iris.txt");
      steps.emplace_back([] { Click(*TopDialog(), 102); });
      steps.emplace_back([] { Type(*TopDialog(), 112, "5"); });
    }
    steps.emplace_back([] { Click(*TopDialog(), kOkId); });
    RunWhile([this] { Click(Client(), 105); }, steps);
    Until([this] { return Frame().GetMenuBar() != nullptr; });
  }
  // As the toolkit tells of a menu of the bar.
  void Open(const wxMenuBar& bar, size_t menu) { Tell(wxEVT_MENU_OPEN, bar, menu); }
  void Close(const wxMenuBar& bar, size_t menu) { Tell(wxEVT_MENU_CLOSE, bar, menu); }
  void Tell(wxEventType type, const wxMenuBar& bar, size_t menu) {
    wxMenuEvent event(type, 0, bar.GetMenu(menu));
    event.SetEventObject(bar.GetMenu(menu));
    Frame().ProcessWindowEvent(event);
  }
  std::string Hint() { return Utf8(Frame().GetStatusBar()->GetStatusText(0)); }
  static size_t TemporaryFiles() {
    const std::string prefix = "Tarn" + std::to_string(::getpid()) + "-";
    const std::filesystem::directory_iterator folder(std::filesystem::temp_directory_path());
    return static_cast<size_t>(std::ranges::count_if(folder, [&](const auto& entry) {
      return entry.path().filename().string().starts_with(prefix);
    }));
  }
  void FinishTask() {
    Until([this] { return Hint().empty(); });
  }
};

constexpr const char* kRecallOptions =
    " iris.net --inputs iris.txt --targets iris.txt --targets-column 5";

TEST_F(StudyWindowsTest, PlotTheHistoryAsTheCommandLineDoes) {
  TrainIris();
  RunCommandLine("train iris.net --seed 1 --no-save --history c.his");
  struct Kind {
    int command;
    const char* name;
  };
  for (const Kind& kind :
       {Kind{116, "rms"}, Kind{121, "test-rms"}, Kind{117, "learn-rate"}, Kind{144, "correlation"},
        Kind{145, "test-correlation"}, Kind{148, "tolerance"}, Kind{149, "test-tolerance"}}) {
    Choose(kind.command);
    ASSERT_THAT(Graphs(), SizeIs(1)) << kind.name;
    EXPECT_EQ(Utf8(Graphs()[0]->GetTitle()), "NetGraph");
    RunCommandLine("plot " + std::string(kind.name) + " iris.net --history c.his -o c.csv");
    EXPECT_EQ(Data(0), ReadFile(m_folder / "c.csv")) << kind.name;
    Graphs()[0]->Close();
    Until([] { return Graphs().empty(); });
  }
}

TEST_F(StudyWindowsTest, FollowTheRun) {
  OpenForTraining("iris.net");
  Choose(116);
  ASSERT_THAT(Graphs(), SizeIs(1));
  const std::string before = Data(0);
  Train();
  RunCommandLine("train iris.net --seed 1 --no-save --history c.his");
  RunCommandLine("plot rms iris.net --history c.his -o c.csv");
  const std::string whole = ReadFile(m_folder / "c.csv");
  EXPECT_NE(before, whole);
  Until([&] { return Data(0) == whole; });
}

TEST_F(StudyWindowsTest, PlotEveryOutputInItsOwnWindowOrOneAskedFor) {
  TrainIris();
  m_native.answers = {wxID_YES, wxID_NO, wxID_NO};
  Choose(119);
  FinishTask();
  const size_t outputs = Graphs().size();
  EXPECT_EQ(outputs, 3U);
  Choose(119, {Enter("2")});
  FinishTask();
  EXPECT_THAT(Graphs(), SizeIs(outputs + 1));
  Choose(120, {Cancel()});
  EXPECT_THAT(Graphs(), SizeIs(outputs + 1));
  EXPECT_THAT(m_native.boxes, ElementsAre("Output/Target Comparison Plots|Plot all output nodes?",
                                          "Output/Target Comparison Plots|Plot all output nodes?",
                                          "Output/Target Error Plots|Plot all output nodes?"));
}

TEST_F(StudyWindowsTest, AnalyseWhileTrainingGoesOn) {
  OpenForTraining("iris.net");
  m_session->network.MaxIterations = 100000000;
  Click(Client(), 215);
  m_native.answers = {wxID_YES};
  const int32_t before = m_session->network.iteration;
  Choose(131);
  FinishTask();
  EXPECT_THAT(Graphs(), SizeIs(3));
  Choose(132);
  FinishTask();
  Choose(146, {Enter("1"), Enter("3"), Enter("2")});
  FinishTask();
  EXPECT_TRUE(Frame().training()->desk().IsUnderWay());
  EXPECT_GT(m_session->network.iteration, before);
  EXPECT_THAT(Data(0), HasSubstr("title,Percent Contributions From Inputs on"));
  EXPECT_THAT(Data(Graphs().size() - 1), HasSubstr("\ngrid\n"));
  m_native.answers.push_back(wxID_NO);
  Choose(kRestart);
  Until([this] { return Frame().training() == nullptr; });
  EXPECT_THAT(Graphs(), IsEmpty());
}

TEST_F(StudyWindowsTest, AnalyseAsTheCommandLineDoes) {
  TrainIris();
  // A file holds weights with fewer digits: both have those of the file.
  SaveAndRestart();
  Click(Client(), 102);
  RunWhile([this] { Click(Client(), 105); }, {[] { Click(*TopDialog(), kOkId); }});
  Until([this] { return Frame().training() != nullptr; });
  m_native.answers = {wxID_NO};
  Choose(131, {Enter("2")});
  FinishTask();
  RunCommandLine("plot interrogator iris.net --node 2 -o c.csv");
  EXPECT_EQ(Data(0), ReadFile(m_folder / "c.csv"));
  Choose(132);
  FinishTask();
  RunCommandLine("plot hidden iris.net -o c.csv");
  EXPECT_EQ(Data(1), ReadFile(m_folder / "c.csv"));
  // Numbers are brought into the range of the nodes.
  Choose(146, {Enter("-5"), Enter("99"), Enter("99")});
  FinishTask();
  RunCommandLine("plot contour iris.net --first-input 1 --second-input 4 --node 3 -o c.csv");
  EXPECT_EQ(Data(2), ReadFile(m_folder / "c.csv"));
}

TEST_F(StudyWindowsTest, TraceNoContoursOfNodesThatMakeNone) {
  OpenForTraining("iris.net");
  Choose(146, {Enter("3"), Enter("3")});
  EXPECT_THAT(m_native.boxes,
              ElementsAre("Tarn Contour Plot|Input node selection error - aborting!"));
  Choose(146, {Enter("")});
  Choose(146, {Enter("1"), Enter("")});
  Choose(146, {Cancel()});
  EXPECT_THAT(m_native.boxes, SizeIs(1)) << "an empty answer ends it silently";
  EXPECT_THAT(Graphs(), IsEmpty());
}

TEST_F(StudyWindowsTest, DisableWhatHasToWaitForATask) {
  OpenForTraining("iris.net");
  m_native.answers = {wxID_YES};
  Choose(131);
  const wxMenuBar& menu = *Frame().GetMenuBar();
  EXPECT_FALSE(menu.IsEnabled(131));
  EXPECT_FALSE(menu.IsEnabled(119));
  EXPECT_TRUE(menu.IsEnabled(118));
  EXPECT_EQ(Hint(), "Press Escape to stop");
  std::string progress;
  Until([&] {
    if (StatusText().find('%') != std::string::npos) progress = StatusText();
    return Hint().empty();
  });
  EXPECT_TRUE(menu.IsEnabled(131));
  EXPECT_EQ(progress, "Inputs/Patterns Processed 100%");
  EXPECT_EQ(StatusText(), "Network Training") << "what stood there before";
}

TEST_F(StudyWindowsTest, StopATaskWithEscape) {
  // So much that a key arrives in time.
  const std::string flowers = ReadFile(m_folder / "iris.txt");
  std::string many = flowers;
  for (int i = 0; i < 200; ++i) many += flowers.substr(flowers.find('\n') + 1);
  WriteFile(m_folder / "iris.txt", many);
  RunCommandLine("set iris.net --layers 4,300,3");
  OpenForTraining("iris.net");
  m_native.answers = {wxID_YES};
  Choose(131);
  PressOn(Frame(), WXK_ESCAPE);
  Until([this] { return Hint() == "Analysis Stopped"; });
  EXPECT_TRUE(Frame().GetMenuBar()->IsEnabled(131));
}

TEST_F(StudyWindowsTest, StopATaskWithEscapeOnAGraphOrReport) {
  OpenForTraining("iris.net");
  Choose(116);
  Choose(133);
  for (wxWindow* window :
       {static_cast<wxWindow*>(Graphs()[0]), static_cast<wxWindow*>(Reports()[0])}) {
    m_native.answers = {wxID_YES};
    Choose(131);
    wxKeyEvent escape(wxEVT_CHAR_HOOK);
    escape.m_keyCode = WXK_ESCAPE;
    window->ProcessWindowEvent(escape);
    EXPECT_EQ(Hint(), "Analysis Stopped");
  }
  EXPECT_THAT(Graphs(), SizeIs(1)) << "it is still open";
  EXPECT_THAT(Reports(), SizeIs(1));
}

// Escape closes an open menu, and not its window with it.
TEST_F(StudyWindowsTest, StayWhenAMenuIsClosedWithEscape) {
  OpenForTraining("iris.net");
  for (const int command : {116, 133}) {
    Choose(command);
    auto* window = command == 116 ? static_cast<wxFrame*>(Graphs()[0]) : Reports()[0];
    int opened = 0;
    int closed = 0;
    const auto count = [&](wxMenuEvent& event) {
      ++(event.GetEventType() == wxEVT_MENU_OPEN ? opened : closed);
      event.Skip();
    };
    window->Bind(wxEVT_MENU_OPEN, count);
    window->Bind(wxEVT_MENU_CLOSE, count);
    LetTurnsGoBy();
    wxUIActionSimulator simulator;
    const wxPoint menu = window->GetScreenPosition() + wxPoint(20, 12);
    simulator.MouseMove(menu.x, menu.y);
    simulator.MouseClick();
    Until([&] { return opened > 0; });
    LetTurnsGoBy();
    simulator.Char(WXK_ESCAPE);
    Until([&] { return closed > 0; });
    LetTurnsGoBy();
    ASSERT_EQ(Graphs().size() + Reports().size(), 1U);
    window->Close();
    Until([] { return Graphs().empty() && Reports().empty(); });
  }
}

TEST_F(StudyWindowsTest, ShowProgressAndHintsWhole) {
  OpenForTraining("iris.net");
  const auto fits = [this](const char* text, int field) {
    Until([&] {
      wxRect place;
      const wxStatusBar& bar = *Frame().GetStatusBar();
      return bar.GetFieldRect(field, place) && bar.GetTextExtent(text).x <= place.width;
    });
  };
  fits("Hidden Nodes/Patterns Processed 100%", 1);
  fits("Press Escape to stop", 0);
}

TEST_F(StudyWindowsTest, LeaveTheReportsGoneWhenMemoryRunsOut) {
  OpenForTraining("iris.net");
  m_native.answers = {wxID_YES};
  Choose(133);
  Choose(131);
  Frame().EndOutOfMemory();
  EXPECT_EQ(TemporaryFiles(), 0U);
  EXPECT_EQ(Hint(), "Analysis Stopped");
}

TEST_F(StudyWindowsTest, AskWhetherToGoOnWithTheInputs) {
  TrainIris();
  m_native.answers = {wxID_YES, wxID_YES, wxID_NO};
  Choose(122);
  EXPECT_THAT(Graphs(), SizeIs(2));
  EXPECT_THAT(m_native.boxes,
              ElementsAre("Input Node Plots|Plot all input nodes?",
                          "Tarn|Continue plotting inputs?", "Tarn|Continue plotting inputs?"));
}

TEST_F(StudyWindowsTest, ReportOnTheTraining) {
  TrainIris();
  for (const int command : {133, 123, 124, 125}) Choose(command);
  Choose(126, {Enter("0.25")});
  Choose(127, {Enter(""), Enter("0.5")});
  std::vector<std::string> titles;
  for (const InfoBrowser* report : Reports()) titles.push_back(Utf8(report->GetTitle()));
  EXPECT_THAT(
      titles,
      ElementsAre("Info Browser - Network Information",
                  "Info Browser - Network Outputs and Targets", "Info Browser - Weight Information",
                  "Info Browser - Network Statistics", "Info Browser - Network Tolerance Check",
                  "Info Browser - Network Threshold Check"));
  EXPECT_THAT(Report(4), HasSubstr(" Tolerance:     0.250000\n"));
  EXPECT_THAT(Report(5), HasSubstr(" Lower Threshold:     0.500000\n"));
}

TEST_F(StudyWindowsTest, ReportOnANetworkAsTheCommandLineDoes) {
  OpenForTraining("iris.net");
  Choose(133);
  Choose(124);
  RunCommandLine("report information iris.net --seed 1", "c.txt");
  EXPECT_EQ(Report(0), ReadFile(m_folder / "c.txt"));
  RunCommandLine("report weights iris.net --seed 1", "c.txt");
  EXPECT_EQ(Report(1), ReadFile(m_folder / "c.txt"));
}

TEST_F(StudyWindowsTest, ShowNothingForAThresholdCheckWithoutThresholds) {
  OpenForTraining("iris.net");
  Choose(127, {Enter(""), Enter("")});
  Choose(127, {Cancel()});
  Choose(126, {Cancel()});
  EXPECT_THAT(Reports(), IsEmpty());
  EXPECT_THAT(m_native.boxes, IsEmpty());
}

TEST_F(StudyWindowsTest, CheckForDivergencesInABox) {
  TrainIris();
  Choose(128);
  EXPECT_THAT(m_native.boxes, ElementsAre("No Training Divergences Found|"
                                          "Network Training OK - No Divergences Found"));
}

TEST_F(StudyWindowsTest, ReportOnARecallAsTheCommandLineDoes) {
  RecallIris(true);
  EXPECT_EQ(StatusText(), "Recall Complete");
  const std::vector<std::pair<int, std::string>> kinds = {
      {233, "information"}, {223, "outputs"}, {225, "statistics"}};
  for (const auto& [command, name] : kinds) {
    Choose(command);
    RunCommandLine("report " + name + kRecallOptions, "c.txt");
    EXPECT_EQ(Report(Reports().size() - 1), ReadFile(m_folder / "c.txt")) << name;
  }
  Choose(226, {Enter("0.2")});
  RunCommandLine("report tolerance" + std::string(kRecallOptions) + " --tolerance 0.2", "c.txt");
  EXPECT_EQ(Report(3), ReadFile(m_folder / "c.txt"));
  Choose(227, {Enter("0.6"), Enter("0.4")});
  RunCommandLine("report threshold" + std::string(kRecallOptions) + " --upper 0.6 --lower 0.4",
                 "c.txt");
  EXPECT_EQ(Report(4), ReadFile(m_folder / "c.txt"));
}

TEST_F(StudyWindowsTest, PlotARecallAsTheCommandLineDoes) {
  RecallIris(true);
  Choose(218);
  RunCommandLine("plot scatter" + std::string(kRecallOptions) + " -o c.csv");
  EXPECT_EQ(Data(0), ReadFile(m_folder / "c.csv"));
  m_native.answers = {wxID_NO, wxID_NO, wxID_NO};
  Choose(219, {Enter("3")});
  FinishTask();
  RunCommandLine("plot outputs --node 3" + std::string(kRecallOptions) + " -o c.csv");
  EXPECT_EQ(Data(1), ReadFile(m_folder / "c.csv"));
  Choose(220, {Enter("1")});
  FinishTask();
  RunCommandLine("plot error --node 1" + std::string(kRecallOptions) + " -o c.csv");
  EXPECT_EQ(Data(2), ReadFile(m_folder / "c.csv"));
  Choose(222, {Enter("4")});
  RunCommandLine("plot inputs --node 4" + std::string(kRecallOptions) + " -o c.csv");
  EXPECT_EQ(Data(3), ReadFile(m_folder / "c.csv"));
  Choose(kRecallRestart);
  Until([this] { return Frame().GetMenuBar() == nullptr; });
  EXPECT_THAT(Graphs(), IsEmpty());
}

TEST_F(StudyWindowsTest, DisableWhatARecallWithoutTargetsHasNoUseFor) {
  RecallIris(false);
  const wxMenuBar& menu = *Frame().GetMenuBar();
  for (const int command : {218, 220, 225, 226, 227}) {
    EXPECT_FALSE(menu.IsEnabled(command)) << command;
    EXPECT_EQ(Utf8(menu.GetHelpString(command)), "Needs targets: this recall has none");
  }
  for (const int command : {202, 219, 222, 223, 233}) EXPECT_TRUE(menu.IsEnabled(command));
  // An item that is disabled shows no hint of its own.
  Open(menu, 0);
  EXPECT_EQ(Hint(), "");
  // From menu to menu along the bar.
  for (const size_t with_disabled : {1U, 2U}) {
    Close(menu, with_disabled - 1);
    Open(menu, with_disabled);
    int turns = 0;
    Until([&] { return ++turns > 10; });
    EXPECT_EQ(Hint(), "Needs targets: this recall has none");
  }
  Close(menu, 2);
  Until([this] { return Hint().empty(); });
  Choose(223);
  EXPECT_THAT(Report(0), HasSubstr(" Network Outputs\n"));
}

TEST_F(StudyWindowsTest, LeaveNoTemporaryFileBehind) {
  OpenForTraining("iris.net");
  const size_t before = TemporaryFiles();
  for (const int command : {133, 124, 125}) Choose(command);
  EXPECT_EQ(TemporaryFiles(), before + 3);
  Reports()[1]->Close();
  Until([&] { return TemporaryFiles() == before + 2; });
  Choose(kRestart);
  // History and snapshots are gone, too.
  Until([&] { return TemporaryFiles() < before; });
}

}  // namespace
}  // namespace tarn
