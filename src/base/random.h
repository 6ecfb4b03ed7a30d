#pragma once

#include <cstdint>
#include <optional>

namespace tarn {

// The one generator of the program: 15 random bits a draw, the same sequence for a seed on
// every machine.
//   state <- state * 214013 + 2531011 (mod 2^32);  value = bits 16..30 of the new state
class Random {
 public:
  static constexpr int32_t kLargest = 32767;

  explicit Random(uint32_t seed) : m_state(seed) {}

  // 0..kLargest
  int32_t Next() {
    m_state = m_state * 214013U + 2531011U;
    return static_cast<int32_t>((m_state >> 16) & 0x7FFFU);
  }

 private:
  uint32_t m_state;
};

// Where seeds come from: a fixed one when the user has given it, else the time in seconds.
// Every use of the generator starts from a seed of its own.
class SeedSource {
 public:
  SeedSource() = default;
  explicit SeedSource(std::optional<uint32_t> fixed) : m_fixed(fixed) {}

  uint32_t Next() const;

 private:
  std::optional<uint32_t> m_fixed;
};

}  // namespace tarn
