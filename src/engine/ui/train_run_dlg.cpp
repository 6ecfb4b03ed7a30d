#include "engine/ui/train_run_dlg.h"

#include <algorithm>
#include <cmath>
#include <fmt/printf.h>
#include <string>
#include <utility>
#include <wx/app.h>
#include <wx/button.h>
#include <wx/gauge.h>
#include <wx/menu.h>

#include "engine/messages.h"
#include "engine/training_figures.h"
#include "resources/commands.h"
#include "resources/controls.h"

namespace tarn {
namespace {

// A slice of training: short enough for the window to answer at once.
constexpr int64_t kSliceMs = 15;
// Figures change faster than anybody reads; this often is enough, and costs no training time.
constexpr int64_t kShowEveryMs = 100;
// The first iterations are shown at once.
constexpr int32_t kFirstIterations = 3;
constexpr int kHaltTickMs = 100;

constexpr int kRmsTrain = 201;
constexpr int kRmsTest = 202;
constexpr int kCorrelationTrain = 203;
constexpr int kCorrelationTest = 204;
constexpr int kWithinTrain = 205;
constexpr int kWithinTest = 206;
constexpr int kIteration = 207;
constexpr int kEta = 208;
constexpr int kLearnRateControl = 209;
constexpr int kTransferFunction = 210;
constexpr int kSpeed = 211;
constexpr int kProgress = 212;
constexpr int kPercent = 213;
constexpr int kTimeRemaining = 214;
constexpr int kStartButton = 215;
constexpr int kHaltButton = 216;
constexpr int kStopButton = 217;

enum Command : int {
  kSave = 101,
  kSaveOutputs = 102,
  kSaveHistory = 103,
  kSaveSnapshot = 104,
  kToggleControl = 105,
  kSaveAs = 112,
  kResetWeights = 115,
  kStop = 134,
  kStart = 135,
};

}  // namespace

TrainRunDlg::TrainRunDlg(wxFrame& frame, Session& session, Dialogs& dialogs, const Clock& clock,
                         std::function<void()> figures_shown)
    : m_frame(frame),
      m_clock(clock),
      m_figures_shown(std::move(figures_shown)),
      m_desk(session, dialogs, *this, clock) {
  LoadPanel(*this, &frame, "TRAIN_DLG");
  SetLabel(Wide(kTrainingStatus));
  SetExtraStyle(GetExtraStyle() | wxWS_EX_PROCESS_IDLE);
  Bind(wxEVT_IDLE, &TrainRunDlg::OnIdle, this);
  Bind(
      wxEVT_BUTTON, [this](wxCommandEvent&) { DoCommand(kStart); }, kStartButton);
  Bind(
      wxEVT_BUTTON, [this](wxCommandEvent&) { DoCommand(kStop); }, kStopButton);
  Bind(
      wxEVT_BUTTON,
      [this](wxCommandEvent&) {
        m_desk.HaltOrResume();
        ShowFigures();
      },
      kHaltButton);
  m_halt_timer.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { m_desk.WorkWhileHalted(); });
  TrainRunDlg::ShowStatus(kTrainingStatus);
  ShowFigures();
  Control(*this, kStartButton).SetFocus();
}

void TrainRunDlg::Hold(bool hold) {
  m_holds += hold ? 1 : -1;
  if (m_holds == 0) wxWakeUpIdle();
}

void TrainRunDlg::Abandon() {
  Hold(true);
  m_desk.LeaveSnapshots();
}

void TrainRunDlg::OnIdle(wxIdleEvent& event) {
  event.Skip();
  if (m_working || m_holds > 0) return;
  m_working = true;
  const bool goes_on = m_desk.Work(kSliceMs);
  m_working = false;
  const bool first = m_desk.network().iteration <= kFirstIterations;
  const bool due = m_clock.NowMs() - m_shown_at_ms >= kShowEveryMs;
  if (m_changed && (!goes_on || first || due)) ShowFigures();
  if (goes_on) event.RequestMore();
  m_desk.TellPending();
}

bool TrainRunDlg::DoCommand(int command) {
  bool known = true;
  switch (command) {
    case kStart:
      m_desk.Start();
      wxWakeUpIdle();
      break;
    case kStop:
      m_desk.Stop();
      break;
    default:
      known = DoFileCommand(command) || DoOptionCommand(command);
  }
  if (known) ShowFigures();
  return known;
}

