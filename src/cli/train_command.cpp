#include <fmt/printf.h>
#include <limits>
#include <memory>

#include "base/paths.h"
#include "base/temp_file.h"
#include "cli/commands.h"
#include "cli/common.h"
#include "cli/interrupt.h"
#include "cli/messages.h"
#include "cli/train_files.h"
#include "engine/messages.h"
#include "engine/training_run.h"
#include "netfile/autosave_store.h"
#include "netfile/network_writer.h"
#include "setup/messages.h"

namespace tarn {
namespace {

// Between looks at Ctrl-C and redraws of the progress line.
constexpr int64_t kSliceMs = 50;

// Prints the figures of each screen update and keeps the snapshots.
class TrainingPrinter : public TrainingObserver {
 public:
  TrainingPrinter(const Network& network, const TrainArguments& arguments, ProgressLine& progress)
      : m_network(network), m_arguments(arguments), m_progress(progress) {
    if (m_arguments.quiet) return;
    PrintResult(
        "iteration rms-train rms-test eta correlation-train correlation-test within-train "
        "within-test\n");
    (void)FlushResults();
  }

  void ScreenUpdated() override {
    if (m_arguments.quiet) return;
    m_progress.Clear();
    const Network& network = m_network;
    PrintResult(fmt::sprintf("%d %f %f %f %f %f %f %f\n", network.iteration,
                             double{network.rms_train}, double{network.rms_test},
                             double{network.Eta}, double{network.correlation_train},
                             double{network.correlation_test}, double{network.within_train},
                             double{network.within_test}));
    (void)FlushResults();
  }

  bool CanStoreSnapshot() override { return !m_arguments.autosave.empty(); }
  bool StoreSnapshot() override {
    // The run is about to diverge, and tells so.
    if (!CanBeReadBack(m_network)) return false;
    const bool stored = AppendSnapshot(m_arguments.autosave, m_network);
    if (!stored && !m_snapshot_failed) {
      m_progress.Clear();
      PrintError(fmt::sprintf(kSnapshotNotAdded.data(), m_arguments.autosave));
    }
    m_snapshot_failed = m_snapshot_failed || !stored;
    return stored;
  }

  // Training goes on without it; nobody misses a history that was not asked for.
  void HistoryFailed() override {
    m_history_failed = true;
    if (!m_arguments.WantsHistory()) return;
    m_progress.Clear();
    PrintError(kErrorHistoryWriteError);
  }

  bool history_failed() const { return m_history_failed; }
  // Told already: the first of them.
  bool snapshot_failed() const { return m_snapshot_failed; }

