#include <benchmark/benchmark.h>
#include <cstdint>
#include <fmt/printf.h>
#include <fstream>
#include <string>

#include "base/paths.h"
#include "base/random.h"
#include "base/temp_file.h"
#include "data/pattern_files.h"
#include "engine/network.h"

namespace tarn {
namespace {

constexpr int32_t kRecords = 100'000;
constexpr int32_t kInputs = 16;
constexpr int32_t kOutputs = 4;

// A data file of 20 columns in "%.4f", kept for the whole run.
class DataFile {
 public:
  DataFile() : m_path(JoinPath(m_folder.path(), "bench.dat")) {
    Random random(1);
    std::string text;
    for (int32_t r = 0; r < kRecords; ++r) {
      for (int32_t i = 0; i < kInputs + kOutputs; ++i) {
        text += fmt::sprintf(i == 0 ? "%.4f" : " %.4f", random.Next() / 32.767);
      }
      text += '\n';
    }
    std::ofstream(m_path, std::ios::binary) << text;
    m_size = static_cast<int64_t>(text.size());
  }

  const std::string& path() const { return m_path; }
  int64_t size() const { return m_size; }

 private:
  ScratchFolder m_folder;
  std::string m_path;
  int64_t m_size = 0;
};

const DataFile& Data() {
  static const DataFile data;
  return data;
}

Network MakeNetwork() {
  Network network;
  network.nLayers = 3;
  network.layers[0].nUnits = kInputs;
  network.layers[1].nUnits = 8;
  network.layers[2].nUnits = kOutputs;
  network.PatName = network.TargName = Data().path();
  network.TargCol = kInputs + 1;
  network.nPats = kRecords;
  return network;
}

void CountPass(benchmark::State& state) {
  const Network network = MakeNetwork();
  for (auto _ : state) {
    PatternCount count;
    Notices notices;
    if (!CountPatterns(network, count, notices).ok()) state.SkipWithError("count failed");
    benchmark::DoNotOptimize(count);
  }
  state.SetBytesProcessed(state.iterations() * Data().size());
}
BENCHMARK(CountPass)->Unit(benchmark::kMillisecond);

// With normalization of inputs and targets, as after every reading of such data.
void ReadPass(benchmark::State& state) {
  Network network = MakeNetwork();
  PatternCount count;
  Notices notices;
  if (!CountPatterns(network, count, notices).ok() || !AllocateArrays(network).ok()) {
    state.SkipWithError("count failed");
  }
  for (auto _ : state) {
    if (!ReadPatterns(network, count.buffer_size).ok()) state.SkipWithError("read failed");
  }
  state.SetBytesProcessed(state.iterations() * Data().size());
}
BENCHMARK(ReadPass)->Unit(benchmark::kMillisecond);

void BothPasses(benchmark::State& state) {
  Network network = MakeNetwork();
  if (!AllocateArrays(network).ok()) state.SkipWithError("allocation failed");
  for (auto _ : state) {
    PatternCount count;
    Notices notices;
    if (!CountPatterns(network, count, notices).ok() ||
        !ReadPatterns(network, count.buffer_size).ok()) {
      state.SkipWithError("reading failed");
    }
  }
  state.SetBytesProcessed(state.iterations() * Data().size());
}
BENCHMARK(BothPasses)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tarn
