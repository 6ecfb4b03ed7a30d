#include <algorithm>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>
#include <wx/combobox.h>
#include <wx/menu.h>

#include "resources/controls.h"
#include "ui/main_window_fixture.h"

namespace tarn {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using TrainingWindow = MainWindowFixture;

TEST_F(TrainingWindow, TrainsToTheLastIterationAndWritesWhatTheCommandLineWrites) {
  OpenForTraining("iris.net");
  EXPECT_EQ(StatusText(), "Network Training");
  EXPECT_EQ(Text(210), "Hybrid");
  EXPECT_EQ(Text(209), "From Iteration 300");
  Train();
  EXPECT_EQ(StatusText(), "Training Run Complete!");
  EXPECT_EQ(Text(207), "1500");
  EXPECT_EQ(Text(213), "100.0%");
  EXPECT_EQ(Text(214), "0:0:0");
  EXPECT_EQ(Text(209), "On");
  m_dialogs->files = {m_folder / "w.err", m_folder / "w.out", m_folder / "w.net"};
  Choose(103);
  Choose(102);
  Choose(112);
  EXPECT_THAT(m_native.boxes, IsEmpty());
  EXPECT_EQ(Caption(), "Tarn - " + m_folder / "w.net");
  RunCommandLine("train iris.net --seed 1 -o c.net --error-history c.err --outputs c.out");
  EXPECT_EQ(ReadFile(m_folder / "w.net"), ReadFile(m_folder / "c.net"));
  EXPECT_EQ(ReadFile(m_folder / "w.err"), ReadFile(m_folder / "c.err"));
  EXPECT_EQ(ReadFile(m_folder / "w.out"), ReadFile(m_folder / "c.out"));
}

TEST_F(TrainingWindow, TakesANewNetworkToATrainedFile) {
  m_dialogs->files = {m_folder / "xor.txt", m_folder / "xor.txt"};
  RunWhile([this] { Click(Client(), 101); },
           {[] { Click(*TopDialog(), 101); },  // design
            [] { Type(*TopDialog(), 148, "Exclusive"); }, [] { Type(*TopDialog(), 103, "3"); },
            [] { Click(*TopDialog(), kOkId); }, [] { Click(*TopDialog(), 102); },  // data
            [] { Click(*TopDialog(), 101); }, [] { Click(*TopDialog(), 102); },
            [] { Type(*TopDialog(), 112, "3"); }, [] { Click(*TopDialog(), kOkId); },
            [] { Click(*TopDialog(), 103); },  // parameters
            [] { Type(*TopDialog(), 101, "300"); }, [] { Type(*TopDialog(), 105, "0.5"); },
            [] { Type(*TopDialog(), 107, "0.5"); }, [] { Click(*TopDialog(), kOkId); },
            [] { Click(*TopDialog(), kOkId); }});
  Until([this] { return Frame().training() != nullptr; });
  EXPECT_THAT(m_native.boxes, IsEmpty()) << "random weights of a new design are no fallback";
  EXPECT_EQ(Caption(), "Tarn - UNTITLED");
  Train();
  m_dialogs->files = {m_folder / "mine"};
  Choose(101);
  EXPECT_EQ(Caption(), "Tarn - " + m_folder / "mine.net");
  RunCommandLine("new c.net --name Exclusive --layers 2,3,1 --inputs " + m_folder / "xor.txt" +
                 " --targets " + m_folder / "xor.txt" +
                 " --targets-column 3 --iterations 300 --eta 0.5 --eta-max 0.5");
  RunCommandLine("train c.net --seed 1");
  EXPECT_EQ(ReadFile(m_folder / "mine.net"), ReadFile(m_folder / "c.net"));
}

TEST_F(TrainingWindow, SavesTheSetupAsTheCommandLineDoes) {
  m_dialogs->files = {m_folder / "iris.net", m_folder / "w"};
  Click(Client(), 103);
  Click(Client(), 102);
  RunWhile([this] { Click(Client(), 105); },
           {[] { Click(*TopDialog(), 103); }, [] { Type(*TopDialog(), 108, "0.25"); },
            [] { Click(*TopDialog(), kOkId); }, [] { Click(*TopDialog(), 104); },
            [] { Click(*TopDialog(), kCancelId); }});
  EXPECT_EQ(Caption(), "Tarn - " + m_folder / "w.net");
  RunCommandLine("set iris.net --momentum 0.25 -o c.net");
  EXPECT_EQ(ReadFile(m_folder / "w.net"), ReadFile(m_folder / "c.net"));
}

struct OptionCase {
  int command;
  const char* title;
  const char* prompt;
  const char* good;
  const char* bad;
  const char* refusal;
};

constexpr OptionCase kOptions[] = {
    {106, "Set Learn Rate", "Eta (between 0. and 1.):", "0.250000", "1.1",
     "Training Parameter Error|Learn Rate Eta Invalid"},
    {107, "Set LRC Min Learn Rate", "Eta Min (between 0. and 1.):", "0.125000", "-1",
     "Training Parameter Error|LRC Min Eta Invalid"},
    {108, "Set LRC Max Learn Rate", "Eta Max (between 0. and 1.):", "0.750000", "2",
     "Training Parameter Error|LRC Max Eta Invalid"},
    {109, "Set Momentum Factor", "Alpha (between 0. and 1.):", "0.500000", "1.5",
     "Training Parameter Error|Momentum Factor Invalid"},
    {110, "Set Fast-Prop Coefficient", "Coefficient (between 0. and 3.):", "3.000000", "3.01",
     "Training Parameter Error|Fast-Prop Coef Invalid"},
    {142, "Set Patterns per Iteration", "Process ? Patterns per Iteration:", "7", "-1",
     "Training Parameter Error|Pats per Iterations Invalid"},
    {111, "Set Max Iterations", "Maximum Iterations:", "2000", "abc",
     "Training Parameter Error|Iteration Value Invalid"},
    {113, "Set AutoSave Rate", "AutoSave Iteration Interval:", "9", "-1",
     "Training Parameter Error|AutoSave Rate Invalid"},
    {114, "Set Screen Update Rate", "Screen Update Iteration Interval:", "4", "0",
     "Training Parameter Error|Screen Update Rate Invalid"},
    {147, "Set Tolerance", "Tolerance Monitor Value:", "0.125000", "x",
     "Tolerance Monitors|Tolerance Value Invalid"},
};

TEST_F(TrainingWindow, AsksForEveryOptionAndTellsWhatIsRefused) {
  OpenForTraining("iris.net");
  for (const OptionCase& option : kOptions) {
    m_native.boxes.clear();
    Choose(option.command,
           {[&] { EXPECT_EQ(Utf8(TopDialog()->GetTitle()), option.title); },
            [&] { EXPECT_EQ(TextOf(*TopDialog(), 102), option.prompt); },
            [&] { Type(*TopDialog(), 101, option.good); }, [] { Click(*TopDialog(), kOkId); }});
    EXPECT_THAT(m_native.boxes, IsEmpty()) << option.title;
    Choose(option.command,
           {[&] { EXPECT_EQ(TextOf(*TopDialog(), 101), option.good); },
            [&] { Type(*TopDialog(), 101, option.bad); }, [] { Click(*TopDialog(), kOkId); }});
    EXPECT_THAT(m_native.boxes, ElementsAre(option.refusal));
    Choose(option.command,
           {[] { Type(*TopDialog(), 101, ""); }, [] { Click(*TopDialog(), kOkId); }});
    Choose(option.command,
           {[] { Type(*TopDialog(), 101, "1"); }, [] { Click(*TopDialog(), kCancelId); }});
    Choose(option.command, {[&] { EXPECT_EQ(TextOf(*TopDialog(), 101), option.good); },
                            [] { Click(*TopDialog(), kCancelId); }});
    EXPECT_EQ(m_native.boxes.size(), 1U) << option.title;
  }
}

TEST_F(TrainingWindow, TrainsOnWhileAnOptionIsAskedFor) {
  OpenForTraining("iris.net");
  m_session->network.MaxIterations = 100000000;
  Click(Client(), 215);
  const Network& network = m_session->network;
  int32_t then = 0;
  std::vector<Step> steps = {[&] { then = network.iteration; }};
  for (int turn = 0; turn < 10; ++turn) steps.emplace_back([] {});
  steps.emplace_back([&] { EXPECT_GT(network.iteration, then); });
  steps.emplace_back([] { Type(*TopDialog(), 101, "0.125"); });
  steps.emplace_back([] { Click(*TopDialog(), kOkId); });
  Choose(109, steps);
  EXPECT_EQ(network.Alpha, 0.125F);
  Choose(134);
  EXPECT_FALSE(Frame().training()->desk().IsUnderWay());
}

TEST_F(TrainingWindow, HaltsResumesStopsAndStartsAgain) {
  OpenForTraining("iris.net");
  m_session->network.MaxIterations = 100000000;
  const Network& network = m_session->network;
  const auto buttons = [this] {
    return std::vector<bool>{IsEnabled(215), IsEnabled(216), IsEnabled(217)};
  };
  const auto commands = [this] {
    const wxMenuBar& menu = *Frame().GetMenuBar();
    return std::vector<bool>{menu.IsEnabled(135), menu.IsEnabled(134)};
  };
  EXPECT_THAT(buttons(), ElementsAre(true, false, false));
  EXPECT_THAT(commands(), ElementsAre(true, false));
  Choose(135);
  EXPECT_THAT(buttons(), ElementsAre(false, true, true));
  EXPECT_THAT(commands(), ElementsAre(false, true));
  Until([&] { return network.iteration > 10; });
  Click(Client(), 216);
  EXPECT_EQ(Client().FindWindow(216)->GetLabel(), "R&esume");
  EXPECT_EQ(StatusText(), "NOTICE!");
  const int32_t halted = network.iteration;
  Until([this] { return StatusText() == "Network Training Halted"; });
  EXPECT_EQ(network.iteration, halted);
  EXPECT_THAT(buttons(), ElementsAre(false, true, true));
  Click(Client(), 216);
  EXPECT_EQ(Client().FindWindow(216)->GetLabel(), "H&alt");
  EXPECT_EQ(StatusText(), "Network Training");
  Until([&] { return network.iteration > halted + 10; });
  Click(Client(), 217);
  EXPECT_THAT(buttons(), ElementsAre(true, false, false));
  EXPECT_EQ(StatusText(), "Training Run Stopped");
  const int32_t stopped = network.iteration;
  Click(Client(), 215);
  Until([&] { return network.iteration > stopped; });
  Click(Client(), 216);
  Click(Client(), 217);
  EXPECT_THAT(buttons(), ElementsAre(true, false, false));
  EXPECT_EQ(Client().FindWindow(216)->GetLabel(), "H&alt");
}

TEST_F(TrainingWindow, KeepsTheKeyboardOnItsButtons) {
  OpenForTraining("iris.net");
  EXPECT_EQ(FocusedId(), 215);
  m_session->network.MaxIterations = 100000000;
  Click(Client(), 215);
  EXPECT_EQ(FocusedId(), 216);
  Click(Client(), 217);
  EXPECT_EQ(FocusedId(), 215);
}

TEST_F(TrainingWindow, ShowsFiguresOnlyWhereThereAreSome) {
  std::string text = ReadFile(m_folder / "xor.net");
  OpenForTraining("xor.net");
  ASSERT_EQ(m_session->network.testPats, 0);
  m_session->network.Tolerance = 0;
  m_session->network.MaxIterations = 5;
  Train();
  for (const int id : {202, 204, 205, 206, 214}) EXPECT_EQ(Text(id), "") << id;
  for (const int id : {201, 203, 208}) {
    EXPECT_THAT(Text(id), testing::MatchesRegex("-?[0-9]\\.[0-9]{6}")) << id;
  }
  EXPECT_THAT(Text(211), testing::MatchesRegex("[0-9]+"));
}

TEST_F(TrainingWindow, SwitchesLearnRateControl) {
  OpenForTraining("iris.net");
  const wxMenuBar& menu = *Frame().GetMenuBar();
  EXPECT_TRUE(menu.IsChecked(105));
  Choose(105);
  EXPECT_FALSE(menu.IsChecked(105));
  EXPECT_EQ(Text(209), "Off");
  Choose(105);
  EXPECT_TRUE(menu.IsChecked(105));
  EXPECT_EQ(Text(209), "From Iteration 300");
}

TEST_F(TrainingWindow, SavesTheSnapshotThatIsPickedOrTyped) {
  OpenForTraining("iris.net");
  m_dialogs->files = {m_folder / "none.net"};
  Choose(104,
         {[] { EXPECT_EQ(TextOf(*TopDialog(), 101), ""); }, [] { Click(*TopDialog(), kOkId); }});
  EXPECT_THAT(m_native.boxes, ElementsAre("Network AutoSave Aborted|File Not Saved"))
      << "the list is empty";
  Train();
  m_dialogs->files = {m_folder / "w.net"};
  Choose(104, {[] {
                 const auto& combo = Control<wxComboBox>(*TopDialog(), 101);
                 EXPECT_THAT(combo.GetStrings(), ElementsAre("500", "1000", "1500"));
               },
               [] { Type(*TopDialog(), 101, "1000"); }, [] { Click(*TopDialog(), kOkId); }});
  EXPECT_EQ(m_native.boxes.size(), 1U);
  RunCommandLine("train iris.net --seed 1 --no-save --autosave store");
  RunCommandLine("restore store 1000 c.net");
  EXPECT_EQ(ReadFile(m_folder / "w.net"), ReadFile(m_folder / "c.net"));
  m_dialogs->files = {m_folder / "none.net"};
  Choose(104, {[] { Type(*TopDialog(), 101, "0"); }, [] { Click(*TopDialog(), kOkId); }});
  EXPECT_FALSE(std::filesystem::exists(m_folder / "none.net"));
}

TEST_F(TrainingWindow, ResetsTheWeightsOnlyWhenTheUserIsSure) {
  OpenForTraining("iris.net");
  Train();
  const Matrix trained = m_session->network.layers[1].weights;
  m_native.answers = {wxID_NO, wxID_YES};
  Choose(115);
  EXPECT_TRUE(std::ranges::equal(trained.All(), m_session->network.layers[1].weights.All()));
  Choose(115);
  EXPECT_FALSE(std::ranges::equal(trained.All(), m_session->network.layers[1].weights.All()));
  EXPECT_THAT(m_native.boxes, ElementsAre("Are You Sure?|Reset Network to Untrained State?",
                                          "Are You Sure?|Reset Network to Untrained State?"));
}

TEST_F(TrainingWindow, TellsWhichFileCannotBeWritten) {
  OpenForTraining("iris.net");
  Train();
  const std::string none = m_folder / "none/";
  m_dialogs->files = {none + "a.net", none + "a.out", none + "a.err", none + "b.net"};
  Choose(112);
  Choose(102);
  Choose(103);
  Choose(104, {[] { Click(*TopDialog(), kOkId); }});
  EXPECT_THAT(m_native.boxes,
              ElementsAre("File Save Error - FILE NOT SAVED!|Cannot Write to Network File",
                          "Output/Target Save Aborted|File Error Writting Outputs",
                          "Error History Save Aborted|File Error Writting Error History",
                          "AutoSave Error|Error Writing Network File",
                          "Network AutoSave Aborted|File Not Saved"));
  EXPECT_EQ(Caption(), "Tarn - " + m_folder / "iris.net");
}

TEST_F(TrainingWindow, AsksBeforeANameThatWasCompletedReplacesAFile) {
  OpenForTraining("iris.net");
  WriteFile(m_folder / "old.net", "old");
  m_dialogs->files = {m_folder / "old", m_folder / "old"};
  m_native.answers = {wxID_NO, wxID_YES};
  Choose(112);
  EXPECT_THAT(m_native.boxes,
              ElementsAre("Save Network As...|" + m_folder / "old.net" + " exists. Replace it?",
                          "Save Network As...|" + m_folder / "old.net" + " exists. Replace it?"));
  EXPECT_TRUE(ReadFile(m_folder / "old.net").starts_with("TARNV2.1\n"));
}

TEST_F(TrainingWindow, GivesEveryUnderlinedLetterOnce) {
  OpenForTraining("iris.net");
  std::string letters;
  const wxMenuBar& menu = *Frame().GetMenuBar();
  for (size_t i = 0; i < menu.GetMenuCount(); ++i) {
    letters += Utf8(menu.GetMenuLabel(i).AfterFirst('&').Left(1).Lower());
  }
  for (const int id : {215, 216, 217}) {
    letters += Utf8(Client().FindWindow(id)->GetLabel().AfterFirst('&').Left(1).Lower());
  }
  std::ranges::sort(letters);
  EXPECT_EQ(std::ranges::adjacent_find(letters), letters.end()) << letters;
}

TEST_F(TrainingWindow, HasHelpAndAbout) {
  OpenForTraining("iris.net");
  Choose(24341);
  EXPECT_THAT(m_native.boxes,
              ElementsAre("Tarn Warning|The help file is missing: " + m_folder / "TARN.HLP"));
  Choose(24346, {[] { Click(*TopDialog(), kOkId); }});
}

}  // namespace
}  // namespace tarn
