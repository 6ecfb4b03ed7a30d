#include "engine/training_run.h"

#include <algorithm>
#include <cmath>
#include <fmt/printf.h>
#include <limits>
#include <new>
#include <utility>

#include "engine/messages.h"

namespace tarn {
namespace {

// The clock is read after this many connections: a tenth of a millisecond at a thousand million a
// second.
constexpr int64_t kWorkPerClockReading = 100000;

// A batch cannot be interrupted: it takes so long at most, by the speed of the slices before. A
// pattern is about three times its connections: forward pass, deltas and gradients.
constexpr double kLongestBatchMs = 4;
constexpr double kWorkOfPattern = 3;
constexpr int64_t kHaltTextMs = 1500;

int64_t OutputValues(const Network& network, int32_t patterns) {
  return int64_t{patterns} * OutputLayer(network).nUnits;
}

float MeanSquare(float squared_error, int64_t n) {
  return squared_error / static_cast<float>(n);
}

}  // namespace

std::string TimeRemainingText(int64_t seconds) {
  return fmt::sprintf("%d:%d:%d", seconds / 3600, seconds % 3600 / 60, seconds % 60);
}

TrainingRun::TrainingRun(Network& network, const Clock& clock, TrainingObserver& observer,
                         std::string history_path, size_t threads)
    : m_network(network),
      m_threads(threads),
      m_clock(clock),
      m_observer(observer),
      m_history(std::move(history_path)) {
  network.iteration = 0;
  network.rms_train = network.rms_test = 0;
  network.correlation_train = network.correlation_test = 0;
  network.within_train = network.within_test = 0;
  network.WeightRate = std::clamp(network.WeightRate, 0, network.nTrain);
  m_group_size = network.WeightRate > 0 ? network.WeightRate : std::max(network.nTrain, 1);
  if (m_history.Restart()) m_history.Close();
}

void TrainingRun::SetGroupSize(int32_t patterns) {
  m_group_size = std::max(patterns, 1);
}

Status TrainingRun::Start() {
  if (m_state == RunState::kRunning || m_state == RunState::kHalted || m_network.nTrain < 1) {
    return {};
  }
  m_packed.reset();
  try {
    m_packed = std::make_unique<PackedNetwork>(m_network, PackedNetwork::Use::kTraining, m_threads);
  } catch (const std::bad_alloc&) {
    return Status::Failure(kOutOfMemory);
  }
  m_connections = ConnectionCount(m_network);
  m_history_failed = false;
  if (!m_history.Restart()) {
    m_history_failed = true;
    m_observer.HistoryFailed();
  }
  m_sums = {};
  m_stop_asked = m_limit_reached = m_diverged = false;
  m_stage = Stage::kGroup;
  m_patterns_an_iteration =
      std::ceil(static_cast<double>(m_network.nTrain) / m_group_size) * m_group_size;
  m_start_ms = m_outside_since_ms = m_clock.NowMs();
  m_interface_ms = m_paused_ms = 0;
  m_state = RunState::kRunning;
  return {};
}

Status TrainingRun::WeightsReplaced() {
  if (m_packed == nullptr) return {};
  try {
    m_packed->Pack();
  } catch (const std::bad_alloc&) {
    return Status::Failure(kOutOfMemory);
  }
  return {};
}

void TrainingRun::Stop() {
  if (m_state == RunState::kHalted) EndHalt(m_clock.NowMs());
  if (m_state == RunState::kRunning) m_stop_asked = true;
}

void TrainingRun::Halt() {
  if (m_state != RunState::kRunning) return;
  m_state = RunState::kHalted;
  m_halted_since_ms = m_halt_text_ms = m_clock.NowMs();
  m_halt_notice = true;
  m_observer.ShowStatus(kHaltNotice);
}

void TrainingRun::Resume() {
  if (m_state != RunState::kHalted) return;
  EndHalt(m_clock.NowMs());
  m_observer.ShowStatus(kTrainingStatus);
}

void TrainingRun::EndHalt(int64_t now) {
  m_paused_ms += now - m_halted_since_ms;
  m_state = RunState::kRunning;
}

void TrainingRun::AlternateHaltText(int64_t now) {
  if (now - m_halt_text_ms < kHaltTextMs) return;
  m_halt_text_ms = now;
  m_halt_notice = !m_halt_notice;
  m_observer.ShowStatus(m_halt_notice ? kHaltNotice : kHaltedStatus);
}

RunState TrainingRun::RunFor(int64_t budget_ms) {
  int64_t now = m_clock.NowMs();
  if (m_state == RunState::kHalted) AlternateHaltText(now);
  if (m_state != RunState::kRunning) return m_state;
  m_interface_ms += now - m_outside_since_ms;
  m_tolerance = EffectiveTolerance(m_network);
  m_deadline_ms = now + std::min(budget_ms, std::numeric_limits<int64_t>::max() - now);
  m_single_steps = budget_ms <= 0;
  m_time_is_up = false;
  m_work = m_slice_work = 0;
  while (m_state == RunState::kRunning) {
    // Looked at first: the slice before may have ended where the run looks for a stop.
    if (m_stop_asked && StopsBefore(m_stage)) {
      m_state = RunState::kStopped;
      break;
    }
    if (MayPauseBefore(m_stage) && TimeIsUp()) break;
    m_stage = Do(m_stage);
  }
  Publish();
  m_outside_since_ms = m_clock.NowMs();
  if (m_outside_since_ms > now && m_slice_work > 0) {
    m_work_per_ms =
        static_cast<double>(m_slice_work) / static_cast<double>(m_outside_since_ms - now);
  }
  return m_state;
}

// Once it is, it stays so for the slice.
bool TrainingRun::TimeIsUp() {
  if (m_work < kWorkPerClockReading || m_time_is_up) return m_time_is_up;
  m_slice_work += m_work;
  m_work = 0;
  m_time_is_up = m_clock.NowMs() >= m_deadline_ms;
  return m_time_is_up;
}

// After the forward pass and after the backward pass of a training pattern.
bool TrainingRun::StopsBefore(Stage next) {
  return next == Stage::kBackward || next == Stage::kAdvance;
}

bool TrainingRun::MayPauseBefore(Stage next) const {
  switch (next) {
    case Stage::kBackward:
      // Stopped here, more than one pattern would have been propagated.
      return m_batch == 1;
    case Stage::kGroup:
    case Stage::kAdvance:
    case Stage::kIteration:
    case Stage::kTestPattern:
    case Stage::kRefresh:
    case Stage::kAutoSave:
      return true;
    default:
      return false;
  }
}

void TrainingRun::Publish() {
  if (!m_published) m_packed->Publish();
  m_published = true;
}

TrainingRun::Stage TrainingRun::Do(Stage stage) {
  switch (stage) {
    case Stage::kGroup:
      return BeginGroup();
    case Stage::kForward:
      Forward();
      return Stage::kBackward;
    case Stage::kBackward:
      Backward();
      return Stage::kAdvance;
    case Stage::kAdvance:
      return Advance();
    case Stage::kUpdate:
      return Update();
    case Stage::kIteration:
      return EndIteration();
    case Stage::kScreen:
      return BeginScreenUpdate();
    case Stage::kTestPattern:
      return TestPattern();
    case Stage::kRefresh:
      Refresh();
      return Stage::kAutoSave;
    case Stage::kAutoSave:
      AutoSave();
      return Stage::kGroup;
  }
  return Stage::kGroup;
}

TrainingRun::Stage TrainingRun::BeginGroup() {
  if (m_diverged) {
    m_state = RunState::kDiverged;
    m_observer.ShowStatus(kTrainingStopped);
    return Stage::kGroup;
  }
  if (m_limit_reached) {
    m_state = RunState::kComplete;
    m_observer.ShowStatus(kTrainingComplete);
    return Stage::kGroup;
  }
  m_in_group = 0;
  m_group = m_group_size;
  m_pass_complete = false;
  return Stage::kForward;
}

// How many of so many patterns to take at once.
int32_t TrainingRun::BatchOf(int32_t patterns) const {
  const double in_time =
      m_work_per_ms * kLongestBatchMs / (kWorkOfPattern * static_cast<double>(m_connections));
  auto most = static_cast<int64_t>(
      std::min(static_cast<double>(m_packed->batch()), std::max(in_time, 1.0)));
  if (m_single_steps) most = std::min(most, kWorkPerClockReading / m_connections);
  return static_cast<int32_t>(std::clamp<int64_t>(patterns, 1, std::max<int64_t>(most, 1)));
}

std::span<const int32_t> TrainingRun::Batch() const {
  return std::span(m_network.train_list)
      .subspan(static_cast<size_t>(m_cursor), static_cast<size_t>(m_batch));
}

void TrainingRun::Forward() {
  if (m_cursor >= m_network.nTrain) m_cursor = 0;
  m_batch = BatchOf(std::min(m_group - m_in_group, m_network.nTrain - m_cursor));
  // A stop is looked for after every pattern.
  if (m_stop_asked) m_batch = 1;
  m_packed->ForwardWithDerivatives(Batch());
  m_published = false;
  m_work += m_connections * m_batch;
}

void TrainingRun::Backward() {
  m_packed->Backpropagate();
  // Those of a group's last batch are taken together with the update.
  if (m_in_group + m_batch < m_group) m_packed->AddGradients(m_in_group == 0);
  m_published = false;
  m_work += m_connections * m_batch;
  m_sums.AddRows(m_network.targets, OutputLayer(m_network).activations, Batch(), m_tolerance);
  m_in_group += m_batch;
  m_cursor += m_batch - 1;
  if (m_cursor == m_network.nTrain - 1) EndPass();
}

void TrainingRun::EndPass() {
  m_pass = m_sums;
  m_sums = {};
  if (m_tolerance > 0) {
    m_network.within_train = PercentWithin(m_pass.hits, OutputValues(m_network, m_network.nTrain));
  }
  m_pass_complete = true;
}

TrainingRun::Stage TrainingRun::Advance() {
  ++m_cursor;
  return m_in_group < m_group ? Stage::kForward : Stage::kUpdate;
}

// Whether nothing that sees or uses the network comes between this update and the next pattern,
// both groups of their own.
bool TrainingRun::NextFollowsAtOnce() {
  if (m_group != 1 || m_group_size != 1 || m_stop_asked || TimeIsUp()) return false;
  return !m_pass_complete || NextIterationEndsQuietly();
}

bool TrainingRun::NextIterationEndsQuietly() const {
  const int32_t next = m_network.iteration + 1;
  return next < m_network.MaxIterations && next < m_network.LRC && !IsScreenUpdate(next) &&
         !IsAutoSave(next) && std::isfinite(m_pass.squared_error);
}

bool TrainingRun::IsScreenUpdate(int32_t iteration) const {
  return iteration % std::max(m_network.UpdateRate, 1) == 0 || iteration == 1;
}

bool TrainingRun::IsAutoSave(int32_t iteration) const {
  return m_network.SaveRate > 0 && iteration % m_network.SaveRate == 0;
}

TrainingRun::Stage TrainingRun::Update() {
  m_published = false;
  m_work += m_connections;
  if (!NextFollowsAtOnce()) {
    m_packed->AddGradientsAndUpdate(m_in_group == m_batch);
    return Stage::kIteration;
  }
  if (m_pass_complete) {
    EndIteration();
    m_pass_complete = false;
    m_cursor = 0;
  }
  // Groups of their own, each but the last with everything that belongs to it.
  m_batch = std::min(BatchOf(m_network.nTrain - m_cursor),
                     static_cast<int32_t>(m_packed->batch_of_single_patterns()));
  m_packed->UpdateAndForward(Batch());
  m_work += m_connections * m_batch;
  m_in_group = 0;
  return Stage::kBackward;
}

TrainingRun::Stage TrainingRun::EndIteration() {
  if (!m_pass_complete) return Stage::kGroup;
  Network& network = m_network;
  ++network.iteration;
  m_limit_reached = network.iteration >= network.MaxIterations;
  const int64_t n = OutputValues(network, network.nTrain);
  const float mean_squared_error = MeanSquare(m_pass.squared_error, n);
  network.rms_train = std::sqrt(mean_squared_error);
  network.correlation_train = Correlation(m_pass, n);
  m_diverged = !std::isfinite(mean_squared_error);
  if (m_diverged) return Stage::kScreen;
  if (AdaptLearnRate(network, m_control, mean_squared_error)) {
    Publish();
    m_observer.LearnRateControlStarted();
  }
  const bool due = IsScreenUpdate(network.iteration) || m_limit_reached;
  return due ? Stage::kScreen : Stage::kAutoSave;
}

TrainingRun::Stage TrainingRun::BeginScreenUpdate() {
  UpdateTiming();
  m_test_sums = {};
  m_test_position = 0;
  return m_network.testPats > 0 ? Stage::kTestPattern : Stage::kRefresh;
}

void TrainingRun::UpdateTiming() {
  const double limit = std::max(m_network.MaxIterations, 1);
  const double counter = m_network.iteration;
  const int64_t elapsed_ms = m_clock.NowMs() - m_start_ms;
  m_figures.fraction_complete = counter / limit;
  const double per_run =
      static_cast<double>(elapsed_ms - m_paused_ms) / 1000.0 / m_figures.fraction_complete;
  const double remaining = (1.0 - m_figures.fraction_complete) * per_run;
  m_figures.seconds_remaining = static_cast<int64_t>(std::max(remaining, 0.0));
  const double seconds = static_cast<double>(elapsed_ms - m_interface_ms) / 1000.0;
  const double evaluations =
      m_patterns_an_iteration * counter * static_cast<double>(ConnectionCount(m_network));
  m_figures.speed = seconds > 0 ? evaluations / (seconds * 1000.0) : 0.0;
}

TrainingRun::Stage TrainingRun::TestPattern() {
  Network& network = m_network;
  const int32_t count = BatchOf(network.testPats - m_test_position);
  const std::span<const int32_t> patterns =
      std::span(network.test_list)
          .subspan(static_cast<size_t>(m_test_position), static_cast<size_t>(count));
  m_packed->Forward(patterns);
  m_work += m_connections * count;
  m_test_sums.AddRows(network.targets, OutputLayer(network).activations, patterns, m_tolerance);
  m_test_position += count;
  if (m_test_position < network.testPats) return Stage::kTestPattern;
  const int64_t n = OutputValues(network, network.testPats);
  if (m_tolerance > 0) network.within_test = PercentWithin(m_test_sums.hits, n);
  network.correlation_test = Correlation(m_test_sums, n);
  network.rms_test = std::sqrt(MeanSquare(m_test_sums.squared_error, n));
  return Stage::kRefresh;
}

void TrainingRun::Refresh() {
  m_work += kWorkPerClockReading;
  Publish();
  m_observer.ScreenUpdated();
  const Network& network = m_network;
  const HistoryRecord record{network.iteration,         network.rms_train,
                             network.rms_test,          network.Eta,
                             network.correlation_train, network.correlation_test,
                             network.within_train,      network.within_test};
  if (m_history_failed || m_history.Append(record)) return;
  m_history_failed = true;
  m_observer.HistoryFailed();
}

void TrainingRun::AutoSave() {
  if (!IsAutoSave(m_network.iteration) || m_diverged) return;
  Publish();
  if (!m_observer.CanStoreSnapshot()) return;
  m_work += kWorkPerClockReading;
  m_observer.ShowStatus(kAutoSaveStatus);
  if (m_observer.StoreSnapshot()) m_has_snapshot = true;
  m_observer.ShowStatus(kTrainingStatus);
}

}  // namespace tarn
