#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "base/clock.h"
#include "netgraph/analysis.h"
#include "netgraph/graph.h"

namespace tarn {

// Graphs of some nodes or layers, made one at a time, behind an analysis if they need one.
class StudyTask {
 public:
  // `graph` makes the graph of a node once the analysis, which may be null, is done.
  StudyTask(std::shared_ptr<Analysis> analysis, std::deque<size_t> nodes,
            std::function<Graph(size_t)> graph);

  bool IsComputed() const { return m_computed; }
  bool IsDone() const { return m_computed && m_nodes.empty(); }
  // Works on the analysis for about `budget_ms`.
  void Compute(int64_t budget_ms, const Clock& clock);
  // The text for the status line; empty before there is one.
  std::string progress() const { return m_analysis ? m_analysis->progress() : ""; }
  // The next graph of a task that is computed and not done.
  Graph TakeGraph();

 private:
  std::shared_ptr<Analysis> m_analysis;
  std::deque<size_t> m_nodes;  // still to be shown
  std::function<Graph(size_t)> m_graph;
  bool m_computed;
};

}  // namespace tarn
