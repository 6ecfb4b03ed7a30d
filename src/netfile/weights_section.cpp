#include "netfile/weights_section.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "base/text_numbers.h"
#include "base/text_reader.h"
#include "netfile/find_section.h"
#include "netfile/messages.h"

namespace tarn {
namespace {

constexpr int32_t kOldMarker = -20000;
constexpr size_t kOldLineLimit = 198;
constexpr size_t kValuesPerLine = 7;
constexpr std::string_view kStop = "WEIGHTS:STOP";

bool ScanWeights(TextReader& file, Network& network) {
  for (size_t l = 1; l < static_cast<size_t>(network.nLayers); ++l) {
    std::ranges::fill(network.layers[l].weight_changes.All(), 0.0F);
    for (float& weight : network.layers[l].weights.All()) {
      if (!file.ScanFloat(weight)) return false;
    }
  }
  return true;
}

enum class Found { kWeights, kRandom, kNothing };

Found ReadCurrent(TextReader& file, Network& network) {
  const std::string mode = FindSection(file, "WEIGHTS:");
  if (mode.empty()) return Found::kNothing;
  if (mode == "RANDOM" || network.random_weights) return Found::kRandom;
  if (mode != "READ" || !ScanWeights(file, network)) return Found::kNothing;
  std::string word;
  const bool stopped = file.ScanWord(kStop.size(), word) && word == kStop;
  return stopped ? Found::kWeights : Found::kNothing;
}

Found ReadOld(TextReader& file, Network& network) {
  if (network.random_weights) return Found::kRandom;
  TextReader::Line line;
  while (file.ReadLine(kOldLineLimit, line)) {
    if (line.text.starts_with("RANDOM")) return Found::kRandom;
  }
  file.Rewind();
  int32_t marker = 0;
  while (marker != kOldMarker) {
    if (!file.ReadLine(kOldLineLimit, line)) return Found::kNothing;
    marker = 0;
    ScanInts(line.text, marker);
  }
  if (!ScanWeights(file, network)) return Found::kNothing;
  const bool stopped = file.ScanInt(marker) && marker == kOldMarker;
  return stopped ? Found::kWeights : Found::kNothing;
}

Found Read(Network& network, bool& failed) {
  TextReader file;
  failed = !file.Open(network.file_name);
  if (failed) return Found::kNothing;
  const Found found = network.version == 0 ? ReadOld(file, network) : ReadCurrent(file, network);
  failed = file.Failed();
  return found;
}

}  // namespace

StoredWeights ReadStoredWeights(Network& network) {
  bool failed = false;
  const Found found = Read(network, failed);
  if (failed) return StoredWeights::kFailed;
  return found == Found::kWeights ? StoredWeights::kRead : StoredWeights::kNone;
}

Status ReadWeights(Network& network, uint32_t seed) {
  const bool old = network.version == 0;
  bool failed = false;
  const Found found = Read(network, failed);
  if (found == Found::kWeights) return {};
  InitializeRandomWeights(network, seed);
  if (found == Found::kRandom) return {};
  network.random_weights = true;
  return Status::Failure(old ? kOldWeightsFallback : kWeightsFallback);
}

bool WriteWeights(OutputFile& file, const Network& network) {
  file.Write("WEIGHTS:READ\n");
  for (size_t l = 1; l < static_cast<size_t>(network.nLayers); ++l) {
    const Matrix& weights = network.layers[l].weights;
    const size_t last = weights.columns() - 1;
    for (size_t j = 0; j < weights.rows(); ++j) {
      for (size_t k = 0; k <= last; ++k) {
        const bool ends = k % kValuesPerLine == kValuesPerLine - 1 || k == last;
        file.Printf("%g%c", double{weights.Row(j)[k]}, ends ? '\n' : ' ');
      }
    }
  }
  return file.Printf("%s\n", kStop);
}

}  // namespace tarn
