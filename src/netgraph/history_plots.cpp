#include "netgraph/history_plots.h"

#include <array>
#include <cstddef>

#include "engine/error_history.h"
#include "netgraph/messages.h"

namespace tarn {
namespace {

constexpr int64_t kRecordsOfAStep = 500;

struct Kind {
  const char* title;
  const char* y_label;
  float HistoryRecord::*figure;
};

constexpr std::array<Kind, 7> kKinds = {{
    {"Root Mean Square Error of Training Set", "RMS Error", &HistoryRecord::rms_train},
    {"Root Mean Square Error of Test Set", "RMS Error", &HistoryRecord::rms_test},
    {"Learn Rate (ETA) History", "ETA", &HistoryRecord::eta},
    {"Correlation Coefficient History", "Correlation Coef.", &HistoryRecord::correlation_train},
    {"Test Set Correlation Coefficient History", "Test Correlation Coef.",
     &HistoryRecord::correlation_test},
    {"Predictions Within Tolerance", "Percent Correct", &HistoryRecord::within_train},
    {"Test Set Predictions Within Tolerance", "Percent Correct", &HistoryRecord::within_test},
}};

}  // namespace

Status BuildHistoryPlot(HistoryKind kind, const std::string& history_path, Graph& graph) {
  const Kind& of_kind = kKinds[static_cast<size_t>(kind)];
  HistoryReader history(history_path);
  if (!history.IsOpen()) return Status::Failure(kHistoryUnreadable);
  const int64_t records = history.Count();
  if (records < 0) return Status::Failure(kHistoryUnreadable);
  const int64_t step = records / kRecordsOfAStep + 1;
  CURVE_DEF curve;
  curve.x.reserve(static_cast<size_t>(records / step));
  curve.y.reserve(static_cast<size_t>(records / step));
  HistoryRecord record;
  for (int64_t taken = step; taken <= records; taken += step) {
    if (!history.Read(taken - 1, record)) return Status::Failure(kHistoryUnreadable);
    curve.x.push_back(static_cast<float>(record.iteration));
    curve.y.push_back(record.*of_kind.figure);
  }
  graph = Graph();
  graph.title = of_kind.title;
  graph.x_label = "Iteration";
  graph.y_label = of_kind.y_label;
  graph.curves.push_back(std::move(curve));
  return {};
}

}  // namespace tarn
