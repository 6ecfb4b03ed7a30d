#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/clock.h"

namespace tarn {

// A long computation in slices, over the weights that the network had when it began.
class Analysis {
 public:
  Analysis() = default;
  virtual ~Analysis() = default;
  Analysis(const Analysis&) = delete;
  Analysis& operator=(const Analysis&) = delete;

  // Works on until everything is done or `budget_ms` milliseconds are spent, a few more at most
  // (in networks of millions of connections as many as a forward pass takes). True when done.
  bool RunFor(int64_t budget_ms, const Clock& clock);

  // The text for the status line; empty before the first twentieth is done.
  const std::string& progress() const { return m_progress; }

 protected:
  // Does a small share of the work; true when all is done.
  virtual bool Advance() = 0;

  // Shows the percentage of item `index` of `count`, (100 index + 100) / count in whole numbers,
  // when it is a multiple of 5.
  void ShowProgress(std::string_view format, int64_t index, int64_t count);

 private:
  std::string m_progress;
  bool m_done = false;
};

}  // namespace tarn
