#include "netgraph/analysis.h"

#include <fmt/printf.h>

namespace tarn {
namespace {

constexpr int64_t kPercentStep = 5;

}  // namespace

bool Analysis::RunFor(int64_t budget_ms, const Clock& clock) {
  const int64_t start = clock.NowMs();
  while (!m_done) {
    m_done = Advance();
    if (clock.NowMs() - start >= budget_ms) break;
  }
  return m_done;
}

void Analysis::ShowProgress(std::string_view format, int64_t index, int64_t count) {
  const int64_t percent = (index * 100 + 100) / count;
  if (percent % kPercentStep == 0) m_progress = fmt::sprintf(format, percent);
}

}  // namespace tarn
