#include "data/outputs_export.h"

#include <fmt/printf.h>
#include <span>

#include "base/output_file.h"
#include "data/messages.h"
#include "data/normalization.h"

namespace tarn {
namespace {

void AppendValue(const Network& network, size_t node, float value, std::string& line) {
  line += fmt::sprintf("\t%f", OutputScale(network, node)(value));
}

}  // namespace

bool WriteOutputs(const Network& network, const LineSink& sink) {
  const bool membership = network.mode == Mode::kTraining && network.testPats > 0;
  const bool targets = HasTargets(network);
  size_t train = 0;
  std::string line;
  for (int32_t p = 0; p < network.nPats; ++p) {
    line = fmt::sprintf("%d", p + 1);
    if (membership) {
      const bool trained = train < network.train_list.size() && network.train_list[train] == p;
      train += trained ? 1 : 0;
      line += trained ? "\t1" : "\t0";
    }
    const size_t row = static_cast<size_t>(p);
    const std::span<const float> outputs = OutputLayer(network).activations.Row(row);
    for (size_t j = 0; j < outputs.size(); ++j) {
      if (targets) AppendValue(network, j, network.targets.Row(row)[j], line);
      AppendValue(network, j, outputs[j], line);
    }
    line += '\n';
    if (!sink(line)) return false;
  }
  return true;
}

Status ExportOutputs(const Network& network, const std::string& path) {
  OutputFile file;
  const bool written =
      file.OpenReplacing(path) &&
      WriteOutputs(network, [&file](std::string_view line) { return file.Write(line); }) &&
      file.Commit();
  return written ? Status() : Status::Failure(kOutputsWriteError);
}

}  // namespace tarn
