#include "app/study_desk.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "app/session_fixture.h"
#include "browser/report_text.h"
#include "engine/error_history.h"
#include "support/fake_dialogs.h"
#include "support/faulty_files.h"
#include "support/set_clock.h"

namespace tarn {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

class RecordingView : public StudyView {
 public:
  void ShowGraph(Graph graph) override {
    titles.push_back(graph.title);
    graphs.push_back(std::move(graph));
  }
  void ShowHistory(HistoryKind kind, Graph graph) override {
    histories.push_back(kind);
    ShowGraph(std::move(graph));
  }
  void ShowReport(std::unique_ptr<ReportFile> report, std::string_view caption) override {
    captions.emplace_back(caption);
    reports.push_back(std::move(report));
  }
  void ShowProgress(std::string_view text) override { progress.emplace_back(text); }
  void TaskChanged() override { ++task_changes; }

  std::vector<std::string> titles;
  std::vector<Graph> graphs;
  std::vector<HistoryKind> histories;
  std::vector<std::string> captions;
  std::vector<std::unique_ptr<ReportFile>> reports;
  std::vector<std::string> progress;
  int task_changes = 0;
};

// The fixture's network of 2-3-1 nodes, loaded for training; ten patterns.
class StudyDeskTest : public SessionFixture {
 protected:
  StudyDesk& Desk() {
    if (m_desk == nullptr) {
      EXPECT_EQ(Train(), "");
      Open();
    }
    return *m_desk;
  }
  void Open() {
    m_desk = std::make_unique<StudyDesk>(m_session, m_dialogs, m_view, m_clock, kHistory);
  }
  // The same network with data of its own, as after a recall run.
  void OpenForRecall(bool targets) {
    EXPECT_EQ(Train(), "");
    m_network.mode = Mode::kRecall;
    m_network.RecallTargets = targets;
    Open();
  }
  // Works on the task to its end.
  void Finish() {
    while (Desk().Work(1000)) {
    }
    EXPECT_FALSE(Desk().HasTask());
  }
  std::string ReportLines(size_t index) {
    TVirtText text;
    EXPECT_TRUE(text.Open(m_view.reports.at(index)->path()));
    std::string lines;
    EXPECT_TRUE(WriteReportText(text, [&lines](std::string_view line) {
                  lines += line;
                  return true;
                }).ok());
    return lines;
  }

  static constexpr const char* kHistory = "/home/run.his";

