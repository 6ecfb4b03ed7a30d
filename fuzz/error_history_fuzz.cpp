#include <algorithm>
#include <array>
#include <bit>
#include <string>
#include <string_view>
#include <vector>

#include "bounded_run.h"
#include "engine/error_history.h"
#include "netgraph/graph_csv.h"
#include "netgraph/graph_renderer.h"
#include "netgraph/history_plots.h"
#include "netgraph/svg_canvas.h"

// The input is a binary error history. Forward and by number the same records are read, as many
// as are whole; each has the bytes that it was read from; the plots take every s-th of them as
// they stand, and can be drawn whatever the figures are; the exported text has a line for each; a
// record that is appended is the last one.

namespace tarn::fuzz {
namespace {

const std::string kHistory = "/fuzz/input.his";
const std::string kText = "/fuzz/export.txt";
constexpr int64_t kRecordsOfAStep = 500;

std::string_view BytesOf(const HistoryBytes& bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

std::vector<HistoryRecord> ReadForward(std::string_view file) {
  HistoryReader reader(kHistory);
  std::vector<HistoryRecord> records;
  HistoryRecord record;
  while (reader.Next(record)) {
    const std::string_view bytes =
        file.substr(records.size() * kHistoryRecordSize, kHistoryRecordSize);
    Require(BytesOf(EncodeHistoryRecord(record)) == bytes, "a record is its bytes");
    records.push_back(record);
  }
  Require(records.size() == file.size() / kHistoryRecordSize, "every whole record is read");
  Require(reader.Count() == static_cast<int64_t>(records.size()), "count of records");
  return records;
}

void ReadByNumber(const std::vector<HistoryRecord>& records) {
  HistoryReader reader(kHistory);
  const auto count = static_cast<int64_t>(records.size());
  HistoryRecord record;
  for (const int64_t index : {count - 1, count / 2, int64_t{0}, count, int64_t{-1}}) {
    const bool there = index >= 0 && index < count;
    Require(reader.Read(index, record) == there, "records that are there");
    if (!there) continue;
    Require(EncodeHistoryRecord(record) == EncodeHistoryRecord(records[static_cast<size_t>(index)]),
            "a record by its number");
  }
}

bool SameBits(float a, float b) {
  return std::bit_cast<uint32_t>(a) == std::bit_cast<uint32_t>(b);
}

Graph CheckPlot(const std::vector<HistoryRecord>& records, int32_t kind) {
  static constexpr std::array<float HistoryRecord::*, 7> kFigures = {
      &HistoryRecord::rms_train,
      &HistoryRecord::rms_test,
      &HistoryRecord::eta,
      &HistoryRecord::correlation_train,
      &HistoryRecord::correlation_test,
      &HistoryRecord::within_train,
      &HistoryRecord::within_test};
  Graph graph;
  Require(BuildHistoryPlot(static_cast<HistoryKind>(kind), kHistory, graph).ok(), "plot");
  const CURVE_DEF& curve = graph.curves.at(0);
  const size_t step = records.size() / static_cast<size_t>(kRecordsOfAStep) + 1;
  Require(curve.x.size() == records.size() / step && curve.y.size() == curve.x.size(), "points");
  for (size_t i = 0; i < curve.x.size(); ++i) {
    const HistoryRecord& record = records[(i + 1) * step - 1];
    Require(curve.x[i] == static_cast<float>(record.iteration), "iterations");
    Require(SameBits(curve.y[i], record.*kFigures[static_cast<size_t>(kind)]), "figures");
  }
  return graph;
}

void CheckDrawing(const Graph& graph) {
  SvgCanvas canvas({800, 600}, graph.title);
  DrawGraph(graph, GraphView(graph), canvas);
  const std::string picture = canvas.Document();
  for (const std::string_view text : {"nan", "inf"}) {
    Require(picture.find(text) == std::string::npos, "a picture has numbers alone");
  }
  const std::string table = GraphCsv(graph);
  Require(std::ranges::count(table, '\n') == static_cast<int64_t>(graph.curves[0].x.size()) + 4,
          "lines of the table");
}

void CheckExport(const FuzzFiles& files, size_t records) {
  Require(ExportErrorHistory(kHistory, kText).ok(), "export");
  Require(std::ranges::count(files.Get(kText), '\n') == static_cast<int64_t>(records),
          "a line for each record");
}

// Behind half a record another one would be read askew: a run begins its own file anew.
void CheckAppend(const FuzzFiles& files, const std::vector<HistoryRecord>& records) {
  ErrorHistory history(kHistory);
  Require(history.Restart(), "restart");
  for (const HistoryRecord& record : records) Require(history.Append(record), "append");
  history.Close();
  HistoryReader reader(kHistory);
  Require(reader.Count() == static_cast<int64_t>(records.size()), "appended records");
  Require(files.Get(kHistory).size() == records.size() * kHistoryRecordSize, "whole records");
}

}  // namespace

// A drawn point takes some 50 bytes of text in each of a few places.
const Bounds kBounds = {{1 << 18, 64}, {1 << 12, 32}, {1 << 12, 16}};

void Run(FuzzFiles& files, std::string_view input) {
  files.Put(kHistory, input);
  const std::vector<HistoryRecord> records = ReadForward(input);
  ReadByNumber(records);
  const Graph graph = CheckPlot(records, static_cast<int32_t>(input.size() % 7));
  if (IsSample(input, 16)) CheckDrawing(graph);
  if (IsSample(input, 8)) CheckExport(files, records.size());
  Require(files.Get(kHistory) == input, "the history is as it was");
  if (IsSample(input, 4)) {
    CheckAppend(files, records);
    Require(input.starts_with(files.Get(kHistory)), "appended bytes");
  }
}

std::span<const std::string_view> Words() {
  // Floats: 0.5, 1, infinity, -infinity, not a number, the largest and the smallest; iterations.
  static constexpr std::array<std::string_view, 9> kWords = {
      std::string_view("\0\0\0\x3F", 4),   std::string_view("\0\0\x80\x3F", 4),
      std::string_view("\0\0\x80\x7F", 4), std::string_view("\0\0\x80\xFF", 4),
      std::string_view("\1\0\x80\x7F", 4), std::string_view("\xFF\xFF\x7F\x7F", 4),
      std::string_view("\1\0\0\0", 4),     std::string_view("\xFF\xFF\xFF\x7F", 4),
      std::string_view("\0\0\0\x80", 4)};
  return kWords;
}

}  // namespace tarn::fuzz
