#pragma once

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <thread>
#include <vector>

namespace tarn {

// Threads that share one piece of work at a time with the thread that owns them. Nothing runs
// between two pieces: to everyone else the owner is one thread.
class Workers {
 public:
  // For work in `parts` parts, 1 or more: so many threads with the owner's. Fewer when the
  // system does not give them.
  explicit Workers(size_t parts);
  ~Workers();
  Workers(const Workers&) = delete;
  Workers& operator=(const Workers&) = delete;

  size_t parts() const { return m_threads.size() + 1; }

  // Calls task(0) here and task(1) to task(parts() - 1) on the other threads at the same time;
  // returns when all have returned. They must not throw. Allocates nothing.
  template <typename Task>
  void Run(const Task& task) {
    RunCall(&task,
            [](const void* object, size_t part) { (*static_cast<const Task*>(object))(part); });
  }

 private:
  using Call = void (*)(const void* task, size_t part);

  void RunCall(const void* task, Call call);
  void Serve(size_t part);
  // Returns once the value is no longer `old`; who changes it calls WakeUp.
  void WaitWhile(const std::atomic<uint32_t>& value, uint32_t old);
  void WakeUp();

  std::vector<std::thread> m_threads;
  const void* m_task = nullptr;
  Call m_call = nullptr;
  std::atomic<uint32_t> m_turn{0};     // counts the pieces of work
  std::atomic<uint32_t> m_unready{0};  // threads still at the present one
  bool m_end = false;
  std::mutex m_mutex;  // of those that sleep
  std::condition_variable m_changed;
  std::atomic<uint32_t> m_sleepers{0};
};

// Threads of the machine that are worth taking, 1 or more.
size_t UsefulThreads();

}  // namespace tarn
