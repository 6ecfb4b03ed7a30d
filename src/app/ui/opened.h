#pragma once

namespace tarn {

// Counts a dialog as open for as long as the call that shows it has not returned.
class Opened {
 public:
  explicit Opened(int& count) : m_count(count) { ++m_count; }
  ~Opened() { --m_count; }
  Opened(const Opened&) = delete;
  Opened& operator=(const Opened&) = delete;

 private:
  int& m_count;
};

}  // namespace tarn
