#pragma once

#include <cstdint>

namespace tarn {

// A millisecond timer that only moves forward; tests set their own.
class Clock {
 public:
  virtual ~Clock() = default;
  virtual int64_t NowMs() const = 0;
};

// The machine's steady clock.
const Clock& SteadyClock();

}  // namespace tarn
