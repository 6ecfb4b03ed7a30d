#pragma once

#include <cstdint>

#include "base/clock.h"

namespace tarn {

// A clock that stands still until the test moves it.
class SetClock : public Clock {
 public:
  explicit SetClock(int64_t now_ms = 0) : m_now_ms(now_ms) {}

  int64_t NowMs() const override { return m_now_ms; }
  void Set(int64_t now_ms) { m_now_ms = now_ms; }
  void Advance(int64_t ms) { m_now_ms += ms; }

 private:
  int64_t m_now_ms;
};

}  // namespace tarn
