#include "base/clock.h"

#include <chrono>

namespace tarn {
namespace {

class MachineClock : public Clock {
 public:
  int64_t NowMs() const override {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
  }
};

}  // namespace

const Clock& SteadyClock() {
  static const MachineClock clock;
  return clock;
}

}  // namespace tarn
