#include "data/pattern_files.h"

#include <algorithm>
#include <fmt/printf.h>
#include <limits>
#include <span>
#include <string_view>

#include "data/column_labels.h"
#include "data/data_source.h"
#include "data/messages.h"
#include "data/normalization.h"
#include "data/record_fields.h"
#include "data/record_measure.h"
#include "data/record_reader.h"

namespace tarn {
namespace {

// The reading buffer is that much longer than the longest line.
constexpr size_t kBufferSlack = 5;

Status FailNamed(std::string_view message, const std::string& name) {
  return Status::Failure(std::string(message) + name);
}

Status FailAtRecord(std::string_view message, int32_t pattern) {
  return Status::Failure(fmt::sprintf(message.data(), pattern + 1));
}

// Whether a record of `length` characters has room for `nodes` fields from `column` on, each
// of one character at least.
bool CanHold(size_t length, int64_t column, int64_t nodes) {
  return 2 * (column - 1 + nodes) - 1 <= static_cast<int64_t>(length);
}

Status MeasureInputs(const DataSource& source, FileMeasure& measure, Notices& notices) {
  const MeasureResult result = MeasureRecords(source.input_name, measure);
  if (result == MeasureResult::kNotRead) return FailNamed(kInputFileInvalid, source.input_name);
  if (result == MeasureResult::kLineTooLong) return Status::Failure(kInputFormatInvalid);
  if (measure.unended_record) notices.push_back(LastLineNotRead(source.input_name));
  return {};
}

Status MeasureTargets(const DataSource& source, FileMeasure& measure, Notices& notices) {
  const MeasureResult result = MeasureRecords(source.target_name, measure);
  if (result == MeasureResult::kNotRead) return Status::Failure(kTargetFileInvalid);
  if (result == MeasureResult::kLineTooLong) return Status::Failure(kTargetFormatInvalid);
  if (measure.unended_record) notices.push_back(LastLineNotRead(source.target_name));
  return {};
}

// One reading of the pattern files into the network's arrays.
class PatternReading {
 public:
  PatternReading(Network& network, size_t buffer_size)
      : m_network(network), m_source(SourceOf(network)), m_buffer_size(buffer_size) {}

  Status Run();

 private:
  // Targets that stand behind the inputs are read from the same records.
  bool TargetsInInputRecords() const {
    return m_source.SameFile() && m_source.target_column >= ColumnBehindInputs();
  }
  int64_t ColumnBehindInputs() const {
    return int64_t{m_source.input_column} + m_network.layers[0].nUnits;
  }
  std::vector<std::string> TargetLabels() {
    return ReadColumnLabels(m_file, m_source.target_column, OutputLayer(m_network).nUnits);
  }

  Status ReadInputRecords(bool with_targets);
  Status ReadInputFile();
  Status ReadTargetFile();

  Network& m_network;
  const DataSource m_source;
  const size_t m_buffer_size;
  RecordReader m_file;
  int32_t m_records = 0;  // read from every file
};

Status PatternReading::ReadInputRecords(bool with_targets) {
  Matrix& inputs = m_network.layers[0].activations;
  const int64_t from_last_input_to_target = m_source.target_column - ColumnBehindInputs() + 1;
  std::string_view record;
  int32_t r = 0;
  for (; r < m_network.nPats && m_file.NextRecord(record); ++r) {
    const size_t row = static_cast<size_t>(r);
    RecordFields fields(record);
    if (!fields.Skip(m_source.input_column - 1) || !fields.Read(inputs.Row(row))) {
      return FailAtRecord(kInputDataInsufficient, r);
    }
    if (!with_targets) continue;
    if (!fields.Skip(from_last_input_to_target) || !fields.Read(m_network.targets.Row(row))) {
      return FailAtRecord(kTargetDataInsufficient, r);
    }
  }
  m_records = r;
  return {};
}

Status PatternReading::ReadInputFile() {
  if (!m_file.Open(m_source.input_name)) return FailNamed(kInputFileBad, m_source.input_name);
  const bool with_targets = TargetsInInputRecords();
  if (Status records = ReadInputRecords(with_targets); !records.ok()) return records;
  m_file.Rewind();
  m_network.input_names =
      ReadColumnLabels(m_file, m_source.input_column, m_network.layers[0].nUnits);
  if (with_targets) {
    m_file.Rewind();
    m_network.output_names = TargetLabels();
  }
  return m_file.Failed() ? FailNamed(kInputFileBad, m_source.input_name) : Status();
}

Status PatternReading::ReadTargetFile() {
  if (!m_file.Open(m_source.target_name)) return FailNamed(kTargetFileBad, m_source.target_name);
  std::string_view record;
  int32_t r = 0;
  for (; r < m_network.nPats && m_file.NextRecord(record); ++r) {
    RecordFields fields(record);
    if (!fields.Skip(m_source.target_column - 1) ||
        !fields.Read(m_network.targets.Row(static_cast<size_t>(r)))) {
      return FailAtRecord(kTargetDataInsufficient, r);
    }
  }
  m_records = std::min(m_records, r);
  m_file.Rewind();
  m_network.output_names = TargetLabels();
  return m_file.Failed() ? FailNamed(kTargetFileBad, m_source.target_name) : Status();
}

Status PatternReading::Run() {
  if (Status columns = CheckColumns(m_source); !columns.ok()) return columns;
  if (m_buffer_size == 0) return Status::Failure(kDataFileEmpty);
  if (!m_file.Reserve(m_buffer_size)) return Status::Failure(kNoReadingBuffer);
  m_network.input_names.clear();
  m_network.output_names.clear();
  if (Status inputs = ReadInputFile(); !inputs.ok()) return inputs;
  if (m_source.targets && !TargetsInInputRecords()) {
    if (Status targets = ReadTargetFile(); !targets.ok()) return targets;
  }
  if (m_records < m_network.nPats) return Status::Failure(kRecordsInvalid);
  if (Status scaled = Normalize(m_network); !scaled.ok()) return scaled;
  return m_records == 0 ? Status::Failure(kNoDataPoints) : Status();
}

}  // namespace

Status CountPatterns(const Network& network, PatternCount& count, Notices& notices) {
  count = {};
  const DataSource source = SourceOf(network);
  if (Status columns = CheckColumns(source); !columns.ok()) return columns;
  FileMeasure inputs;
  if (Status measured = MeasureInputs(source, inputs, notices); !measured.ok()) return measured;
  FileMeasure targets = inputs;
  const bool counted = source.targets && !source.target_name.starts_with(source.input_name);
  if (counted) {
    Status measured = MeasureTargets(source, targets, notices);
    if (!measured.ok()) return measured;
    if (targets.records != inputs.records) return Status::Failure(kCountsNotEqual);
  }
  if (inputs.records == 0) return Status::Failure(kDataFileEmpty);
  if (inputs.records > std::numeric_limits<int32_t>::max()) return Status::Failure(kOutOfMemory);
  if (!CanHold(inputs.longest_record, source.input_column, network.layers[0].nUnits)) {
    return FailAtRecord(kInputDataInsufficient, 0);
  }
  if ((counted || source.SameFile()) &&
      !CanHold(targets.longest_record, source.target_column, OutputLayer(network).nUnits)) {
    return FailAtRecord(kTargetDataInsufficient, 0);
  }
  count.records = static_cast<int32_t>(inputs.records);
  count.buffer_size = std::max(inputs.longest_line, targets.longest_line) + kBufferSlack;
  return {};
}

Status ReadPatterns(Network& network, size_t buffer_size) {
  return PatternReading(network, buffer_size).Run();
}

}  // namespace tarn