  FakeDialogs m_dialogs;
  RecordingView m_view;
  SetClock m_clock;
  std::unique_ptr<StudyDesk> m_desk;
};

std::string HistoryBytesOf(int32_t iterations) {
  std::string bytes;
  for (int32_t i = 1; i <= iterations; ++i) {
    HistoryRecord record;
    record.iteration = i;
    record.rms_train = 1.0F / static_cast<float>(i);
    const HistoryBytes encoded = EncodeHistoryRecord(record);
    bytes.append(reinterpret_cast<const char*>(encoded.data()), encoded.size());
  }
  return bytes;
}

TEST_F(StudyDeskTest, KnowsItsCommandsAlone) {
  for (const int32_t command : {0, 1, 101, 115, 134, 202, 229, 24341}) {
    EXPECT_FALSE(Desk().DoCommand(command)) << command;
    EXPECT_FALSE(StudyDesk::HasCommand(command)) << command;
    EXPECT_FALSE(Desk().IsAvailable(command)) << command;
  }
  for (const int32_t command : {116, 149, 131, 133, 128, 218, 233}) {
    EXPECT_TRUE(StudyDesk::HasCommand(command)) << command;
    EXPECT_TRUE(Desk().IsAvailable(command)) << command;
  }
}

TEST_F(StudyDeskTest, PlotsEachHistoryByItsCommand) {
  m_files.Put(kHistory, HistoryBytesOf(4));
  for (const int32_t command : {116, 121, 117, 144, 145, 148, 149}) {
    EXPECT_TRUE(Desk().DoCommand(command));
  }
  EXPECT_THAT(m_view.histories,
              ElementsAre(HistoryKind::kRms, HistoryKind::kTestRms, HistoryKind::kLearnRate,
                          HistoryKind::kCorrelation, HistoryKind::kTestCorrelation,
                          HistoryKind::kTolerance, HistoryKind::kTestTolerance));
  EXPECT_EQ(m_view.titles.front(), "Root Mean Square Error of Training Set");
  EXPECT_EQ(m_view.titles.back(), "Test Set Predictions Within Tolerance");
  EXPECT_THAT(m_view.graphs, Each(testing::Field(&Graph::curves, SizeIs(1))));
  EXPECT_EQ(m_dialogs.busy_log, "+-+-+-+-+-+-+-");
}

TEST_F(StudyDeskTest, ShowsAHistoryAsItGrows) {
  m_files.Put(kHistory, HistoryBytesOf(4));
  EXPECT_EQ(Desk().HistoryGraph(HistoryKind::kRms)->curves[0].x.size(), 4U);
  m_files.Put(kHistory, HistoryBytesOf(7));
  EXPECT_EQ(Desk().HistoryGraph(HistoryKind::kRms)->curves[0].x.size(), 7U);
}

TEST_F(StudyDeskTest, TellsThatAHistoryCannotBeRead) {
  Desk().DoCommand(116);
  EXPECT_THAT(m_view.titles, IsEmpty());
  EXPECT_THAT(m_dialogs.told, ElementsAre("NetGraph Error|The error history cannot be read"));
}

TEST_F(StudyDeskTest, PlotsTargetsAgainstOutputs) {
  Desk().DoCommand(118);
  EXPECT_THAT(m_view.titles, ElementsAre(StartsWith("Scatter Comparison of")));
}

TEST_F(StudyDeskTest, PlotsEveryOutputInAWindowOfItsOwn) {
  m_dialogs.answers = {Answer::kYes, Answer::kYes};
  Desk().DoCommand(119);
  EXPECT_TRUE(Desk().HasTask());
  Finish();
  Desk().DoCommand(120);
  Finish();
  EXPECT_THAT(m_dialogs.asked, ElementsAre("Output/Target Comparison Plots|Plot all output nodes?",
                                           "Output/Target Error Plots|Plot all output nodes?"));
  EXPECT_THAT(m_view.titles,
              ElementsAre(HasSubstr("Targets/Outputs vs Pattern Number"),
                          "Targets - Network Output Error vs Input Sequence Number"));
  EXPECT_EQ(m_dialogs.busy_log, "+-+-");
}

TEST_F(StudyDeskTest, PlotsTheOutputAskedFor) {
  m_dialogs.answers = {Answer::kNo};
  m_dialogs.values = {"99"};
  Desk().DoCommand(119);
  Finish();
  EXPECT_THAT(m_dialogs.entries, ElementsAre("Select Output Node|Output node number to plot:|1"));
  EXPECT_THAT(m_view.titles, SizeIs(1)) << "the number is brought into the range";
}

TEST_F(StudyDeskTest, PlotsNothingWhenTheNodeIsLeft) {
  m_dialogs.answers = {Answer::kNo, Answer::kNo, Answer::kNo};
  m_dialogs.values = {std::nullopt, std::nullopt, std::nullopt};
  for (const int32_t command : {119, 122, 131}) Desk().DoCommand(command);
  EXPECT_FALSE(Desk().HasTask());
  EXPECT_THAT(m_view.titles, IsEmpty());
}

TEST_F(StudyDeskTest, PlotsInputsForAsLongAsTheUserSaysYes) {
  m_dialogs.answers = {Answer::kYes, Answer::kYes, Answer::kYes};
  Desk().DoCommand(122);
  EXPECT_THAT(m_view.titles, ElementsAre("Input Node 1", "Input Node 2"));
  m_dialogs.answers = {Answer::kYes, Answer::kNo};
  Desk().DoCommand(122);
  EXPECT_THAT(m_view.titles, SizeIs(3));
  EXPECT_THAT(
      m_dialogs.asked,
      ElementsAre("Input Node Plots|Plot all input nodes?", "Tarn|Continue plotting inputs?",
                  "Tarn|Continue plotting inputs?", "Input Node Plots|Plot all input nodes?",
                  "Tarn|Continue plotting inputs?"));
}

TEST_F(StudyDeskTest, PlotsTheInputAskedFor) {
  m_dialogs.answers = {Answer::kNo};
  m_dialogs.values = {"2"};
  Desk().DoCommand(122);
  EXPECT_THAT(m_dialogs.entries, ElementsAre("Select Input Node|Input node number to plot:|1"));
  EXPECT_THAT(m_view.titles, ElementsAre("Input Node 2"));
}

TEST_F(StudyDeskTest, InterrogatesInputsInSlicesAndShowsHowFarItIs) {
  m_dialogs.answers = {Answer::kYes};
  Desk().DoCommand(131);
  EXPECT_EQ(m_dialogs.busy_log, "+");
  EXPECT_EQ(Desk().hint(), "Press Escape to stop");
  Finish();
  EXPECT_EQ(Desk().hint(), "");
  EXPECT_EQ(m_dialogs.busy_log, "+-");
  EXPECT_EQ(m_view.progress.back(), "Inputs/Patterns Processed 100%");
  EXPECT_THAT(m_view.titles, ElementsAre("Percent Contributions From Inputs on Output Node 1"));
  EXPECT_EQ(m_view.task_changes, 2);
}

TEST_F(StudyDeskTest, AnalyzesHiddenLayersOfSeveralNodes) {
  Desk().DoCommand(132);
  Finish();
  EXPECT_THAT(m_view.titles,
              ElementsAre("Cummulative Connection Strengths From Nodes in Hidden Layer 1"));
  EXPECT_EQ(m_view.progress.back(), "Hidden Nodes/Patterns Processed 100%");
}

TEST_F(StudyDeskTest, TellsThatSingleHiddenNodesHaveNothingToCompare) {
  SetLine(4, "2 1 1 0 0 ");
  Desk().DoCommand(132);
  EXPECT_FALSE(Desk().HasTask());
  EXPECT_THAT(m_dialogs.told,
              ElementsAre("NetGraph Error|Hidden layer 1 has a single node: there is nothing to "
                          "compare"));
}

TEST_F(StudyDeskTest, TracesContoursOfTwoInputsWithoutAQuestion) {
  Desk().DoCommand(146);
  Finish();
  EXPECT_THAT(m_dialogs.entries, IsEmpty());
  EXPECT_THAT(m_view.titles, ElementsAre("Input nodes 1, 2 Influence on Output node 1"));
  EXPECT_EQ(m_view.progress.back(), "Contours Processed 100%");
  EXPECT_TRUE(m_view.graphs[0].contours);
}

TEST_F(StudyDeskTest, BeginsOneTaskAtATime) {
  Desk().DoCommand(146);
  for (const int32_t command : {119, 120, 131, 132, 146, 219}) {
    EXPECT_FALSE(Desk().IsAvailable(command)) << command;
    EXPECT_TRUE(Desk().DoCommand(command)) << "known, but of no effect";
  }
  EXPECT_TRUE(Desk().IsAvailable(118));
  EXPECT_TRUE(Desk().IsAvailable(125));
  EXPECT_THAT(m_dialogs.asked, IsEmpty());
  Finish();
  EXPECT_TRUE(Desk().IsAvailable(146));
}

TEST_F(StudyDeskTest, StopsATaskAndKeepsWhatWasShown) {
  m_dialogs.answers = {Answer::kYes};
  Desk().DoCommand(131);
  EXPECT_TRUE(Desk().Work(0));
  Desk().StopTask();
  EXPECT_FALSE(Desk().HasTask());
  EXPECT_FALSE(Desk().Work(1000));
  EXPECT_THAT(m_view.titles, IsEmpty());
  EXPECT_EQ(Desk().hint(), "Analysis Stopped");
  EXPECT_EQ(m_dialogs.busy_log, "+-");
  EXPECT_EQ(m_view.task_changes, 2);
  Desk().StopTask();
  EXPECT_EQ(m_view.task_changes, 2) << "there is nothing to stop";
  Desk().ForgetNotice();
  EXPECT_EQ(Desk().hint(), "");
}

TEST_F(StudyDeskTest, OpensNoWindowBeneathAQuestion) {
  class Asking : public FakeDialogs {
   public:
    bool IsAsking() const override { return asking; }
    bool asking = false;
  } dialogs;
  EXPECT_EQ(Train(), "");
  StudyDesk desk(m_session, dialogs, m_view, m_clock);
  desk.DoCommand(146);
  dialogs.asking = true;
  while (desk.Work(1000)) {
  }
  EXPECT_TRUE(desk.HasTask());
  EXPECT_THAT(m_view.titles, IsEmpty());
  dialogs.asking = false;
  EXPECT_FALSE(desk.Work(1000));
  EXPECT_THAT(m_view.titles, SizeIs(1));
}

TEST_F(StudyDeskTest, WritesEachReportByItsCommand) {
  m_dialogs.values = {"0.25", "0.5", ""};
  for (const int32_t command : {133, 123, 124, 125, 126, 127}) {
    EXPECT_TRUE(Desk().DoCommand(command));
  }
  EXPECT_THAT(m_view.captions, ElementsAre("Network Information", "Network Outputs and Targets",
                                           "Weight Information", "Network Statistics",
                                           "Network Tolerance Check", "Network Threshold Check"));
  EXPECT_THAT(m_dialogs.entries,
              ElementsAre(StartsWith("Select Tolerance|Tolerance Value:|"),
                          "Select Upper Threshold Value|Upper threshold (optional):|",
                          "Select Lower Threshold Value|Lower threshold (optional):|"));
  EXPECT_THAT(ReportLines(0), StartsWith(" Network Name:         Test\n"));
  EXPECT_THAT(ReportLines(4), HasSubstr(" Tolerance:     0.250000\n"));
  EXPECT_THAT(ReportLines(5), HasSubstr(" Upper Threshold:     0.500000\n"));
  EXPECT_EQ(m_dialogs.busy_log, "+-+-+-+-+-+-");
}

TEST_F(StudyDeskTest, RemovesAReportWithTheWindowThatHasIt) {
  Desk().DoCommand(133);
  const std::string path = m_view.reports[0]->path();
  EXPECT_TRUE(m_files.Exists(path));
  m_view.reports.clear();
  EXPECT_FALSE(m_files.Exists(path));
}

TEST_F(StudyDeskTest, WritesNoReportThatWasLeft) {
  m_dialogs.values = {std::nullopt, std::nullopt, "1", std::nullopt, "", ""};
  Desk().DoCommand(126);
  Desk().DoCommand(127);
  Desk().DoCommand(127);
  Desk().DoCommand(127);
  EXPECT_THAT(m_view.captions, IsEmpty());
  EXPECT_THAT(m_dialogs.told, IsEmpty());
}

TEST_F(StudyDeskTest, TellsThatAReportCannotBeWritten) {
  Desk();
  FaultyFiles faulty(m_files);
  const ScopedFileLayer layer(faulty);
  faulty.FailAt(1, FaultyFiles::Fault::kDiskFull);
  Desk().DoCommand(125);
  EXPECT_THAT(m_view.captions, IsEmpty());
  EXPECT_THAT(m_dialogs.told, ElementsAre("Tarn Error|File Creation Access Denied"));
  EXPECT_THAT(m_dialogs.icons, ElementsAre(MessageIcon::kExclamation));
}

TEST_F(StudyDeskTest, AnswersTheDivergenceCheckInABox) {
  Desk();
  for (size_t p = 0; p < 10; ++p) m_network.layers[2].activations.Row(p)[0] = 0.5F;
  Desk().DoCommand(128);
  for (size_t p = 0; p < 10; ++p) m_network.layers[2].activations.Row(p)[0] = 0.99995F;
  Desk().DoCommand(128);
  EXPECT_THAT(
      m_dialogs.told,
      ElementsAre("No Training Divergences Found|Network Training OK - No Divergences Found",
                  "Training Divergences Found|Diverged Output Nodes - 1"));
  EXPECT_THAT(m_dialogs.icons, ElementsAre(MessageIcon::kNone, MessageIcon::kExclamation));
}

TEST_F(StudyDeskTest, HasNoUseForTargetsThatARecallHasNot) {
  OpenForRecall(false);
  for (const int32_t command : {218, 220, 225, 226, 227}) {
    EXPECT_EQ(Desk().Obstacle(command), "Needs targets: this recall has none") << command;
    EXPECT_FALSE(Desk().IsAvailable(command)) << command;
    EXPECT_TRUE(Desk().DoCommand(command)) << "known, but of no effect";
  }
  for (const int32_t command : {219, 222, 223, 233}) {
    EXPECT_EQ(Desk().Obstacle(command), "") << command;
    EXPECT_TRUE(Desk().IsAvailable(command)) << command;
  }
  EXPECT_THAT(m_dialogs.asked, IsEmpty());
  EXPECT_THAT(m_view.captions, IsEmpty());
}

TEST_F(StudyDeskTest, DoesTheRecallCommandsAsThoseOfTraining) {
  OpenForRecall(true);
  m_dialogs.answers = {Answer::kYes, Answer::kYes, Answer::kNo};
  m_dialogs.values = {"1", "0.1", "0.5", "0.1"};
  for (const int32_t command : {218, 219, 220, 222}) {
    Desk().DoCommand(command);
    Finish();
  }
  for (const int32_t command : {233, 223, 225, 226, 227}) Desk().DoCommand(command);
  EXPECT_THAT(m_view.titles, SizeIs(4));
  EXPECT_THAT(m_view.captions, SizeIs(5));
  EXPECT_THAT(ReportLines(2), HasSubstr(" RECALL DATA:\n"));
  EXPECT_THAT(ReportLines(4), HasSubstr(" Thresholds:     0.500000, 0.100000\n"));
}

}  // namespace
}  // namespace tarn