 private:
  const Network& m_network;
  const TrainArguments& m_arguments;
  ProgressLine& m_progress;
  bool m_history_failed = false;
  bool m_snapshot_failed = false;
};

std::string FigureLine(std::string_view name, std::string_view value) {
  return fmt::sprintf("%-28s%s\n", name, value);
}

std::string SetLines(std::string_view set, float rms, float correlation, float within,
                     bool tolerance) {
  const std::string of = ", " + std::string(set);
  std::string text = FigureLine("RMS error" + of, fmt::sprintf("%f", double{rms}));
  text += FigureLine("correlation" + of, fmt::sprintf("%f", double{correlation}));
  if (!tolerance) return text;
  return text + FigureLine("within tolerance" + of, fmt::sprintf("%.1f %%", double{within}));
}

void PrintSummary(const Network& network, const TrainingRun& run, bool saved) {
  const bool complete = run.state() == RunState::kComplete;
  const bool tolerance = network.Tolerance > 0;
  std::string text(complete ? kTrainingComplete : kTrainingStopped);
  text += '\n' + FigureLine("iterations", fmt::sprintf("%d", network.iteration));
  text += SetLines("training", network.rms_train, network.correlation_train, network.within_train,
                   tolerance);
  if (network.testPats > 0) {
    text += SetLines("test", network.rms_test, network.correlation_test, network.within_test,
                     tolerance);
  }
  if (run.figures().speed > 0) {
    text += FigureLine("speed", fmt::sprintf("%.0f thousand connections/s", run.figures().speed));
  }
  if (saved) text += FigureLine("saved", network.file_name);
  PrintNote(text);
}

Status RunToTheEnd(TrainingRun& run, const Network& network, ProgressLine& progress) {
  Status started = run.Start();
  if (!started.ok()) return started;
  while (run.state() == RunState::kRunning) {
    run.RunFor(kSliceMs);
    if (Interrupted()) run.Stop();
    progress.Show(network.iteration, network.MaxIterations, network.rms_train,
                  SteadyClock().NowMs());
  }
  progress.Clear();
  return started;
}

ExitStatus Prepare(TrainArguments& arguments, Session& session) {
  CompletePaths({&arguments.path, &arguments.output, &arguments.error_history, &arguments.outputs,
                 &arguments.history, &arguments.autosave});
  session.seeds = SeedSource(arguments.seed);
  Network& network = session.network;
  const ExitStatus opened = Open(session, arguments.path);
  if (opened != kDone) return opened;
  Notices notices;
  const Status loaded = LoadForTraining(session, notices);
  PrintNotices(notices);
  if (!loaded.ok()) return Report(loaded);
  if (arguments.iterations) network.MaxIterations = *arguments.iterations;
  if (network.MaxIterations < 1) return Report(Status::Failure(kMaxIterationsRange));
  return PrepareFiles(arguments, network);
}

// The file of the network stays as it was: nobody can be asked.
void TellDivergence(const TrainArguments& arguments, const Network& network) {
  PrintError(fmt::sprintf(kDivergedAt.data(), network.iteration));
  if (arguments.autosave.empty()) return;
  std::optional<StoredSnapshot> snapshot;
  if (FindNewestSnapshot(arguments.autosave, snapshot).ok() && snapshot) {
    PrintNotices({fmt::sprintf(kLastSnapshot.data(), arguments.autosave, snapshot->iteration)});
  }
}

ExitStatus RunTrain(TrainArguments& arguments) {
  Session session;
  Network& network = session.network;
  const ExitStatus prepared = Prepare(arguments, session);
  if (prepared != kDone) return prepared;
  TempFile own_history;
  if (arguments.history.empty()) {
    const HoldInterrupts hold;
    own_history.Create(TemporaryFolder());
    RemoveWhenInterrupted(own_history.path());
  }
  CatchInterrupts();
  ProgressLine progress(!arguments.quiet, SteadyClock().NowMs());
  TrainingPrinter printer(network, arguments, progress);
  TrainingRun run(network, SteadyClock(), printer,
                  arguments.history.empty() ? own_history.path() : arguments.history);
  const Status trained = RunToTheEnd(run, network, progress);
  if (!trained.ok()) return Report(trained);
  const bool diverged = run.state() == RunState::kDiverged;
  if (diverged) TellDivergence(arguments, network);
  const bool saves = !arguments.no_save && !diverged;
  const ExitStatus saved = saves ? SaveTrained(arguments, network) : kDone;
  const std::optional<std::string> history =
      printer.history_failed() ? std::nullopt : std::optional(run.history().path());
  const ExitStatus exported = WriteExports(arguments, network, history);
  if (!arguments.quiet) PrintSummary(network, run, saves && saved == kDone);
  const bool lost =
      printer.snapshot_failed() || (printer.history_failed() && arguments.WantsHistory());
  const bool failed = diverged || lost || saved != kDone || exported != kDone;
  return failed ? kFailed : kDone;
}

void AddFileOptions(CLI::App& command, TrainArguments& arguments) {
  const auto add = [&command](const char* name, std::string& value, const char* help) {
    return command.add_option(name, value, help)->type_name("FILE");
  };
  CLI::Option* output = add("-o,--output", arguments.output,
                            "Save the trained network to this file and leave NET as it is");
  command.add_flag("--no-save", arguments.no_save, "Do not save the trained network")
      ->excludes(output);
  add("--error-history", arguments.error_history,
      "Write the figures of every screen update to this file as text, with commas between "
      "them");
  add("--outputs", arguments.outputs,
      "Write the targets and outputs of every pattern to this file as text");
  add("--history", arguments.history, "Keep the binary error history in this file, for plots");
  add("--autosave", arguments.autosave,
      "Keep AutoSave snapshots of the network in this file; 'restore' takes one back");
}

}  // namespace

void AddTrainCommand(CLI::App& program, ExitStatus& exit_status) {
  CLI::App& command = *program.add_subcommand("train", "Train a network on its data files");
  const auto arguments = std::make_shared<TrainArguments>();
  AddNetworkArgument(command, arguments->path);
  AddSeedOption(command, arguments->seed);
  command
      .add_option("--iterations", arguments->iterations,
                  "Train for N iterations in place of the network's own number")
      ->type_name("N")
      ->check(CLI::Range(1, std::numeric_limits<int32_t>::max()));
  AddFileOptions(command, *arguments);
  command.add_flag("--quiet", arguments->quiet, "Print no figures, progress or summary");
  command.footer(
      "Prints a line per screen update ('tarn-cli set NET --update-rate N'): iteration,\n"
      "RMS error of the training and the test set, learn rate, correlation of both, per\n"
      "cent within tolerance of both. --iterations is saved with the network. Ctrl-C\n"
      "stops the training and saves; a second one leaves at once. Example:\n"
      "  tarn-cli train iris.net --seed 1 -o trained.net");
  command.callback([arguments, &exit_status] { exit_status = RunTrain(*arguments); });
}

}  // namespace tarn
