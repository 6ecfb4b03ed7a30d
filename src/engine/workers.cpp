#include "engine/workers.h"

#include <algorithm>
#include <hwy/cache_control.h>
#include <new>
#include <system_error>

namespace tarn {
namespace {

// Pieces of work follow each other within microseconds: a thread looks for the next one this
// many times, which takes longer than that, before it sleeps. Now and then it gives way, in
// case the thread that it waits for has been put on the same processor.
constexpr int kLooksBeforeSleep = 4000;
constexpr int kLooksBeforeYield = 64;
constexpr size_t kMostThreads = 8;

}  // namespace

Workers::Workers(size_t parts) {
  m_threads.reserve(parts);
  for (size_t part = 1; part < parts; ++part) {
    try {
      m_threads.emplace_back([this, part] { Serve(part); });
    } catch (const std::system_error&) {
      return;
    } catch (const std::bad_alloc&) {
      return;
    }
  }
}

Workers::~Workers() {
  m_end = true;
  m_turn.fetch_add(1);
  WakeUp();
  for (std::thread& thread : m_threads) thread.join();
}

void Workers::RunCall(const void* task, Call call) {
  m_task = task;
  m_call = call;
  m_unready.store(static_cast<uint32_t>(m_threads.size()), std::memory_order_relaxed);
  m_turn.fetch_add(1);
  WakeUp();
  call(task, 0);
  for (uint32_t left = m_unready.load(std::memory_order_acquire); left != 0;
       left = m_unready.load(std::memory_order_acquire)) {
    WaitWhile(m_unready, left);
  }
}

void Workers::Serve(size_t part) {
  // Threads begin before the first piece of work: none is missed.
  for (uint32_t turn = 0;; ++turn) {
    WaitWhile(m_turn, turn);
    if (m_end) return;
    m_call(m_task, part);
    if (m_unready.fetch_sub(1) == 1) WakeUp();
  }
}

// Not by std::atomic::wait: where the system has no futex, the library of g++ 12 loses calls.
void Workers::WaitWhile(const std::atomic<uint32_t>& value, uint32_t old) {
  for (int look = 0; look < kLooksBeforeSleep; ++look) {
    if (value.load(std::memory_order_acquire) != old) return;
    hwy::Pause();
    if (look % kLooksBeforeYield == kLooksBeforeYield - 1) std::this_thread::yield();
  }
  std::unique_lock lock(m_mutex);
  ++m_sleepers;
  m_changed.wait(lock, [&] { return value.load() != old; });
  --m_sleepers;
}

// The value has changed before it is asked for sleepers, and they count themselves before they look
// at the value: one of the two sees the other.
void Workers::WakeUp() {
  if (m_sleepers.load() == 0) return;
  // Whoever has seen the old value is asleep by the time that the lock is free.
  std::unique_lock(m_mutex).unlock();
  m_changed.notify_all();
}

size_t UsefulThreads() {
  return std::clamp<size_t>(std::thread::hardware_concurrency(), 1, kMostThreads);
}

}  // namespace tarn
