#include <benchmark/benchmark.h>
#include <cmath>
#include <cstdint>

#include "base/clock.h"
#include "netgraph/contour_analysis.h"
#include "netgraph/graph_renderer.h"
#include "netgraph/hidden_node_analyzer.h"
#include "netgraph/input_interrogator.h"
#include "netgraph/svg_canvas.h"
#include "workloads.h"

// Analyses behind the graphs, on one thread, and the drawing of a long one:
//   graph/interrogator/N   every input of N patterns of a 100-50-10 network moved to both ends
//   graph/hidden/N         two passes over N patterns of it
//   graph/contour          1600 points of it
//   graph/draw/N           a line of N points and as many markers as SVG

namespace tarn::bench {
namespace {

void Complete(Analysis& analysis) {
  constexpr int64_t kSliceMs = 15;
  while (!analysis.RunFor(kSliceMs, SteadyClock())) {
  }
}

void Interrogator(benchmark::State& state) {
  const Network network = MakeNetwork({100, 50, 10}, static_cast<int32_t>(state.range(0)));
  for (auto _ : state) {
    InputInterrogator interrogator(network);
    Complete(interrogator);
    benchmark::DoNotOptimize(interrogator.Contributions(0));
  }
}

void Hidden(benchmark::State& state) {
  const Network network = MakeNetwork({100, 50, 10}, static_cast<int32_t>(state.range(0)));
  for (auto _ : state) {
    HiddenNodeAnalyzer analyzer(network);
    Complete(analyzer);
    benchmark::DoNotOptimize(analyzer.Shares(1));
  }
}

void Contour(benchmark::State& state) {
  const Network network = MakeNetwork({100, 50, 10}, 1);
  for (auto _ : state) {
    ContourAnalysis analysis(network, {});
    Complete(analysis);
    benchmark::DoNotOptimize(analysis.surface());
  }
}

void Draw(benchmark::State& state) {
  Graph graph;
  graph.curves.resize(2);
  for (int64_t i = 0; i < state.range(0); ++i) {
    const auto x = static_cast<float>(i);
    for (CURVE_DEF& curve : graph.curves) {
      curve.x.push_back(x);
      curve.y.push_back(std::sin(x) * std::sin(x / 1000));
    }
  }
  graph.curves[1].mode = kMarkersOnly;
  for (auto _ : state) {
    SvgCanvas canvas({800, 600}, "");
    DrawGraph(graph, GraphView(graph), canvas);
    benchmark::DoNotOptimize(canvas.Document());
  }
}

BENCHMARK(Interrogator)->Name("graph/interrogator")->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(Hidden)->Name("graph/hidden")->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(Contour)->Name("graph/contour")->Unit(benchmark::kMillisecond);
BENCHMARK(Draw)->Name("graph/draw")->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tarn::bench
