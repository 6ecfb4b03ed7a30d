// What the training window costs: the same network trained for a while in a plain loop, as the
// command line does it, and in its window. With the word opening: what it costs to open graphs,
// reports and the network view. Needs a display; scripts/bench window and scripts/bench opening
// give it one.

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fmt/format.h>
#include <memory>
#include <string>
#include <string_view>
#include <vector>
#include <wx/app.h>
#include <wx/evtloop.h>
#include <wx/init.h>
#include <wx/timer.h>

#include "app/network_loader.h"
#include "app/session.h"
#include "app/ui/tarn_app.h"
#include "base/clock.h"
#include "base/output_file.h"
#include "base/paths.h"
#include "base/temp_file.h"
#include "engine/training_run.h"
#include "engine/ui/train_run_dlg.h"
#include "opening_bench.h"
#include "setup/setup_options.h"

namespace tarn {
namespace {

using std::chrono::steady_clock;

constexpr int kRounds = 5;
constexpr std::chrono::milliseconds kTime{1500};
constexpr int64_t kPlainSliceMs = 50;

struct Workload {
  const char* layers;
  int inputs;
  int outputs;
  int patterns;
  const char* update_rate;
};
constexpr std::array kWorkloads = {
    Workload{"2,2,1", 2, 1, 4, "5"}, Workload{"4,8,3", 4, 3, 150, "50"},
    Workload{"16,32,8", 16, 8, 500, "5"}, Workload{"64,128,10", 64, 10, 1000, "5"},
    Workload{"784,300,10", 784, 10, 1000, "5"}};

double Median(std::vector<double> values) {
  std::ranges::sort(values);
  return values[values.size() / 2];
}

// Numbers between 0 and 1 that look random.
void WriteData(const Workload& workload, const std::string& path) {
  OutputFile file;
  if (!file.OpenReplacing(path)) std::abort();
  uint32_t state = 1;
  for (int p = 0; p < workload.patterns; ++p) {
    for (int i = 0; i < workload.inputs + workload.outputs; ++i) {
      state = state * 1664525U + 1013904223U;
      file.Write(fmt::format("{:.3f} ", static_cast<double>(state >> 8U) / double{1U << 24U}));
    }
    file.Write("\n");
  }
  if (!file.Commit()) std::abort();
}

void Load(Session& session, const Workload& workload) {
  const std::string data = JoinPath(session.scratch.path(), "data.txt");
  WriteData(workload, data);
  session.seeds = SeedSource(1);
  session.network.file_name = JoinPath(session.scratch.path(), "bench.net");
  SetupOptions options;
  options.layers = workload.layers;
  options.inputs = options.targets = data;
  options.targets_column = std::to_string(workload.inputs + 1);
  options.update_rate = workload.update_rate;
  options.iterations = "2000000000";
  options.autosave_rate = "0";
  Notices notices;
  Status status = ReadSetup(session);
  if (status.ok()) (void)ApplySetupOptions(options, session.network);
  NetworkLoader loader(session, NetworkLoader::Kind::kEdited);
  while (status.ok() && !loader.NextStep().empty()) status = loader.DoStep(notices);
  if (!status.ok()) {
    std::fprintf(stderr, "%s\n", status.message().c_str());
    std::exit(EXIT_FAILURE);
  }
}

double RunPlainly(Session& session) {
  TrainingObserver nobody;
  TempFile history;
  history.Create(TemporaryFolder());
  TrainingRun run(session.network, SteadyClock(), nobody, history.path());
  if (!run.Start().ok()) std::abort();
  const auto start = steady_clock::now();
  while (steady_clock::now() - start < kTime) run.RunFor(kPlainSliceMs);
  const std::chrono::duration<double> taken = steady_clock::now() - start;
  return session.network.iteration / taken.count();
}

// Ends the loop when the time is up, and keeps the longest time without an answer.
class Watch : public wxTimer {
 public:
  explicit Watch(wxGUIEventLoop& loop) : m_loop(loop) { Start(1); }
  void Notify() override {
    const auto now = steady_clock::now();
    m_longest = std::max(m_longest, std::chrono::duration<double, std::milli>(now - m_last));
    m_last = now;
    if (now - m_start <= kTime) return;
    Stop();
    m_loop.Exit();
  }
  double seconds() const { return std::chrono::duration<double>(m_last - m_start).count(); }
  double longest_ms() const { return m_longest.count(); }

 private:
  wxGUIEventLoop& m_loop;
  steady_clock::time_point m_start = steady_clock::now();
  steady_clock::time_point m_last = m_start;
  std::chrono::duration<double, std::milli> m_longest{};
};

struct WindowFigures {
  double iterations_a_second = 0;
  double longest_ms = 0;
};

WindowFigures RunInWindow(Session& session, Dialogs& dialogs) {
  auto* frame = new wxFrame(nullptr, wxID_ANY, "bench");
  frame->SetExtraStyle(wxWS_EX_PROCESS_IDLE);
  frame->CreateStatusBar(2);
  auto* window = new TrainRunDlg(*frame, session, dialogs, SteadyClock(), [] {});
  frame->SetClientSize(window->GetBestSize());
  frame->Show();
  wxTheApp->Yield();
  window->DoCommand(135);
  wxGUIEventLoop loop;
  Watch watch(loop);
  loop.Run();
  const WindowFigures figures = {session.network.iteration / watch.seconds(), watch.longest_ms()};
  window->StopTraining();
  frame->Destroy();
  wxTheApp->Yield();
  return figures;
}

void Measure(const Workload& workload) {
  Session session;
  Load(session, workload);
  WindowDialogs dialogs{ApplicationPaths{}};
  std::vector<double> ratios;
  std::vector<double> longest;
  std::vector<double> plain;
  for (int round = 0; round < kRounds; ++round) {
    plain.push_back(RunPlainly(session));
    const WindowFigures window = RunInWindow(session, dialogs);
    ratios.push_back(window.iterations_a_second / plain.back());
    longest.push_back(window.longest_ms);
  }
  std::printf("%-12s %14.1f %10.3f %10.1f %10.1f\n", workload.layers, Median(plain), Median(ratios),
              Median(longest), *std::ranges::max_element(longest));
  std::fflush(stdout);
}

void MeasureTraining() {
  std::printf("%-12s %14s %10s %10s %10s\n", "layers", "iterations/s", "in window", "gap ms",
              "worst ms");
  for (const Workload& workload : kWorkloads) Measure(workload);
}

class BenchApp : public TTarnApp {
 public:
  bool OnInit() override {
    PrepareWindows();
    return true;
  }
};

}  // namespace
}  // namespace tarn

wxIMPLEMENT_APP_NO_MAIN(tarn::BenchApp);

int main(int argc, char** argv) {
  if (!wxEntryStart(argc, argv) || !wxTheApp->CallOnInit()) return 1;
  if (argc > 1 && std::string_view(argv[1]) == "opening") {
    tarn::MeasureOpening();
  } else {
    tarn::MeasureTraining();
  }
  wxTheApp->OnExit();
  wxEntryCleanup();
  return 0;
}
