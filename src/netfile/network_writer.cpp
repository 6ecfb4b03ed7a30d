#include "netfile/network_writer.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <string_view>
#include <vector>

#include "netfile/connections_section.h"
#include "netfile/header.h"
#include "netfile/messages.h"
#include "netfile/weights_section.h"

namespace tarn {
namespace {

// Values with blanks between them, at most `per_line` a line; `ends_last` ends the line of the
// last one too, however full it is.
template <typename Value>
void WriteList(OutputFile& file, const char* format, const std::vector<Value>& values,
               size_t per_line, bool ends_last) {
  for (size_t i = 0; i < values.size(); ++i) {
    const bool full = i % per_line == per_line - 1;
    file.Printf(format, values[i]);
    file.Write(full || (ends_last && i + 1 == values.size()) ? "\n" : " ");
  }
}

void WritePatternNumbers(OutputFile& file, const std::vector<int32_t>& patterns) {
  constexpr size_t kPerLine = 11;
  WriteList(file, "%d", patterns, kPerLine, true);
}

void WriteLimits(OutputFile& file, std::string_view name, const Limits& limits) {
  constexpr size_t kPerLine = 8;
  file.Printf("%s\n", name);
  for (const std::vector<float>* list : {&limits.lower, &limits.upper}) {
    const std::vector<double> values(list->begin(), list->end());
    WriteList(file, "%f", values, kPerLine, false);
    file.Write("\n");
  }
}

constexpr auto kSections =
    std::to_array<std::string_view>({"WEIGHTS:", "CONNECTIONS:", "TESTPATTERNS:", "NORMALIZE:"});

bool IsFinite(float value) {
  return std::isfinite(value);
}

// Whether a text of the user begins with one of the keys.
bool BeginsLike(const Network& network, std::span<const std::string_view> keys) {
  const std::array texts = {&network.NetName, &network.PatName, &network.TargName};
  return std::ranges::any_of(texts, [keys](const std::string* text) {
    return std::ranges::any_of(keys, [text](auto key) { return text->starts_with(key); });
  });
}

}  // namespace

bool WriteTestPatterns(OutputFile& file, const Network& network) {
  if (network.overMeth != kTestRandom) return file.Write("TESTPATTERNS:COMPUTE\n");
  file.Write("TESTPATTERNS:READ\n");
  file.Printf("%d %d %d\n", network.nPats, network.nTrain, network.testPats);
  WritePatternNumbers(file, network.train_list);
  WritePatternNumbers(file, network.test_list);
  return file.Write("TESTPATTERNS:STOP\n");
}

bool WriteNormalize(OutputFile& file, const Network& network) {
  if (network.pat_norm == 0 && network.targ_norm == 0) return file.Write("NORMALIZE:NONE\n");
  file.Write("NORMALIZE:READ\n");
  if (network.pat_norm != 0) WriteLimits(file, "INPUTS", network.input_limits);
  if (network.targ_norm != 0) WriteLimits(file, "OUTPUTS", network.target_limits);
  return file.Write("NORMALIZE:STOP\n");
}

bool WriteNetwork(OutputFile& file, const Network& network) {
  return WriteHeader(file, network, HeaderKind::kNetwork) && WriteWeights(file, network) &&
         WriteConnections(file, network) && WriteTestPatterns(file, network) &&
         WriteNormalize(file, network);
}

bool SetupCanBeReadBack(const Network& network) {
  const std::array rates = {network.Eta,    network.Alpha,    network.EtaMin,
                            network.EtaMax, network.FastProp, network.Tolerance};
  return std::ranges::all_of(rates, IsFinite) && !BeginsLike(network, kSections);
}

bool CanBeReadBack(const Network& network) {
  return SetupCanBeReadBack(network) && std::ranges::all_of(network.layers, [](const auto& layer) {
           return std::ranges::all_of(layer.weights.All(), IsFinite);
         });
}

bool SnapshotCanBeReadBack(const Network& network) {
  return CanBeReadBack(network) && !BeginsLike(network, std::array{kSnapshotKey});
}

Status WriteNetworkFile(const std::string& path, const Network& network) {
  OutputFile file;
  const bool opened =
      path == network.file_name ? file.OpenReplacing(path) : file.OpenAppending(path);
  const bool written = opened && WriteNetwork(file, network) && file.Commit();
  return written ? Status() : Status::Failure(kSaveFailed);
}

}  // namespace tarn
