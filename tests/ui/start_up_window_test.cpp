#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <new>
#include <string>
#include <vector>
#include <wx/dnd.h>
#include <wx/eventfilter.h>
#include <wx/uiaction.h>

#include "resources/controls.h"
#include "ui/main_window_fixture.h"
#include "ui/test_app.h"

namespace tarn {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kNew = 101;
constexpr int kTrainingMode = 102;
constexpr int kOpen = 103;
constexpr int kRun = 105;
constexpr int kRecallMode = 106;

// The titles of the top-level windows that are shown while it lives.
class ShownTitles : public wxEventFilter {
 public:
  ShownTitles() { wxEvtHandler::AddFilter(this); }
  ~ShownTitles() override { wxEvtHandler::RemoveFilter(this); }
  ShownTitles(const ShownTitles&) = delete;
  ShownTitles& operator=(const ShownTitles&) = delete;

  int FilterEvent(wxEvent& event) override {
    const auto* window = dynamic_cast<wxDialog*>(event.GetEventObject());
    if (event.GetEventType() == wxEVT_SHOW && window != nullptr) {
      titles.push_back(Utf8(window->GetTitle()));
    }
    return Event_Skip;
  }

  std::vector<std::string> titles;
};

class StartUp : public MainWindowFixture {
 protected:
  void OpenByDialog(const std::string& path) {
    m_dialogs->files.push_back(path);
    Click(Client(), kOpen);
  }
  static std::vector<Step> Cancel() {
    return {[] { Click(*TopDialog(), kCancelId); }};
  }
};

TEST_F(StartUp, HasNoNetworkAndNoModeAtFirst) {
  EXPECT_EQ(Caption(), "Tarn for Windows");
  EXPECT_FALSE(IsChecked(Client(), kTrainingMode));
  EXPECT_FALSE(IsChecked(Client(), kRecallMode));
  Click(Client(), kRun);
  EXPECT_THAT(m_native.boxes, ElementsAre("Select Mode|Select Recall or Training Execution Mode!"));
}

TEST_F(StartUp, OpensANetworkAndNamesItInTheCaption) {
  OpenByDialog(m_folder / "iris.net");
  EXPECT_EQ(Caption(), "Tarn - " + m_folder / "iris.net");
  EXPECT_THAT(m_dialogs->file_questions, ElementsAre("Open Tarn Network"));
  OpenByDialog("");
  EXPECT_EQ(Caption(), "Tarn - " + m_folder / "iris.net") << "cancelled";
  EXPECT_THAT(m_native.boxes, IsEmpty());
}

TEST_F(StartUp, RefusesFilesThatAreNoNetworks) {
  OpenByDialog(m_folder / "iris.net");
  OpenByDialog(m_folder / "none.net");
  OpenByDialog(m_folder / "iris.txt");
  EXPECT_THAT(m_native.boxes,
              ElementsAre(m_folder / "none.net" + "|File Not Found!",
                          m_folder / "iris.txt" + "|Not a valid Tarn Network Definition File!"));
  EXPECT_EQ(Caption(), "Tarn - " + m_folder / "iris.net");
}

TEST_F(StartUp, TakesTheScratchFileOfANewNetworkWithoutALook) {
  WriteFile(m_folder / "Untitled.NE_", "");
  OpenByDialog(m_folder / "Untitled.NE_");
  EXPECT_THAT(m_native.boxes, IsEmpty());
  EXPECT_EQ(Caption(), "Tarn - UNTITLED");
  EXPECT_EQ(m_session->network.file_name, m_folder / "Untitled.NE_");
  EXPECT_FALSE(m_session->network.trained);
}

TEST_F(StartUp, RefusesRecallOfANetworkWithoutWeights) {
  OpenByDialog(m_folder / "iris.net");
  Click(Client(), kRecallMode);
  Click(Client(), kRun);
  EXPECT_THAT(m_native.boxes,
              ElementsAre("Selection Error|Untrained Networks Cannot be used for Recall!"));
}

TEST_F(StartUp, AnswersWhenThereIsNothingToTrain) {
  Click(Client(), kTrainingMode);
  Click(Client(), kRun);
  EXPECT_THAT(m_native.boxes, ElementsAre("Network Error|Tarn Network File Not Found"));
}

TEST_F(StartUp, BeginsANewNetworkInTrainingMode) {
  for (int i = 0; i < 2; ++i) {
    WriteFile(m_folder / "UNTITLED.NE_", "not a network");
    RunWhile([this] { Click(Client(), kNew); },
             {[] { EXPECT_EQ(Utf8(TopDialog()->GetTitle()), "Training Setup"); },
              [] { Click(*TopDialog(), kCancelId); }});
    EXPECT_TRUE(IsChecked(Client(), kTrainingMode));
    EXPECT_EQ(Caption(), "Tarn - UNTITLED");
    EXPECT_EQ(m_session->network.NetName, "NO NAME");
    EXPECT_TRUE(ReadFile(m_folder / "UNTITLED.NE_").starts_with("TARNV2.1\nNO NAME\n"));
  }
  EXPECT_THAT(m_native.boxes, IsEmpty());
}

TEST_F(StartUp, ShowsWhatItLoadsInAStatusBox) {
  const ShownTitles shown;
  OpenForTraining("iris.net");
  EXPECT_THAT(shown.titles, Contains("Network Load Status"));
  EXPECT_EQ(TopDialog(), nullptr);
  EXPECT_FALSE(wxIsBusy());
}

TEST_F(StartUp, TellsWhyANetworkCannotBeLoaded) {
  OpenByDialog(m_folder / "iris.net");
  std::filesystem::remove(m_folder / "iris.txt");
  Click(Client(), kTrainingMode);
  RunWhile([this] { Click(Client(), kRun); }, {[] { Click(*TopDialog(), kOkId); }});
  Until([this] { return !m_native.boxes.empty(); });
  EXPECT_THAT(m_native.boxes,
              ElementsAre("Tarn Error|Invalid Input Node Training File - iris.txt"));
  EXPECT_TRUE(Client().IsEnabled());
  EXPECT_FALSE(wxIsBusy());
  Until([] { return FocusedId() == kRun; });
}

TEST_F(StartUp, ClosesInTheMidstOfALoad) {
  OpenByDialog(m_folder / "iris.net");
  Click(Client(), kTrainingMode);
  RunWhile([this] { Click(Client(), kRun); }, {[] { Click(*TopDialog(), kOkId); }});
  EXPECT_TRUE(wxIsBusy()) << "the load has begun";
  Frame().Close();
  Until([this] { return !FrameIsOpen(); });
  EXPECT_FALSE(wxIsBusy());
}

TEST_F(StartUp, WarnsOfFallbacksAndTrainsAllTheSame) {
  std::string text = ReadFile(m_folder / "iris.net");
  text.replace(text.find("WEIGHTS:RANDOM"), 14, "WEIGHTS:WHAT??");
  WriteFile(m_folder / "iris.net", text);
  OpenForTraining("iris.net");
  EXPECT_THAT(m_native.boxes,
              ElementsAre("Tarn Warning|Error reading weights - Random initialization"));
}

TEST_F(StartUp, EndsWithBothMessagesWhenMemoryRunsOut) {
  std::string text = ReadFile(m_folder / "xor.net");
  const size_t line = text.find("\n2 ") + 1;
  text.replace(line, text.find('\n', line) - line, "2 2000000000 1 0 0 ");
  WriteFile(m_folder / "huge.net", text);
  OpenByDialog(m_folder / "huge.net");
  Click(Client(), kTrainingMode);
  auto& app = dynamic_cast<TestApp&>(*wxTheApp);
  const int ends = app.ends();
  RunWhile([this] { Click(Client(), kRun); }, {[] { Click(*TopDialog(), kOkId); }});
  Until([&] { return app.ends() > ends; });
  EXPECT_THAT(m_native.boxes, ElementsAre("Tarn Error|Tarn has run out of memory!",
                                          "Tarn Error|FATAL - Aborting Session!"));
  EXPECT_EQ(ReadFile(m_folder / "huge.net"), text);
  EXPECT_FALSE(std::filesystem::exists(m_session->scratch.path()));
}

TEST_F(StartUp, EndsWhenMemoryRunsOutInAnyEvent) {
  auto& app = dynamic_cast<TestApp&>(*wxTheApp);
  const int ends = app.ends();
  Frame().Bind(
      wxEVT_MENU, [](wxCommandEvent&) { throw std::bad_alloc(); }, 9999);
  wxCommandEvent event(wxEVT_MENU, 9999);
  Frame().ProcessWindowEvent(event);
  EXPECT_EQ(app.ends(), ends + 1);
  EXPECT_EQ(m_native.boxes.size(), 2U);
  Frame().ProcessWindowEvent(event);
  EXPECT_EQ(app.ends(), ends + 2) << "at once";
  EXPECT_EQ(m_native.boxes.size(), 2U);
}

TEST_F(StartUp, EndsWhenMemoryRunsOutBetweenEvents) {
  auto& app = dynamic_cast<TestApp&>(*wxTheApp);
  const int ends = app.ends();
  try {
    throw std::bad_alloc();
  } catch (...) {
    app.OnUnhandledException();
  }
  EXPECT_EQ(app.ends(), ends + 1);
  EXPECT_EQ(m_native.boxes.size(), 2U);
}

TEST_F(StartUp, LetsNoFileDropThroughADialog) {
  OpenByDialog(m_folder / "iris.net");
  auto* target = dynamic_cast<wxFileDropTarget*>(Client().GetDropTarget());
  wxArrayString files;
  files.Add(Wide(m_folder / "xor.net"));
  Click(Client(), kTrainingMode);
  std::vector<Step> steps = {[&] { target->OnDropFiles(1, 1, files); }};
  for (int turn = 0; turn < 5; ++turn) steps.emplace_back([] {});
  steps.emplace_back([] { Click(*TopDialog(), kCancelId); });
  RunWhile([this] { Click(Client(), kRun); }, steps);
  EXPECT_EQ(m_session->network.file_name, m_folder / "iris.net");
}

TEST_F(StartUp, EndsItsDialogsWhenItHasToClose) {
  OpenByDialog(m_folder / "iris.net");
  Click(Client(), kTrainingMode);
  RunWhile([this] { Click(Client(), kRun); },
           {[] { Click(*TopDialog(), 101); },
            [this] { EXPECT_FALSE(Frame().Close()) << "it stays while it may"; },
            [this] { Frame().Close(true); }});
  Until([this] { return !FrameIsOpen(); });
}

TEST_F(StartUp, WaitsForAMessageBoxWhenItHasToClose) {
  OpenByDialog(m_folder / "iris.net");
  Click(Client(), kTrainingMode);
  m_native.while_open = [this] { Frame().Close(true); };
  RunWhile([this] { Click(Client(), kRun); },
           {[] { Click(*TopDialog(), 103); }, [] { Type(*TopDialog(), 104, "0"); },
            [] { Click(*TopDialog(), kOkId); }});
  EXPECT_THAT(m_native.boxes,
              ElementsAre("Training Parameter Error|Screen update rate out of range; set to 1"));
  Until([this] { return !FrameIsOpen(); });
}

TEST_F(StartUp, OpensAFileThatIsDropped) {
  auto* target = dynamic_cast<wxFileDropTarget*>(Client().GetDropTarget());
  ASSERT_NE(target, nullptr);
  wxArrayString files;
  EXPECT_FALSE(target->OnDropFiles(1, 1, files));
  files.Add(Wide(m_folder / "xor.net"));
  files.Add(Wide(m_folder / "iris.net"));
  EXPECT_TRUE(target->OnDropFiles(1, 1, files));
  Until([this] { return Caption() == "Tarn - " + m_folder / "xor.net"; });
}

TEST_F(StartUp, OpensByCtrlO) {
  m_dialogs->files.push_back(m_folder / "xor.net");
  wxUIActionSimulator simulator;
  // Without a window manager keys go to the window under the pointer.
  simulator.MouseMove(Frame().GetScreenPosition() + wxPoint(5, 5));
  simulator.Char('O', wxMOD_CONTROL);
  Until([this] { return Caption() == "Tarn - " + m_folder / "xor.net"; });
}

TEST_F(StartUp, SaysThatTheHelpFileIsMissing) {
  Click(Client(), 108);
  EXPECT_THAT(m_native.boxes,
              ElementsAre("Tarn Warning|The help file is missing: " + m_folder / "TARN.HLP"));
}

TEST_F(StartUp, ShowsTheAboutBox) {
  RunWhile([this] { Click(Client(), 109); },
           {[] { EXPECT_EQ(Utf8(TopDialog()->GetTitle()), "Tarn for Windows"); },
            [] { Click(*TopDialog(), kOkId); }});
}

TEST_F(StartUp, EndsByExit) {
  std::filesystem::create_directory(m_folder / "elsewhere");
  std::filesystem::current_path(m_folder / "elsewhere");
  Click(Client(), 110);
  Until([this] { return !FrameIsOpen(); });
  EXPECT_EQ(ReadFile(m_folder / "elsewhere" + "/tarn.cfg"), m_folder / "elsewhere" + "\n");
}

TEST_F(StartUp, RemembersItsPlaceAndSize) {
  Frame().Move(120, 90);
  Frame().SetClientSize(500, 450);
  Until([this] { return Frame().GetPosition() == wxPoint(120, 90); });
  OpenFrame();
  EXPECT_EQ(Frame().GetPosition(), wxPoint(120, 90));
  EXPECT_EQ(Frame().GetClientSize(), wxSize(500, 450));
}

TEST_F(StartUp, RecallsATrainedNetwork) {
  OpenForTraining("iris.net");
  Train();
  Choose(101);
  Choose(129);
  Until([this] { return Frame().training() == nullptr; });
  EXPECT_EQ(Caption(), "Tarn - " + m_folder / "iris.net");
  Click(Client(), kRecallMode);
  m_dialogs->files = {m_folder / "iris.txt", m_folder / "iris.txt"};
  RunWhile([this] { Click(Client(), kRun); },
           {[] { Click(*TopDialog(), 101); }, [] { Click(*TopDialog(), 102); },
            [] { Type(*TopDialog(), 112, "5"); }, [] { Click(*TopDialog(), kOkId); }});
  Until([this] { return Frame().GetMenuBar() != nullptr; });
  EXPECT_THAT(m_native.boxes, IsEmpty());
  EXPECT_EQ(Text(101), "Iris");
  EXPECT_EQ(Text(106), "8");
  EXPECT_EQ(Text(107), "67");
  EXPECT_EQ(Text(108), "150");
  m_dialogs->files = {m_folder / "recall.out"};
  Choose(202);
  EXPECT_TRUE(ReadFile(m_folder / "recall.out").starts_with("1\t1.0"));
  Choose(229);
  Until([this] { return Frame().GetMenuBar() == nullptr; });
  EXPECT_THAT(m_native.boxes, IsEmpty()) << "recall has nothing to save";
}

}  // namespace
}  // namespace tarn
