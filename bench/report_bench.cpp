#include <benchmark/benchmark.h>
#include <cstdint>
#include <stdexcept>
#include <string_view>

#include "base/paths.h"
#include "browser/report.h"
#include "browser/report_text.h"
#include "workloads.h"

// Reports over many patterns and long reports:
//   report/statistics/N   N patterns x 10 normalized outputs
//   report/outputs/N      the lines of N patterns x 10 outputs written
//   report/open/N         a report of N lines opened and its last line read
//   report/text/N         a report of N lines read as text

namespace tarn::bench {
namespace {

constexpr int32_t kOutputs = 10;

Network MakeReported(int32_t patterns) {
  Network network = MakeNetwork({1, 1, kOutputs}, patterns);
  network.targ_norm = 1;
  for (float& limit : network.target_limits.upper) limit = 10.0F;
  return network;
}

void Make(ReportKind kind, const Network& network, ReportFile& report) {
  if (!MakeReport(kind, network, {}, TemporaryFolder(), report).ok()) {
    throw std::runtime_error("no report file");
  }
}

void Statistics(benchmark::State& state) {
  const Network network = MakeReported(static_cast<int32_t>(state.range(0)));
  for (auto _ : state) {
    ReportFile report;
    Make(ReportKind::kStatistics, network, report);
  }
}

void Outputs(benchmark::State& state) {
  const Network network = MakeReported(static_cast<int32_t>(state.range(0)));
  for (auto _ : state) {
    ReportFile report;
    Make(ReportKind::kOutputs, network, report);
  }
}

void MakeLong(int64_t lines, ReportFile& report) {
  if (!report.Create(TemporaryFolder()).ok()) throw std::runtime_error("no report file");
  for (int64_t i = 0; i < lines; ++i) report.WriteBlank();
  if (!report.Finish().ok()) throw std::runtime_error("no report file");
}

void Open(benchmark::State& state) {
  ReportFile report;
  MakeLong(state.range(0), report);
  for (auto _ : state) {
    TVirtText text;
    if (!text.Open(report.path())) throw std::runtime_error("no report");
    benchmark::DoNotOptimize(text.Line(text.line_count() - 1));
  }
}

void Text(benchmark::State& state) {
  ReportFile report;
  MakeLong(state.range(0), report);
  TVirtText text;
  if (!text.Open(report.path())) throw std::runtime_error("no report");
  for (auto _ : state) {
    int64_t lines = 0;
    const Status read = WriteReportText(text, [&lines](std::string_view) {
      ++lines;
      return true;
    });
    if (!read.ok() || lines != state.range(0)) throw std::runtime_error("no text");
  }
}

BENCHMARK(Statistics)->Name("report/statistics")->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(Outputs)->Name("report/outputs")->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(Open)->Name("report/open")->Arg(10)->Arg(10000000)->Unit(benchmark::kMicrosecond);
BENCHMARK(Text)->Name("report/text")->Arg(10000000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tarn::bench
