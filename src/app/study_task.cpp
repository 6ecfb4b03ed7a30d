#include "app/study_task.h"

#include <utility>

namespace tarn {

StudyTask::StudyTask(std::shared_ptr<Analysis> analysis, std::deque<size_t> nodes,
                     std::function<Graph(size_t)> graph)
    : m_analysis(std::move(analysis)),
      m_nodes(std::move(nodes)),
      m_graph(std::move(graph)),
      m_computed(m_analysis == nullptr) {}

void StudyTask::Compute(int64_t budget_ms, const Clock& clock) {
  if (!m_computed) m_computed = m_analysis->RunFor(budget_ms, clock);
}

Graph StudyTask::TakeGraph() {
  const size_t node = m_nodes.front();
  m_nodes.pop_front();
  return m_graph(node);
}

}  // namespace tarn