bool TrainRunDlg::DoFileCommand(int command) {
  switch (command) {
    case kSave:
      m_desk.Save();
      return true;
    case kSaveAs:
      m_desk.SaveAs();
      return true;
    case kSaveOutputs:
      m_desk.SaveOutputsAs();
      return true;
    case kSaveHistory:
      m_desk.SaveErrorHistoryAs();
      return true;
    case kSaveSnapshot:
      m_desk.SaveSnapshotAs();
      return true;
    default:
      return false;
  }
}

bool TrainRunDlg::DoOptionCommand(int command) {
  if (command == kToggleControl) {
    m_desk.ToggleLearnRateControl();
    return true;
  }
  if (command == kResetWeights) {
    m_desk.ResetWeights();
    return true;
  }
  return m_desk.ChangeOption(command);
}

void TrainRunDlg::ShowStatus(std::string_view text) {
  const wxString shown = Wide(text);
  if (m_frame.GetStatusBar() == nullptr) return;
  if (m_frame.GetStatusBar()->GetStatusText(kStatusField) == shown) return;
  m_frame.SetStatusText(shown, kStatusField);
  // Within a slice nothing else would paint it.
  m_frame.GetStatusBar()->Update();
}

void TrainRunDlg::ShowFigures() {
  const Network& network = m_desk.network();
  const TrainingFigures figures = FiguresOf(network, m_desk.figures());
  SetText(*this, kRmsTrain, figures.rms_train);
  SetText(*this, kRmsTest, figures.rms_test);
  SetText(*this, kCorrelationTrain, figures.correlation_train);
  SetText(*this, kCorrelationTest, figures.correlation_test);
  SetText(*this, kWithinTrain, figures.within_train);
  SetText(*this, kWithinTest, figures.within_test);
  SetText(*this, kIteration, fmt::sprintf("%d", network.iteration));
  SetText(*this, kEta, figures.eta);
  SetText(*this, kLearnRateControl, m_desk.LearnRateControlText());
  SetText(*this, kTransferFunction, TransferFunctionName(network));
  SetText(*this, kSpeed, figures.speed);
  SetText(*this, kPercent, figures.percent_complete);
  SetText(*this, kTimeRemaining, figures.time_remaining);
  ShowProgress();
  ShowState();
  m_changed = false;
  m_shown_at_ms = m_clock.NowMs();
  m_figures_shown();
}

void TrainRunDlg::ShowProgress() {
  auto& gauge = Control<wxGauge>(*this, kProgress);
  const double part = std::clamp(m_desk.figures().fraction_complete, 0.0, 1.0);
  const int value = static_cast<int>(std::lround(part * gauge.GetRange()));
  if (gauge.GetValue() != value) gauge.SetValue(value);
}

void TrainRunDlg::ShowState() {
  const bool under_way = m_desk.IsUnderWay();
  const bool halted = m_desk.IsHalted();
  EnableButtons(under_way);
  const wxString halt = halted ? "R&esume" : "H&alt";
  wxWindow& halt_button = Control(*this, kHaltButton);
  if (halt_button.GetLabel() != halt) halt_button.SetLabel(halt);
  if (!halted) m_halt_timer.Stop();
  if (halted && !m_halt_timer.IsRunning()) m_halt_timer.Start(kHaltTickMs);
  if (wxMenuBar* menu = m_frame.GetMenuBar()) {
    menu->Enable(kStart, !under_way);
    menu->Enable(kStop, under_way);
    menu->Check(kToggleControl, m_desk.LearnRateControl() != LearnRateControlState::kOff);
  }
}

void TrainRunDlg::EnableButtons(bool under_way) {
  wxWindow& start = Control(*this, kStartButton);
  wxWindow& halt = Control(*this, kHaltButton);
  wxWindow& stop = Control(*this, kStopButton);
  if (start.IsThisEnabled() != under_way) return;
  // The keyboard stays at hand: a disabled button keeps no focus.
  const bool had_focus = start.HasFocus() || halt.HasFocus() || stop.HasFocus();
  start.Enable(!under_way);
  halt.Enable(under_way);
  stop.Enable(under_way);
  if (had_focus) (under_way ? halt : start).SetFocus();
}

}  // namespace tarn
