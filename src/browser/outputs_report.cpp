#include "browser/outputs_report.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>
#include <vector>

#include "browser/report_data.h"

namespace tarn {
namespace {

constexpr double kSmallestFixed = 0.00025;
constexpr double kSmallestTooLarge = 100000.0;

bool IsFixed(const Limits& limits, size_t node) {
  if (!limits.Measured(node)) return true;
  const double lower = std::fabs(limits.lower[node]);
  const double upper = std::fabs(limits.upper[node]);
  return std::max(lower, upper) >= kSmallestFixed && std::max(lower, upper) < kSmallestTooLarge;
}

// One output node: what its lines begin with behind the pattern's number, and the form of the
// values.
struct NodeColumn {
  std::string label;
  const char* values;
  OutputScale scale;
};

std::string Prefix(int32_t pattern, bool is_test) {
  return fmt::sprintf(is_test ? " %3d*=> " : " %3d => ", pattern + 1);
}

std::string LabelOf(const Network& network, size_t node, bool targets) {
  if (network.output_names.empty()) return fmt::sprintf("Output Node %-3d", node + 1);
  // The values and what comes before them take 45 bytes, 15 without the target.
  const size_t room = kReportWidth - Prefix(network.nPats - 1, false).size() - (targets ? 45 : 15);
  const NameColumn column = {targets ? size_t{15} : size_t{25}, targets, room};
  return column.Text(network.output_names[node]);
}

std::vector<NodeColumn> NodeColumns(const Network& network, bool targets) {
  std::vector<NodeColumn> columns;
  const std::vector<OutputScale> scales = OutputScales(network);
  for (size_t j = 0; j < scales.size(); ++j) {
    const bool fixed = IsFixed(network.target_limits, j);
    const char* const pair =
        fixed ? " (target,output) = %12.5f, %12.5f" : " (target,output) = %12.4e, %12.4e";
    const char* const single = fixed ? " = %12.5f" : " = %12.4e";
    columns.push_back({LabelOf(network, j, targets), targets ? pair : single, scales[j]});
  }
  return columns;
}

// Tells for pattern after pattern whether it is a test pattern.
class TestMarks {
 public:
  explicit TestMarks(const Network& network) : m_network(network) {}

  // To be called for every pattern in order.
  bool IsTest(int32_t pattern) {
    if (m_network.testPats == 0) return false;
    if (IsNext(m_network.train_list, m_train, pattern)) return false;
    return IsNext(m_network.test_list, m_test, pattern);
  }

 private:
  static bool IsNext(const std::vector<int32_t>& list, size_t& cursor, int32_t pattern) {
    const bool is = cursor < list.size() && list[cursor] == pattern;
    cursor += is ? 1 : 0;
    return is;
  }

  const Network& m_network;
  size_t m_train = 0;
  size_t m_test = 0;
};

}  // namespace

void WriteOutputsReport(const Network& network, ReportFile& report) {
  const bool training = network.mode == Mode::kTraining;
  const bool targets = HasTargets(network);
  WriteReportHead(network, targets ? " Targets and Network Outputs" : " Network Outputs", report);
  if (training && network.testPats > 0) report.Write(" (Note: * = Test Pattern)");
  report.WriteBlank();

  const std::vector<NodeColumn> columns = NodeColumns(network, targets);
  const Matrix& outputs = OutputLayer(network).activations;
  TestMarks marks(network);
  std::string line;
  for (int32_t p = 0; p < network.nPats; ++p) {
    const auto row = static_cast<size_t>(p);
    const bool is_test = training && marks.IsTest(p);
    const std::string prefix = Prefix(p, is_test);
    for (size_t j = 0; j < columns.size(); ++j) {
      const NodeColumn& column = columns[j];
      const double output = column.scale(outputs.Row(row)[j]);
      line = prefix + column.label;
      if (targets) {
        line +=
            fmt::sprintf(column.values, double{column.scale(network.targets.Row(row)[j])}, output);
      } else {
        line += fmt::sprintf(column.values, output);
      }
      report.Write(line);
    }
  }
}

}  // namespace tarn
