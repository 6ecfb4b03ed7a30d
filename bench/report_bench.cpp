#include <benchmark/benchmark.h>
#include <cstdint>
#include <stdexcept>

#include "base/paths.h"
#include "browser/report.h"
#include "browser/report_text.h"
#include "workloads.h"

// Reports over many patterns and long reports:
//   report/statistics/N   N patterns x 10 normalized outputs
//   report/outputs/N      the lines of N patterns x 10 outputs written
//   report/open/N         a report of N lines opened and its last line read

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

void Open(benchmark::State& state) {
  ReportFile report;
  if (!report.Create(TemporaryFolder()).ok()) throw std::runtime_error("no report file");
  for (int64_t i = 0; i < state.range(0); ++i) report.WriteBlank();
  if (!report.Finish().ok()) throw std::runtime_error("no report file");
  for (auto _ : state) {
    TVirtText text;
    if (!text.Open(report.path())) throw std::runtime_error("no report");
    benchmark::DoNotOptimize(text.Line(text.line_count() - 1));
  }
}

BENCHMARK(Statistics)->Name("report/statistics")->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(Outputs)->Name("report/outputs")->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(Open)->Name("report/open")->Arg(10)->Arg(10000000)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace tarn::bench
