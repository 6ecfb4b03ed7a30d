#pragma once

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "browser/report_file.h"
#include "browser/report_text.h"
#include "engine/small_network.h"
#include "support/memory_files.h"

namespace tarn {

// Reports in memory, over networks whose outputs and targets a test gives.
class ReportTest : public testing::Test {
 protected:
  using Table = std::vector<std::vector<float>>;

  // One output column per node, one row per pattern. Training, no test set, no normalization.
  static Network WithValues(const Table& outputs, const Table& targets) {
    const auto nodes = static_cast<int32_t>(outputs.front().size());
    Network network = MakeNetwork({1, 1, nodes}, {kSigmoid}, static_cast<int32_t>(outputs.size()));
    network.NetName = "Net";
    for (size_t p = 0; p < outputs.size(); ++p) {
      std::ranges::copy(outputs[p], OutputLayer(network).activations.Row(p).begin());
      std::ranges::copy(targets[p], network.targets.Row(p).begin());
    }
    return network;
  }

  // The lines of a report, 80 characters each.
  std::vector<std::string> Records(const std::function<void(ReportFile&)>& write) {
    ReportFile report;
    EXPECT_TRUE(report.Create("/tmp").ok());
    write(report);
    EXPECT_TRUE(report.Finish().ok());
    TVirtText text;
    EXPECT_TRUE(text.Open(report.path()));
    std::vector<std::string> lines;
    for (int64_t i = 0; i < text.line_count(); ++i) lines.push_back(text.Line(i));
    return lines;
  }

  // The same without trailing blanks.
  std::vector<std::string> Lines(const std::function<void(ReportFile&)>& write) {
    std::vector<std::string> lines = Records(write);
    for (std::string& line : lines) line = WithoutTrailingBlanks(line);
    return lines;
  }

  MemoryFiles m_files;
  ScopedFileLayer m_layer{m_files};
};

}  // namespace tarn
