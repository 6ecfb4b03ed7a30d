#include "app/study_desk.h"

#include <algorithm>
#include <array>
#include <new>
#include <utility>

#include "app/messages.h"
#include "app/study_questions.h"
#include "base/paths.h"
#include "browser/divergence_check.h"
#include "browser/messages.h"
#include "netgraph/contour_analysis.h"
#include "netgraph/hidden_node_analyzer.h"
#include "netgraph/input_interrogator.h"
#include "netgraph/messages.h"
#include "netgraph/pattern_plots.h"

namespace tarn {

// A command by its numbers in the training and in the recall menu; 0 where it is not.
struct StudyDesk::Command {
  int32_t training = 0;
  int32_t recall = 0;
  void (StudyDesk::*act)() = nullptr;
  bool needs_targets = false;
  bool begins_task = false;
};

const StudyDesk::Command* StudyDesk::Find(int32_t command) {
  using Desk = StudyDesk;
  static constexpr std::array<Command, 21> kCommands = {{
      {116, 0, &Desk::PlotHistory<HistoryKind::kRms>},
      {121, 0, &Desk::PlotHistory<HistoryKind::kTestRms>},
      {117, 0, &Desk::PlotHistory<HistoryKind::kLearnRate>},
      {144, 0, &Desk::PlotHistory<HistoryKind::kCorrelation>},
      {145, 0, &Desk::PlotHistory<HistoryKind::kTestCorrelation>},
      {148, 0, &Desk::PlotHistory<HistoryKind::kTolerance>},
      {149, 0, &Desk::PlotHistory<HistoryKind::kTestTolerance>},
      {118, 218, &Desk::PlotScatter, true},
      {119, 219, &Desk::PlotOutputs, false, true},
      {120, 220, &Desk::PlotErrors, true, true},
      {122, 222, &Desk::PlotInputs},
      {131, 0, &Desk::InterrogateInputs, false, true},
      {146, 0, &Desk::TraceContours, false, true},
      {132, 0, &Desk::AnalyzeHiddenNodes, false, true},
      {133, 233, &Desk::ReportInformation},
      {123, 223, &Desk::ReportOutputs},
      {124, 0, &Desk::ReportWeights},
      {125, 225, &Desk::ReportStatistics, true},
      {126, 226, &Desk::CheckTolerance, true},
      {127, 227, &Desk::CheckThreshold, true},
      {128, 0, &Desk::CheckDivergence},
  }};
  if (command == 0) return nullptr;
  const auto* const found = std::ranges::find_if(kCommands, [command](const Command& known) {
    return known.training == command || known.recall == command;
  });
  return found != kCommands.end() ? found : nullptr;
}

StudyDesk::StudyDesk(const Session& session, Dialogs& dialogs, StudyView& view, const Clock& clock,
                     std::string history_path)
    : m_session(session),
      m_dialogs(dialogs),
      m_view(view),
      m_clock(clock),
      m_history_path(std::move(history_path)) {}

bool StudyDesk::DoCommand(int32_t command) {
  const Command* known = Find(command);
  if (known == nullptr) return false;
  if (IsAvailable(command)) (this->*known->act)();
  return true;
}

std::string_view StudyDesk::Obstacle(int32_t command) const {
  const Command* known = Find(command);
  const bool missing = known != nullptr && known->needs_targets && !HasTargets(network());
  return missing ? kNoTargets : std::string_view();
}

bool StudyDesk::IsAvailable(int32_t command) const {
  const Command* known = Find(command);
  return known != nullptr && Obstacle(command).empty() && !(known->begins_task && HasTask());
}

bool StudyDesk::Work(int64_t budget_ms) {
  if (!m_task) return false;
  if (!m_task->IsComputed()) {
    m_task->Compute(budget_ms, m_clock);
    const std::string progress = m_task->progress();
    if (!progress.empty()) m_view.ShowProgress(progress);
    return true;
  }
  // A window that opens beneath a question could not be used.
  if (m_dialogs.IsAsking()) return false;
  if (!m_task->IsDone()) m_view.ShowGraph(m_task->TakeGraph());
  if (!m_task->IsDone()) return true;
  EndTask();
  m_view.TaskChanged();
  return false;
}

void StudyDesk::Begin(StudyTask task) {
  m_task = std::move(task);
  m_hint = kEscapeStops;
  m_dialogs.ShowBusy(true);
  m_view.TaskChanged();
}

void StudyDesk::EndTask() {
  if (!m_task) return;
  m_task.reset();
  m_hint = {};
  m_dialogs.ShowBusy(false);
}

void StudyDesk::StopTask() {
  if (!m_task) return;
  EndTask();
  m_hint = kAnalysisStopped;
  m_view.TaskChanged();
}

void StudyDesk::ForgetNotice() {
  if (!m_task) m_hint = {};
}

std::optional<Graph> StudyDesk::HistoryGraph(HistoryKind kind) const {
  Graph graph;
  if (!BuildHistoryPlot(kind, m_history_path, graph).ok()) return std::nullopt;
  return graph;
}

template <HistoryKind kind>
void StudyDesk::PlotHistory() {
  std::optional<Graph> graph = WhileBusy(m_dialogs, [this] { return HistoryGraph(kind); });
  if (graph) {
    m_view.ShowHistory(kind, std::move(*graph));
  } else {
    m_dialogs.Tell(kNetGraphErrorCaption, kHistoryUnreadable);
  }
}

void StudyDesk::PlotScatter() {
  m_view.ShowGraph(WhileBusy(m_dialogs, [this] { return ScatterPlot(network()); }));
}

void StudyDesk::PlotOutputs() {
  PlotOutputNodes(kAllOutputsCompared, &OutputsPlot);
}

void StudyDesk::PlotErrors() {
  PlotOutputNodes(kAllOutputErrors, &ErrorPlot);
}

void StudyDesk::PlotOutputNodes(const PlotQuestion& question, NodePlot plot) {
  std::optional<std::deque<size_t>> nodes = AskForOutputs(m_dialogs, question, network());
  if (!nodes) return;
  Begin({nullptr, std::move(*nodes), [this, plot](size_t node) { return plot(network(), node); }});
}

void StudyDesk::PlotInputs() {
  const int32_t inputs = network().layers[0].nUnits;
  const auto show = [this](size_t node) {
    m_view.ShowGraph(WhileBusy(m_dialogs, [&] { return InputsPlot(network(), node); }));
  };
  if (AsksYes(m_dialogs, kAllInputs)) {
    for (const size_t node : AllNodes(inputs)) {
      show(node);
      if (!AsksYes(m_dialogs, kContinueInputs)) return;
    }
  } else if (const std::optional<size_t> node = AskForNode(m_dialogs, InputNodePrompt(), inputs)) {
    show(*node);
  }
}

void StudyDesk::InterrogateInputs() {
  std::optional<std::deque<size_t>> nodes =
      AskForOutputs(m_dialogs, kAllOutputsInterrogated, network());
  if (!nodes) return;
  auto interrogator = std::make_shared<InputInterrogator>(network());
  Begin({interrogator, std::move(*nodes), [this, interrogator](size_t output) {
           return ContributionPlot(*interrogator, network(), output);
         }});
}

void StudyDesk::AnalyzeHiddenNodes() {
  std::deque<size_t> layers;
  for (int32_t layer = 1; layer < network().nLayers - 1; ++layer) {
    const auto number = static_cast<size_t>(layer);
    if (!CheckHiddenLayer(network(), number)) layers.push_back(number);
  }
  if (layers.empty()) {
    m_dialogs.Tell(*CheckHiddenLayer(network(), 1));
    return;
  }
  auto analyzer = std::make_shared<HiddenNodeAnalyzer>(network());
  Begin({analyzer, std::move(layers),
         [analyzer](size_t layer) { return HiddenNodePlot(*analyzer, layer); }});
}

void StudyDesk::TraceContours() {
  const std::optional<ContourNodes> nodes = AskForContourNodes(m_dialogs, network());
  if (!nodes) return;
  auto analysis = std::make_shared<ContourAnalysis>(network(), *nodes);
  Begin({analysis, {nodes->output}, [this, analysis, nodes = *nodes](size_t) {
           return ContourPlot(analysis->surface(), network(), nodes);
         }});
}

void StudyDesk::ReportInformation() {
  ShowReport(ReportKind::kInformation);
}

void StudyDesk::ReportWeights() {
  ShowReport(ReportKind::kWeights);
}

void StudyDesk::ReportOutputs() {
  ShowReport(ReportKind::kOutputs);
}

void StudyDesk::ReportStatistics() {
  ShowReport(ReportKind::kStatistics);
}

void StudyDesk::CheckTolerance() {
  const std::optional<float> tolerance = AskForTolerance(m_dialogs, network());
  if (tolerance) ShowReport(ReportKind::kTolerance, {.tolerance = *tolerance, .thresholds = {}});
}

void StudyDesk::CheckThreshold() {
  const std::optional<Thresholds> thresholds = AskForThresholds(m_dialogs);
  if (thresholds) ShowReport(ReportKind::kThreshold, {.tolerance = 0, .thresholds = *thresholds});
}

void StudyDesk::CheckDivergence() {
  m_dialogs.Tell(WhileBusy(m_dialogs, [this] { return DivergenceMessage(network()); }));
}

void StudyDesk::ShowReport(ReportKind kind, const CheckValues& values) {
  if (!IsReportWanted(kind, values)) return;
  auto report = std::make_unique<ReportFile>();
  const Status made = WhileBusy(
      m_dialogs, [&] { return MakeReport(kind, network(), values, TemporaryFolder(), *report); });
  if (made.message() == kOutOfMemory) throw std::bad_alloc();
  if (made.ok()) {
    m_view.ShowReport(std::move(report), ReportCaption(kind));
  } else {
    m_dialogs.Tell(kReportErrorCaption, made.message());
  }
}

}  // namespace tarn
