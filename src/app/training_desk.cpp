#include "app/training_desk.h"

#include <fmt/printf.h>
#include <limits>
#include <new>
#include <utility>
#include <vector>

#include "app/main_window_rules.h"
#include "app/messages.h"
#include "app/saving.h"
#include "base/paths.h"
#include "engine/messages.h"
#include "netfile/autosave_store.h"
#include "netfile/messages.h"
#include "netfile/network_writer.h"

namespace tarn {
namespace {

// An iteration that no run comes to.
int32_t BehindTheEnd(const Network& network) {
  constexpr int32_t kLast = std::numeric_limits<int32_t>::max();
  return network.MaxIterations < kLast ? network.MaxIterations + 1 : kLast;
}

// The run answers for memory that is not there; the program ends then.
void Require(const Status& status) {
  if (!status.ok()) throw std::bad_alloc();
}

}  // namespace

TrainingDesk::TrainingDesk(Session& session, Dialogs& dialogs, TrainingView& view,
                           const Clock& clock, size_t threads)
    : m_session(session), m_dialogs(dialogs), m_view(view) {
  m_history.Create(TemporaryFolder());
  CreateStore();
  if (session.network.SaveRate > 0 && !SnapshotCanBeReadBack(session.network)) {
    m_dialogs.Tell(kTarnWarningCaption, std::string(kNoSnapshots) + std::string(kNotReadBack));
  }
  m_run = std::make_unique<TrainingRun>(session.network, clock, *this, m_history.path(), threads);
  session.saved = false;
}

void TrainingDesk::CreateStore() {
  if (m_store.Create(TemporaryFolder(), FileLayer::Lifetime::kLasting)) {
    NoteRun();
    return;
  }
  m_dialogs.Tell(kTarnErrorCaption, kStoreNotCreated);
}

bool TrainingDesk::Work(int64_t budget_ms) {
  if (m_run->state() != RunState::kRunning) return false;
  m_session.saved = false;
  const RunState state = m_run->RunFor(budget_ms);
  if (state == RunState::kRunning) return true;
  Ended(state);
  return false;
}

void TrainingDesk::Ended(RunState state) {
  if (state == RunState::kDiverged) m_diverged = true;
  if (state == RunState::kStopped) m_view.ShowStatus(kTrainingStopped);
  m_view.Changed();
}

void TrainingDesk::WorkWhileHalted() {
  if (IsHalted()) m_run->RunFor(0);
}

void TrainingDesk::TellPending() {
  if (std::exchange(m_history_failed, false)) {
    m_dialogs.Tell(kTarnErrorCaption, kErrorHistoryWriteError);
  }
  if (std::exchange(m_diverged, false)) TellDivergence();
}

void TrainingDesk::TellDivergence() {
  const std::string what = fmt::sprintf(kDivergedAt.data(), m_session.network.iteration);
  std::optional<StoredSnapshot> snapshot;
  if (!FindNewestSnapshot(m_store.path(), snapshot).ok() || !snapshot) {
    m_dialogs.Tell(kTarnWarningCaption, what + ".");
    return;
  }
  const Message question = {std::string(kTarnWarningCaption),
                            fmt::sprintf(kAskToSaveLastSnapshot.data(), what, snapshot->iteration),
                            MessageIcon::kExclamation};
  if (m_dialogs.Ask(question, AnswerChoice::kYesNo) != Answer::kYes) return;
  const std::optional<std::string> path = SaveStoredSnapshot(m_store.path(), *snapshot, m_dialogs);
  if (path == m_session.network.file_name) m_session.saved = false;
}

void TrainingDesk::RemoveFiles() {
  m_note.Remove();
  m_history.Remove();
  m_store.Remove();
}

void TrainingDesk::LeaveSnapshots() {
  if (m_run->has_snapshot()) ReleaseStore();
  RemoveFiles();
}

void TrainingDesk::KeepNetwork() {
  if (m_kept || !AsksToSave(m_session.network, m_session.saved)) return;
  m_kept = AppendSnapshot(m_store.path(), m_session.network);
  if (m_kept) ++m_snapshots;
}

void TrainingDesk::LeaveNetwork() {
  KeepNetwork();
  if (m_kept && AsksToSave(m_session.network, m_session.saved)) ReleaseStore();
  LeaveSnapshots();
}

// Without its note nobody would find it.
void TrainingDesk::ReleaseStore() {
  if (!m_note.IsThere()) NoteRun();
  if (!m_note.IsThere()) return;
  m_note.Release();
  m_store.Release();
}

bool TrainingDesk::IsUnderWay() const {
  return m_run->state() == RunState::kRunning || IsHalted();
}

void TrainingDesk::Start() {
  if (IsUnderWay()) return;
  m_session.saved = false;
  Require(m_run->Start());
  if (IsUnderWay()) m_view.ShowStatus(kTrainingStatus);
  m_view.Changed();
}

void TrainingDesk::Stop() {
  if (!IsUnderWay()) return;
  m_run->Stop();
  // It ends at the next point where it can, within a slice.
  while (IsUnderWay()) m_run->RunFor(0);
  Ended(m_run->state());
}

void TrainingDesk::HaltOrResume() {
  if (IsHalted()) {
    m_run->Resume();
  } else {
    m_run->Halt();
  }
  m_view.Changed();
}

bool TrainingDesk::Save() {
  return Saved(SaveNetwork(m_session, m_dialogs));
}

bool TrainingDesk::SaveAs() {
  return Saved(SaveNetworkAs(m_session, m_dialogs));
}

bool TrainingDesk::Saved(bool saved) {
  if (saved) {
    m_older_snapshots = m_snapshots;
    NoteRun();
  }
  return saved;
}

// The network may have another name by now.
void TrainingDesk::NoteRun() {
  if (m_store.path().empty()) return;
  m_note.Write(m_session.network.file_name, m_store.path(), m_older_snapshots);
}

void TrainingDesk::SaveOutputsAs() {
  SaveOutputs(m_session, m_dialogs);
}

void TrainingDesk::SaveErrorHistoryAs() {
  const std::optional<std::string> path = m_dialogs.ChooseFile(kSaveHistoryQuestion);
  if (!path) return;
  const Status written =
      WhileBusy(m_dialogs, [&] { return ExportErrorHistory(m_history.path(), *path); });
  if (!written.ok()) m_dialogs.Tell(kHistoryAbortedCaption, written.message());
}

void TrainingDesk::SaveSnapshotAs() {
  const std::optional<std::string> path = m_dialogs.ChooseFile(kSaveSnapshotQuestion);
  if (!path) return;
  std::vector<std::string> iterations;
  const Status listed = ListSnapshots(m_store.path(), iterations);
  if (!listed.ok()) {
    m_dialogs.Tell(kAutoSaveErrorCaption, listed.message());
    return;
  }
  const std::optional<std::string> choice = m_dialogs.ChooseSnapshot(iterations);
  if (!choice) return;
  const RestoreResult result =
      WhileBusy(m_dialogs, [&] { return RestoreSnapshot(m_store.path(), *path, *choice); });
  if (!result.status.ok()) m_dialogs.Tell(kAutoSaveErrorCaption, result.status.message());
  if (result.iteration == 0) {
    m_dialogs.Tell(kAutoSaveAbortedCaption, kNotRestored);
  } else if (*path == m_session.network.file_name) {
    m_session.saved = false;
  }
}

bool TrainingDesk::StoreSnapshot() {
  const bool stored =
      WhileBusy(m_dialogs, [this] { return AppendSnapshot(m_store.path(), m_session.network); });
  if (stored) ++m_snapshots;
  return stored;
}

void TrainingDesk::Edited() {
  m_session.saved = false;
  m_view.Changed();
}

void TrainingDesk::ToggleLearnRateControl() {
  Network& network = m_session.network;
  if (LearnRateControl() != LearnRateControlState::kOff) {
    m_switched_off = network.LRC;
    network.LRC = BehindTheEnd(network);
  } else {
    // At once when the iteration at which it was to start has gone by.
    const int32_t wanted = m_switched_off.value_or(0);
    const bool ahead = wanted > network.iteration && wanted <= network.MaxIterations;
    network.LRC = ahead ? wanted : network.iteration + 1;
    m_switched_off.reset();
  }
  Edited();
}

bool TrainingDesk::ChangeOption(int32_t command) {
  const OptionPrompt* prompt = FindOptionPrompt(command);
  if (prompt == nullptr) return false;
  Network& network = m_session.network;
  const std::string shown = OptionText(*prompt, network);
  const std::optional<std::string> text =
      m_dialogs.EnterValue(prompt->caption, prompt->prompt, shown);
  // What is shown is rounded: only what was entered is stored.
  if (text && *text != shown) Apply(*prompt, *text);
  return true;
}

void TrainingDesk::Apply(const OptionPrompt& prompt, const std::string& text) {
  Network& network = m_session.network;
  const int32_t patterns = network.WeightRate;
  if (const std::optional<Message> message = ApplyOption(prompt, text, network)) {
    m_dialogs.Tell(*message);
    return;
  }
  if (network.WeightRate != patterns) {
    m_run->SetGroupSize(network.WeightRate > 0 ? network.WeightRate : network.nTrain);
  }
  // More iterations do not switch control on again.
  if (m_switched_off) network.LRC = BehindTheEnd(network);
  Edited();
}

void TrainingDesk::ResetWeights() {
  const Message question = {std::string(kSureCaption), std::string(kAskToReset),
                            MessageIcon::kQuestion};
  if (m_dialogs.Ask(question, AnswerChoice::kYesNo) != Answer::kYes) return;
  InitializeRandomWeights(m_session.network, m_session.seeds.Next());
  ClearRemovedWeights(m_session.network);
  Require(m_run->WeightsReplaced());
  Edited();
}

LearnRateControlState TrainingDesk::LearnRateControl() const {
  const Network& network = m_session.network;
  if (network.LRC > network.MaxIterations) return LearnRateControlState::kOff;
  return network.iteration >= network.LRC ? LearnRateControlState::kStarted
                                          : LearnRateControlState::kWaiting;
}

std::string TrainingDesk::LearnRateControlText() const {
  switch (LearnRateControl()) {
    case LearnRateControlState::kOff:
      return "Off";
    case LearnRateControlState::kWaiting:
      return fmt::sprintf("From Iteration %d", m_session.network.LRC);
    case LearnRateControlState::kStarted:
      break;
  }
  return "On";
}

}  // namespace tarn
